#pragma once

#include <chrono>
#include <optional>
#include <string>

#include "core/driver/driver.h"

namespace touch {

/// The hand on a simulated driver's panels. On a real driver it does nothing and learns nothing,
/// and so does one without a driver. The driver outlives it.
class Simulation {
 public:
  Simulation() = default;
  explicit Simulation(Driver& driver) : driver_(driver.isSimulated() ? &driver : nullptr) {}

  bool isThere() const { return driver_ != nullptr; }

  /// Distances between where the finger is and what the controller reports, as fractions of the
  /// panel's width.
  struct PanelError {
    double mean = 0;
    double greatest = 0;
  };

  /// A place as fractions of the panel's width and height.
  struct Place {
    double x = 0;
    double y = 0;
  };

  /// The finger touches, or moves to, a place given as fractions of the panel's width and height.
  void touch(double x, double y) const;
  void lift() const;
  std::optional<PanelError> panelError(const std::string& controller) const;
  /// What the controller reports for a finger at a place; nothing where the panel feels no touch.
  std::optional<Place> report(double x, double y, const std::string& controller) const;
  /// How many reports of a touch a second the controller makes.
  double reportRate(const std::string& controller) const;
  /// Lets the simulator's time stand until it is let go on; it moves by what is let pass.
  void holdTime() const;
  void letPass(std::chrono::microseconds duration) const;
  void letTimeGo() const;
  /// Changes a trait of the panel: `value` is a number or "new", as the simulator's requests have
  /// it.
  void changePanel(const std::string& trait, const std::string& value,
                   const std::string& controller) const;
  /// The device of a serial controller's port, empty while the driver owns it.
  std::string port(const std::string& controller) const;

  /// Any request in the simulator's own words.
  Result<std::string, std::string> request(const std::string& words) const;

 private:
  Driver* driver_ = nullptr;
};

}  // namespace touch
