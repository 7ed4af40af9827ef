#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace touch {

class NexapiDriver;

/// The hand on a simulated driver's panels: the one export that such a library has beside the 36
/// operations.
class Simulation {
 public:
  /// Nothing when the driver is a real one.
  static std::optional<Simulation> of(const NexapiDriver& driver);

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
  /// Changes a trait of the panel: `value` is a number or "new", as the simulator's requests have
  /// it.
  void changePanel(const std::string& trait, const std::string& value,
                   const std::string& controller) const;
  /// The device of a serial controller's port, empty while the driver owns it.
  std::string port(const std::string& controller) const;

  /// Any request in the simulator's own words; the answer, or nothing with the reason in `refused`.
  std::optional<std::string> request(const std::string& words,
                                     std::string* refused = nullptr) const;

 private:
  using Function = std::int32_t (*)(const char*, char*, std::int32_t);
  explicit Simulation(Function function) : function_(function) {}
  Function function_;
};

}  // namespace touch
