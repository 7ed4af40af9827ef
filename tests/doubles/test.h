#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <chrono>
#include <cmath>
#include <csignal>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

/// What every test speaks in.
namespace touch::test {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using testing::AllOf, testing::AnyOf, testing::Contains, testing::ContainsRegex, testing::Each,
    testing::ElementsAre, testing::EndsWith, testing::HasSubstr, testing::IsSupersetOf,
    testing::MatchesRegex, testing::Not, testing::StartsWith;

using Bytes = std::vector<std::uint8_t>;
using Lines = std::vector<std::string>;

template <typename T>
std::vector<T> operator+(std::vector<T> first, const std::vector<T>& second) {
  first.insert(first.end(), second.begin(), second.end());
  return first;
}
template <typename T>
std::vector<T> times(std::size_t count, const std::vector<T>& part) {
  return count == 0 ? std::vector<T>() : part + times(count - 1, part);
}
/// The lines in which the expression is found, and all others.
inline Lines matching(Lines lines, const std::string& expression, bool wanted = true) {
  const auto matches = ContainsRegex(expression);
  std::erase_if(lines, [&](const auto& line) { return testing::Value(line, matches) != wanted; });
  return lines;
}
inline Lines without(Lines lines, const std::string& expression) {
  return matching(std::move(lines), expression, false);
}

inline Bytes bytesOf(std::string_view text) {
  return {text.begin(), text.end()};
}
/// A reply as controllers make them: 0x01, the text, 0x0D.
inline Bytes replyOf(std::string_view text) {
  return bytesOf("\x01" + std::string(text) + "\r");
}
inline const Bytes acknowledgement = replyOf("0");
inline const Bytes refusal = replyOf("1");

/// Why something did not work, in its own words; empty when it did. For what returns a value or an
/// error, and for what returns an error or nothing.
template <typename T>
std::string whyNot(const T& result) {
  const auto words = [](const auto& error) -> std::string {
    if constexpr (requires { error.describe(); }) {
      return error.describe();
    } else {
      return error;
    }
  };
  if constexpr (requires { result.error(); }) {
    return result ? "" : words(result.error());
  } else {
    return result ? words(*result) : "";
  }
}

}  // namespace touch::test
