#pragma once

#include <cstdint>
#include <optional>
#include <random>
#include <vector>

#include "measure/judging/causes.h"
#include "measure/measurement.h"
#include "simulator/panel/panel.h"
#include "simulator/panel/touch_map.h"

namespace touch::measure::truth {

/// A strip across the panel: at these x, else at these y, in mm.
struct Strip {
  bool upright = false;
  double from = 0;
  double to = 0;
};

/// A crack: beyond it touches are displaced.
struct Crack {
  bool upright = false;
  double place = 0;
  PointMm jump = PointMm::Zero();
};

/// How steadily a finger follows a guide.
struct Hand {
  double wander = 0.1;     ///< RMS around the guide, in mm
  double tapSpread = 0.2;  ///< standard deviation of a tap in one direction, in mm
  double speed = 120;      ///< mm a second
};

/// A simulated panel of which everything is known, and the hand that tests it.
struct Trial {
  PanelSize size{{211}, {158}, SizeSource::user};
  simulator::PanelTraits traits;     ///< bow, gain, offset and skew of the sheet
  bool calibrated = true;            ///< with nine targets; else it reports what it reads
  PointMm offset = PointMm::Zero();  ///< mm, what is left of a poor calibration
  PointMm scale = PointMm::Zero();   ///< mm at the edges
  PointMm tilt = PointMm::Zero();    ///< mm at the ends of upright and of level lines
  double noise = 0.03;               ///< mm, standard deviation of one direction
  Eigen::Matrix2d directions = Eigen::Matrix2d::Identity();  ///< as parts of width and height
  std::optional<Strip> dead;
  std::optional<Crack> crack;
  PointMm drift = PointMm::Zero();       ///< mm a second
  PointMm hysteresis = PointMm::Zero();  ///< mm by which lines drawn back are displaced
  Hand hand;
  double rate = 100;  ///< reports a second
  std::uint32_t seed = 1;
};

struct Recording {
  Measurement measurement;
  std::vector<PointMm> tapped;  ///< where the finger was, in the order of the taps
};
/// Everything that the plan wants, as this panel would report it.
Recording recordAll(const Trial& trial, const Plan& plan, const Limits& limits);
Measurement record(const Trial& trial, const Plan& plan, const Limits& limits);

/// A panel whose faults are far below the limits.
Trial goodPanel(std::mt19937& random, const Limits& limits);
/// Gives a panel a fault that breaks its limit by itself.
void addFault(Trial& trial, CauseId cause, std::mt19937& random, const Limits& limits);

}  // namespace touch::measure::truth
