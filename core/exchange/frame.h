#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace touch {

/// A command as the controller reads it: 0x01, the text, 0x0D, but for what is `unframed`. No
/// length, no checksum. An empty frame means that the input was refused; sending it writes nothing.
class Frame {
 public:
  Frame() = default;

  std::span<const std::uint8_t> bytes() const { return bytes_; }
  bool empty() const { return bytes_.empty(); }
  friend bool operator==(const Frame&, const Frame&) = default;

 private:
  friend Frame commandFrame(std::string_view text);
  friend Frame unframed(std::string_view bytes);
  std::vector<std::uint8_t> bytes_;
};

/// Any command, e.g. "UT".
Frame commandFrame(std::string_view text);

/// What goes out as it is, without the framing: a packet of another command set.
Frame unframed(std::string_view bytes);

/// "GP": reads the parameter word at `address`, two hexadecimal characters. Empty when it is not
/// two characters.
Frame parameterReadFrame(std::string_view address);

/// "SP": writes the parameter word at `address`; each part is two hexadecimal characters, else the
/// frame is empty.
Frame parameterWriteFrame(std::string_view address, std::string_view high, std::string_view low);

}  // namespace touch
