#include "measure/files/json_reader.h"

#include <algorithm>

#include "support/files/whole_file.h"

namespace touch::measure {

std::string JsonNode::path() const {
  if (!parent_) return {};
  const std::string before = parent_->path();
  if (key_.empty()) return fmt::format("{}[{}]", before, index_);
  return before.empty() ? std::string(key_) : fmt::format("{}.{}", before, key_);
}

void JsonNode::refuse(std::string expected) const {
  if (failed()) return;
  const std::string at = path();
  const std::string where = at.empty() ? problem_.file : fmt::format("{}, {}", problem_.file, at);
  const std::string found = value_.is_object()  ? "an object"
                            : value_.is_array() ? "an array"
                                                : foundText(value_.dump(-1, ' ', true));
  problem_.error = FileError{where, 0, std::move(expected), found};
}

void JsonNode::onlyMembers(std::initializer_list<std::string_view> names) const {
  eachMember([&](std::string_view name, const JsonNode& member) {
    if (std::ranges::find(names, name) == names.end()) member.refuse("no member of this name");
  });
}

double JsonNode::number(double least, double most) const {
  if (value_.is_number()) {
    const auto found = value_.get<double>();
    if (found >= least && found <= most) return found;
  }
  refuse(fmt::format("a number from {} to {}", least, most));
  return least;
}

int JsonNode::integer(int least, int most) const {
  if (value_.is_number_integer()) {
    const auto found = value_.get<double>();
    if (found >= least && found <= most) return static_cast<int>(found);
  }
  refuse(fmt::format("a whole number from {} to {}", least, most));
  return least;
}

bool JsonNode::truth() const {
  if (!value_.is_boolean()) refuse("true or false");
  return value_.is_boolean() && value_.get<bool>();
}

std::string JsonNode::text() const {
  constexpr std::size_t longest = 1000;
  const auto* found = value_.get_ptr<const std::string*>();
  if (found && found->size() <= longest) return *found;
  refuse(fmt::format("a text of at most {} bytes", longest));
  return {};
}

Result<Json> parseJson(std::string_view text, const std::string& name) {
  try {
    return Json::parse(text);
  } catch (const Json::parse_error& error) {
    const auto before = text.substr(0, error.byte > 0 ? error.byte - 1 : 0);
    const auto line = 1 + std::ranges::count(before, '\n');
    const std::string found =
        before.size() < text.size()
            ? foundText(text.substr(before.size(), std::size_t{24}).substr(0, 24))
            : "the end of the file";
    return tl::unexpected(FileError{name, static_cast<int>(line), "JSON", found});
  } catch (const Json::out_of_range&) {
    return tl::unexpected(FileError{name, 0, "numbers below 1.8e308", "a larger one"});
  }
}

}  // namespace touch::measure
