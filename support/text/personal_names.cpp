#include "support/text/personal_names.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace touch {

namespace {

constexpr std::size_t shortestHost =
    3;  // a shorter one would be found in places that do not mean it

bool isPartOfName(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-' ||
         c == '_' || static_cast<unsigned char>(c) >= 0x80;
}

bool standsAlone(std::string_view text, std::size_t at, std::size_t size) {
  const bool before = at > 0 && isPartOfName(text[at - 1]);
  const bool after = at + size < text.size() && isPartOfName(text[at + size]);
  return !before && !after;
}

void replaceWord(std::string& text, std::string_view word, std::string_view with) {
  for (std::size_t at = text.find(word); at != text.npos; at = text.find(word, at)) {
    // "/home/ann" is no part of "/home/anna", and "/root" none of "/srv/root".
    if (standsAlone(text, at, word.size())) {
      text.replace(at, word.size(), with);
      at += with.size();
    } else {
      at += word.size();
    }
  }
}

/// As it stands in JSON; all of it is ASCII there if `ascii`.
std::string inJson(const std::string& path, bool ascii) {
  const std::string quoted =
      nlohmann::json(path).dump(-1, ' ', ascii, nlohmann::json::error_handler_t::replace);
  return quoted.substr(1, quoted.size() - 2);
}

}  // namespace

std::string withoutPersonalNames(std::string_view text, const PersonalNames& names) {
  std::string left(text);
  for (const std::string& home : names.homeFolders) {
    for (const bool ascii : {true, false})
      replaceWord(left, inJson(home, ascii), "~");
    replaceWord(left, home, "~");
  }
  if (names.host.size() >= shortestHost) replaceWord(left, names.host, "(this computer)");
  return left;
}

}  // namespace touch
