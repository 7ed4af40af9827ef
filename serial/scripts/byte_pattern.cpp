#include "serial/scripts/byte_pattern.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

#include "support/text/language.h"

namespace touch {

namespace {

constexpr std::size_t longestPattern = 4096;

/// A piece of the text: a byte, or "??" or "*", which have none.
struct Token {
  std::optional<std::uint8_t> byte;
  bool isGap = false;
};

std::optional<std::uint8_t> hexPair(std::string_view text) {
  std::uint8_t value = 0;
  if (text.size() < 2) return std::nullopt;
  const auto [end, failed] = std::from_chars(text.data(), text.data() + 2, value, 16);
  if (failed != std::errc() || end != text.data() + 2) return std::nullopt;
  return value;
}

/// The character behind a "\"; takes what belongs to it off `text`.
std::optional<std::uint8_t> escaped(std::string_view& text) {
  if (text.empty()) return std::nullopt;
  const char letter = text.front();
  text.remove_prefix(1);
  switch (letter) {
    case 'r':
      return '\r';
    case 'n':
      return '\n';
    case 't':
      return '\t';
    case '\\':
    case '"':
      return static_cast<std::uint8_t>(letter);
    case 'x': {
      const auto value = hexPair(text);
      if (value) text.remove_prefix(2);
      return value;
    }
    default:
      return std::nullopt;
  }
}

/// The byte that a character or an escape stands for; takes it off `text`. Empty: it is wrong.
std::optional<std::uint8_t> takeCharacter(std::string_view& text) {
  const char letter = text.front();
  text.remove_prefix(1);
  return letter == '\\' ? escaped(text) : static_cast<std::uint8_t>(letter);
}

/// What stands between quotes; takes it and the second quote off `text`. Empty: it is wrong.
std::optional<std::vector<Token>> quoted(std::string_view& text) {
  std::vector<Token> tokens;
  while (!text.empty()) {
    if (text.front() == '"') {
      text.remove_prefix(1);
      return tokens;
    }
    const auto byte = takeCharacter(text);
    if (!byte) return std::nullopt;
    tokens.push_back({*byte});
  }
  return std::nullopt;
}

auto wrong(std::string expected, std::string_view found = {}) {
  return tl::unexpected(FileError{{}, 0, std::move(expected), std::string(found)});
}

auto tooLong(std::string_view found) {
  return wrong(say("scripts", "at most 4096 bytes"), found);
}

Result<std::vector<Token>> tokensOf(std::string_view text, bool isPattern) {
  std::vector<Token> tokens;
  while (true) {
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    if (text.empty()) return tokens;
    const std::string_view here = text;
    if (text.front() == '"') {
      text.remove_prefix(1);
      const auto more = quoted(text);
      if (!more) {
        return wrong(say("scripts", "text in quotes with \\r, \\n, \\t, \\\\, \\\" or \\xNN"),
                     here);
      }
      tokens.insert(tokens.end(), more->begin(), more->end());
    } else if (isPattern && text.starts_with("??")) {
      tokens.push_back({});
      text.remove_prefix(2);
    } else if (isPattern && text.starts_with('*')) {
      tokens.push_back({std::nullopt, true});
      text.remove_prefix(1);
    } else if (const auto byte = hexPair(text)) {
      tokens.push_back({*byte});
      text.remove_prefix(2);
    } else {
      return wrong(isPattern ? say("scripts", "two hexadecimal digits, text in quotes, ?? or *")
                             : say("scripts", "two hexadecimal digits or text in quotes"),
                   here);
    }
    if (tokens.size() > longestPattern) return tooLong(here);
  }
}

}  // namespace

Result<std::vector<std::uint8_t>> parseBytes(std::string_view text) {
  const auto tokens = tokensOf(text, false);
  if (!tokens) return tl::unexpected(tokens.error());
  std::vector<std::uint8_t> bytes;
  bytes.reserve(tokens->size());
  for (const Token& token : *tokens)
    bytes.push_back(*token.byte);
  if (bytes.empty()) return wrong(say("scripts", "at least one byte"));
  return bytes;
}

Result<std::vector<std::uint8_t>> parseText(std::string_view text) {
  std::vector<std::uint8_t> bytes;
  while (!text.empty()) {
    const std::string_view here = text;
    const auto byte = takeCharacter(text);
    if (!byte) return wrong(say("scripts", "text with \\r, \\n, \\t, \\\\, \\\" or \\xNN"), here);
    bytes.push_back(*byte);
    if (bytes.size() > longestPattern) return tooLong(here);
  }
  if (bytes.empty()) return wrong(say("scripts", "at least one byte"));
  return bytes;
}

Result<BytePattern> BytePattern::parse(std::string_view text) {
  const auto tokens = tokensOf(text, true);
  if (!tokens) return tl::unexpected(tokens.error());
  BytePattern pattern;
  bool afterGap = false;
  for (const Token& token : *tokens) {
    if (token.isGap) {
      afterGap = true;
      continue;
    }
    pattern.parts_.push_back({token.byte.value_or(0), !token.byte, afterGap});
    afterGap = false;
  }
  if (pattern.parts_.empty()) return wrong(say("scripts", "at least one byte"));
  return pattern;
}

bool BytePattern::Search::take(std::uint8_t byte) {
  const auto& parts = pattern_->parts_;
  bool ended = false;
  // From behind, so that no byte counts for two parts.
  for (std::size_t i = parts.size(); i-- > 0;) {
    const Part& part = parts[i];
    const bool isHere = i == 0 || reached_[i];
    // A place that was reached stays reached when any bytes may follow.
    if (i > 0 && !part.afterGap) reached_[i] = false;
    if (!isHere || (!part.isAny && part.byte != byte)) continue;
    if (i + 1 == parts.size()) {
      ended = true;
    } else {
      reached_[i + 1] = true;
    }
  }
  if (ended) reached_.assign(parts.size(), false);
  return ended;
}

}  // namespace touch
