#include <fmt/core.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "app/declarations.h"
#include "app/options.h"
#include "app/simulated_source.h"
#include "app/touchctl/command_line.h"
#include "app/touchctl/commands.h"
#include "app/touchctl/commands/report_printer.h"
#include "app/touchctl/commands/serial/serial_ports.h"
#include "app/touchctl/commands/serial/serial_script.h"
#include "app/touchctl/commands/serial/serial_search.h"
#include "app/touchctl/commands/serial/serial_terminal.h"
#include "app/touchctl/commands/serial/serial_work.h"
#include "app/touchctl/interrupt.h"
#include "app/touchctl/output.h"
#include "app/touchctl/terminal.h"
#include "core/exchange/reply.h"
#include "serial/commands/command_sets.h"
#include "serial/commands/debugger_exchange.h"
#include "serial/commands/h2d.h"
#include "serial/plots/report_table.h"
#include "serial/receiving/receive_mode.h"
#include "serial/recording/recording_ports.h"
#include "support/text/hex.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using nlohmann::ordered_json;

/// Prints what comes in on `line`, each at its `time`, until the time is over, `ended` says true,
/// or nobody reads on.
void printReports(Clock& clock, SerialPort& line, ReportPrinter& printer,
                  const std::optional<double>& seconds, const std::function<bool()>& ended,
                  const std::function<std::chrono::microseconds(Clock::TimePoint)>& time) {
  auto last = clock.now();
  listen(clock, seconds, [&] {
    const auto now = clock.now();
    const auto read = readTimed(line, now);
    auto rest = std::span(read.bytes);
    for (const ReadPart& part : read.parts) {
      printer.take(time(part.time), rest.first(part.bytes));
      rest = rest.subspan(part.bytes);
    }
    if (!read.bytes.empty()) {
      last = now;
    } else if (now - last > idleAfter) {
      printer.idle();
    }
    return !ended() && !outputIsLost();
  });
  printer.idle();
}

/// What ends the waiting for a port that has gone: none where a time was set.
std::optional<std::string> keyThatEnds(const SerialWork& work) {
  return work.serial.seconds ? std::nullopt : std::optional<std::string>("Ctrl+C");
}

ExitStatus monitor(const SerialWork& work) {
  ReportPrinter printer(work.serial.set, work.shell.workFolder, work.shell.json);
  printer.setLine(work.port.line());
  Clock& clock = work.access.clock;
  // Whoever reads a pipe waits for its end.
  PortWatch watch(work, isTerminalOutput() ? keyThatEnds(work) : std::nullopt);
  bool gone = false;
  printReports(
      clock, work.line, printer, work.serial.seconds,
      [&watch, &gone] {
        gone = !watch.goesOn();
        return gone;
      },
      [start = clock.now()](Clock::TimePoint time) { return since(start, time); });
  return gone ? ExitStatus::failed : ExitStatus::done;
}

/// Passes on the bytes as they are.
ExitStatus pass(const SerialWork& work) {
  SerialPort& line = work.port.serial();
  makeOutputBinary();
  listen(work.access.clock, work.serial.seconds, [&] {
    if (const auto bytes = line.readAll(); !bytes.empty()) writeBytes(bytes);
    return !work.port.tellLoss() && !outputIsLost();
  });
  return line.isOpen() ? ExitStatus::done : ExitStatus::failed;
}

/// A recording, or nothing after the reason was printed.
std::unique_ptr<TransferSource> recordingIn(const fs::path& file) {
  auto recording = RecordingFile::open(file);
  if (recording) return std::move(*recording);
  complain(recording.error().describe());
  return nullptr;
}

/// How it went on after its beginning.
ExitStatus endOf(const std::optional<FileError>& failed) {
  if (failed) complain(failed->describe());
  return failed ? ExitStatus::failed : ExitStatus::done;
}

/// How a recording is replayed.
struct Replaying {
  double speed = 1;
  double from = 0;  ///< seconds
};

ExitStatus replay(const ShellOptions& shell, CommandSet set, const fs::path& file,
                  const Replaying& how) {
  auto recording = recordingIn(file);
  if (!recording) return ExitStatus::failed;
  catchInterrupt();
  SystemClock clock;
  ReplayPort port(std::move(recording), clock);
  port.open();
  port.setSpeed(how.speed);
  if (how.from > 0) {
    port.seek(
        std::chrono::duration_cast<ReplayPort::Time>(std::chrono::duration<double>(how.from)));
  }
  ReportPrinter printer(set, shell.workFolder, shell.json);
  if (const auto line = port.line()) printer.setLine(*line);
  port.onSent = [&](std::span<const std::uint8_t> bytes) {
    printer.idle();
    printer.sent(port.positionAt(port.sentAt()), bytes);
  };
  printReports(
      clock, port, printer, std::nullopt, [&port] { return port.isFinished(); },
      [&port](Clock::TimePoint time) { return port.positionAt(time); });
  return endOf(port.error());
}

ExitStatus decode(const ShellOptions& shell, CommandSet set, const fs::path& file) {
  const auto recording = recordingIn(file);
  if (!recording) return ExitStatus::failed;
  ReportPrinter printer(set, shell.workFolder, shell.json);
  while (const auto transfer = recording->next()) {
    if (const auto line = recording->line()) printer.setLine(*line);
    if (transfer->direction == Direction::fromController)
      printer.take(transfer->time, transfer->bytes);
  }
  printer.idle();
  printError(
      fmt::format("{} reports, {} unrecognised bytes\n", printer.reports(), printer.strayBytes()));
  return endOf(recording->error());
}

ExitStatus printTable(const ShellOptions& shell, CommandSet set, const fs::path& file) {
  const auto recording = recordingIn(file);
  if (!recording) return ExitStatus::failed;
  constexpr std::size_t transfersAtOnce = 1000;
  RecordedReports reports(*recording, TimedReports(familyOf(set), addedFormats(shell.workFolder)));
  printText(reportTableHeading);
  while (!outputIsLost()) {
    std::string lines;
    const auto more = reports.takeSome(
        transfersAtOnce, [&lines](const TimedReport& report) { lines += tableLine(report); });
    printText(lines);
    if (!more || !*more) return endOf(recording->error());
  }
  return ExitStatus::failed;
}

/// The recording runs already.
ExitStatus record(const SerialWork& work) {
  const std::uint64_t before = work.line.receivedBytes();
  PortWatch watch(work, keyThatEnds(work));
  bool lost = false;
  listen(work.access.clock, work.serial.seconds, [&] {
    work.line.readAll();
    lost = !watch.goesOn();
    return !lost && work.line.isRecording();
  });
  // It takes in what arrived since the last look, which is counted, too.
  const auto ended = work.line.stopRecording();
  if (!ended) complain(ended.error().describe());
  const std::uint64_t count = work.line.receivedBytes() - before;
  const std::string file = work.serial.recording->string();
  if (work.shell.json) {
    printJson(ordered_json({{"file", toUtf8(file)}, {"bytes", count}}));
  } else {
    print("{} bytes recorded in {}\n", count, printable(file));
  }
  return lost || !ended ? ExitStatus::failed : ExitStatus::done;
}

ordered_json jsonOf(const StrokeRate& stroke, double ceiling) {
  const auto milliseconds = [](IntervalEvidence::Duration duration) {
    return static_cast<double>(duration.count()) / 1000;
  };
  ordered_json object = {
      {"milliseconds", stroke.totalTime.count()}, {"points", stroke.points}, {"ceiling", ceiling}};
  const auto time = static_cast<double>(stroke.totalTime.count());
  object["rate"] = time > 0 ? ordered_json(static_cast<double>(stroke.points) * 1000 / time)
                            : ordered_json(nullptr);
  if (!stroke.evidence) return object;
  auto gaps = ordered_json::array();
  for (const auto& [at, length] : stroke.evidence->gaps)
    gaps.push_back({{"at", milliseconds(at)}, {"length", milliseconds(length)}});
  const auto whileTouched = medianRate(*stroke.evidence);
  object["rateWhileTouched"] = whileTouched ? ordered_json(*whileTouched) : ordered_json(nullptr);
  object["intervals"] = {{"shortest", milliseconds(stroke.evidence->shortest)},
                         {"median", milliseconds(stroke.evidence->median)},
                         {"longest", milliseconds(stroke.evidence->longest)},
                         {"bucket", milliseconds(IntervalEvidence::bucketWidth)},
                         {"histogram", stroke.evidence->histogram},
                         {"gaps", gaps}};
  return object;
}

void printHistogram(const IntervalEvidence& evidence) {
  constexpr std::size_t longestBar = 50;
  const std::size_t most = *std::ranges::max_element(evidence.histogram);
  for (std::size_t i = 0; i < evidence.histogram.size(); ++i) {
    const std::size_t count = evidence.histogram[i];
    if (count == 0) continue;
    const auto from = static_cast<std::int64_t>(i) * (IntervalEvidence::bucketWidth / 1ms);
    print("{:>4} ms {:>6} {}\n", from, count,
          std::string(std::max<std::size_t>(1, count * longestBar / most), '#'));
  }
}

/// Measures one stroke and tells what lies behind the rate.
ExitStatus rate(const SerialWork& work) {
  Clock& clock = work.access.clock;
  ConsoleLog log(clock);
  bool lost = false;
  ReceiveMode mode({work.access.session, clock, work.prompt, log,
                    addedFormats(work.shell.workFolder), [&work] { return work.port.line(); }},
                   {work.port.serial(), work.port.gate(), [&] { lost = work.port.tellLoss(); }});
  mode.measureRate(true);
  mode.receive();
  complain("draw one stroke on the panel …");
  listen(clock, work.serial.seconds, [&] { return !lost && !mode.lastStroke(); });
  const auto& stroke = mode.lastStroke();
  if (!stroke) {
    if (!lost) complain("no stroke ended");
    return ExitStatus::failed;
  }
  if (work.shell.json) {
    printJson(jsonOf(*stroke, mode.ceiling()));
    return ExitStatus::done;
  }
  const auto lines = rateLines(*stroke);
  for (const std::string& line : std::span(lines).first(lines.size() - 1))
    print("{}\n", line);
  for (const std::string& line : evidenceLines(*stroke, mode.ceiling()))
    print("{}\n", line);
  if (stroke->evidence) printHistogram(*stroke->evidence);
  return ExitStatus::done;
}

/// The entry of the set's list that `word` calls; empty when there is none.
std::string entryOf(CommandSet set, std::string_view word) {
  for (const std::string_view entry : cm1set(set)) {
    const auto name = set == CommandSet::e02 ? entry.substr(0, 1) : commandWord(entry);
    if (name == word) return std::string(entry);
  }
  return {};
}

std::optional<DebuggerReply> exchange(const SerialWork& work, const SendChoice& choice) {
  ConsoleLog log(work.access.clock);
  return DebuggerExchange(work.access, work.prompt, work.port, log).send(choice);
}

/// What `send` is told behind the command.
struct SendDetails {
  std::optional<std::size_t> setting;
  std::string digit;
};

ExitStatus send(const SerialWork& work, const std::string& word, const SendDetails& details) {
  const std::string entry = entryOf(work.serial.set, word);
  std::string known;
  for (const std::string_view other : cm1set(work.serial.set))
    known.append("\n  ").append(other);
  if (entry.empty()) {
    complain("there is no command \"" + word + "\" in this set. There are:" + known);
    return ExitStatus::wrongUse;
  }
  if (panelsFor(work.serial.set, entry).address || entry == lineChangeEntry) {
    complain("use 'serial read-word', 'serial write-word' or 'serial to-8n1' for this");
    return ExitStatus::wrongUse;
  }
  if (needsDigit(word) && details.digit.empty()) {
    complain(fmt::format(R"("{0}" needs a digit from 0 to {1} behind it: serial send {0} {1})",
                         word, greatestDigit));
    return ExitStatus::wrongUse;
  }
  if (!needsDigit(word) && !details.digit.empty()) {
    complain('"' + word + "\" takes no digit");
    return ExitStatus::wrongUse;
  }
  if (resetsController(word) && !work.prompt.confirm("Send " + entry + '?'))
    return ExitStatus::failed;
  const auto reply =
      exchange(work, {.entry = entry, .setting = details.setting, .digit = details.digit});
  if (!reply) return ExitStatus::failed;
  if (work.shell.json) {
    const ordered_json object = {
        {"command", word}, {"text", reply->text}, {"bytes", hexText(reply->bytes)}};
    printJson(object);
  } else {
    print("{}\n{}\n", printable(reply->text), reply->hex);
  }
  return ExitStatus::done;
}

/// The word that a controller answers to "GP": "0" and four hexadecimal digits.
std::optional<std::string> readWord(const SerialWork& work, const std::string& address) {
  const auto set = work.serial.set;
  const auto reply = exchange(
      work, {.entry = entryOf(set, set == CommandSet::m01 ? "GP" : "iG"), .address = address});
  if (!reply) return std::nullopt;
  constexpr std::size_t length = 5;
  const std::string text = Reply{reply->bytes}.text();
  if (text.size() == length && text[0] == '0' && h2d(text.substr(1))) return text.substr(1);
  complain(
      "the controller does not tell the word; the panel must not be touched meanwhile. It sent " +
      reply->hex);
  return std::nullopt;
}

ExitStatus printWord(const SerialWork& work, const std::string& address) {
  const auto word = readWord(work, address);
  if (!word) return ExitStatus::failed;
  if (work.shell.json) {
    printJson(ordered_json({{"address", address}, {"word", *word}}));
  } else {
    print("{}  {}\n", address, *word);
  }
  return ExitStatus::done;
}

/// Tells what stood there before, and before anything is written: that is the way back.
ExitStatus writeWord(const SerialWork& work, const std::string& address, const std::string& word) {
  const auto before = readWord(work, address);
  if (!before) return ExitStatus::failed;
  if (interrupted()) {
    complain("interrupted; the word was not written");
    return ExitStatus::failed;
  }
  complain(fmt::format("{} holds {}, which is the only way back", address, *before));
  const auto set = work.serial.set;
  const auto reply = exchange(work, {.entry = entryOf(set, set == CommandSet::m01 ? "SP" : "iW"),
                                     .address = address,
                                     .high = word.substr(0, 2),
                                     .low = word.substr(2)});
  if (!reply) return ExitStatus::failed;
  if (!Reply{reply->bytes}.acknowledged()) {
    complain("the controller refused the word; its parameters may be locked");
    return ExitStatus::failed;
  }
  const auto after = readWord(work, address);
  if (work.shell.json) {
    printJson(ordered_json({{"address", address},
                            {"before", *before},
                            {"after", after ? ordered_json(*after) : ordered_json(nullptr)}}));
  } else {
    print("{}  {} -> {}\n", address, *before, after.value_or("?"));
  }
  return after == word ? ExitStatus::done : ExitStatus::failed;
}

ExitStatus findPort(const SerialWork& work) {
  const auto found = work.port.comporttest();
  if (const std::string sharing = work.port.serial().sharedWith(); !sharing.empty())
    complain(sharing);
  if (work.shell.json) {
    printJson(ordered_json({{"port", found ? ordered_json(*found) : ordered_json(nullptr)}}));
  } else if (found) {
    print("COM{}\n", *found);
  }
  return found ? ExitStatus::done : ExitStatus::failed;
}

ExitStatus changeLine(const SerialWork& work) {
  if (!work.prompt.proceed(lineChangeText)) return ExitStatus::failed;
  if (!work.port.N72toN81()) return ExitStatus::failed;
  if (work.shell.json) {
    printJson(ordered_json({{"told", true}}));
  } else {
    print("The controller was told; it gives no answer. Ask it something to see.\n");
  }
  return ExitStatus::done;
}

/// `count` hexadecimal digits, in capitals.
std::string hexArgument(const std::string& name, std::string text, std::size_t count) {
  std::ranges::transform(text, text.begin(), [](char c) {
    return c >= 'a' && c <= 'f' ? static_cast<char>(c - 'a' + 'A') : c;
  });
  if (text.size() != count || !h2d(text)) {
    refuseArgument(
        name, "expected " + std::to_string(count) + " hexadecimal digits, found \"" + text + '"');
  }
  return text;
}

std::string addressArgument(const std::string& text) {
  constexpr unsigned lastLow = 0x3F;
  constexpr unsigned firstHigh = 0x80;
  std::string address = hexArgument("ADDRESS", text, 2);
  const unsigned value = *h2d(address);
  if (value > lastLow && value < firstHigh) {
    refuseArgument("ADDRESS", "expected 00 to 3F or 80 to FF, found \"" + text + '"');
  }
  return address;
}

/// The group whose commands talk over a serial port.
struct Serial {
  CommandLine line;
  CLI::App& group;

  void add(const std::string& name, const std::string& description, Declaration declare) const {
    addControllerCommand(line, group, name, description,
                         [declare = std::move(declare)](CLI::App& command) {
                           command.get_option("--controller")
                               ->description(
                                   "The controller whose port the driver lets go of, as 'list' "
                                   "shows it (default: the first serial one)");
                           declare(command);
                         });
  }
  static void addSeconds(CLI::App& command, const std::shared_ptr<SerialOptions>& serial) {
    command
        .add_option_function<double>(
            "--seconds", [serial](double seconds) { serial->seconds = seconds; },
            "How long to listen (default: until Ctrl+C)")
        ->check(CLI::PositiveNumber);
  }
  void addListening(const std::string& name, const std::string& description,
                    ExitStatus (*work)(const SerialWork&)) const {
    add(name, description, [line = line, work](CLI::App& command) {
      const auto options = std::make_shared<SerialOptions>();
      addJson(line, command);
      addSeconds(command, options);
      onSerialPort(line, command, options, work);
    });
  }
  using FileWork = std::function<ExitStatus(const ShellOptions&, CommandSet, const fs::path&)>;
  /// `declare` adds options of its own and returns what is to be done.
  void addFileCommand(const std::string& name, const std::string& description,
                      const std::function<FileWork(CLI::App&)>& declare) const {
    addCommand(line, group, name, description, [line = line, declare](CLI::App& command) {
      const auto serial = std::make_shared<SerialOptions>();
      addSet(command, serial);
      addJson(line, command);
      const auto* const file =
          command
              .add_option("FILE",
                          "A recording; behind --simulate-from also one of SOURCE, by its name")
              ->required();
      const FileWork work = declare(command);
      command.callback([line, serial, file, work] {
        line.fileCommand = [&options = line.options, serial, work, name = file->as<std::string>()] {
          auto recordings = recordingsOf(options.simulateFrom);
          if (!recordings) {
            complain(recordings.error().describe());
            return ExitStatus::failed;
          }
          const auto path = recordingNamed(name, *recordings);
          if (path) return work(options, serial->set, *path);
          complain(path.error().describe());
          return ExitStatus::failed;
        };
      });
    });
  }
};

Serial::FileWork declareDecoding(CLI::App& command) {
  const auto asTable = std::make_shared<bool>(false);
  command.add_flag("--csv", *asTable, "As a table: time_s,touching,x,y,interval_ms,reckoned")
      ->excludes(command.get_option("--json"));
  return [asTable](const ShellOptions& shell, CommandSet set, const fs::path& file) {
    return *asTable ? printTable(shell, set, file) : decode(shell, set, file);
  };
}

Serial::FileWork declareReplaying(CLI::App& command) {
  const auto how = std::make_shared<Replaying>();
  command.add_option("--speed", how->speed, "How many times as fast as it was")
      ->check(CLI::Range(0.01, 1000.0))
      ->capture_default_str();
  command.add_option("--from", how->from, "Begin so many seconds after its beginning")
      ->check(CLI::NonNegativeNumber);
  return [how](const ShellOptions& shell, CommandSet set, const fs::path& file) {
    return replay(shell, set, file, *how);
  };
}

void declareMonitor(const CommandLine& line, CLI::App& command) {
  const auto options = std::make_shared<SerialOptions>();
  addJson(line, command);
  const auto raw = std::make_shared<bool>(false);
  command.add_flag("--raw", *raw, "Pass on the bytes as they are, into a pipe or a file")
      ->excludes(command.get_option("--json"));
  Serial::addSeconds(command, options);
  options->prepare = [raw](Prompt&) {
    if (!*raw || !isTerminalOutput()) return true;
    complain("a terminal would obey the bytes. Send them into a pipe or a file");
    return false;
  };
  onSerialPort(line, command, options,
               [raw](const SerialWork& work) { return *raw ? pass(work) : monitor(work); });
}

void addListeningCommands(const Serial& serial) {
  serial.add("monitor", "Print what the controller sends, decoded",
             [line = serial.line](CLI::App& command) { declareMonitor(line, command); });
  serial.add("listen", "The same as 'serial monitor'",
             [line = serial.line](CLI::App& command) { declareMonitor(line, command); });
  serial.add("terminal", "Talk to a controller key by key",
             [line = serial.line](CLI::App& command) { declareTerminal(line, command); });
  serial.addListening("rate", "Measure the report rate of one stroke", rate);
  serial.add("record", "Record everything that the controller sends",
             [line = serial.line](CLI::App& command) {
               const auto options = std::make_shared<SerialOptions>();
               addJson(line, command);
               command
                   .add_option_function<std::string>(
                       "FILE",
                       [options](const std::string& name) {
                         options->recording = absolutePathNamed(name);
                       },
                       "The recording to write")
                   ->required();
               Serial::addSeconds(command, options);
               onSerialPort(line, command, options, record);
             });
  serial.addFileCommand("decode", "Print the touch reports in a recording", declareDecoding);
  serial.addFileCommand("replay", "Print a recording at its own pace, or faster", declareReplaying);
}

void declareSend(const CommandLine& line, CLI::App& command) {
  addJson(line, command);
  const auto* const word =
      command.add_option("COMMAND", "As the set's list has it before the \"=\", e.g. iO")
          ->required();
  const auto* const digit =
      command.add_option("DIGIT", "0 to 4, for a command that needs one: SE or iE")
          ->check(CLI::Range(0, greatestDigit));
  const auto* const setting =
      command.add_option("--setting", "The item of an E02 entry's setting list, from 0")
          ->check(CLI::IsMember({0, 1}));
  onSerialPort(line, command, std::make_shared<SerialOptions>(),
               [word, digit, setting](const SerialWork& work) {
                 SendDetails details;
                 if (setting->count() > 0) details.setting = setting->as<std::size_t>();
                 if (digit->count() > 0) details.digit = std::to_string(digit->as<int>());
                 return send(work, word->as<std::string>(), details);
               });
}

void declareReadWord(const CommandLine& line, CLI::App& command) {
  addJson(line, command);
  const auto address = std::make_shared<std::string>();
  command
      .add_option_function<std::string>(
          "ADDRESS", [address](const std::string& text) { *address = addressArgument(text); },
          "00 to 3F or 80 to FF")
      ->required();
  onSerialPort(line, command, std::make_shared<SerialOptions>(),
               [address](const SerialWork& work) { return printWord(work, *address); });
  refuseSetWithoutWords(command);
}

void declareWriteWord(const CommandLine& line, CLI::App& command) {
  addJson(line, command);
  const auto both = std::make_shared<std::pair<std::string, std::string>>();
  command
      .add_option_function<std::string>(
          argumentName("ADDRESS=WORD"),
          [both](const std::string& text) {
            const auto [place, content] = nameAndValue(text);
            *both = {addressArgument(std::string(place)),
                     hexArgument("WORD", std::string(content), 4)};
          },
          "In hexadecimal digits, e.g. 20=1234")
      ->required();
  command.footer("There is no way back but the old word, which is printed before.");
  onSerialPort(line, command, std::make_shared<SerialOptions>(), [both](const SerialWork& work) {
    return writeWord(work, both->first, both->second);
  });
  refuseSetWithoutWords(command);
}

void addExchangeCommands(const Serial& serial) {
  const CommandLine& line = serial.line;
  serial.add("send", "Send one command and print the answer",
             [line](CLI::App& command) { declareSend(line, command); });
  serial.add("run", "Carry out a script: send, expect, wait, repeat",
             [line](CLI::App& command) { declareScript(line, command); });
  serial.add("read-word", "Read a word of the parameter memory",
             [line](CLI::App& command) { declareReadWord(line, command); });
  serial.add("write-word", "Write a word of the parameter memory",
             [line](CLI::App& command) { declareWriteWord(line, command); });
  serial.add("find-port", "Find the controller on COM1 or COM2", [line](CLI::App& command) {
    addJson(line, command);
    onAnySerialPort(line, command, findPort);
  });
  serial.add("find-everywhere", "Find the controller on any port, at any line setting",
             [line](CLI::App& command) {
               addJson(line, command);
               command.footer(
                   "Asks on each port that can be opened, at all speeds from 1200 to 4000000, with "
                   "7 or 8 data bits, any parity and 1 or 2 stop bits, the likeliest first. Takes "
                   "up to 25 seconds a port; Ctrl+C ends it.");
               onAnySerialPort(line, command, findEverywhere);
             });
  serial.add("to-8n1", "Tell a controller at 7 data bits, 2 stop bits to change to 8 and 1",
             [line](CLI::App& command) {
               addJson(line, command);
               onSerialPort(line, command, std::make_shared<SerialOptions>(), changeLine);
             });
}

}  // namespace

void addSerialCommands(const CommandLine& line) {
  addGroup(line, "serial", "Talk to a controller over its serial port directly",
           [line](CLI::App& group) {
             group.footer(
                 "The driver lets go of the port meanwhile and gets it back at the end, whatever "
                 "happens.");
             const Serial serial{line, group};
             addPortList(line, group);
             addListeningCommands(serial);
             addExchangeCommands(serial);
           });
}

}  // namespace touch
