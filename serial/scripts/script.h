#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "core/session.h"
#include "serial/port/line_settings.h"
#include "serial/scripts/byte_pattern.h"
#include "support/result.h"

namespace touch {

// A script of an exchange over the serial line, as text. The first line says what it is. Each other
// line is one step; empty lines, and what follows a "#" outside quotes, are passed over.
//
//   touch script 1
//   command UT              sends 01 "UT" 0D
//   send 01 "OI\r"          sends bytes: hexadecimal pairs and quoted text
//   expect 01 "0" * 0D      waits for bytes; ?? is any byte, * any number of them
//   expect report within 5 s
//   expect nothing for 300 ms
//   wait 200 ms
//   line 9600,n,8,1         changes the port's settings
//   reports e02             how touches are reported from here on: m01, e02 or quorvane
//   on 01 "?" send 01 0D    from here on answers what comes
//   note "ask it again"     is printed
//   repeat 10               or "repeat NN 00 to 3F": {NN} in quoted text and commands is then
//   end                     replaced by the number, in two hexadecimal digits

using ScriptTime = std::chrono::milliseconds;

struct SendStep {
  std::string bytes;  ///< as parseBytes reads them, once loop numbers stand in their places
};
struct ExpectStep {
  std::string pattern;  ///< as BytePattern reads it, once loop numbers stand in their places
  ScriptTime within{};
};
struct ExpectReportStep {
  ScriptTime within{};
};
struct ExpectNothingStep {
  ScriptTime during{};
};
struct WaitStep {
  ScriptTime duration{};
};
struct LineStep {
  LineSettings settings;
};
struct ReportsStep {
  CommandSet set = CommandSet::quorvane;
};
struct AnswerStep {
  BytePattern pattern;
  std::vector<std::uint8_t> answer;
};
struct NoteStep {
  std::string text;
};
/// Repeats the steps up to the matching EndStep.
struct RepeatStep {
  std::string name;  ///< empty: only counted
  int first = 0;
  int last = 0;
  std::size_t end = 0;  ///< the place of its EndStep
};
/// `text` with the number of a round in the places of the loop's name.
std::string withNumber(std::string text, const RepeatStep& repeat, int number);

struct EndStep {
  std::size_t repeat = 0;  ///< the place of its RepeatStep
};

struct ScriptStep {
  using Action = std::variant<SendStep, ExpectStep, ExpectReportStep, ExpectNothingStep, WaitStep,
                              LineStep, ReportsStep, AnswerStep, NoteStep, RepeatStep, EndStep>;
  int line = 0;      ///< in the file, counted from 1
  std::string text;  ///< as it was written
  Action action;
};

struct Script {
  std::string name;
  std::vector<std::string> lines;  ///< as they were written
  std::vector<ScriptStep> steps;

  /// The first step with which a command is complete that resets or restores the controller, or
  /// writes a word of its parameters, whichever steps it is put together from.
  const ScriptStep* firstChange() const;
  /// What to ask before it is run; nothing where there is no such step.
  std::optional<std::string> question() const;
};

/// `name` is what an error calls the file.
Result<Script> parseScript(std::string_view text, const std::string& name);
/// At most a mebibyte.
Result<Script> readScript(const std::filesystem::path& file);

}  // namespace touch
