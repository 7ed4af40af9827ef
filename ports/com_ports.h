#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "support/result.h"

namespace touch {

/// Which device stands behind each COM port number, 1 to 255. Without a word from the user it is
/// the platform's own: "COM3" is COM3 on Windows and /dev/ttyS2 elsewhere.
class ComPorts {
 public:
  static constexpr int greatestNumber = 255;

  /// Takes "N=DEVICE", e.g. "3=/dev/ttyUSB0"; of two for the same number the later one counts.
  /// After an error, which says what is wrong with the text, nothing has changed.
  Result<void, std::string> assign(std::string_view text);

  /// A port whose device changes, or comes and goes: `device` is asked each time, and says nothing
  /// while there is none. What the user assigned stays.
  void assignUnlessGiven(int number, std::function<std::string()> device);

  /// The numbers whose devices are not the platform's own, in rising order.
  std::vector<int> assignedNumbers() const;
  /// Whether the user assigned it.
  bool isGiven(int number) const { return given_.contains(number); }
  /// Empty while there is none.
  std::string device(int number) const;
  /// For messages: the COM port and its device, e.g. "COM3 (/dev/ttyUSB0)".
  std::string describe(int number) const;

 private:
  std::map<int, std::function<std::string()>> assigned_;
  std::set<int> given_;
};

}  // namespace touch
