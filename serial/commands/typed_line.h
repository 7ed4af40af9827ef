#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/session.h"
#include "serial/scripts/script.h"
#include "support/result.h"

namespace touch {

/// How bytes are typed: as characters with escapes, or in hexadecimal digits.
enum class TypedAs : std::uint8_t { text, hex };

/// A line as it is typed to be sent: \x01OI\r or 01 4F 49 0D.
struct TypedLine {
  TypedAs as = TypedAs::text;
  std::string text{};
  friend bool operator==(const TypedLine&, const TypedLine&) = default;
};

/// What is sent for it, as parseText or parseBytes reads it.
Result<std::vector<std::uint8_t>> bytesOf(const TypedLine& line);

/// The line that sends the command at `position` of the set's list. Nothing for what needs more
/// than a digit, and while one is missing that it needs.
std::optional<TypedLine> listedLine(CommandSet set, std::size_t position,
                                    std::optional<int> digit = std::nullopt);

/// The lines as a script that sends them one after the other, and those that a script sends.
std::string scriptOf(std::span<const TypedLine> lines);
std::vector<TypedLine> linesSentBy(const Script& script);

/// The lines that were sent since the program has started, for the keys Up and Down.
class SendHistory {
 public:
  static constexpr std::size_t mostKept = 500;

  /// The oldest goes when there are too many; the one that was sent last is not kept twice.
  void add(const TypedLine& line);
  /// The one before that which is shown, if any. Behind the newest comes `typed` again.
  std::optional<TypedLine> older(const TypedLine& typed);
  std::optional<TypedLine> newer();
  const std::vector<TypedLine>& lines() const { return lines_; }

 private:
  std::vector<TypedLine> lines_;
  std::size_t back_ = 0;  ///< how far before the end is shown
  TypedLine typed_;
};

}  // namespace touch
