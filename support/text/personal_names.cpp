#include "support/text/personal_names.h"

#include <algorithm>

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

std::string inJson(std::string_view path) {
  std::string doubled;
  for (const char c : path)
    doubled.append(c == '\\' ? 2 : 1, c);
  return doubled;
}

}  // namespace

std::string withoutPersonalNames(std::string_view text, const PersonalNames& names) {
  std::string left(text);
  for (const std::string& home : names.homeFolders) {
    replaceWord(left, inJson(home), "~");
    replaceWord(left, home, "~");
  }
  if (names.host.size() >= shortestHost) replaceWord(left, names.host, "(this computer)");
  return left;
}

}  // namespace touch
