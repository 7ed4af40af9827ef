// What a controller answers, and the texts that come of it: judged, shown, and put into messages.

#include "core/exchange/reply.h"

#include "core/discovery/discovery.h"
#include "core/discovery/identity.h"
#include "core/exchange/frame.h"
#include "fuzz/target.h"
#include "serial/commands/debugger_exchange.h"
#include "support/files/whole_file.h"
#include "support/text/text_encoding.h"

namespace touch::fuzz {

namespace {

void checkReply(const Reply& reply) {
  const std::string text = reply.text();
  require(text.size() + 2 <= std::max<std::size_t>(reply.size(), 2),
          "a text lies between two bytes");
  require(std::none_of(text.begin(), text.end(),
                       [](char c) { return static_cast<std::uint8_t>(c) < 0x20; }),
          "a text is printable");
  require(reply.size() > 3 || text.empty(), "a short reply has no text");
  if (reply.acknowledged()) require(reply.bytes.at(1) == '0', "an acknowledgement says 0");
  require(isUtf8(toUtf8(text)), "a text is shown as UTF-8");
  const std::string model = modelName(text);
  require(model.empty() || model == "first model" || model.starts_with("model variant "),
          "a model has a name");
  if (wantsClosingParameter(text)) require(text.size() >= 5, "firmware has five digits");
  const DebuggerReply shown = shownReply(reply.bytes);
  require(isUtf8(shown.text) && shown.hex.size() == 3 * reply.size(), "a reply is shown whole");
}

void checkEncoding(std::string_view text) {
  const std::string latin1 = utf8FromLatin1(text);
  require(isUtf8(latin1), "Latin-1 becomes UTF-8");
  const std::string utf8 = toUtf8(text);
  require(toUtf8(utf8) == utf8, "what is UTF-8 stays");
  require(utf8 == (isUtf8(text) ? std::string(text) : latin1), "it is one of the two");
  const std::string found = foundText(text);
  require(std::all_of(found.begin(), found.end(), [](char c) { return c >= 0x20 && c < 0x7F; }),
          "what was found is fit for a message");
  std::size_t length = 0;
  for (const std::string_view line : linesOf(text)) {
    require(line.find('\n') == line.npos, "a line has no end in it");
    length += line.size();
  }
  require(length <= text.size(), "lines are parts of the text");
}

void checkFrames(std::string_view text) {
  require(commandFrame(text).bytes().size() == text.size() + 2, "a command is framed");
  require(parameterReadFrame(text).empty() == (text.size() != 2), "an address has two characters");
  const auto part = [&text](std::size_t from) {
    return text.substr(std::min(from, text.size()), 2);
  };
  require(parameterWriteFrame(part(0), part(2), part(4)).empty() == (text.size() < 6),
          "three parts have two characters each");
  if (isServedName(text)) require(text.size() >= 9, "a served name is long enough");
}

}  // namespace

void execute(std::span<const std::uint8_t> bytes) {
  checkReply({{bytes.begin(), bytes.end()}});
  checkEncoding(textOf(bytes));
  checkFrames(textOf(bytes));
}

}  // namespace touch::fuzz
