#include "support/text/text_encoding.h"

#include <cstdint>

#include "support/text/hex.h"

namespace touch {

namespace {

struct Lead {
  std::size_t following;
  std::uint8_t lowestSecond;
  std::uint8_t highestSecond;
};

/// How many bytes follow a lead byte and where the second must lie, which shuts out overlong forms
/// and surrogates.
bool readLead(std::uint8_t byte, Lead& lead) {
  if (byte < 0x80)
    lead = {0, 0, 0};
  else if (byte >= 0xC2 && byte <= 0xDF)
    lead = {1, 0x80, 0xBF};
  else if (byte == 0xE0)
    lead = {2, 0xA0, 0xBF};
  else if (byte == 0xED)
    lead = {2, 0x80, 0x9F};
  else if (byte >= 0xE1 && byte <= 0xEF)
    lead = {2, 0x80, 0xBF};
  else if (byte == 0xF0)
    lead = {3, 0x90, 0xBF};
  else if (byte >= 0xF1 && byte <= 0xF3)
    lead = {3, 0x80, 0xBF};
  else if (byte == 0xF4)
    lead = {3, 0x80, 0x8F};
  else
    return false;
  return true;
}

std::string hexOf(char32_t character) {
  return hexByte(static_cast<std::uint8_t>(character >> 8U)) +
         hexByte(static_cast<std::uint8_t>(character & 0xFFU));
}

/// `utf8`, which is valid, with `escape` of the characters that need it in their place.
template <typename NeedsEscape, typename Escape>
std::string escaped(std::string_view utf8, const NeedsEscape& needsEscape, const Escape& escape) {
  std::string text;
  text.reserve(utf8.size());
  for (std::size_t i = 0; i < utf8.size();) {
    const auto byte = static_cast<std::uint8_t>(utf8[i]);
    const std::size_t length = byte < 0x80 ? 1 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
    // The lead byte's mark takes a bit for each byte, and one more.
    char32_t character = length == 1 ? byte : byte & (0x7FU >> length);
    for (std::size_t k = 1; k < length; ++k)
      character = character << 6U | (static_cast<std::uint8_t>(utf8[i + k]) & 0x3FU);
    if (needsEscape(character)) {
      text += escape(character);
    } else {
      text += utf8.substr(i, length);
    }
    i += length;
  }
  return text;
}

}  // namespace

bool isUtf8(std::string_view text) {
  for (std::size_t i = 0; i < text.size();) {
    Lead lead{};
    if (!readLead(static_cast<std::uint8_t>(text[i]), lead)) return false;
    ++i;
    for (std::size_t k = 0; k < lead.following; ++k, ++i) {
      if (i == text.size()) return false;
      const auto byte = static_cast<std::uint8_t>(text[i]);
      const std::uint8_t lowest = k == 0 ? lead.lowestSecond : 0x80;
      const std::uint8_t highest = k == 0 ? lead.highestSecond : 0xBF;
      if (byte < lowest || byte > highest) return false;
    }
  }
  return true;
}

std::string utf8FromLatin1(std::string_view text) {
  std::string utf8;
  utf8.reserve(text.size());
  for (const char c : text) {
    const auto byte = static_cast<std::uint8_t>(c);
    if (byte < 0x80) {
      utf8.push_back(c);
    } else {
      utf8.push_back(static_cast<char>(0xC0 | (byte >> 6)));
      utf8.push_back(static_cast<char>(0x80 | (byte & 0x3F)));
    }
  }
  return utf8;
}

std::string toUtf8(std::string_view text) {
  return isUtf8(text) ? std::string(text) : utf8FromLatin1(text);
}

std::string printable(std::string_view text) {
  return escaped(toUtf8(text), isObeyed, [](char32_t character) {
    return character < 0x100 ? "\\x" + hexByte(static_cast<std::uint8_t>(character))
                             : "\\u" + hexOf(character);
  });
}

std::string printableLines(std::string_view text) {
  std::string lines;
  for (;;) {
    const auto end = text.find('\n');
    lines += printable(text.substr(0, end));
    if (end == text.npos) return lines;
    lines += '\n';
    text.remove_prefix(end + 1);
  }
}

std::string jsonText(std::string_view text) {
  const auto needsEscape = [](char32_t character) {
    return isObeyed(character) || character == '"' || character == '\\';
  };
  return '"' +
         escaped(toUtf8(text), needsEscape,
                 [](char32_t character) {
                   return character == '"'    ? std::string("\\\"")
                          : character == '\\' ? std::string("\\\\")
                                              : "\\u" + hexOf(character);
                 }) +
         '"';
}

std::filesystem::path pathNamed(std::string_view utf8) {
  return std::u8string(utf8.begin(), utf8.end());
}

std::filesystem::path absolutePathNamed(std::string_view utf8) {
  const auto named = pathNamed(utf8);
  std::error_code unknown;
  auto path = std::filesystem::absolute(named, unknown);
  return unknown ? named : path;
}

std::string utf8Of(const std::filesystem::path& path) {
  const auto text = path.u8string();
  return {text.begin(), text.end()};
}

std::string_view withoutByteOrderMark(std::string_view text) {
  return text.starts_with("\xEF\xBB\xBF") ? text.substr(3) : text;
}

}  // namespace touch
