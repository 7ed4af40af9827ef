#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "console/parameters/parameter_words.h"

namespace touch {

enum class NumberBase { hexadecimal, decimal };
enum class WordByte : std::size_t { high, low };

/// A word that differs between the table and something that it is compared with.
struct WordDifference {
  std::uint8_t address = 0;
  std::optional<ParameterWord> here;  ///< nothing: the table's word is empty or half empty
  ParameterWord there;
};

/// What the parameter block editor shows: for each word the old value, as last read from the
/// controller, and the new one that the user makes of it byte by byte. Rows are addresses, 0 to 7.
/// An empty new value is never written.
class ParameterTable {
 public:
  static constexpr std::size_t rows = std::tuple_size_v<ParameterBlock>;

  /// Bytes are shown and typed in this base.
  void setBase(NumberBase base) { base_ = base; }
  NumberBase base() const { return base_; }

  /// The block as read from the controller, or as it is after a write: old and new values alike.
  void take(const ParameterBlock& read);
  /// New values from a file.
  void load(const ParameterBlock& file);
  /// Empties the new values. The old ones stay.
  void clear();
  /// Empties the old values: the controller may hold others now. The new ones stay.
  void forgetOld() { old_.reset(); }
  /// The controller may hold other words than those that were read: nothing of them stays, neither
  /// as old value nor as new one. What the user has typed stays.
  void expire();

  /// Empty texts where there is no value; "?" for old values that have expired.
  std::string oldText(std::size_t row, WordByte byte) const;
  std::string newText(std::size_t row, WordByte byte) const;
  /// The new value differs from the old one, or nobody knows the old one.
  bool changed(std::size_t row) const;

  /// Makes `text` the byte's new value. The error says what was expected instead; then the text
  /// stays as it was typed, and nothing can be written or saved until it is mended.
  Result<void, std::string> edit(std::size_t row, WordByte byte, std::string_view text);
  /// The byte's new text is none of a byte.
  bool isRejected(std::size_t row, WordByte byte) const;

  /// The words to be written: those whose new value is there and changed. An error names a word of
  /// which only one byte is there, or a text that was rejected.
  Result<std::vector<WordValue>, std::string> changes() const;
  /// All new values, to be saved. An error names the first that is not there.
  Result<ParameterBlock, std::string> block() const;
  /// Where the new values differ from `other`.
  std::vector<WordDifference> compare(const ParameterBlock& other) const;
  /// The old values; nothing when the controller was not read yet.
  const std::optional<ParameterBlock>& old() const { return old_; }

 private:
  using Row = std::array<std::optional<std::uint8_t>, 2>;

  std::optional<ParameterWord> word(std::size_t row) const;
  std::string complaint(std::size_t row, WordByte byte, std::string_view text) const;
  /// About the first text that was rejected; nothing when none was.
  std::optional<std::string> firstComplaint() const;
  std::string text(std::optional<std::uint8_t> value) const;

  NumberBase base_ = NumberBase::hexadecimal;
  std::optional<ParameterBlock> old_;
  bool expired_ = false;
  std::array<Row, rows> new_{};
  std::map<std::pair<std::size_t, WordByte>, std::string> rejected_;
};

}  // namespace touch
