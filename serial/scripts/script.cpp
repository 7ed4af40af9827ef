#include "serial/scripts/script.h"

#include <algorithm>
#include <array>
#include <utility>

#include "serial/scripts/script_listener.h"
#include "support/files/whole_file.h"
#include "support/text/decimal.h"
#include "support/text/hex.h"
#include "support/text/language.h"

namespace touch {

namespace {

using namespace std::chrono_literals;

constexpr std::string_view heading = "touch script 1";
constexpr std::size_t largestScript = std::size_t{1} << 20U;
constexpr int mostRepeats = 1'000'000;
constexpr int longestTime = 86'400'000;  // a day, in milliseconds
constexpr ScriptTime usualWait = 1s;

using Action = ScriptStep::Action;

std::string_view trimmed(std::string_view text) {
  const auto begin = text.find_first_not_of(" \t\r");
  if (begin == text.npos) return {};
  return text.substr(begin, text.find_last_not_of(" \t\r") + 1 - begin);
}

/// Where `part` stands outside quotes, the last time; npos: nowhere.
std::size_t lastOutsideQuotes(std::string_view text, std::string_view part) {
  std::size_t found = text.npos;
  bool isQuoted = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (isQuoted && text[i] == '\\') {
      ++i;
    } else if (text[i] == '"') {
      isQuoted = !isQuoted;
    } else if (!isQuoted && text.substr(i).starts_with(part)) {
      found = i;
    }
  }
  return found;
}

std::string_view withoutComment(std::string_view line) {
  for (auto sign = lastOutsideQuotes(line, "#"); sign != line.npos;
       sign = lastOutsideQuotes(line, "#"))
    line = line.substr(0, sign);
  return trimmed(line);
}

/// Takes the first word off `text`.
std::string_view takeWord(std::string_view& text) {
  const auto end = std::min(text.find_first_of(" \t"), text.size());
  const auto word = text.substr(0, end);
  text = trimmed(text.substr(end));
  return word;
}

/// File and line are filled in where they are known.
auto refuse(std::string_view expected, std::string_view found) {
  return tl::unexpected(FileError{{}, 0, std::string(expected), std::string(found)});
}

Result<ScriptTime> parseTime(std::string_view text) {
  const std::string_view whole = text;
  const auto number = takeWord(text);
  const int factor = text == "ms" ? 1 : text == "s" ? 1000 : 0;
  const auto value = parseDecimal(number, 0, factor > 0 ? longestTime / factor : 0);
  if (!value || factor == 0)
    return refuse(say("scripts", "a time up to a day, such as 200 ms or 5 s"), whole);
  return ScriptTime(*value * factor);
}

/// A step with the time that stands behind `word`, if any.
struct Timed {
  std::string_view rest;
  ScriptTime time = usualWait;
};
Result<Timed> splitTime(std::string_view text, std::string_view word) {
  const auto at = lastOutsideQuotes(text, word);
  if (at == text.npos) return Timed{text};
  const auto time = parseTime(trimmed(text.substr(at + word.size())));
  if (!time) return tl::unexpected(time.error());
  return Timed{trimmed(text.substr(0, at)), *time};
}

Result<Action> parseSend(std::string_view text) {
  const auto bytes = parseBytes(text);
  if (!bytes) return tl::unexpected(bytes.error());
  return SendStep{std::string(text)};
}

Result<Action> parseCommand(std::string_view text) {
  const bool isPlain = !text.empty() && std::ranges::all_of(text, [](char letter) {
    return letter > ' ' && letter <= '~' && letter != '"' && letter != '\\';
  });
  if (!isPlain) return refuse(say("scripts", "a command without blanks, such as UT"), text);
  return SendStep{"01 \"" + std::string(text) + "\" 0D"};
}

Result<Action> parseExpect(std::string_view text) {
  std::string_view rest = text;
  if (takeWord(rest) == "nothing") {
    const auto during = splitTime(text, " for ");
    if (!during) return tl::unexpected(during.error());
    if (during->rest != "nothing") return refuse(say("scripts", "expect nothing for 300 ms"), text);
    return ExpectNothingStep{during->time};
  }
  const auto timed = splitTime(text, " within ");
  if (!timed) return tl::unexpected(timed.error());
  if (timed->rest == "report") return ExpectReportStep{timed->time};
  const auto pattern = BytePattern::parse(timed->rest);
  if (!pattern) return tl::unexpected(pattern.error());
  return ExpectStep{std::string(timed->rest), timed->time};
}

Result<Action> parseWait(std::string_view text) {
  const auto time = parseTime(text);
  if (!time) return tl::unexpected(time.error());
  return WaitStep{*time};
}

Result<Action> parseLine(std::string_view text) {
  const auto settings = parseLineSettings(text);
  if (!settings) return refuse(say("scripts", "line settings such as 9600,n,8,1"), text);
  return LineStep{*settings};
}

Result<Action> parseReports(std::string_view text) {
  if (text == "m01") return ReportsStep{CommandSet::m01};
  if (text == "e02") return ReportsStep{CommandSet::e02};
  if (text == "quorvane") return ReportsStep{CommandSet::quorvane};
  return refuse("m01, e02, quorvane", text);
}

Result<Action> parseAnswer(std::string_view text) {
  constexpr std::string_view word = " send ";
  const auto at = lastOutsideQuotes(text, word);
  if (at == text.npos) return refuse(say("scripts", "on BYTES send BYTES"), text);
  auto pattern = BytePattern::parse(text.substr(0, at));
  if (!pattern) return tl::unexpected(pattern.error());
  auto answer = parseBytes(text.substr(at + word.size()));
  if (!answer) return tl::unexpected(answer.error());
  return AnswerStep{std::move(*pattern), std::move(*answer)};
}

Result<Action> parseNote(std::string_view text) {
  if (text.size() >= 2 && text.front() == '"' && text.back() == '"')
    text = text.substr(1, text.size() - 2);
  return NoteStep{std::string(text)};
}

/// -1: it is no number of two hexadecimal digits.
int hexNumber(std::string_view text) {
  const auto bytes = text.size() == 2 ? parseBytes(text) : parseBytes({});
  return bytes ? bytes->front() : -1;
}

Result<Action> parseRepeat(std::string_view text) {
  const std::string_view whole = text;
  const auto first = takeWord(text);
  if (text.empty()) {
    const auto times = parseDecimal(first, 1, mostRepeats);
    if (!times) return refuse(say("scripts", "a number of times from 1 to 1000000"), first);
    return RepeatStep{{}, 1, *times};
  }
  const int from = hexNumber(takeWord(text));
  const int to = takeWord(text) == "to" ? hexNumber(text) : -1;
  const bool isName = first.find_first_of("\"{}\\") == first.npos;
  if (from < 0 || from > to || !isName)
    return refuse(say("scripts", "repeat 10, or repeat NN 00 to 3F"), whole);
  return RepeatStep{std::string(first), from, to};
}

Result<Action> parseEnd(std::string_view text) {
  if (!text.empty()) return refuse("end", text);
  return EndStep{};
}

struct Word {
  std::string_view word;
  Result<Action> (*parse)(std::string_view);
};
constexpr std::array words = {
    Word{"command", parseCommand}, Word{"send", parseSend}, Word{"expect", parseExpect},
    Word{"wait", parseWait},       Word{"line", parseLine}, Word{"reports", parseReports},
    Word{"on", parseAnswer},       Word{"note", parseNote}, Word{"repeat", parseRepeat},
    Word{"end", parseEnd},
};

Result<Action> parseStep(std::string_view text) {
  std::string_view rest = text;
  const auto word = takeWord(rest);
  const auto known = std::ranges::find(words, word, &Word::word);
  if (known != words.end()) return known->parse(rest);
  std::string all;
  for (const Word& other : words)
    all.append(all.empty() ? "" : ", ").append(other.word);
  return refuse(all, word);
}

/// Ties each "end" to its "repeat". The line of one that has none, and what is missing there.
std::optional<std::pair<int, std::string_view>> tieRepeats(std::vector<ScriptStep>& steps) {
  std::vector<std::size_t> open;
  for (std::size_t i = 0; i < steps.size(); ++i) {
    if (std::holds_alternative<RepeatStep>(steps[i].action)) open.push_back(i);
    auto* const end = std::get_if<EndStep>(&steps[i].action);
    if (end == nullptr) continue;
    if (open.empty()) return std::pair(steps[i].line, std::string_view("repeat"));
    end->repeat = open.back();
    std::get<RepeatStep>(steps[open.back()].action).end = i;
    open.pop_back();
  }
  if (open.empty()) return std::nullopt;
  return std::pair(steps[open.back()].line, std::string_view("end"));
}

}  // namespace

const ScriptStep* Script::firstChange() const {
  return ScriptListener().firstChange(steps);
}

std::optional<std::string> Script::question() const {
  const ScriptStep* const change = firstChange();
  if (change == nullptr) return std::nullopt;
  return filled(say("scripts",
                    "Line %1 of %2, \"%3\", changes what the controller has stored. Run the "
                    "script?"),
                {std::to_string(change->line), name, change->text});
}

Result<Script> parseScript(std::string_view text, const std::string& name) {
  Script script{name, {}, {}};
  int number = 0;
  for (const std::string_view raw : linesOf(text)) {
    ++number;
    script.lines.emplace_back(raw);
    const std::string_view line = withoutComment(raw);
    if (number == 1) {
      if (line != heading)
        return tl::unexpected(
            FileError{name, 1, '"' + std::string(heading) + '"', std::string(line)});
      continue;
    }
    if (line.empty()) continue;
    auto action = parseStep(line);
    if (!action) {
      FileError& error = action.error();
      return tl::unexpected(
          FileError{name, number, std::move(error.expected), std::move(error.found)});
    }
    script.steps.push_back({number, std::string(line), std::move(*action)});
  }
  if (number == 0) return tl::unexpected(FileError{name, 1, '"' + std::string(heading) + '"', {}});
  if (const auto untied = tieRepeats(script.steps)) {
    const auto& [line, missing] = *untied;
    return tl::unexpected(FileError{name, line, filled(say("scripts", "its \"%1\""), {missing}),
                                    say("scripts", "none")});
  }
  return script;
}

Result<Script> readScript(const std::filesystem::path& file) {
  const auto text = readWholeFile(file, largestScript);
  if (!text) return tl::unexpected(text.error());
  return parseScript(*text, file.filename().string());
}

std::string withNumber(std::string text, const RepeatStep& repeat, int number) {
  if (repeat.name.empty()) return text;
  const std::string mark = '{' + repeat.name + '}';
  const std::string digits = hexByte(static_cast<std::uint8_t>(number));
  for (auto at = text.find(mark); at != text.npos; at = text.find(mark, at + digits.size()))
    text.replace(at, mark.size(), digits);
  return text;
}

}  // namespace touch
