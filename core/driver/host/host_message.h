#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "support/result.h"

namespace touch {

// What a program and its driver host say to each other over a pipe. Every message is four bytes
// with the length of what follows, lowest first, and an array in CBOR: a name, then integers of 32
// bits and byte strings.
//
//   program                               host
//   bind, version, path or empty          bound, version, simulated, path, missing names …
//                                         refused, reason, path where it was found or empty
//   an operation, its arguments;          result, value, each buffer as it is afterwards
//     text and buffers as bytes           lacks, name of the operation
//   simulate, request                     answer, done, text

/// Raised when a message changes, so that the parts of two versions never misunderstand each other.
inline constexpr std::int32_t hostProtocol = 1;

/// Far more than any message takes: the longest path, and every operation's name.
inline constexpr std::size_t longestHostMessage = 8192;

using HostValue = std::variant<std::int32_t, std::string>;

struct HostMessage {
  std::string name;
  std::vector<HostValue> values;

  /// The value at `index` if it is of that type, else null.
  template <typename T>
  const T* at(std::size_t index) const {
    return index < values.size() ? std::get_if<T>(&values[index]) : nullptr;
  }
  friend bool operator==(const HostMessage&, const HostMessage&) = default;
};

/// As it is sent. Nothing when it is longer than any message may be.
std::optional<std::string> encoded(const HostMessage& message);

/// Puts messages together from bytes as they come.
class HostMessageReader {
 public:
  void add(std::string_view bytes) { bytes_.append(bytes); }
  /// The next whole message, or nothing yet; the error says what was expected. After one nothing
  /// can be read any more.
  Result<std::optional<HostMessage>, std::string> next();

 private:
  std::string bytes_;
};

}  // namespace touch
