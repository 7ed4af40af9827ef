#include <poll.h>
#include <sys/stat.h>

#include <nlohmann/json.hpp>
#include <regex>

#include "tests/app/child_process.h"
#include "tests/ports/pseudo_terminal.h"

namespace touch::test {
namespace {

using nlohmann::json;

constexpr auto patience = std::chrono::seconds(20);

/// A program that runs beside the test, until it is told to end.
class BackgroundProgram {
 public:
  /// With a `terminal` to read from, the next line may also be one of its error output.
  BackgroundProgram(const std::string& program, const Lines& arguments,
                    const std::string& terminal = {}) {
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
    output_ = ends[0];
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&files, ends[0]);
    if (!terminal.empty()) {
      posix_spawn_file_actions_addopen(&files, STDIN_FILENO, terminal.c_str(), O_RDWR | O_NOCTTY,
                                       0);
      posix_spawn_file_actions_adddup2(&files, ends[1], STDERR_FILENO);
    }
    child_ = startProgram(program, arguments, files);
    close(ends[1]);
  }
  BackgroundProgram(const BackgroundProgram&) = delete;
  BackgroundProgram& operator=(const BackgroundProgram&) = delete;
  ~BackgroundProgram() {
    if (child_ > 0) end(SIGKILL);
    if (output_ >= 0) close(output_);
  }

  /// What it prints up to `end`, or all when that does not come.
  std::string textUntil(const std::string& end) const {
    std::string text;
    char character = 0;
    while (!text.ends_with(end) && read(output_, &character, 1) == 1)
      text += character;
    return text;
  }
  void stopReading() { close(std::exchange(output_, -1)); }
  /// Until it waits for something and would hear an interrupt, or has ended already.
  void awaitWait() const {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    // It may rest for a moment on its way there.
    constexpr int enough = 10;
    for (int looks = 0; std::chrono::steady_clock::now() < deadline && looks < enough;) {
      looks = waits() ? looks + 1 : 0;
      poll(nullptr, 0, 10);
    }
  }
  int end(int signal) {
    kill(child_, signal);
    return waitForEnd();
  }
  int waitForEnd() { return endOf(std::exchange(child_, 0)); }

 private:
  bool waits() const {
    std::ifstream status("/proc/" + std::to_string(child_) + "/status");
    std::string state;
    unsigned long caught = 0;
    for (std::string word; status >> word;) {
      if (word == "State:") status >> state;
      if (word == "SigCgt:") status >> std::hex >> caught;
    }
    return state == "Z" || (state == "S" && (caught >> (SIGINT - 1) & 1U) != 0);
  }

  pid_t child_ = 0;
  int output_ = -1;
};

/// The programs with a working folder of their own, which "@" stands for.
class Serial : public testing::Test {
 protected:
  Lines inFolder(const std::string& line) const { return wordsIn("--work-dir @ " + line, folder); }
  Ended run(const std::string& line) const { return runProgram(TOUCHCTL, inFolder(line)); }
  static std::string deviceOf(const BackgroundProgram& sim) {
    const std::string line = sim.textUntil("\n");
    return line.substr(0, line.find('\n'));
  }
  /// Until the trace file is there and has `text` in it.
  bool awaitInTrace(std::string_view text) const {
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!fs::exists(folder.path() / "trace") || !isTraced(text)) {
      if (std::chrono::steady_clock::now() > deadline) return false;
      poll(nullptr, 0, 10);
    }
    return true;
  }
  bool isTraced(std::string_view text) const {
    return folder.read("trace").find(text) != std::string::npos;
  }

  TemporaryFolder folder;
};

TEST_F(Serial, EndsInOrderAndSaysSoWhenItsOutputGoesNowhere) {
  const std::tuple<std::string, std::string, bool> cases[] = {
      {"serial send iO > /dev/full", "the output could not be written", true},
      {"serial send iO >&-", "the output could not be written", true},
      {"--yes serial record /dev/full --seconds 1", "room for the recording", true},
      {"list > /dev/full", "the output could not be written", false},
      {"serial send iO 2> /dev/full", "", true}};
  for (const auto& [command, errors, takesThePort] : cases) {
    const std::string line =
        "cd " + folder.path().string() + "; '" + TOUCHCTL + "' --simulate --trace trace " + command;
    const Ended ended = runProgram("/bin/sh", {"-c", line});
    EXPECT_EQ(ended.status, errors.empty() ? 0 : 1) << command;
    EXPECT_THAT(ended.errors, HasSubstr(errors)) << command;
    EXPECT_EQ(isTraced("ReopenCOMPort"), takesThePort) << command;
  }
  for (const std::string program : {"touchctl", "touchsim"}) {
    for (const char* option : {"--help", "--version", "--man", "--complete ''"}) {
      const std::string path = program == "touchctl" ? TOUCHCTL : TOUCHSIM;
      const Ended ended =
          runProgram("/bin/sh", {"-c", "'" + path + "' " + option + " > /dev/full"});
      EXPECT_EQ(ended.status, 1) << program << ' ' << option;
      EXPECT_THAT(ended.errors, HasSubstr(program + ": the output could not be written")) << option;
    }
  }
}

TEST_F(Serial, GivesThePortBackWhenItIsEndedFromOutside) {
  const std::string traced = "--simulate --trace @/trace ";
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    fs::remove(folder.path() / "trace");
    BackgroundProgram program(TOUCHCTL, inFolder(traced + "serial monitor"));
    ASSERT_TRUE(awaitInTrace("\"serial\":\"open\""));
    EXPECT_EQ(program.end(signal), 0) << signal;
    EXPECT_TRUE(isTraced("ReopenCOMPort")) << signal;
  }

  // A calibration is given up as with Esc: the controller is reset.
  fs::remove(folder.path() / "trace");
  BackgroundProgram calibration(TOUCHCTL, inFolder(traced + "calibrate"));
  ASSERT_TRUE(awaitInTrace("SetCalPoint"));
  EXPECT_EQ(calibration.end(SIGINT), 1);
  EXPECT_TRUE(isTraced("01 52 0D"));

  // A check that is given up puts the calibration from before back.
  fs::remove(folder.path() / "trace");
  BackgroundProgram checked(TOUCHCTL, inFolder(traced + "calibrate --points 3 --check"));
  ASSERT_TRUE(awaitInTrace("StoreCalibrationData"));
  EXPECT_EQ(checked.end(SIGINT), 1);

  // A question that is left unanswered is a no, and keeps nobody waiting.
  folder.write("kept.txt", "");
  // What is typed stands there without the end of its line.
  const std::string half = "y\x04";
  // The command, what is answered with yes, the question, what is typed, what never stands in the
  // trace.
  using Text = std::string;
  const std::tuple<Text, Text, Text, Text, Text, bool> cases[] = {
      {"serial to-8n1", "", "[y/N] ", "", "9600,n,7,2", true},
      {"serial record @/kept.txt", "", "[y/N] ", "", "\"read\"", true},
      {"pins set 4 X+=7:7 X-=1:1 Y+=2:2 Y-=3:3", "[y/N] ", "Press Enter when that is done.", "",
       "53 50", false},
      {"params write 03=1A2B", "", "[y/N] ", half, "53 50", false},
  };
  for (const auto& [line, answered, question, typed, never, takesThePort] : cases) {
    SCOPED_TRACE(line);
    const PseudoTerminal terminal;
    fs::remove(folder.path() / "trace");
    BackgroundProgram program(TOUCHCTL, inFolder(traced + line), terminal.path());
    if (!answered.empty()) {
      program.textUntil(answered);
      terminal.flood(std::vector<std::uint8_t>{'y', '\n'});
    }
    EXPECT_THAT(program.textUntil(question), HasSubstr(question));
    terminal.flood(std::vector<std::uint8_t>(typed.begin(), typed.end()));
    if (!typed.empty()) program.awaitWait();
    EXPECT_EQ(program.end(SIGINT), 1);
    EXPECT_FALSE(isTraced(never));
    EXPECT_EQ(isTraced("ReopenCOMPort"), takesThePort);
  }
}

TEST_F(Serial, MeasuresAControllerAndEndsByItselfWhenNobodyReadsOn) {
  const BackgroundProgram sim(TOUCHSIM, {"--strokes", "lines"});
  const std::string line = "--com 1=" + deviceOf(sim) + " serial ";
  const Ended rate = run(line + "rate --json --no-driver");
  const json measured = json::parse(rate.output);
  EXPECT_EQ(measured.at("ceiling"), 192.0);
  EXPECT_GT(measured.at("intervals").at("median"), 0.0);

  BackgroundProgram monitor(TOUCHCTL, inFolder(line + "monitor --no-driver"));
  EXPECT_NE(monitor.textUntil("\n"), "");
  monitor.stopReading();
  EXPECT_EQ(monitor.waitForEnd(), 1);
}

TEST_F(Serial, FindsAndRecordsAControllerOnCom2WithAFormatOfItsOwn) {
  std::string formats = "six 6 E8 A8 high7@1,3\n";
  for (int line = 0; line < 11; ++line)
    formats += "bad 6\n";
  folder.write("zevrik.fmt", formats);
  // One transfer may be longer than what a line holds.
  std::string recording = "touch recording 1\n0.500000 <";
  for (int report = 0; report < 1000; ++report)
    recording += " E8 01 02 03 04 05";
  folder.write("six.txt", recording + '\n');
  const BackgroundProgram sim(TOUCHSIM, {"--play", (folder.path() / "six.txt").string()});
  const auto listen = [this, device = deviceOf(sim)](const std::string& line) {
    return run("--com 1=/dev/none --com 2=" + device + " serial " + line + " --no-driver");
  };
  EXPECT_EQ(listen("find-port").output, "COM2\n");
  const Ended found = listen("find-everywhere");
  EXPECT_EQ(found.output, "COM2  9600,n,8,1\n");
  EXPECT_THAT(found.errors, HasSubstr("Asking on COM2, 9600,n,8,1 … ("));
  const Ended heard = listen("monitor --port 2 --seconds 3");
  EXPECT_THAT(heard.output, HasSubstr("= touch X   130 Y   388"));
  EXPECT_THAT(heard.errors, HasSubstr("zevrik.fmt, line 2: expected five fields"));
  EXPECT_THAT(heard.errors, HasSubstr("11 problems in all; these are the first 10."));
  const Ended recorded = listen("record @/kept.txt --port 2 --seconds 3");
  const std::string kept = folder.read("kept.txt");
  // Transfers are the only lines with an arrow; each byte has two digits.
  const std::regex byte(R"( [0-9A-F]{2}\b)");
  std::ptrdiff_t bytes = 0;
  for (std::size_t at = kept.find(" < "); at != std::string::npos; at = kept.find(" < ", at + 1)) {
    const std::string transfer = kept.substr(at, kept.find('\n', at) - at);
    bytes += std::distance(std::sregex_iterator(transfer.begin(), transfer.end(), byte), {});
  }
  EXPECT_THAT(recorded.output, HasSubstr(std::to_string(bytes) + " bytes recorded in "));
  EXPECT_GT(bytes, 0);
  EXPECT_THAT(run("serial decode @/kept.txt").output, HasSubstr("touch X   130 Y   388"));
  EXPECT_EQ(listen("record @/kept.txt --port 2").status, 1) << "it is there already";
}

TEST_F(Serial, TalksKeyByKeyUntilItsEndKeyAndPassesBytesOnAsTheyAre) {
  using Bytes = std::vector<std::uint8_t>;
  const Bytes command = {0x01, 'O', 'I', '\r'};
  const std::tuple<std::string, std::string, std::string> views[] = {
      {"", "> 01 4F 49 0D", "= touch X  4112 Y   176  D8 10 20 30 01\n"},
      {"--show hex", "> 01 4F 49 0D", "< D8 10 20 30 01"},
      {"--show text", "> \\x01OI\n", "< \\xD8\\x10 0\\x01\n"},
      {"--json", "\"sent\":\"01 4F 49 0D\"}\n", "\"x\":4112,\"y\":176,"},
  };
  const PseudoTerminal keyboard;
  for (const auto& [view, sent, received] : views) {
    SCOPED_TRACE(view);
    const PseudoTerminal line;
    const std::string where = "--com 1=" + line.path() + " serial ";
    BackgroundProgram program(TOUCHCTL,
                              inFolder(where + "terminal --line 19200,n,8,2 --no-driver " + view),
                              keyboard.path());
    EXPECT_THAT(program.textUntil("Ctrl+] ends.\n"), HasSubstr("COM1 is open."));
    EXPECT_NE(line.settings().c_cflag & CSTOPB, 0u);
    keyboard.flood(command);
    EXPECT_EQ(line.receive(4), command);
    EXPECT_THAT(program.textUntil(sent), HasSubstr(sent));
    line.flood(Bytes{0xD8, 0x10, 0x20, 0x30, 0x01});
    EXPECT_THAT(program.textUntil(received), HasSubstr(received));
    // No key but one ends it.
    keyboard.flood(Bytes{0x03, 0x04, 0x1A, 0x11, 0x1D, 'X'});
    EXPECT_EQ(line.receive(4), (Bytes{0x03, 0x04, 0x1A, 0x11}));
    EXPECT_THAT(program.textUntil("ended by Ctrl+]\n"), HasSubstr("ended by Ctrl+]"));
    EXPECT_EQ(program.waitForEnd(), 0);
    EXPECT_NE(keyboard.settings().c_lflag & ECHO, 0u) << "the terminal is as before";
  }
  EXPECT_THAT(run("serial terminal --no-driver").errors, HasSubstr("a terminal to type in is"));

  const PseudoTerminal line;
  BackgroundProgram raw(TOUCHCTL,
                        inFolder("--com 1=" + line.path() + " serial listen --raw --no-driver"));
  raw.awaitWait();
  line.flood(Bytes{0x00, 0xFF, '\n', 0x1B, 'A'});
  EXPECT_EQ(raw.textUntil("A"), std::string("\x00\xFF\n\x1B"
                                            "A",
                                            5));
  EXPECT_EQ(raw.end(SIGINT), 0);
}

TEST_F(Serial, WaitsForAPortThatWasUnpluggedUnlessItIsToEndByItself) {
  const PseudoTerminal keyboard;
  const fs::path link = folder.path() / "line";
  // The command, and what ends its waiting.
  const std::pair<std::string, std::string> cases[] = {{"record @/trace", "Ctrl+C"},
                                                       {"terminal --record @/trace", "Ctrl+]"},
                                                       {"record @/trace --seconds 60", ""},
                                                       {"monitor", ""},
                                                       {"listen --raw", ""}};
  for (const auto& [command, endKey] : cases) {
    SCOPED_TRACE(command);
    std::optional<PseudoTerminal> line(std::in_place);
    const auto plugIn = [&] {
      fs::remove(link);
      fs::create_symlink(line->path(), link);
    };
    plugIn();
    fs::remove(folder.path() / "trace");
    BackgroundProgram program(
        TOUCHCTL, inFolder("--com 1=@/line serial " + command + " --no-driver"), keyboard.path());
    program.awaitWait();
    line.reset();
    if (endKey.empty()) {
      EXPECT_EQ(program.waitForEnd(), 1);
      continue;
    }
    EXPECT_THAT(program.textUntil(endKey + " ends\n"), HasSubstr("is gone"));
    line.emplace();
    plugIn();
    EXPECT_THAT(program.textUntil("again\n"), HasSubstr("COM1 is there again"));
    line->flood(std::vector<std::uint8_t>{0xD8, 0x10, 0x20, 0x30, 0x01});
    EXPECT_TRUE(awaitInTrace("< D8 10 20 30 01\n"));
    EXPECT_EQ(program.end(SIGINT), 0);
    EXPECT_THAT(folder.read("trace"), ContainsRegex("# [0-9.]+ Gone\n# [0-9.]+ Opened\n[0-9]"));
  }
}

TEST_F(Serial, SimulatesWhatWasRecordedOrWrittenAndIsTouchedFromOutside) {
  folder.write("dialogue.txt",
               "touch recording 1\n0.000000 > 01 55 54 0D\n0.010000 < 01 41 42 0D\n"
               "1.000000 > 01 55 54 0D\n1.010000 < 01 43 44 0D\n");
  folder.write("answers.tus", "touch script 1\non 01 \"UT\" 0D send 01 \"EF\" 0D\n");
  const auto device = [this](const std::string& options) { return wordsIn(options, folder); };
  {
    const BackgroundProgram sim(TOUCHSIM, device("--replay @/dialogue.txt --speed 19200"));
    const std::string send = "--com 1=" + deviceOf(sim) +
                             " serial send UT --set m01 --no-driver --line 19200,n,8,1 --json";
    EXPECT_THAT(run(send + " --record @/sent.txt").output, HasSubstr("\"01 41 42 0D\""));
    EXPECT_THAT(run(send).output, HasSubstr("\"01 43 44 0D\"")) << "as in the recording";
    EXPECT_THAT(folder.read("sent.txt"), HasSubstr("> 01 55 54 0D\n"));
    EXPECT_EQ(run("serial decode @/sent.txt --csv").output,
              "time_s,touching,x,y,interval_ms,reckoned\n");
    EXPECT_THAT(run("serial replay @/sent.txt --speed 1000").output, HasSubstr("> 01 55 54 0D"));
  }
  unsetenv("XDG_RUNTIME_DIR");
  {
    const PseudoTerminal terminal;
    const BackgroundProgram unreachable(TOUCHSIM, {}, terminal.path());
    EXPECT_THAT(unreachable.textUntil("\n"), HasSubstr("XDG_RUNTIME_DIR names no folder"));
  }
  setenv("XDG_RUNTIME_DIR", folder.path().c_str(), 1);
  {
    const BackgroundProgram player(
        TOUCHSIM, device("--play @/dialogue.txt --replay-speed 0.1 --line 7E1 --speed 230400"));
    EXPECT_NE(deviceOf(player), "");
    const std::pair<std::string, std::string> requests[] = {
        {"pause", ""},
        {"seek 0.5", ""},
        {"progress", "0.500 of 1.010 s, paused\n"},
        {"step", ""},
        {"progress", "1.010 of 1.010 s, paused\n"},
        {"seek 0.1", ""},
        {"go", ""}};
    for (const auto& [request, told] : requests)
      EXPECT_EQ(runProgram(TOUCHSIM, wordsIn(request, folder)).output, told) << request;
    EXPECT_THAT(runProgram(TOUCHSIM, {"progress"}).output, HasSubstr("s, going on"));
  }
  for (const char* wrong : {"seek -1", "seek 1e9", "--replay-speed 2", "--line 9N1", "--line 8N",
                            "--line 9601,n,8,1", "--speed 230401"})
    EXPECT_EQ(runProgram(TOUCHSIM, wordsIn(wrong, folder)).status, 2) << wrong;
  const BackgroundProgram script(TOUCHSIM, device("--script @/answers.tus"));
  const std::string scripted = deviceOf(script);
  EXPECT_THAT(run("--com 1=" + scripted + " serial send UT --set m01 --no-driver").output,
              HasSubstr("EF"));
  BackgroundProgram monitor(TOUCHCTL,
                            inFolder("--com 1=" + scripted + " serial monitor --no-driver"));
  monitor.awaitWait();
  EXPECT_EQ(runProgram(TOUCHSIM, {"touch", "0.5", "0.5"}).status, 0);
  EXPECT_THAT(monitor.textUntil("lift"), AllOf(HasSubstr("= touch X"), HasSubstr("lift")));
  EXPECT_THAT(runProgram(TOUCHSIM, {"pause"}).errors, HasSubstr("it plays no recording"));

  const BackgroundProgram other(TOUCHSIM, {});
  struct stat found {};
  const std::string name =
      "touchsim-" + std::regex_replace(deviceOf(other).substr(5), std::regex("/"), "-");
  ASSERT_EQ(lstat((folder.path() / name).c_str(), &found), 0);
  EXPECT_EQ(found.st_mode & 0777U, 0600U);
  EXPECT_THAT(runProgram(TOUCHSIM, {"lift"}).errors, HasSubstr("Say which with --device"));
  EXPECT_EQ(runProgram(TOUCHSIM, {"lift", "--device", scripted}).status, 0);
  EXPECT_EQ(runProgram(TOUCHSIM, {"touch", "1.5", "0"}).status, 2);
  EXPECT_EQ(runProgram(TOUCHSIM, {"touch", "0", "0", "--device", "/dev/pts/none"}).status, 1);
  unsetenv("XDG_RUNTIME_DIR");
}

/// Programs of others on the simulated controller's line; each prints what comes back.
TEST_F(Serial, TheSimulatedControllerAnswersProgramsOfOthers) {
  const BackgroundProgram sim(TOUCHSIM, {});
  const std::string device = deviceOf(sim);
  // A command that shows whether the program is there, and how it asks.
  const std::pair<std::string, std::string> others[] = {
      {"command -v picocom",
       "picocom -q -b 9600 --initstring \"$(printf '\\001UT\\r')\" "
       "--exit-after 1000 " +
           device + " < /dev/null"},
      {"command -v socat", "printf '\\001UT\\r' | socat -t 2 - " + device + ",raw,echo=0,b9600"},
      {"/usr/bin/python3 -c 'import serial.tools'",
       "/usr/bin/python3 -c \"import serial, sys\nport = serial.Serial('" + device +
           "', 9600, timeout=10)\nport.write(b'\\x01UT\\r')\n"
           "sys.stdout.buffer.write(port.read(10))\""}};
  std::string missing;
  for (const auto& [isThere, ask] : others) {
    if (runProgram("/bin/sh", {"-c", isThere}).status != 0) {
      missing += (missing.empty() ? "" : "; ") + isThere;
      continue;
    }
    EXPECT_EQ(runProgram("/bin/sh", {"-c", ask}).output, "\x01QRMV0301\r") << ask;
  }
  if (!missing.empty())
    GTEST_SKIP() << "dev/setup installs what is missing here, so not all was tried: " << missing;
}

TEST_F(Serial, TerminalAndScriptsTalkToAProgramOfOthers) {
  if (runProgram("/bin/sh", {"-c", "command -v socat"}).status != 0)
    GTEST_SKIP() << "socat is missing, which is to echo what it is sent; dev/setup installs it";
  const std::string line = (folder.path() / "line").string();
  const BackgroundProgram echo("/usr/bin/socat", {"PTY,link=" + line + ",raw,echo=0", "EXEC:cat"});
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (!fs::exists(line) && std::chrono::steady_clock::now() < deadline)
    poll(nullptr, 0, 10);
  folder.write("echo.tus",
               "touch script 1\nrepeat NN 00 to 1F\nsend \"\\x01{NN}\\r\"\n"
               "expect 01 \"{NN}\" 0D within 10 s\nend\n");
  const std::string where = "--com 1=" + line + " serial ";
  EXPECT_THAT(run(where + "run @/echo.tus --no-driver").output,
              HasSubstr("echo.tus: passed; 128 bytes sent, 128 received"));

  const PseudoTerminal keyboard;
  BackgroundProgram terminal(TOUCHCTL, inFolder(where + "terminal --show text --no-driver"),
                             keyboard.path());
  terminal.textUntil("Ctrl+] ends.\n");
  keyboard.flood(std::vector<std::uint8_t>{'h', 'i', '\r'});
  EXPECT_THAT(terminal.textUntil("< hi\n"), HasSubstr("> hi\n"));
  keyboard.flood(std::vector<std::uint8_t>{0x1D});
  EXPECT_EQ(terminal.waitForEnd(), 0);
}

TEST_F(Serial, ASimulatedControllerIsAtTheEndOfACable) {
  EXPECT_THAT(runProgram(TOUCHSIM, {"--com", "1=/dev/none", "--port", "1"}).errors,
              HasSubstr("touchsim: COM1 (/dev/none) cannot be opened: there is no such device"));
  if (runProgram("/bin/sh", {"-c", "command -v socat"}).status != 0)
    GTEST_SKIP() << "socat is missing, which is to be the cable; dev/setup installs it";
  const std::string near = (folder.path() / "near").string();
  const std::string far = (folder.path() / "far").string();
  const BackgroundProgram cable(
      "/usr/bin/socat", {"PTY,link=" + near + ",raw,echo=0", "PTY,link=" + far + ",raw,echo=0"});
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (!(fs::exists(near) && fs::exists(far)) && std::chrono::steady_clock::now() < deadline)
    poll(nullptr, 0, 10);
  BackgroundProgram controller(TOUCHSIM, {"--com", "1=" + near, "--port", "1"});
  controller.textUntil(near + '\n');
  EXPECT_THAT(run("--com 1=" + far + " serial send iO --no-driver").output, HasSubstr("M0130100"));
}

TEST_F(Serial, WaitsForNoPipeAnyMoreWhenItIsToldToEnd) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  ASSERT_EQ(mkfifo((folder.path() / "pipe").c_str(), S_IRUSR | S_IWUSR), 0);
  const std::tuple<const char*, const char*, int> cases[] = {
      {TOUCHCTL, " list", SIGINT}, {TOUCHCTL, " list", SIGTERM}, {TOUCHUTILITY, "", SIGTERM}};
  for (const auto& [program, command, signal] : cases) {
    BackgroundProgram waiting(program,
                              inFolder(std::string("--simulate --trace @/pipe") + command));
    waiting.awaitWait();
    EXPECT_EQ(waiting.end(signal), 1) << program << ' ' << signal;
  }
  // Told to end before it waits for a reader, whose pipe is full.
  const int full = open((folder.path() / "pipe").c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
  while (write(full, &full, 1) == 1) {
  }
  setenv("RUDE_DRIVER", "end", 1);
  const std::string line =
      "'" TOUCHCTL "' --driver-in-process --driver '" STUBBORN_LIBRARY "' list > ";
  EXPECT_EQ(runProgram("/bin/sh", {"-c", line + (folder.path() / "pipe").string()}).status, 4);
  unsetenv("RUDE_DRIVER");
  close(full);
}

TEST_F(Serial, TheWindowEndsInOrderWhenToldToFromOutside) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  for (const std::string_view said : {"", "GetRotation"}) {
    fs::remove(folder.path() / "trace");
    BackgroundProgram program(TOUCHUTILITY, inFolder("--simulate --trace @/trace"));
    ASSERT_TRUE(awaitInTrace(said)) << "it does not start";
    EXPECT_EQ(program.end(SIGTERM), 0) << said;
    if (said.empty()) continue;
    EXPECT_TRUE(isTraced("01 50 4C 0D")) << "parameters are locked";
  }
  BackgroundProgram without(TOUCHUTILITY, inFolder("--driver @/none.so"));
  without.awaitWait();
  EXPECT_EQ(without.end(SIGTERM), 3) << "there was no driver";
}

}  // namespace
}  // namespace touch::test
