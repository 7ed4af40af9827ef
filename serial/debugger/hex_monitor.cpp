#include "serial/debugger/hex_monitor.h"

#include <algorithm>

#include "support/text/hex.h"

namespace touch {

namespace {
constexpr std::uint8_t highestData = 0x7F;
constexpr int statusBytesPerLine = 5;
constexpr std::size_t digitsPerByte = 2;
// Of the longest packets. A longer line is a flood of bytes below 80: it goes byte by byte.
constexpr std::size_t longestLine = 1000;
}  // namespace

void HexMonitor::add(std::span<const std::uint8_t> bytes, std::uint64_t offset) {
  if (rolls_ && offset != endOffset()) clear();
  if (digits_.empty()) first_ = offset;
  for (const std::uint8_t byte : bytes) {
    if (isFull()) return;
    addByte(byte);
  }
  if (rolls_) dropOldest();
}

void HexMonitor::clear() {
  dropBefore(text_.size());
  sync_ = 0;
  first_ = 0;
}

void HexMonitor::dropOldest() {
  if (text_.size() <= limit) return;
  const std::size_t excess = text_.size() - limit;
  const std::size_t line = text_.find('\n', excess);
  if (line != text_.npos && line - excess <= longestLine) return dropBefore(line);
  constexpr std::size_t place = digitsPerByte + 1;
  dropBefore(*std::ranges::lower_bound(digits_, excess - std::min(excess, place)) + place);
}

void HexMonitor::dropBefore(std::size_t position) {
  const auto kept = std::ranges::lower_bound(digits_, position);
  first_ += static_cast<std::uint64_t>(kept - digits_.begin());
  digits_.erase(digits_.begin(), kept);
  for (std::size_t& digits : digits_)
    digits -= position;
  text_.erase(0, position);
  dropped_ += position;
}

void HexMonitor::addByte(std::uint8_t byte) {
  if (byte > highestData) {
    if (sync_ == 0) text_ += '\n';
    text_ += "  --- ";
    sync_ = (sync_ + 1) % statusBytesPerLine;
  }
  digits_.push_back(text_.size());
  text_.append(hexByte(byte)).append(1, ' ');
}

std::optional<TextRange> HexMonitor::rangeOf(std::uint64_t offset, std::size_t count) const {
  if (count == 0 || offset < first_ || offset >= endOffset()) return std::nullopt;
  const auto begin = static_cast<std::size_t>(offset - first_);
  const std::size_t last = std::min(begin + count, digits_.size()) - 1;
  return TextRange{digits_[begin], digits_[last] + digitsPerByte};
}

std::optional<std::uint64_t> HexMonitor::offsetAt(std::size_t position) const {
  const auto behind = std::ranges::upper_bound(digits_, position);
  if (position >= text_.size() || digits_.empty()) return std::nullopt;
  const auto index = std::max<std::ptrdiff_t>(behind - digits_.begin() - 1, 0);
  return first_ + static_cast<std::uint64_t>(index);
}

}  // namespace touch
