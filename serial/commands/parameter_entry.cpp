#include "serial/commands/parameter_entry.h"

#include <algorithm>

#include "support/text/hex.h"

namespace touch {

namespace {

constexpr int lastLowAddress = 63;
constexpr int skippedAddresses = 64;
constexpr std::size_t digitsInBox = 2;

std::string_view withoutBlanks(std::string_view text) {
  const auto begin = text.find_first_not_of(' ');
  if (begin == text.npos) return {};
  return text.substr(begin, text.find_last_not_of(' ') + 1 - begin);
}

char capital(char character) {
  return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A')
                                              : character;
}

bool isHexDigit(char character) {
  return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'F');
}

std::optional<std::string> byteText(std::string_view text) {
  if (text.size() != digitsInBox) return std::nullopt;
  auto checked = leftDataText(text);
  // Blanks count as characters of the box but are no digits.
  if (checked && checked->size() != digitsInBox) return std::nullopt;
  return checked;
}

}  // namespace

std::string selectedAddress(int value) {
  const int address = value > lastLowAddress ? value + skippedAddresses : value;
  return hexByte(static_cast<std::uint8_t>(address));
}

std::string keptDataText(std::string_view typed) {
  if (typed.size() > digitsInBox) typed.remove_prefix(typed.size() - digitsInBox);
  return std::string(typed);
}

bool fillsDataBox(std::string_view text) {
  return text.size() == digitsInBox;
}

std::optional<std::string> leftDataText(std::string_view text) {
  std::string digits(withoutBlanks(text));
  std::ranges::transform(digits, digits.begin(), capital);
  if (!std::ranges::all_of(digits, isHexDigit)) return std::nullopt;
  return digits;
}

Result<DataBytes, std::string_view> checkedDataBytes(std::string_view high, std::string_view low) {
  const auto highText = byteText(high);
  if (!highText) return tl::unexpected(std::string_view("Data High Byte Error!!"));
  const auto lowText = byteText(low);
  if (!lowText) return tl::unexpected(std::string_view("Data Low Byte Error!!"));
  return DataBytes{*highText, *lowText};
}

}  // namespace touch
