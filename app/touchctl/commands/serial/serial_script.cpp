#include "app/touchctl/commands/serial/serial_script.h"

#include <fmt/core.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "app/declarations.h"
#include "app/touchctl/interrupt.h"
#include "app/touchctl/output.h"
#include "serial/scripts/script_run.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

namespace fs = std::filesystem;

/// The script, once the user has agreed to what it may change; nothing after the reason was
/// printed.
std::optional<Script> agreedScript(const fs::path& file, const ShellOptions& shell,
                                   Prompt& prompt) {
  auto script = readScript(file);
  if (!script) {
    const FileError& error = script.error();
    if (shell.json) {
      printJson({{"passed", false},
                 {"line", error.line},
                 {"expected", toUtf8(error.expected)},
                 {"found", toUtf8(error.found)}});
    }
    complain(error.describe());
    return std::nullopt;
  }
  if (const auto question = script->question(); question && !prompt.confirm(*question))
    return std::nullopt;
  return std::move(*script);
}

ExitStatus run(const SerialWork& work, const Script& script) {
  const bool json = work.shell.json;
  const auto begin = work.access.clock.now();
  ScriptRun running(script, work.port.serial(), work.access.clock,
                    {.onStep = nullptr,
                     .onNote =
                         [json](const std::string& note) {
                           json ? printError(note + '\n') : print("{}\n", printable(note));
                         },
                     .onSent = nullptr,
                     .onReceived = nullptr,
                     .isStopped = interrupted,
                     .isPaused = nullptr},
                    addedFormats(work.shell.workFolder), familyOf(work.serial.set));
  const auto done = running.run();
  work.port.tellLoss();
  const std::chrono::duration<double> time = work.access.clock.now() - begin;
  if (json) {
    nlohmann::ordered_json object = {{"passed", done.has_value()},
                                     {"sent", running.sent()},
                                     {"received", running.received()},
                                     {"seconds", time.count()}};
    if (!done) {
      object["line"] = done.error().line;
      object["expected"] = done.error().expected;
      object["found"] = done.error().found;
    }
    printJson(object);
  } else if (done) {
    print("{}: passed; {} bytes sent, {} received, {:.1f} s\n", printable(script.name),
          running.sent(), running.received(), time.count());
  }
  if (!done) complain(script.name + ", " + done.error().describe());
  return done ? ExitStatus::done : ExitStatus::failed;
}

}  // namespace

void declareScript(const CommandLine& line, CLI::App& command) {
  addJson(line, command);
  const auto* const file =
      command.add_option("FILE", "The script; docs/file-formats.md describes its lines")
          ->required();
  const auto script = std::make_shared<std::optional<Script>>();
  const auto serial = std::make_shared<SerialOptions>();
  serial->prepare = [file, script, &shell = line.options](Prompt& prompt) {
    *script = agreedScript(absolutePathNamed(file->as<std::string>()), shell, prompt);
    return script->has_value();
  };
  onSerialPort(line, command, serial,
               [script](const SerialWork& work) { return run(work, **script); });
}

}  // namespace touch
