#pragma once

#include <optional>
#include <string>
#include <utility>
#include <variant>

#include "support/text/language.h"

namespace touch {

/// A value, or the reason why there is none. The members are those of std::expected, which C++20
/// lacks.
template <typename T, typename E>
class Result {
 public:
  Result(T value) : content_(std::in_place_index<0>, std::move(value)) {}
  Result(E error) : content_(std::in_place_index<1>, std::move(error)) {}

  bool has_value() const { return content_.index() == 0; }
  explicit operator bool() const { return has_value(); }
  T& value() { return std::get<0>(content_); }
  const T& value() const { return std::get<0>(content_); }
  const E& error() const { return std::get<1>(content_); }
  T& operator*() { return value(); }
  const T& operator*() const { return value(); }
  T* operator->() { return &value(); }
  const T* operator->() const { return &value(); }

 private:
  std::variant<T, E> content_;
};

/// What is wrong with a file: which one, where in it, what was expected, what stands there instead.
struct FileError {
  std::string file;
  int line = 0;  ///< counted from 1; 0 when the whole file is meant
  std::string expected;
  std::string found;

  /// One sentence for the user: "errmsg.txt, line 3: expected ..., found ...".
  std::string describe() const {
    const std::string place =
        line > 0 ? filled(say("files", "%1, line %2"), {file, std::to_string(line)}) : file;
    return found.empty()
               ? filled(say("files", "%1: expected %2"), {place, expected})
               : filled(say("files", "%1: expected %2, found %3"), {place, expected, found});
  }
};

}  // namespace touch
