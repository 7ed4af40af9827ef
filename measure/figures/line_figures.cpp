#include "measure/figures/line_figures.h"

#include "support/text/language.h"

namespace touch::measure {

namespace {

using Known = std::optional<double>;

/// Lines of which nothing is drawn have no figures.
template <double LineFigures::*member>
Known ofDrawn(const LineFigures& line) {
  return line.samples > 0 ? Known(line.*member) : std::nullopt;
}
template <Spread LineFigures::*spread, double Spread::*member>
Known ofDrawn(const LineFigures& line) {
  return line.samples > 0 ? Known(line.*spread.*member) : std::nullopt;
}

constexpr LineFigure figureRows[] = {
    {"samples", marked("measure", "samples"), marked("measure", "samples"), "", 0,
     [](const LineFigures& line) { return Known(static_cast<double>(line.samples)); }},
    {"byHand", marked("measure", "strokes drawn again because of the hand"), nullptr, "", 0,
     [](const LineFigures& line) { return Known(static_cast<double>(line.byHand)); }},
    {"coverage", marked("measure", "part of the line that is covered"),
     marked("measure", "covered"), "%", 1,
     [](const LineFigures& line) { return Known(line.coverage * 100); }},
    {"gap", marked("measure", "longest piece without a sample"), marked("measure", "gap"), "mm", 2,
     ofDrawn<&LineFigures::largestGap>},
    {"offset", marked("measure", "of the best straight line from the guide, at its middle"),
     marked("measure", "offset"), "mm", 2, ofDrawn<&LineFigures::offset>},
    {"tilt", marked("measure", "drift of the best straight line from end to end"),
     marked("measure", "tilt"), "mm", 2, ofDrawn<&LineFigures::tilt>},
    {"straightness", marked("measure", "greatest distance from the best straight line"),
     marked("measure", "straight"), "mm", 2, ofDrawn<&LineFigures::straightness, &Spread::maximum>},
    {"straightnessRms", marked("measure", "distance from the best straight line, RMS"),
     marked("measure", "RMS"), "mm", 2, ofDrawn<&LineFigures::straightness, &Spread::rms>},
    {"straightnessP95", marked("measure", "distance from the best straight line, 95th percentile"),
     marked("measure", "p95"), "mm", 2, ofDrawn<&LineFigures::straightness, &Spread::p95>},
    {"offMaximum", marked("measure", "greatest distance of a sample from the guide"), nullptr, "mm",
     2, ofDrawn<&LineFigures::off, &Spread::maximum>},
    {"offRms", marked("measure", "distance of the samples from the guide, RMS"), nullptr, "mm", 2,
     ofDrawn<&LineFigures::off, &Spread::rms>},
    {"offP95", marked("measure", "distance of the samples from the guide, 95th percentile"),
     nullptr, "mm", 2, ofDrawn<&LineFigures::off, &Spread::p95>},
    {"centre", marked("measure", "greatest distance of the course from the guide in the centre"),
     marked("measure", "centre"), "mm", 2, ofDrawn<&LineFigures::centre>},
    {"edge", marked("measure", "greatest distance of the course from the guide in the edge zone"),
     marked("measure", "edge"), "mm", 2, ofDrawn<&LineFigures::edge>},
    {"scatter", marked("measure", "RMS of the samples around the course"),
     marked("measure", "scatter"), "mm", 2, ofDrawn<&LineFigures::scatter>},
    {"speed", marked("measure", "speed of the hand"), marked("measure", "speed"), "mm/s", 0,
     [](const LineFigures& line) { return line.speed; }},
    {"reportRate", marked("measure", "reports a second"), marked("measure", "rate"), "1/s", 0,
     [](const LineFigures& line) { return line.reportRate; }},
    {"lostSeconds", marked("measure", "time in which reports failed to come"),
     marked("measure", "lost"), "s", 2, [](const LineFigures& line) { return line.lost; }},
};

}  // namespace

std::span<const LineFigure> lineFigureList() {
  return figureRows;
}

}  // namespace touch::measure
