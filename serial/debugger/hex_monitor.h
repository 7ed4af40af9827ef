#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace touch {

/// A piece of a text.
struct TextRange {
  std::size_t begin = 0;
  std::size_t end = 0;  ///< behind its last character
  friend bool operator==(const TextRange&, const TextRange&) = default;
};

/// The raw drawing's monitor: every received byte as two hexadecimal digits and a blank. "  --- "
/// stands before each byte above 7F, and every fifth of them begins a line. At 8000 characters it
/// stops growing, or, when it rolls, drops its oldest lines.
class HexMonitor {
 public:
  static constexpr std::size_t limit = 8000;

  /// `offset` is where in the stream the first byte stands.
  void add(std::span<const std::uint8_t> bytes, std::uint64_t offset);
  void clear();
  /// With `on` it has room for whatever comes. Where bytes are missing because it was full, it
  /// begins anew with what follows them.
  void roll(bool on) { rolls_ = on; }

  const std::string& text() const { return text_; }
  /// It grows no more.
  bool isFull() const { return !rolls_ && text_.size() > limit; }
  /// How many characters have gone from the text's front since this was made.
  std::uint64_t dropped() const { return dropped_; }
  /// Where the bytes from `offset` on stand in the text, as far as they are shown.
  std::optional<TextRange> rangeOf(std::uint64_t offset, std::size_t count) const;
  /// The stream's offset of the byte that is shown at `position` of the text, or behind it when
  /// none is.
  std::optional<std::uint64_t> offsetAt(std::size_t position) const;
  /// The offsets of the shown bytes, none missing between.
  std::uint64_t firstOffset() const { return first_; }
  std::uint64_t endOffset() const { return first_ + digits_.size(); }

 private:
  void addByte(std::uint8_t byte);
  void dropOldest();
  /// Drops all before `position` of the text.
  void dropBefore(std::size_t position);

  std::string text_;
  bool rolls_ = false;
  int sync_ = 0;
  std::uint64_t dropped_ = 0;
  std::uint64_t first_ = 0;
  std::vector<std::size_t> digits_;  ///< where the digits of each byte stand
};

}  // namespace touch
