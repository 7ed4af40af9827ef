#include "core/exchange/frame.h"

#include <string>

namespace touch {

namespace {
constexpr std::uint8_t startOfHeading = 0x01;
constexpr std::uint8_t carriageReturn = 0x0D;
}  // namespace

Frame commandFrame(std::string_view text) {
  Frame frame;
  frame.bytes_.reserve(text.size() + 2);
  frame.bytes_.push_back(startOfHeading);
  frame.bytes_.insert(frame.bytes_.end(), text.begin(), text.end());
  frame.bytes_.push_back(carriageReturn);
  return frame;
}

Frame unframed(std::string_view bytes) {
  Frame frame;
  frame.bytes_.assign(bytes.begin(), bytes.end());
  return frame;
}

Frame parameterReadFrame(std::string_view address) {
  if (address.size() != 2) return {};
  return commandFrame(std::string("GP").append(address));
}

Frame parameterWriteFrame(std::string_view address, std::string_view high, std::string_view low) {
  if (address.size() != 2 || high.size() != 2 || low.size() != 2) return {};
  return commandFrame(std::string("SP").append(address).append(high).append(low));
}

}  // namespace touch
