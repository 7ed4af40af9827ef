#pragma once

#include <string>
#include <string_view>

namespace touch {

/// `text` as it stands between the tags of HTML and SVG, and in the quotes of their attributes.
inline std::string markupText(std::string_view text) {
  std::string result;
  for (const char character : text) {
    switch (character) {
      case '&':
        result += "&amp;";
        break;
      case '<':
        result += "&lt;";
        break;
      case '>':
        result += "&gt;";
        break;
      case '"':
        result += "&quot;";
        break;
      default:
        result += character;
    }
  }
  return result;
}

}  // namespace touch
