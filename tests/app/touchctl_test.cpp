#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <thread>

#include "tests/app/child_process.h"

namespace touch::test {

namespace {

using nlohmann::json;
using testing::HasSubstr;
using Words = std::vector<std::string>;

constexpr const char* eightWords = "0102\r\n0304\r\n0506\r\n0708\r\n090A\r\n0B0C\r\n0D0E\r\n0F10";

/// The program with a working folder of its own. "@" in what it is told stands for that folder.
class Touchctl : public testing::Test {
 protected:
  Touchctl() {
    folder.write("good.vrq", eightWords);
    folder.write(
        "lines.fdw",
        "Line #000\r\n 12 \r\n 1 \r\n 4 \r\n 480           100 \r\n 480           4000 \r\n"
        " 510           8000 \r\n 480           11400 \r\n");
    folder.write("bad.fdw", "Line #000\r\n 99 \r\n");
    folder.write("bad.vrq", "0102\n0304\n12G4\n0708\n");
    std::filesystem::create_directory(folder.path() / "short");
    std::string lines;
    for (int i = 0; i < 99; ++i)
      lines += "text\n";
    folder.write("short/errmsg.txt", lines);
  }

  Ended run(const std::string& line) const {
    const bool named = line.find("--work-dir") != line.npos;
    return runProgram(TOUCHCTL, wordsIn((named ? "" : "--work-dir @ ") + line, folder));
  }

  /// Several at a time: most of what they do is waiting for the controller.
  std::vector<Ended> runAll(const Words& lines) const {
    std::vector<Ended> ended(lines.size());
    std::atomic<std::size_t> next = 0;
    const auto work = [&] {
      for (std::size_t i = next++; i < lines.size(); i = next++)
        ended[i] = run(lines[i]);
    };
    const std::jthread workers[] = {std::jthread(work), std::jthread(work), std::jthread(work)};
    work();
    return ended;
  }

  struct Case {
    std::string line;
    int status;
    const char* output;  ///< a part of it
    const char* errors;  ///< a part of them
  };
  void expectAll(const std::vector<Case>& cases) const {
    Words lines;
    for (const Case& c : cases)
      lines.push_back(c.line);
    const auto ended = runAll(lines);
    for (std::size_t i = 0; i < cases.size(); ++i) {
      SCOPED_TRACE(cases[i].line);
      EXPECT_EQ(ended[i].status, cases[i].status);
      EXPECT_THAT(ended[i].output, HasSubstr(cases[i].output));
      EXPECT_THAT(ended[i].errors, HasSubstr(cases[i].errors));
      EXPECT_TRUE(!cases[i].line.ends_with("--json") || json::accept(ended[i].output));
    }
  }

  TemporaryFolder folder;
};

/// Controllers that are named are not searched for.
std::string named(const std::string& line, const std::string& controller) {
  return line + " --controller \"" + controller + '"';
}
std::string usb(const std::string& line) {
  return named("--simulate --yes " + line, "USB DEVICE 2");
}
const std::string stubbornly = "--driver \"" STUBBORN_LIBRARY "\" ";
std::string stubborn(const std::string& line, const char* controller = "USB DEVICE 1") {
  return named(stubbornly + line, controller);
}

TEST_F(Touchctl, DoesWhatItIsToldTo) {
  expectAll({
      {"--help", 0, "Exit status: 0 done", ""},
      {"set --help", 0, "rotation            0, 90, 180, 270", ""},
      {"--simulate list", 0, "1  RS232 DEVICE 1  (answers)", ""},
      {usb("get"), 0, "rotation            0\n", ""},
      {usb("set rotation 90"), 0, "Rotation: 90\n", ""},
      {usb("set right-click-time 700"), 0, "Right click response time: 700 ms\n", "Update OK"},
      {"linearity @/lines.fdw", 0, "V-1         4     0.13     0.53     0.00     0.26", ""},
      {"linearity @/lines.fdw --panel-size 500x375", 0, "Panel 500.0 x 375.0 mm; limit 1 mm", ""},
      {usb("monitor 2"), 0, "", "Setting OK"},
      {usb("defaults"), 0, "touchctl params load \"", "Controller Restore OK"},
      {named("--simulate --yes pins set 4 X+=0:0 X-=1:1 Y+=2:2 Y\u2212=3:3", "RS232 DEVICE 1"), 0,
       "", "Re-Connect"},
  });
}

TEST_F(Touchctl, SaysWhatFailed) {
  expectAll({
      {"--simulate --work-dir @/short list", 1, "",
       "errmsg.txt: expected 100 lines, one for each message, found 99 lines"},
      {"--simulate --trace @/no/file list", 1, "", "/no/file cannot be written"},
      {"--simulate params load @/bad.vrq", 1, "",
       "bad.vrq, line 3: expected four hexadecimal digits, found \"12G4\""},
      {"linearity @/lines.fdw --limit 0.19 --percent", 1, "limit 0.19 %", ""},
      {"linearity @/lines.fdw --limit 0.5", 1, "  FAIL\nFAIL\n", ""},
      {"linearity @/lines.fdw @/bad.fdw", 1, "",
       "bad.fdw, line 2: expected a palette index from 0 to 15"},
      {"--simulate params diff @/none.vrq", 1, "", "none.vrq: expected a file, found none"},
      {"--simulate params load @/good.vrq", 1, "",
       "Are you sure ?! Not at a terminal: say --yes to go on."},
      {stubborn("set right-click on"), 1, "Right button: on was asked, the driver reports off\n",
       ""},
      {stubborn("set double-click-speed 0"), 1, "", "Update Error"},
      {stubborn("get", "USB DEVICE 2"), 1, "", "Open Controller Error!!"},
      {stubborn("set rotation 0", "USB DEVICE 2"), 1, "", "Open Controller Error!!"},
      {stubborn("params read"), 1, "", "Word 00: the controller does not answer"},
      {stubborn("pins show"), 1, "", "Read Sensor Type Error!!"},
      {stubborn("calibrate"), 1, "", "(--simulate)"},
      {"--driver @/none.so list", 3, "", "'touchctl doctor'"},
      {"--driver @/bad.vrq list", 3, "", "/bad.vrq: file too short"},
      {"--driver \"" INCOMPLETE_LIBRARY "\" list", 3, "", "IsPenUp"},
      {stubbornly + "list", 4, "USB DEVICE 2", "answers"},
      {stubborn("reset", "X"), 4, "", "there is no controller \"X\""},
  });
}

TEST_F(Touchctl, RefusesWrongUse) {
  expectAll({
      {"", 2, "", "no command"},
      {"params", 2, "", "no command"},
      {"frobnicate", 2, "", "frobnicate"},
      {"--com 0=x list", 2, "", "0=x"},
      {"--screen 0x600 list", 2, "", "\"0x600\" is not WIDTHxHEIGHT"},
      {"--work-dir @/none list", 2, "", "none"},
      {"--simulate --driver x list", 2, "", "--driver"},
      {"get colour", 2, "", "there are up-sound, down-sound, "},
      {"set rotation 45", 2, "", "expected 0, 90, 180 or 270, found"},
      {"set rotation", 2, "", "VALUE is required"},
      {"params write 08=1A2B", 2, "", "found \"08=1A2B\""},
      {"params write 03=12G4", 2, "", "four hexadecimal digits"},
      {"params write 03=1A2B 03=1A2C", 2, "", "03 is given twice"},
      {"pins set 3 X+=0:0", 2, "", "WIRES"},
      {"pins set 5 X+=0:0", 2, "", "found \"X+=0:0\""},
      {"pins set 5 S=0:0 S=1:1", 2, "", "found S twice"},
      {"pins set 4 X+=0:0", 2, "", "found nothing for X-"},
      {"--simulate pins set 4 X+=0:0 X-=0:1 Y+=2:2 Y-=3:3", 2, "", "X+, channel: 0 is used by"},
      {"linearity", 2, "", "FILE is required"},
      {"linearity @/lines.fdw --plot x.png", 2, "", "touchutility saves the page as PNG and PDF"},
      {"linearity @/lines.fdw --panel-size 3", 2, "", "\"3\" is not WIDTHxHEIGHT in mm"},
      {"monitor 0", 2, "", "not in range 1 to 255"},
      {"reset --json --yes", 2, "", "--json"},
  });
}

TEST_F(Touchctl, PrintsJsonAndDrawsLines) {
  expectAll({
      {"--simulate list --json", 0, "\"name\": \"RS232 DEVICE 1\"", ""},
      {"--simulate info --json", 0, "\"unitType\": \"QRMV0301\"", ""},
      {usb("get") + " --json", 0, "\"right-click-time\": 1000", ""},
      {usb("get rotation") + " --json", 0, "{\n  \"rotation\": \"0\"\n}", ""},
      {usb("pins show") + " --json", 0, "\"wire\": \"UR\"", ""},
      {"linearity @/lines.fdw --plot @/page.svg --json", 0, "\"passed\": true", ""},
      {"--simulate serial send OI --set m01 --json", 0, "\"text\": \"M0130100\"", ""},
      {"--simulate serial read-word 20 --json", 0, "\"word\": \"2580\"", ""},
      {"--simulate serial find-port --json", 0, "\"port\": 1", ""},
  });
  EXPECT_THAT(folder.read("page.svg"), HasSubstr("V-1  pass"));
  const json measured = json::parse(run("linearity @/lines.fdw --json").output);
  EXPECT_EQ(measured.at("/lines/0/line"_json_pointer), "V-1");
  EXPECT_NEAR(measured.at("/lines/0/all/maximum"_json_pointer).get<double>(), 0.53, 0.01);
}

TEST_F(Touchctl, TalksPastTheDriver) {
  expectAll({
      {"--simulate serial send iO", 0, "M0130100\n01 4D 30 31", ""},
      {"--simulate serial send M --set e02 --setting 1", 0, "UIL", ""},
      {"--simulate serial send M --set e02", 1, "", "Select Setting Mode First!!"},
      {"--simulate serial send OI", 2, "", "there is no command \"OI\" in this set"},
      {"--simulate serial send iG", 2, "", "read-word"},
      {"--simulate serial read-word 20", 0, "20  2580\n", ""},
      {"serial read-word 45", 2, "", "00 to 3F or 80 to FF"},
      {"--simulate serial write-word 20=1234", 0, "20  2580 -> 1234\n", ""},
      {"serial write-word 20=12x4", 2, "", "4 hexadecimal digits"},
      {"--simulate serial find-port", 0, "COM1\n", ""},
      {"--simulate serial to-8n1", 1, "", "9600,N,7,2 Change to 9600,N,8,1"},
      {"--simulate serial monitor --port 9 --com 9=/dev/none", 1, "", "COM9 (/dev/none)"},
  });
}

TEST_F(Touchctl, DecodesAndReplaysARecordingWithoutADriver) {
  folder.write("r.txt",
               "touch recording 1\n"
               "0.000000 > 01 4D 53 0D\n"
               "0.010000 < D8 10 20 30 01 41\n"
               "0.020000 < 98 10 20\n"
               "0.030000 < 30 01\n");
  folder.write("bad.txt", "touch recording 1\n0.01 < D8\n");
  expectAll({
      {"--driver @/none.so serial decode @/r.txt", 0,
       "0.010 = touch X  4112 Y   176  D8 10 20 30 01\n0.010 < 41",
       "2 reports, 1 bytes in no report"},
      {"serial decode --json @/r.txt", 0,
       "{\"time\":0.01,\"touching\":true,\"x\":4112,\"y\":176,\"bytes\":\"D8 10 20 30 01\"}\n", ""},
      {"serial replay @/r.txt", 0, "touch X  4112 Y   176", ""},
      {"serial decode @/bad.txt", 1, "", "bad.txt, line 2: expected a time"},
  });
}

TEST_F(Touchctl, ExaminesTheMachineWithAndWithoutALibrary) {
  const std::tuple<std::string, int, const char*, const char*> cases[] = {
      {"--simulate", 0, "controllers", "RS232 DEVICE 1 answers"},
      {"--driver @/none.so", 3, "library", "none.so: cannot open shared object file"},
      {stubbornly, 4, "controllers", "does not answer"},
      {"--simulate --work-dir @/short", 1, "files", "found 99 lines"},
      {"--simulate --com 2=@/none", 1, "ports", "/none): there is no such device"},
  };
  for (const auto& [options, status, topic, what] : cases) {
    const Ended ended = run(options + " doctor --json --save @/Prüfung-触.zip --yes");
    EXPECT_EQ(ended.status, status) << ended.errors;
    const json report = json::parse(ended.output);
    std::string found;
    for (const json& finding : report.at("findings")) {
      if (finding.at("topic") == topic) found += finding.at("what").get<std::string>() + '\n';
    }
    EXPECT_THAT(found, HasSubstr(what));
    const std::string file = folder.path() / "Prüfung-触.zip";
    EXPECT_EQ(runProgram("/usr/bin/unzip", {"-p", file, "doctor.json"}).output, ended.output);
  }
}

TEST_F(Touchctl, SavesComparesAndWritesParameters) {
  ASSERT_EQ(run(usb("params save @/kept.vrq")).status, 0);
  const Ended same = run(usb("params diff @/kept.vrq"));
  EXPECT_EQ(same.status, 0);
  EXPECT_EQ(same.output, "The controller and the file hold the same words.\n");
  const Ended different = run(usb("params diff @/good.vrq --json"));
  EXPECT_EQ(different.status, 1);
  EXPECT_EQ(json::parse(different.output).at("equal"), false);
  EXPECT_EQ(json::parse(different.output).at("/differences/7/file"_json_pointer), "0F10");
  const Ended written = run(usb("params write 03=1A2B"));
  EXPECT_EQ(written.status, 0);
  EXPECT_THAT(written.output, HasSubstr("Written: 03\n"));
  EXPECT_THAT(written.output, HasSubstr("USB_DEVICE_2.vrq")) << "the block before is kept";
  EXPECT_THAT(folder.read("backup/journal.txt"), HasSubstr("\t03\t0000\t1A2B\twritten"));
}

TEST_F(Touchctl, TracesTheFramesThatItWrites) {
  const std::pair<std::string, Words> cases[] = {
      {"set sensitivity more", {"01 53 45 32 0D"}},
      {"set touch-panel off", {"01 4D 53 0D", "01 4D 49 0D"}},
      {"reset", {"01 52 0D"}},
      {"get", {}},
  };
  for (const auto& [line, expected] : cases) {
    ASSERT_EQ(run("--trace @/trace.jsonl " + usb(line)).status, 0);
    Words frames;
    std::istringstream trace(folder.read("trace.jsonl"));
    for (std::string entry; std::getline(trace, entry);) {
      const json call = json::parse(entry);
      if (call.at("call") == "WriteBuffer") frames.push_back(call.at("arguments").at(1));
    }
    EXPECT_EQ(frames, expected) << line;
  }
}

/// A terminal obeys what it is sent, and a program formats or executes what it takes for more than text.
TEST_F(Touchctl, PrintsNothingOfAControllersThatATerminalWouldObey) {
  const std::pair<std::string, std::string> texts[] = {
      {"%s%n{}%1", "%s%n{}%1"},          {"$(id)<b>", "$(id)<b>"},
      {"\x1B[2J\a", "\\x1B[2J\\x07"},    {"a\r\nb\t\x7F", "a\\x0D\\x0Ab\\x09\\x7F"},
      {"\x9B[2J\xFF", "\\x9B[2J\u00FF"}, {"\xC2\x9B[2J\u00B5", "\\x9B[2J\u00B5"},
  };
  for (const auto& [sent, shown] : texts) {
    SCOPED_TRACE(shown);
    setenv("HOSTILE_TEXT", sent.c_str(), 1);
    const auto ended = runAll({stubbornly + "list", stubbornly + "list --json", stubbornly + "info",
                               stubbornly + "doctor", named(stubbornly + "get", sent + '?')});
    unsetenv("HOSTILE_TEXT");
    EXPECT_THAT(ended[0].output, HasSubstr("1  USB DEVICE " + shown + "  (answers)\n"));
    EXPECT_EQ(json::parse(ended[1].output).at(0).at("number"), 1);
    EXPECT_THAT(ended[2].output, testing::StartsWith("USB DEVICE " + shown + '\n'));
    EXPECT_THAT(ended[3].output, HasSubstr("USB DEVICE " + shown));
    EXPECT_THAT(ended[4].errors, HasSubstr(shown + '?'));
    for (const auto& printed : {ended[2].output, ended[3].output, ended[4].errors}) {
      EXPECT_EQ(printed.find_first_of("\x1B\a\t\x7F\r"), printed.npos) << printed;
      EXPECT_EQ(printed.find("\xC2\x9B"), printed.npos) << printed;
    }
  }
}

/// The loader reads its search path when a program starts, so only a program started in the folder shows what it does.
TEST(LibrarySearch, ReachesTheCurrentFolderOnlyWhereItIsNamed) {
  const TemporaryFolder folder;
  const std::string here = folder.path().string();
  std::filesystem::copy_file(STUBBORN_LIBRARY, folder.path() / "libnexapi.so");
  const char* const unsafe = "LD_LIBRARY_PATH has an empty or relative element";
  const char* const missing = "cannot open shared object file";
  const struct {
    std::string searchPath;
    std::string driver;  ///< as it is asked for; empty: the usual one
    int status;          ///< 3: no driver; 4: a driver whose controllers do not answer
    const char* complaint;
  } cases[] = {
      {"", "", 3, missing},
      {":", "", 3, unsafe},
      {"/usr/lib:", "", 3, unsafe},
      {":/usr/lib", "", 3, unsafe},
      {".", "", 3, unsafe},
      {here, "", 4, "answers"},
      {here + ":", "", 3, unsafe},
      {"", "libnexapi.so", 4, "answers"},
      {"", "./libnexapi.so", 4, "answers"},
      {here, "nothing.so", 3, missing},
      {here, "sub/libnexapi.so", 3, missing},
      {"", "libm.so.6", 3, missing},
  };
  for (const auto& [searchPath, driver, status, complaint] : cases) {
    Words line = {"-C", here, "LD_LIBRARY_PATH=" + searchPath, TOUCHCTL, "list"};
    if (!driver.empty()) line.insert(line.end(), {"--driver", driver});
    const Ended ended = runProgram("/usr/bin/env", line);
    EXPECT_EQ(ended.status, status)
        << '"' << searchPath << "\" " << driver << ": " << ended.output << ended.errors;
    EXPECT_THAT(ended.errors, HasSubstr(complaint));
  }
}

}  // namespace

}  // namespace touch::test
