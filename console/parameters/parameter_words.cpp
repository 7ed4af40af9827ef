#include "console/parameters/parameter_words.h"

#include "core/exchange/exchange.h"
#include "support/clock.h"
#include "support/text/hex.h"
#include "support/text/language.h"

namespace touch {

std::string WordError::describe() const {
  const std::string word = hexByte(address);
  switch (problem) {
    case Problem::noAnswer:
      return filled(say("parameters", "Word %1: the controller does not answer"), {word});
    case Problem::badReply:
      return filled(say("parameters", "Word %1: the controller's answer holds no parameter word"),
                    {word});
    case Problem::notAcknowledged:
      return filled(say("parameters",
                        "Word %1: the controller did not acknowledge %2; if its parameters are "
                        "locked, Reset opens the lock"),
                    {word, wordText(expected)});
    case Problem::mismatch:
      break;
  }
  return filled(say("parameters", "Word %1: %2 was written, %3 was read back"),
                {word, wordText(expected), wordText(read)});
}

std::string wordText(const ParameterWord& word) {
  return hexByte(word.high) + hexByte(word.low);
}

Result<ParameterWord, WordError> readWord(const Access& access, std::uint8_t address) {
  const Frame frame = parameterReadFrame(hexByte(address));
  Connection connection(access);
  connection.flush();
  Reply reply = ask(connection, access.clock, frame, {.wait = parameterWait});
  auto word = reply.word();
  if (!word) {
    reply = ask(connection, access.clock, frame, {.wait = parameterWait});
    word = reply.word();
    if (word) {
      // The second question is answered too. An answer has no address, and would be taken for the
      // next word.
      access.clock.delay(parameterWait);
      connection.flush();
    }
  }
  if (word) return *word;
  const auto problem =
      reply.size() == 0 ? WordError::Problem::noAnswer : WordError::Problem::badReply;
  return tl::unexpected(WordError{address, problem, {}, {}});
}

Result<void, WordError> writeWord(const Access& access, const WordValue& value) {
  const auto& [address, word] = value;
  const Frame frame = parameterWriteFrame(hexByte(address), hexByte(word.high), hexByte(word.low));
  if (!exchangeAcknowledged(access, frame)) {
    return tl::unexpected(WordError{address, WordError::Problem::notAcknowledged, word, {}});
  }
  const auto read = readWord(access, address);
  if (!read) return tl::unexpected(WordError{address, read.error().problem, word, {}});
  if (*read != word)
    return tl::unexpected(WordError{address, WordError::Problem::mismatch, word, *read});
  return {};
}

}  // namespace touch
