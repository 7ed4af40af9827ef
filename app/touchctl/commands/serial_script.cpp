#include "app/touchctl/commands/serial_script.h"

#include <fmt/core.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>
#include <nlohmann/json.hpp>

#include "app/declarations.h"
#include "app/process/system_text.h"
#include "app/touchctl/interrupt.h"
#include "app/touchctl/output.h"
#include "serial/scripts/script_run.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

namespace fs = std::filesystem;

ExitStatus run(const SerialWork& work, const fs::path& file) {
  const auto script = readScript(file);
  if (!script) {
    complain(script.error().describe());
    return ExitStatus::failed;
  }
  const ScriptStep* const reset = script->firstReset();
  if (reset != nullptr &&
      !work.prompt.confirm(fmt::format("Line {} of {}, \"{}\", may change what is stored in the "
                                       "controller. Run the script?",
                                       reset->line, script->name, reset->text))) {
    return ExitStatus::failed;
  }
  const bool json = work.shell.json;
  const auto begin = work.access.clock.now();
  ScriptRun running(*script, work.port.serial(), work.access.clock,
                    {.onStep = nullptr,
                     .onNote =
                         [json](const std::string& note) {
                           json ? printError(note + '\n') : print("{}\n", printable(note));
                         },
                     .isStopped = interrupted,
                     .isPaused = nullptr},
                    addedFormats(work.shell.workFolder));
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
    print("{}: passed; {} bytes sent, {} received, {:.1f} s\n", printable(script->name),
          running.sent(), running.received(), time.count());
  }
  if (!done) complain(script->name + ", " + done.error().describe());
  return done ? ExitStatus::done : ExitStatus::failed;
}

}  // namespace

void declareScript(const CommandLine& line, CLI::App& command) {
  addJson(line, command);
  const auto file = std::make_shared<fs::path>();
  command
      .add_option_function<std::string>(
          "FILE", [file](const std::string& name) { *file = absolutePathNamed(name); },
          "The script; docs/file-formats.md describes its lines")
      ->required();
  onSerialPort(line, command, std::make_shared<SerialOptions>(),
               [file](const SerialWork& work) { return run(work, *file); });
}

}  // namespace touch
