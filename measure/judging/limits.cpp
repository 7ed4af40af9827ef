#include "measure/judging/limits.h"

#include <algorithm>

#include "support/text/language.h"

namespace touch::measure {

namespace {

struct LengthRow {
  Length length{};
  LengthName name;
  /// Of each profile, in their order; 0 means that the limit has none.
  std::array<double, 3> mm{};
  std::array<double, 3> percent{};
};

constexpr LengthRow rows[] = {
    {Length::straightness,
     {"straightness", marked("measure", "straightness")},
     {1, 2, 0.5},
     {0, 1, 0}},
    {Length::straightnessRms,
     {"straightnessRms", marked("measure", "straightness, RMS")},
     {0.5, 1, 0.25},
     {0, 0.5, 0}},
    {Length::offset, {"offset", marked("measure", "offset")}, {1, 2, 0.5}, {0, 1, 0}},
    {Length::tilt, {"tilt", marked("measure", "tilt, end to end")}, {1, 2, 0.5}, {0, 1, 0}},
    {Length::scale, {"scale", marked("measure", "scale, at the edge")}, {1, 2, 0.5}, {0, 1, 0}},
    {Length::centre,
     {"centre", marked("measure", "off the guide, centre")},
     {1.5, 3, 1},
     {0, 1.5, 0}},
    {Length::edge, {"edge", marked("measure", "off the guide, edge zone")}, {2, 4, 1.5}, {0, 2, 0}},
    {Length::scatter, {"scatter", marked("measure", "scatter, RMS")}, {0.5, 1, 0.3}, {0, 0, 0}},
    {Length::hysteresis,
     {"hysteresis", marked("measure", "hysteresis")},
     {0.7, 1.5, 0.5},
     {0, 0, 0}},
    {Length::gap, {"gap", marked("measure", "largest gap")}, {3, 5, 2}, {2, 2, 2}},
    {Length::farOff,
     {"farOff", marked("measure", "far off the guide")},
     {0, 0, 0},
     {5.8, 5.8, 5.8}},
    {Length::restNoise,
     {"restNoise", marked("measure", "noise at rest, RMS")},
     {0.2, 0.5, 0.1},
     {0, 0, 0}},
    {Length::restPeak,
     {"restPeak", marked("measure", "noise at rest, peak to peak")},
     {1.5, 3, 0.8},
     {0, 0, 0}},
    {Length::drift, {"drift", marked("measure", "drift")}, {0.5, 1, 0.3}, {0, 0, 0}},
    {Length::tapMean, {"tapMean", marked("measure", "taps, mean miss")}, {1, 2, 0.7}, {0, 0, 0}},
    {Length::tapWorst, {"tapWorst", marked("measure", "taps, worst miss")}, {2, 4, 1.5}, {0, 0, 0}},
    {Length::tapSpread, {"tapSpread", marked("measure", "taps, spread")}, {0.5, 1, 0.4}, {0, 0, 0}},
    {Length::edgeReach, {"edgeReach", marked("measure", "farthest edge")}, {3, 5, 3}, {0, 0, 0}},
};
static_assert(std::size(rows) == lengthCount);

Limits limitsOf(std::size_t profile) {
  Limits limits;
  for (const LengthRow& row : rows) {
    LengthLimit& limit = limits[row.length];
    if (row.mm[profile] > 0) limit.mm = Millimetres{row.mm[profile]};
    if (row.percent[profile] > 0) limit.percent = Percent{row.percent[profile]};
  }
  return limits;
}

}  // namespace

Millimetres LengthLimit::on(Millimetres side) const {
  const Millimetres fixed = mm.value_or(Millimetres{});
  return percent ? std::max(fixed, partOf(side, *percent)) : fixed;
}

LengthName nameOf(Length length) {
  return rows[static_cast<std::size_t>(length)].name;
}

std::span<const Profile> profiles() {
  static const std::array all{
      Profile{"industrial", marked("measure", "machines, operated by finger or glove"),
              limitsOf(0)},
      Profile{"kiosk", marked("measure", "large buttons, anybody's finger"), limitsOf(1)},
      Profile{"signature", marked("measure", "writing and drawing with a pen"), limitsOf(2)}};
  return all;
}

const Profile* findProfile(std::string_view name) {
  const auto all = profiles();
  const auto found = std::ranges::find(all, name, &Profile::name);
  return found == all.end() ? nullptr : &*found;
}

}  // namespace touch::measure
