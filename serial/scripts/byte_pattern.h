#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "support/result.h"

namespace touch {

/// Bytes as they are typed: pairs of hexadecimal digits and quoted text with the escapes \r, \n,
/// \t, \\, \" and \xNN, in any order, with blanks between: 01 "UT\r".
/// The error says what was expected and found; file and line are the caller's.
Result<std::vector<std::uint8_t>> parseBytes(std::string_view text);

/// Text as it is typed, without quotes around it but with the same escapes: \x01UT\r.
Result<std::vector<std::uint8_t>> parseText(std::string_view text);

/// What a reply is to look like: bytes, "??" for any one byte, "*" for any number of them.
class BytePattern {
 public:
  /// `text` as parseBytes has it, with "??" and "*" among the bytes. At least one byte or "??".
  static Result<BytePattern> parse(std::string_view text);

  /// Finds the pattern in a stream that comes byte by byte, wherever it begins.
  class Search {
   public:
    explicit Search(const BytePattern& pattern)
        : pattern_(&pattern), reached_(pattern.parts_.size()) {}
    /// True when the pattern ends with this byte. The search then begins anew.
    bool take(std::uint8_t byte);

   private:
    const BytePattern* pattern_;
    std::vector<bool> reached_;  ///< the parts before each of these have been found
  };

 private:
  /// One byte, and whether any bytes may come before it.
  struct Part {
    std::uint8_t byte = 0;
    bool isAny = false;
    bool afterGap = false;
  };
  std::vector<Part> parts_;
};

}  // namespace touch
