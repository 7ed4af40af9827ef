#include "console/parameters/parameter_table.h"

#include <charconv>

#include "support/files/whole_file.h"
#include "support/text/hex.h"
#include "support/text/language.h"

namespace touch {

namespace {

constexpr std::string_view byteNames[] = {marked("parameters", "high byte"),
                                          marked("parameters", "low byte")};

std::optional<std::uint8_t> parseByte(std::string_view text, NumberBase base) {
  const bool hexadecimal = base == NumberBase::hexadecimal;
  std::uint8_t value = 0;
  const char* const end = text.data() + text.size();
  if (text.empty() || text.size() > (hexadecimal ? 2u : 3u)) return std::nullopt;
  const auto [parsed, failed] = std::from_chars(text.data(), end, value, hexadecimal ? 16 : 10);
  if (failed != std::errc() || parsed != end) return std::nullopt;
  return value;
}

std::string place(std::size_t row, WordByte byte) {
  return filled(say("parameters", "Word %1, %2"),
                {hexByte(static_cast<std::uint8_t>(row)),
                 say("parameters", byteNames[static_cast<std::size_t>(byte)])});
}

}  // namespace

void ParameterTable::take(const ParameterBlock& read) {
  old_ = read;
  expired_ = false;
  load(read);
}

void ParameterTable::expire() {
  expired_ = expired_ || old_.has_value();
  for (std::size_t row = 0; row < rows && old_; ++row) {
    auto& [high, low] = new_[row];
    if (high == (*old_)[row].high) high.reset();
    if (low == (*old_)[row].low) low.reset();
  }
  old_.reset();
}

void ParameterTable::load(const ParameterBlock& file) {
  rejected_.clear();
  for (std::size_t row = 0; row < rows; ++row)
    new_[row] = {file[row].high, file[row].low};
}

void ParameterTable::clear() {
  new_ = {};
  rejected_.clear();
}

std::string ParameterTable::oldText(std::size_t row, WordByte byte) const {
  if (!old_) return expired_ ? "?" : "";
  const ParameterWord& value = old_->at(row);
  return text(byte == WordByte::high ? value.high : value.low);
}

std::string ParameterTable::newText(std::size_t row, WordByte byte) const {
  const auto rejected = rejected_.find({row, byte});
  if (rejected != rejected_.end()) return rejected->second;
  return text(new_.at(row)[static_cast<std::size_t>(byte)]);
}

bool ParameterTable::changed(std::size_t row) const {
  const auto& [high, low] = new_.at(row);
  if (!old_) return high || low;
  const ParameterWord& old = old_->at(row);
  return (high && *high != old.high) || (low && *low != old.low);
}

Result<void, std::string> ParameterTable::edit(std::size_t row, WordByte byte,
                                               std::string_view text) {
  const auto value = parseByte(text, base_);
  new_.at(row)[static_cast<std::size_t>(byte)] = value;
  rejected_.erase({row, byte});
  if (value) return {};
  rejected_.emplace(std::pair(row, byte), text);
  return tl::unexpected(complaint(row, byte, text));
}

bool ParameterTable::isRejected(std::size_t row, WordByte byte) const {
  return rejected_.contains({row, byte});
}

std::string ParameterTable::complaint(std::size_t row, WordByte byte, std::string_view text) const {
  return filled(
      say("parameters", "%1: expected %2, found %3"),
      {place(row, byte),
       base_ == NumberBase::hexadecimal ? say("parameters", "two hexadecimal digits, 00 to FF")
                                        : say("parameters", "a number from 0 to 255"),
       text.empty() ? say("parameters", "nothing") : foundText(text)});
}

std::optional<std::string> ParameterTable::firstComplaint() const {
  if (rejected_.empty()) return std::nullopt;
  const auto& [at, text] = *rejected_.begin();
  return complaint(at.first, at.second, text);
}

Result<std::vector<WordValue>, std::string> ParameterTable::changes() const {
  if (auto complaint = firstComplaint()) return tl::unexpected(*complaint);
  std::vector<WordValue> changes;
  for (std::size_t row = 0; row < rows; ++row) {
    const auto& [high, low] = new_[row];
    if (high.has_value() != low.has_value()) {
      return tl::unexpected(filled(say("parameters", "%1: value missing"),
                                   {place(row, high ? WordByte::low : WordByte::high)}));
    }
    if (high && changed(row)) changes.push_back({static_cast<std::uint8_t>(row), *word(row)});
  }
  return changes;
}

Result<ParameterBlock, std::string> ParameterTable::block() const {
  if (auto complaint = firstComplaint()) return tl::unexpected(*complaint);
  ParameterBlock block;
  for (std::size_t row = 0; row < rows; ++row) {
    const auto value = word(row);
    if (!value) {
      return tl::unexpected(filled(say("parameters", "%1: value missing"),
                                   {place(row, new_[row][0] ? WordByte::low : WordByte::high)}));
    }
    block[row] = *value;
  }
  return block;
}

std::vector<WordDifference> ParameterTable::compare(const ParameterBlock& other) const {
  std::vector<WordDifference> differences;
  for (std::size_t row = 0; row < rows; ++row) {
    const auto here = word(row);
    if (here != other[row]) {
      differences.push_back({static_cast<std::uint8_t>(row), here, other[row]});
    }
  }
  return differences;
}

std::optional<ParameterWord> ParameterTable::word(std::size_t row) const {
  const auto& [high, low] = new_[row];
  if (!high || !low) return std::nullopt;
  return ParameterWord{*high, *low};
}

std::string ParameterTable::text(std::optional<std::uint8_t> value) const {
  if (!value) return {};
  return base_ == NumberBase::hexadecimal ? hexByte(*value) : std::to_string(*value);
}

}  // namespace touch
