#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <future>
#include <nlohmann/json.hpp>
#include <sstream>

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

  Ended run(Words words) const {
    if (std::find(words.begin(), words.end(), "--work-dir") == words.end()) {
      words.insert(words.begin(), {"--work-dir", "@"});
    }
    for (std::string& word : words) {
      if (const auto at = word.find('@'); at != word.npos) {
        word.replace(at, 1, folder.path().string());
      }
    }
    return runProgram(TOUCHCTL, words);
  }

  /// Several at a time: most of what they do is waiting for the controller.
  std::vector<Ended> runAll(const std::vector<Words>& commands) const {
    std::vector<std::future<Ended>> running;
    for (const Words& words : commands)
      running.push_back(std::async(std::launch::async, [this, words] { return run(words); }));
    std::vector<Ended> ended;
    for (auto& one : running)
      ended.push_back(one.get());
    return ended;
  }

  TemporaryFolder folder;
};

struct Case {
  const char* name;
  Words words;
  int status;
  const char* output;  ///< a part of it
  const char* errors;  ///< a part of them

  friend void PrintTo(const Case& tested, std::ostream* out) { *out << tested.name; }
};

class TouchctlTable : public Touchctl, public testing::WithParamInterface<Case> {};

TEST_P(TouchctlTable, EndsAsItShould) {
  const Ended ended = run(GetParam().words);
  EXPECT_EQ(ended.status, GetParam().status);
  EXPECT_THAT(ended.output, HasSubstr(GetParam().output));
  EXPECT_THAT(ended.errors, HasSubstr(GetParam().errors));
}

Words simulated(Words words) {
  words.insert(words.begin(), "--simulate");
  return words;
}
/// Controllers that are named are not searched for.
Words named(Words words, const char* controller) {
  words.insert(words.end(), {"--controller", controller});
  return words;
}
Words usb(Words words) {
  words.insert(words.begin(), {"--simulate", "--yes"});
  return named(std::move(words), "USB DEVICE 2");
}
Words serial(Words words) {
  words.insert(words.begin(), {"--simulate", "--yes"});
  return named(std::move(words), "RS232 DEVICE 1");
}
Words stubborn(Words words, const char* controller = "USB DEVICE 1") {
  words.insert(words.begin(), {"--driver", STUBBORN_LIBRARY});
  return named(std::move(words), controller);
}

std::string nameOf(const testing::TestParamInfo<Case>& tested) {
  return tested.param.name;
}

INSTANTIATE_TEST_SUITE_P(
    Done, TouchctlTable,
    testing::Values(
        Case{"Help", {"--help"}, 0, "Exit status: 0 done", ""},
        Case{"HelpOfSet", {"set", "--help"}, 0, "rotation            0, 90, 180, 270", ""},
        Case{"Version", {"--version"}, 0, "TouchUtility", ""},
        Case{"List", simulated({"list"}), 0, "1  RS232 DEVICE 1  (answers)", ""},
        Case{"Get", usb({"get"}), 0, "rotation            0\n", ""},
        Case{"GetOne", usb({"get", "touch-mode"}), 0, "touch-mode          desktop\n", ""},
        Case{"SetSwitch", usb({"set", "right-click", "off"}), 0, "Right button: off\n", ""},
        Case{"SetChoice", usb({"set", "rotation", "90"}), 0, "Rotation: 90\n", ""},
        Case{"SetNumber", usb({"set", "right-click-time", "700"}), 0,
             "Right click response time: 700 ms\n", "Update OK"},
        Case{"Linearity",
             {"linearity", "@/lines.fdw"},
             0,
             "V-1         4     0.13     0.53     0.00     0.26",
             ""},
        Case{"LinearityOfALargePanel",
             {"linearity", "@/lines.fdw", "--panel-size", "500x375"},
             0,
             "Panel 500.0 x 375.0 mm; limit 1 mm",
             ""},
        Case{"Monitor", usb({"monitor", "2"}), 0, "", "Setting OK"},
        Case{"PinsSet", serial({"pins", "set", "4", "X+=0:0", "X-=1:1", "Y+=2:2", "Y\u2212=3:3"}),
             0, "", "Re-Connect"}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    Failed, TouchctlTable,
    testing::Values(
        Case{"MessagesTooShort", simulated({"--work-dir", "@/short", "list"}), 1, "",
             "errmsg.txt: expected 100 lines, one for each message, found 99 lines"},
        Case{"TraceCannotBeWritten", simulated({"--trace", "@/no/file", "list"}), 1, "",
             "/no/file cannot be written"},
        Case{"BadFile", simulated({"params", "load", "@/bad.vrq"}), 1, "",
             "bad.vrq, line 3: expected four hexadecimal digits, found \"12G4\""},
        Case{"LinearityFails", {"linearity", "@/lines.fdw", "--limit", "0.5"}, 1, "FAIL\n", ""},
        Case{"LinearityInPercent",
             {"linearity", "@/lines.fdw", "--limit", "0.19", "--percent"},
             1,
             "limit 0.19 %",
             ""},
        Case{"DamagedDrawing",
             {"linearity", "@/lines.fdw", "@/bad.fdw"},
             1,
             "",
             "bad.fdw, line 2: expected a palette index from 0 to 15"},
        Case{"NoFile", simulated({"params", "diff", "@/none.vrq"}), 1, "", "none.vrq: expected"},
        Case{"QuestionWithoutTerminal", simulated({"params", "load", "@/good.vrq"}), 1, "",
             "Are you sure ?! Not at a terminal: say --yes to go on."},
        Case{"SettingNotKept", stubborn({"set", "right-click", "on"}), 1,
             "Right button: on was asked, the driver reports off\n", ""},
        Case{"SettingRefused", stubborn({"set", "double-click-speed", "0"}), 1, "", "Update Error"},
        Case{"GetNotOpened", stubborn({"get"}, "USB DEVICE 2"), 1, "", "Open Controller Error!!"},
        Case{"SetNotOpened", stubborn({"set", "rotation", "0"}, "USB DEVICE 2"), 1, "",
             "Open Controller Error!!"},
        Case{"NothingAnswers", stubborn({"params", "read"}), 1, "",
             "Word 00: the controller does not answer"},
        Case{"NoSensorType", stubborn({"pins", "show"}), 1, "", "Read Sensor Type Error!!"},
        Case{"NobodyTouches", stubborn({"calibrate"}), 1, "", "(--simulate)"}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    WrongUse, TouchctlTable,
    testing::Values(
        Case{"NoCommand", {}, 2, "", "no command"},
        Case{"NoCommandOfGroup", {"params"}, 2, "", "no command"},
        Case{"UnknownCommand", {"frobnicate"}, 2, "", "frobnicate"},
        Case{"BadCom", {"--com", "0=x", "list"}, 2, "", "0=x"},
        Case{"BadScreen", {"--screen", "0x600", "list"}, 2, "", "\"0x600\" is not WIDTHxHEIGHT"},
        Case{"NoWorkFolder", {"--work-dir", "@/none", "list"}, 2, "", "none"},
        Case{"TwoDrivers", {"--simulate", "--driver", "x", "list"}, 2, "", "--driver"},
        Case{"UnknownSetting", {"get", "colour"}, 2, "", "there are up-sound, down-sound, "},
        Case{"BadChoice", {"set", "rotation", "45"}, 2, "", "expected 0, 90, 180 or 270, found"},
        Case{"BadNumber", {"set", "right-click-time", "200"}, 2, "", "from 300 to 1200"},
        Case{"NoValue", {"set", "rotation"}, 2, "", "VALUE is required"},
        Case{"BadAddress", {"params", "write", "08=1A2B"}, 2, "", "found \"08=1A2B\""},
        Case{"BadWord", {"params", "write", "03=12G4"}, 2, "", "four hexadecimal digits"},
        Case{"WordTwice", {"params", "write", "03=1A2B", "03=1A2C"}, 2, "", "03 is given twice"},
        Case{"ThreeWires", {"pins", "set", "3", "X+=0:0"}, 2, "", "WIRES"},
        Case{"OtherWire", {"pins", "set", "5", "X+=0:0"}, 2, "", "found \"X+=0:0\""},
        Case{"WireTwice", {"pins", "set", "5", "S=0:0", "S=1:1"}, 2, "", "found S twice"},
        Case{"WireLeftOut", {"pins", "set", "4", "X+=0:0"}, 2, "", "found nothing for X-"},
        Case{"PinsTwice", simulated({"pins", "set", "4", "X+=0:0", "X-=0:1", "Y+=2:2", "Y-=3:3"}),
             2, "", "X+, channel: 0 is used by"},
        Case{"NoDrawing", {"linearity"}, 2, "", "FILE is required"},
        Case{"PlotAsPicture",
             {"linearity", "@/lines.fdw", "--plot", "x.png"},
             2,
             "",
             "touchutility saves the page as PNG and PDF"},
        Case{"BadPanelSize",
             {"linearity", "@/lines.fdw", "--panel-size", "3"},
             2,
             "",
             "\"3\" is not WIDTHxHEIGHT in mm"},
        Case{"MonitorZero", {"monitor", "0"}, 2, "", "not in range 1 to 255"},
        Case{"NothingToPrintAsJson", {"reset", "--json"}, 2, "", "--json"}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(
    NobodyThere, TouchctlTable,
    testing::Values(
        Case{"LibraryMissing", {"--driver", "@/none.so", "list"}, 3, "", "'touchctl doctor'"},
        Case{"OperationMissing", {"--driver", INCOMPLETE_LIBRARY, "list"}, 3, "", "IsPenUp"},
        Case{"NoneAnswers", {"--driver", STUBBORN_LIBRARY, "list"}, 4, "USB DEVICE 2", "answers"},
        Case{"UnknownName", stubborn({"reset"}, "X"), 4, "", "there is no controller \"X\""}),
    nameOf);

TEST_F(Touchctl, PrintsJson) {
  const struct {
    Words words;
    json::json_pointer place;
    json expected;
  } cases[] = {
      {{"--simulate", "list", "--json"}, "/0/name"_json_pointer, "RS232 DEVICE 1"},
      {{"--simulate", "info", "--json"}, "/unitType"_json_pointer, "QRMV0301"},
      {usb({"get", "--json"}), "/right-click-time"_json_pointer, 1000},
      {usb({"get", "rotation", "--json"}), json::json_pointer(), {{"rotation", "0"}}},
      {usb({"pins", "show", "--json"}), "/wires/1/wire"_json_pointer, "UR"},
  };
  std::vector<Words> commands;
  for (const auto& tested : cases)
    commands.push_back(tested.words);
  const auto ended = runAll(commands);
  for (std::size_t i = 0; i < ended.size(); ++i) {
    ASSERT_EQ(ended[i].status, 0) << ended[i].errors;
    EXPECT_EQ(json::parse(ended[i].output).at(cases[i].place), cases[i].expected);
  }
}

TEST_F(Touchctl, ExaminesTheMachineWithAndWithoutALibrary) {
  const struct {
    Words words;
    int status;
    const char* topic;
    const char* what;
  } cases[] = {
      {{"--simulate", "doctor"}, 0, "controllers", "RS232 DEVICE 1 answers"},
      {{"--driver", "@/none.so", "doctor"},
       3,
       "library",
       "none.so: cannot open shared object file"},
      {{"--driver", STUBBORN_LIBRARY, "doctor"}, 4, "controllers", "does not answer"},
      {{"--simulate", "--work-dir", "@/short", "doctor"}, 1, "files", "found 99 lines"},
      {{"--simulate", "--com", "2=@/none", "doctor"},
       1,
       "ports",
       "/none): there is no such device"},
  };
  for (const auto& [words, status, topic, what] : cases) {
    Words asked = words;
    asked.insert(asked.end(), {"--json", "--save", "@/Prüfung-触.zip", "--yes"});
    const Ended ended = run(asked);
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

TEST_F(Touchctl, MeasuresLinesAndDrawsThem) {
  const Ended ended = run({"linearity", "@/lines.fdw", "--json", "--plot", "@/page.svg"});
  ASSERT_EQ(ended.status, 0) << ended.errors;
  const json report = json::parse(ended.output);
  EXPECT_EQ(report.at("passed"), true);
  EXPECT_EQ(report.at("lines").at(0).at("line"), "V-1");
  EXPECT_NEAR(report.at("lines").at(0).at("all").at("maximum").get<double>(), 0.53, 0.01);
  EXPECT_THAT(folder.read("page.svg"), HasSubstr("V-1  pass"));
}

TEST_F(Touchctl, SavesTheBlockAndComparesIt) {
  ASSERT_EQ(run(usb({"params", "save", "@/kept.vrq"})).status, 0);
  const auto ended = runAll(
      {usb({"params", "diff", "@/kept.vrq"}), usb({"params", "diff", "@/good.vrq", "--json"})});
  EXPECT_EQ(ended[0].status, 0);
  EXPECT_EQ(ended[0].output, "The controller and the file hold the same words.\n");
  EXPECT_EQ(ended[1].status, 1);
  const json report = json::parse(ended[1].output);
  EXPECT_EQ(report.at("equal"), false);
  EXPECT_EQ(report.at("differences").back().at("address"), "07");
  EXPECT_EQ(report.at("differences").back().at("file"), "0F10");
}

TEST_F(Touchctl, WritesAWordAndKeepsTheBlockBefore) {
  const Ended ended = run(usb({"params", "write", "03=1A2B"}));
  EXPECT_EQ(ended.status, 0);
  EXPECT_THAT(ended.output, HasSubstr("Written: 03\n"));
  EXPECT_THAT(ended.output, HasSubstr("USB_DEVICE_2.vrq"));
  EXPECT_THAT(folder.read("backup/journal.txt"), HasSubstr("\t03\t0000\t1A2B\twritten"));
}

TEST_F(Touchctl, TracesTheFramesThatItWrites) {
  const struct {
    Words words;
    Words frames;
  } cases[] = {
      {{"set", "sensitivity", "more"}, {"01 53 45 32 0D"}},
      {{"set", "touch-panel", "off"}, {"01 4D 53 0D", "01 4D 49 0D"}},
      {{"reset"}, {"01 52 0D"}},
      {{"get"}, {}},
  };
  for (const auto& [words, expected] : cases) {
    Words traced = usb(words);
    traced.insert(traced.begin(), {"--trace", "@/trace.jsonl"});
    ASSERT_EQ(run(traced).status, 0);

    Words frames;
    std::istringstream trace(folder.read("trace.jsonl"));
    for (std::string line; std::getline(trace, line);) {
      const json call = json::parse(line);
      if (call.at("call") == "WriteBuffer") frames.push_back(call.at("arguments").at(1));
    }
    EXPECT_EQ(frames, expected) << words.front();
  }
}

/// A terminal obeys what it is sent, and a program formats or executes what it takes for more than text.
TEST_F(Touchctl, PrintsNothingOfAControllersThatATerminalWouldObey) {
  const struct {
    const char* sent;
    const char* shown;
  } texts[] = {
      {"%s%n{}%1", "%s%n{}%1"},
      {"$(id)<b>", "$(id)<b>"},
      {"\x1B[2J\a", "\\x1B[2J\\x07"},
      {"a\r\nb\t\x7F", "a\\x0D\\x0Ab\\x09\\x7F"},
      {"\x9B"
       "2J\xFF",
       "\\x9B2J\u00FF"},
      {"\xC2\x9B"
       "2J\u00B5",
       "\\x9B2J\u00B5"},
  };
  for (const auto& [sent, shown] : texts) {
    const std::string name = std::string("USB DEVICE ") + shown;
    const auto hostile = [&, text = std::string("HOSTILE_TEXT=") + sent](Words words) {
      words.insert(words.begin(), {text, TOUCHCTL, "--driver", STUBBORN_LIBRARY, "--work-dir",
                                   folder.path().string()});
      return std::async(std::launch::async, [words] { return runProgram("/usr/bin/env", words); });
    };
    auto listing = hostile({"list"});
    auto jsonListing = hostile({"list", "--json"});
    auto telling = hostile({"info"});
    auto examining = hostile({"doctor"});
    const Ended unknown = hostile({"get", "--controller", std::string(sent) + '?'}).get();
    EXPECT_THAT(unknown.errors, HasSubstr(std::string(shown) + '?'));
    EXPECT_THAT(listing.get().output, HasSubstr("1  " + name + "  (answers)\n"));
    EXPECT_EQ(json::parse(jsonListing.get().output).at(0).at("number"), 1);
    const Ended info = telling.get();
    EXPECT_THAT(info.output, testing::StartsWith(name + '\n'));
    const Ended doctor = examining.get();
    EXPECT_THAT(doctor.output, HasSubstr(name));
    for (const std::string& printed : {info.output, doctor.output, unknown.errors}) {
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
  const struct {
    std::string searchPath;
    Words words;
    int status;  ///< 3: no driver; 4: a driver whose controllers do not answer
  } cases[] = {
      {"", {"list"}, 3},
      {":", {"list"}, 3},
      {"/usr/lib:", {"list"}, 3},
      {":/usr/lib", {"list"}, 3},
      {".", {"list"}, 3},
      {here, {"list"}, 4},
      {here + ":", {"list"}, 3},
      {"", {"list", "--driver", "libnexapi.so"}, 4},
      {"", {"list", "--driver", "./libnexapi.so"}, 4},
      {here, {"list", "--driver", "nothing.so"}, 3},
      {here, {"list", "--driver", "sub/libnexapi.so"}, 3},
  };
  for (const auto& [searchPath, words, status] : cases) {
    Words line = {"-C", here, "LD_LIBRARY_PATH=" + searchPath, TOUCHCTL};
    line.insert(line.end(), words.begin(), words.end());
    const Ended ended = runProgram("/usr/bin/env", line);
    EXPECT_EQ(ended.status, status)
        << '"' << searchPath << "\" " << words.back() << ": " << ended.output << ended.errors;
  }
}

}  // namespace

}  // namespace touch::test
