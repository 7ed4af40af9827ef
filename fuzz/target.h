#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <string_view>

namespace touch::fuzz {

/// One execution of the target that the program is made of: feeds `bytes`, which are nobody's
/// friend, to the code under test. Whatever they are, it returns. The same bytes do the same each
/// time.
void execute(std::span<const std::uint8_t> bytes);

/// Ends the program where a property does not hold, as a crash would.
inline void require(bool holds, const char* property) {
  if (holds) return;
  std::fprintf(stderr, "This does not hold: %s\n", property);
  std::abort();
}

/// A text that is read says what is wrong, or is the same when it is written and read again.
template <typename Parse, typename Write>
void requireRoundTrip(std::string_view text, const Parse& parse, const Write& write) {
  const auto content = parse(text);
  if (!content) return require(!content.error().describe().empty(), "an error says what is wrong");
  const auto again = parse(write(*content));
  require(again && *again == *content, "what is written is read as it was");
}

inline std::string_view textOf(std::span<const std::uint8_t> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

/// The bytes of an execution, used up from the front. When they are used up, all that is asked for
/// is 0 and empty.
class Input {
 public:
  explicit Input(std::span<const std::uint8_t> bytes) : rest_(bytes) {}

  bool empty() const { return rest_.empty(); }
  std::span<const std::uint8_t> rest() const { return rest_; }

  std::span<const std::uint8_t> take(std::size_t count) {
    const auto taken = rest_.first(std::min(count, rest_.size()));
    rest_ = rest_.subspan(taken.size());
    return taken;
  }
  std::uint8_t byte() {
    const auto taken = take(1);
    return taken.empty() ? std::uint8_t{0} : taken[0];
  }
  bool flag() { return (byte() & 1) != 0; }
  /// From 0 to `limit` - 1, at most 255.
  std::size_t below(std::size_t limit) { return byte() % limit; }
  /// Any number of 32 bits.
  std::int32_t number() {
    std::uint32_t value = 0;
    for (int i = 0; i < 4; ++i)
      value = value << 8 | byte();
    return static_cast<std::int32_t>(value);
  }

 private:
  std::span<const std::uint8_t> rest_;
};

}  // namespace touch::fuzz
