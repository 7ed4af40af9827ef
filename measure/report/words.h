#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "measure/judging/verdict.h"

namespace touch::measure {

/// "0.53 mm", with "nominal" behind a length that rests on a guess.
std::string valueText(double value, std::string_view unit, const PanelSize& size);
std::string lengthText(double mm, const PanelSize& size);
/// The size, and where it comes from.
std::string panelText(const PanelSize& size);

/// "V-5" or "V-5, way back".
std::string lineName(const Guide& guide);
/// What a subject of a verdict is called.
std::string subjectName(std::string_view name);

/// What each calibration could reach, and which to take; a sentence each.
std::vector<std::string> adviceTexts(const Advice& advice, const PanelSize& size);

/// What most likely is wrong.
struct CauseText {
  std::string heading;             ///< with its confidence
  std::vector<std::string> signs;  ///< the figures that speak for it
  std::string nextStep;
};
/// "Not clear" is an answer where something fails.
std::vector<CauseText> causeTexts(const Analysis& analysis, Outcome outcome, const PanelSize& size);

}  // namespace touch::measure
