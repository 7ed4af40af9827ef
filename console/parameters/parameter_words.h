#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>

#include "core/session.h"
#include "support/result.h"

namespace touch {

/// The words at addresses 00 to 07, which hold the controller's calibration.
using ParameterBlock = std::array<ParameterWord, 8>;

/// A word and where it belongs.
struct WordValue {
  std::uint8_t address = 0;
  ParameterWord word;
  friend bool operator==(const WordValue&, const WordValue&) = default;
};

/// A word that is to become, or has become, another.
struct WordChange {
  std::uint8_t address = 0;
  ParameterWord before;
  ParameterWord after;
  friend bool operator==(const WordChange&, const WordChange&) = default;
};

/// Why a word could not be read or written.
struct WordError {
  enum class Problem {
    noAnswer,
    badReply,         ///< an answer that holds no word: refused, or garbled
    notAcknowledged,  ///< the controller did not say that it took the word
    mismatch,         ///< it said so, but another word is read back
  };
  std::uint8_t address = 0;
  Problem problem = Problem::noAnswer;
  ParameterWord expected;  ///< what was written; not for the first two
  ParameterWord read;      ///< for a mismatch only

  /// "Word 03: 1A2B was written, 0000 was read back".
  std::string describe() const;
};

/// Four hexadecimal digits, the high byte first.
std::string wordText(const ParameterWord& word);

/// Reads the word at `address` with "GP", asking a second time when the answer is no word. The
/// answer is 7 bytes: 0x01, "0", the four digits, 0x0D.
Result<ParameterWord, WordError> readWord(const Access& access, std::uint8_t address);

/// Writes the word with "SP" and reads it back. It went well only when the controller holds the
/// word for certain; after an error it may hold the old word, the new one, or neither.
[[nodiscard]] Result<void, WordError> writeWord(const Access& access, const WordValue& value);

}  // namespace touch
