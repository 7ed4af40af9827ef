#include "serial/commands/typed_line.h"

#include <utility>

#include "serial/commands/command_sets.h"
#include "serial/scripts/byte_pattern.h"
#include "support/text/hex.h"

namespace touch {

namespace {

/// As parseText reads them.
std::string escapedText(std::string_view bytes) {
  std::string text;
  for (const char letter : bytes) {
    if (letter == '\r') {
      text += "\\r";
    } else if (letter >= ' ' && letter <= '~' && letter != '\\') {
      text += letter;
    } else {
      text.append("\\x").append(hexByte(static_cast<std::uint8_t>(letter)));
    }
  }
  return text;
}

}  // namespace

Result<std::vector<std::uint8_t>> bytesOf(const TypedLine& line) {
  return line.as == TypedAs::text ? parseText(line.text) : parseBytes(line.text);
}

std::optional<TypedLine> listedLine(CommandSet set, std::size_t position,
                                    std::optional<int> digit) {
  const auto entries = cm1set(set);
  if (position >= entries.size()) return std::nullopt;
  if (set == CommandSet::e02) {
    const std::string packet = e02Packet(position, std::nullopt);
    return packet.empty() ? std::nullopt : std::optional(TypedLine{.text = escapedText(packet)});
  }
  const std::string_view entry = entries[position];
  const auto command = commandWord(entry);
  if (entry == lineChangeEntry || panelsFor(set, entry).address) return std::nullopt;
  if (command == "Uu") return TypedLine{.text = escapedText(queryPacket)};
  if (needsDigit(command) && !digit) return std::nullopt;
  const std::string argument = needsDigit(command) ? std::to_string(*digit) : std::string();
  return TypedLine{.text = "\\x01" + std::string(command) + argument + "\\r"};
}

std::string scriptOf(std::span<const TypedLine> lines) {
  std::string script = "touch script 1\n";
  for (const TypedLine& line : lines) {
    const auto bytes = bytesOf(line);
    if (!bytes) continue;
    if (line.as == TypedAs::hex) {
      script += "send " + line.text + '\n';
      continue;
    }
    std::string quoted;
    for (const char letter : escapedText(std::string(bytes->begin(), bytes->end())))
      quoted.append(letter == '"' ? "\\" : "").append(1, letter);
    script += "send \"" + quoted + "\"\n";
  }
  return script;
}

std::vector<TypedLine> linesSentBy(const Script& script) {
  std::vector<TypedLine> lines;
  std::vector<const RepeatStep*> repeats;
  for (const ScriptStep& step : script.steps) {
    if (const auto* const repeat = std::get_if<RepeatStep>(&step.action)) repeats.push_back(repeat);
    if (std::holds_alternative<EndStep>(step.action)) repeats.pop_back();
    const auto* const send = std::get_if<SendStep>(&step.action);
    if (send == nullptr) continue;
    std::string bytes = send->bytes;
    for (const RepeatStep* const repeat : repeats)
      bytes = withNumber(std::move(bytes), *repeat, repeat->first);
    const std::string inner(bytes.size() < 2 ? bytes : bytes.substr(1, bytes.size() - 2));
    const TypedLine text{TypedAs::text, inner};
    // One text in quotes and nothing else comes back as text.
    const TypedLine hex{TypedAs::hex, std::string(bytes)};
    const auto asText = bytesOf(text);
    const auto asHex = bytesOf(hex);
    const bool isText =
        bytes.starts_with('"') && bytes.ends_with('"') && asText && asHex && *asText == *asHex;
    lines.push_back(isText ? text : hex);
  }
  return lines;
}

void SendHistory::add(const TypedLine& line) {
  back_ = 0;
  if (!lines_.empty() && lines_.back() == line) return;
  if (lines_.size() == mostKept) lines_.erase(lines_.begin());
  lines_.push_back(line);
}

std::optional<TypedLine> SendHistory::older(const TypedLine& typed) {
  if (back_ == lines_.size()) return std::nullopt;
  if (back_ == 0) typed_ = typed;
  ++back_;
  return lines_[lines_.size() - back_];
}

std::optional<TypedLine> SendHistory::newer() {
  if (back_ == 0) return std::nullopt;
  --back_;
  return back_ == 0 ? typed_ : lines_[lines_.size() - back_];
}

}  // namespace touch
