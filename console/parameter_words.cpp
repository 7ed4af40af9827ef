#include "console/parameter_words.h"

#include <charconv>
#include <string_view>

#include "core/exchange.h"
#include "core/hex.h"

namespace touch {

namespace {

constexpr std::size_t wordReplySize = 7;

std::optional<ParameterWord> wordOf(const Reply& reply) {
  if (reply.size() != wordReplySize || reply.bytes.front() != 0x01 || reply.bytes.back() != 0x0D ||
      !reply.acknowledged()) {
    return std::nullopt;
  }
  const std::string digits(reply.bytes.begin() + 2, reply.bytes.end() - 1);
  unsigned value = 0;
  const auto [end, failed] =
      std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  if (failed != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return ParameterWord{static_cast<std::uint8_t>(value >> 8),
                       static_cast<std::uint8_t>(value & 0xFF)};
}

}  // namespace

std::string WordError::describe() const {
  std::string text = "Word " + hexByte(address) + ": ";
  switch (problem) {
    case Problem::noAnswer:
      return text + "the controller does not answer";
    case Problem::badReply:
      return text + "the controller's answer holds no parameter word";
    case Problem::notAcknowledged:
      return text + "the controller did not acknowledge " + wordText(expected) +
             "; if its parameters are locked, Reset opens the lock";
    case Problem::mismatch:
      return text + wordText(expected) + " was written, " + wordText(read) + " was read back";
  }
  return text;
}

std::string wordText(const ParameterWord& word) {
  return hexByte(word.high) + hexByte(word.low);
}

Result<ParameterWord, WordError> readWord(const Access& access, std::uint8_t address) {
  const Frame frame = parameterReadFrame(hexByte(address));
  Connection connection(access);
  connection.flush();
  Reply reply = ask(connection, access.clock, frame, parameterWait);
  auto word = wordOf(reply);
  if (!word) {
    reply = ask(connection, access.clock, frame, parameterWait);
    word = wordOf(reply);
  }
  if (word) return *word;
  const auto problem =
      reply.size() == 0 ? WordError::Problem::noAnswer : WordError::Problem::badReply;
  return WordError{address, problem, {}, {}};
}

std::optional<WordError> writeWord(const Access& access, const WordValue& value) {
  const auto& [address, word] = value;
  const Frame frame = parameterWriteFrame(hexByte(address), hexByte(word.high), hexByte(word.low));
  if (!exchangeAcknowledged(access, frame)) {
    return WordError{address, WordError::Problem::notAcknowledged, word, {}};
  }
  const auto read = readWord(access, address);
  if (!read) return WordError{address, read.error().problem, word, {}};
  if (*read != word) return WordError{address, WordError::Problem::mismatch, word, *read};
  return std::nullopt;
}

}  // namespace touch
