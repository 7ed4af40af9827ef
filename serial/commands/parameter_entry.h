#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "support/result.h"

namespace touch {

/// The address selector: a scroll bar whose values 0 to 63 are the addresses 00 to 3F and whose
/// values from 64 on are those from 80 on. The addresses between cannot be chosen.
inline constexpr int addressSelectorStart = 32;
inline constexpr int addressSelectorEnd = 191;

/// The address, two hexadecimal digits, that the selector shows and sends at `value`, 0 to
/// addressSelectorEnd.
std::string selectedAddress(int value);

/// A data box holds one byte in two hexadecimal digits. Of three characters or more the last two
/// stay.
std::string keptDataText(std::string_view typed);
/// The box is full: from the high byte's the focus moves on to the low byte's.
bool fillsDataBox(std::string_view text);
/// The box's text when it is left: in capitals and without blanks around it; nothing when another
/// character than a hexadecimal digit stands in it.
std::optional<std::string> leftDataText(std::string_view text);

/// The text of both boxes as they go to the controller, two hexadecimal digits each, or what to
/// tell the user instead.
struct DataBytes {
  std::string high;
  std::string low;
};
Result<DataBytes, std::string_view> checkedDataBytes(std::string_view high, std::string_view low);

}  // namespace touch
