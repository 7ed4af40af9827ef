#include "app/touchctl/commands/serial/serial_terminal.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "app/declarations.h"
#include "app/touchctl/commands/report_printer.h"
#include "app/touchctl/output.h"
#include "app/touchctl/terminal.h"
#include "serial/debugger/console_log.h"
#include "support/text/hex.h"

namespace touch {

namespace {

using namespace std::chrono_literals;
using Bytes = std::span<const std::uint8_t>;

constexpr char endKey = 0x1D;  // Ctrl+]
constexpr std::uint8_t lineEnd = '\r';
// Nobody types their own command faster than that, and a pasted one comes at once.
constexpr auto typingPause = 1s;

enum class View { reports, hex, text };

/// Bytes as characters in lines, ">" or "<" before each: what is no character stands there as \xNN.
class TextLines {
 public:
  void add(char direction, Bytes bytes) {
    if (direction != direction_) end();
    direction_ = direction;
    for (const std::uint8_t byte : bytes) {
      if (byte == lineEnd || byte == '\n') {
        end();
      } else if (byte >= ' ' && byte <= '~') {
        line_ += static_cast<char>(byte);
      } else {
        line_.append("\\x").append(hexByte(byte));
      }
    }
  }
  void end() {
    if (line_.empty()) return;
    print("{} {}\n", direction_, std::exchange(line_, {}));
    flushOutput();
  }

 private:
  char direction_ = '<';
  std::string line_;
};

/// What passes the line, as the user wants to see it.
class Display {
 public:
  Display(const SerialWork& work, View view)
      : clock_(work.access.clock),
        start_(clock_.now()),
        view_(view),
        reports_(work.serial.set, work.shell.workFolder, work.shell.json) {
    reports_.setLine(work.port.line());
  }

  void received(Clock::TimePoint time, Bytes bytes) {
    endTyped();
    last_ = clock_.now();
    if (view_ == View::reports) return reports_.take(since(start_, time), bytes);
    show('<', since(start_, time), bytes);
  }
  /// Keys are shown together, as far as they belong together.
  void sent(Bytes bytes) {
    reports_.idle();
    lastTyped_ = clock_.now();
    for (const std::uint8_t byte : bytes) {
      typed_.push_back(byte);
      if (byte == lineEnd) endTyped();
    }
  }
  /// To be called when nothing has come.
  void rest() {
    const auto now = clock_.now();
    if (now - lastTyped_ > typingPause) endTyped();
    if (now - last_ <= idleAfter) return;
    reports_.idle();
    // What was typed and not ended yet goes on in the same line.
    if (typed_.empty()) lines_.end();
  }
  void end() {
    endTyped();
    reports_.idle();
    lines_.end();
    flushOutput();
  }

 private:
  void endTyped() {
    const auto typed = std::exchange(typed_, {});
    if (typed.empty()) return;
    if (view_ == View::text) {
      show('>', since(start_, lastTyped_), typed);
    } else {
      reports_.sent(since(start_, lastTyped_), typed);
    }
  }
  void show(char direction, std::chrono::microseconds time, Bytes bytes) {
    if (view_ == View::text) return lines_.add(direction, bytes);
    constexpr std::size_t bytesPerLine = 16;
    while (!bytes.empty()) {
      const auto part = bytes.first(std::min(bytes.size(), bytesPerLine));
      print("{}\n",
            shown(ConsoleLine{ConsoleLineKind::received, time, {part.begin(), part.end()}, {}}));
      bytes = bytes.subspan(part.size());
    }
    flushOutput();
  }

  const Clock& clock_;
  Clock::TimePoint start_;
  View view_;
  ReportPrinter reports_;
  TextLines lines_;
  std::vector<std::uint8_t> typed_;  ///< sent, and not shown yet
  Clock::TimePoint last_{};
  Clock::TimePoint lastTyped_{};
};

ExitStatus converse(const SerialWork& work, View view) {
  SerialPort& line = work.port.serial();
  auto keys = takeKeys();
  complain("COM" + std::to_string(work.port.selected()) +
           " is open. Each key is sent as you press it: Enter is 0D, Ctrl+A is 01. Ctrl+] ends.");
  Display display(work, view);
  PortWatch watch(work, "Ctrl+]");
  std::string reason = "ended from outside";
  bool failed = false;
  listen(work.access.clock, std::nullopt, [&] {
    const auto read = readTimed(line, work.access.clock.now());
    auto rest = Bytes(read.bytes);
    for (const ReadPart& part : read.parts) {
      display.received(part.time, rest.first(part.bytes));
      rest = rest.subspan(part.bytes);
    }
    if (read.bytes.empty()) display.rest();
    const auto pressed = keys->pressed();
    if (!pressed) {
      reason = "ended: the terminal is closed";
      return false;
    }
    const auto end = pressed->find(endKey);
    const std::vector<std::uint8_t> typed(
        pressed->begin(),
        pressed->begin() + static_cast<std::ptrdiff_t>(std::min(end, pressed->size())));
    if (!typed.empty() && line.write(typed)) {
      display.sent(typed);
    } else if (!typed.empty() && line.isOpen()) {
      complain("the line takes no bytes; the key was not sent");
    }
    if (end != std::string::npos) reason = "ended by Ctrl+]";
    failed = !watch.goesOn() || outputIsLost();
    return end == std::string::npos && !failed;
  });
  display.end();
  keys.reset();
  if (!failed) complain(reason);
  return failed ? ExitStatus::failed : ExitStatus::done;
}

}  // namespace

void declareTerminal(const CommandLine& line, CLI::App& command) {
  addJson(line, command);
  const auto view = std::make_shared<View>(View::reports);
  const std::map<std::string, View> views = {
      {"reports", View::reports}, {"hex", View::hex}, {"text", View::text}};
  command
      .add_option_function<std::string>(
          "--show", [view, views](const std::string& name) { *view = views.at(name); },
          "What comes, as decoded reports (default), as hex or as text")
      ->check(CLI::IsMember({"reports", "hex", "text"}))
      ->excludes(command.get_option("--json"));
  command.footer("Ctrl+] ends it. A command is Ctrl+A, its letters, Enter.");
  const auto serial = std::make_shared<SerialOptions>();
  serial->prepare = [](Prompt&) {
    if (isTerminalInput()) return true;
    complain(
        "a terminal to type in is missing. Use 'serial send' or 'serial run' to send, and 'serial "
        "monitor' to listen");
    return false;
  };
  onSerialPort(line, command, serial,
               [view](const SerialWork& work) { return converse(work, *view); });
}

}  // namespace touch
