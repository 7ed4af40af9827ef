#pragma once

#include <fmt/core.h>

#include <cmath>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "support/result.h"

namespace touch::measure {

using Json = nlohmann::ordered_json;

/// One value in a JSON file that is read strictly: each member is named by the reader, and what is
/// left over is refused. The first thing that is wrong is kept, with its path; from then on every
/// reading gives nothing, so that a caller may look once after several readings.
class JsonNode {
 public:
  struct Problem {
    std::string file;
    std::optional<FileError> error;
  };

  JsonNode(const Json& value, Problem& problem) : value_(value), problem_(problem) {}

  bool failed() const { return problem_.error.has_value(); }
  void refuse(std::string expected) const;

  /// For an object: calls `read` with the member, and refuses when it is missing.
  template <typename Read>
  void member(std::string_view name, const Read& read) const {
    if (!optionalMember(name, read)) refuse(fmt::format("the member \"{}\"", name));
  }
  /// The same for one that may be missing; false when it is.
  template <typename Read>
  bool optionalMember(std::string_view name, const Read& read) const {
    if (failed()) return true;
    if (!value_.is_object()) {
      refuse("an object");
      return true;
    }
    const auto found = value_.find(name);
    if (found == value_.end()) return false;
    read(JsonNode(*found, problem_, this, name));
    return true;
  }
  template <typename Read>
  void eachItem(const Read& read) const {
    if (!value_.is_array()) return refuse("an array");
    for (std::size_t i = 0; i < value_.size() && !failed(); ++i)
      read(JsonNode(value_[i], problem_, this, {}, i));
  }
  template <typename Read>
  void eachMember(const Read& read) const {
    if (!value_.is_object()) return refuse("an object");
    for (auto it = value_.begin(); it != value_.end() && !failed(); ++it)
      read(std::string_view(it.key()), JsonNode(it.value(), problem_, this, it.key()));
  }
  /// Refuses members with other names than these.
  void onlyMembers(std::initializer_list<std::string_view> names) const;

  double number(double least, double most) const;
  int integer(int least, int most) const;
  bool truth() const;
  std::string text() const;
  /// A text that is in the table, and its value.
  template <typename Row, std::size_t count>
  auto oneOf(const Row (&rows)[count]) const {
    const std::string* found = value_.get_ptr<const std::string*>();
    std::string names;
    for (const Row& row : rows) {
      if (found && *found == row.name) return row.value;
      names += fmt::format("{}\"{}\"", names.empty() ? "" : ", ", row.name);
    }
    refuse("one of " + names);
    return rows[0].value;
  }

 private:
  JsonNode(const Json& value, Problem& problem, const JsonNode* parent, std::string_view key,
           std::size_t index = 0)
      : value_(value), problem_(problem), parent_(parent), key_(key), index_(index) {}
  std::string path() const;

  const Json& value_;
  Problem& problem_;
  const JsonNode* parent_ = nullptr;
  std::string_view key_;
  std::size_t index_ = 0;
};

/// Parses `text` and lets `read` take it apart. Texts that are no JSON are refused with their line.
template <typename Value, typename Read>
Result<Value> readJson(std::string_view text, const std::string& name, const Read& read);

/// The JSON of a text, or where it is none.
Result<Json> parseJson(std::string_view text, const std::string& name);

template <typename Value, typename Read>
Result<Value> readJson(std::string_view text, const std::string& name, const Read& read) {
  const auto json = parseJson(text, name);
  if (!json) return tl::unexpected(json.error());
  JsonNode::Problem problem{name, std::nullopt};
  Value value = read(JsonNode(*json, problem));
  if (problem.error) return tl::unexpected(*problem.error);
  return value;
}

}  // namespace touch::measure
