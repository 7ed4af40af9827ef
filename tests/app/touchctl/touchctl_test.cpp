#include <cstdlib>
#include <future>
#include <nlohmann/json.hpp>

#include "tests/app/child_process.h"

namespace touch::test {
namespace {

using nlohmann::json;

/// The program with a working folder of its own. "@" in what it is told stands for that folder.
class Touchctl : public testing::Test {
 protected:
  Touchctl() {
    folder.write("good.vrq", "0102\r\n0304\r\n0506\r\n0708\r\n090A\r\n0B0C\r\n0D0E\r\n0F10");
    folder.write(
        "lines.fdw",
        "Line #000\r\n 12 \r\n 1 \r\n 4 \r\n 480           100 \r\n 480           4000 \r\n"
        " 510           8000 \r\n 480           11400 \r\n");
    // The canvas's guide lines at 1024 x 768, each 2 twips off.
    std::string ten;
    for (int line = 0; line < 10; ++line) {
      ten += "Line #00" + std::to_string(line) + "\r\n 12 \r\n 1 \r\n 151 \r\n";
      const bool upright = line < 5;
      const int side = upright ? 15360 : 11520;
      const int place = side / 32 + line % 5 * side * 15 / 64 + 2;
      for (int along = 0; along <= 150; ++along) {
        const std::string at = std::to_string((upright ? 11520 : 15360) * along / 150);
        const std::string across = std::to_string(place);
        ten += upright ? across + " " + at + "\r\n" : at + " " + across + "\r\n";
      }
    }
    folder.write("ten.fdw", ten);
    fs::create_directory(folder.path() / "short");
    folder.write("short/errmsg.txt", std::string(99, '\n'));
  }

  Ended run(const std::string& line) const {
    const bool named = line.find("--work-dir") != line.npos;
    return runProgram(TOUCHCTL, wordsIn((named ? "" : "--work-dir @ ") + line, folder));
  }

  struct Case {
    std::string line;
    int status;
    std::string output;  ///< a part of it
    std::string errors;  ///< a part of them
  };
  /// All at a time: most of what they do is waiting for the controller.
  void expectAll(const std::vector<Case>& cases) const {
    std::vector<std::future<Ended>> begun;
    for (const Case& c : cases)
      begun.push_back(std::async(std::launch::async, [this, &c] { return run(c.line); }));
    for (std::size_t i = 0; i < cases.size(); ++i) {
      const auto& [line, status, output, errors] = cases[i];
      const Ended ended = begun[i].get();
      SCOPED_TRACE(line);
      EXPECT_EQ(ended.status, status) << ended.errors;
      EXPECT_THAT(ended.output, HasSubstr(output)) << ended.errors;
      EXPECT_THAT(ended.errors, HasSubstr(errors));
      EXPECT_TRUE(!line.ends_with("--json") || json::accept(ended.output));
      const std::string text = ended.output + ended.errors;
      EXPECT_EQ(text.find_first_of("\x1B\a\t\x7F\r"), text.npos) << text;
      EXPECT_EQ(text.find("\xC2\x9B"), text.npos) << text;
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
const std::string onStubborn = "--driver \"" STUBBORN_LIBRARY "\" ";
std::string stubborn(const std::string& line, const char* controller = "USB DEVICE 1") {
  return named(onStubborn + line, controller);
}

const std::string setPins =
    named("--simulate --yes pins set 4 X+=0:0 X-=1:1 Y+=2:2 Y\u2212=3:3", "RS232 DEVICE 1");

TEST_F(Touchctl, DoesWhatItIsToldTo) {
  expectAll({
      {"--simulate list", 0, "1  RS232 DEVICE 1  (answers)", ""},
      {usb("get"), 0, "rotation            0\n", ""},
      {usb("set right-click-time 700"), 0, "Right click response time: 700 ms\n", "Update OK"},
      {"measure lines @/ten.fdw --panel-size 344.5x193.5 --save @/ten.json", 0, "\nPASS\n", ""},
      {"--com 9=@/none serial ports", 0, "there is no such device", ""},
      {"measure lines @/ten.fdw", 0, ", nominal: 96 pixels an inch", ""},
      {usb("monitor 2"), 0, "", "Setting OK"},
      {usb("calibrate --points 3 --check"), 0, "all five touches landed near enough", ""},
      {usb("calibrate --points 3 --check --check-limit 0.1"), 1,
       "The calibration from before is in force.", ""},
      {usb("commission --serial A --use kiosk --set --panel-size 345x194"), 0, "\nPASS: ", ""},
      {stubborn("set right-click on"), 0, "Right button: on\n", ""},
      {usb("defaults"), 0, "touchctl params load \"", "Controller Restore OK"},
      {setPins, 0, "", "taken as done, as --yes says\ntouchctl: Update OK ! Re-Connect"},
  });
}

TEST_F(Touchctl, SaysWhatFailed) {
  expectAll({
      {"--simulate --trace @/no/file list", 1, "", "/no/file cannot be written"},
      {"measure lines @/lines.fdw", 5, "V-1: INCOMPLETE\n", ""},
      {"measure coverage @/ten.fdw", 5, "Rub there again.", ""},
      {"measure lines @/ten.fdw --lines eighteen", 5, "lines: 10; at least 18", ""},
      {"measure lines @/lines.fdw @/good.vrq", 1, "", "good.vrq, line 1: expected \"Line #\""},
      {"measure judge @/good.vrq", 1, "", "good.vrq, line 1: expected JSON"},
      {"--simulate serial run @/good.vrq", 1, "", "good.vrq, line 1: expected \"touch script 1\""},
      {"--simulate params load @/good.vrq", 1, "",
       "Are you sure ?! Not at a terminal: say --yes to go on."},
      {stubborn("get", "USB DEVICE 2"), 1, "", "Open Controller Error!!"},
      {stubborn("params read"), 1, "", "Word 00: the controller does not answer"},
      {stubborn("calibrate"), 1, "", "(--simulate)"},
      {stubborn("commission --serial A"), 1, "", "(--simulate)"},
      {usb("commission --serial A --skip check=late"), 5, "skipped: late", ""},
      {usb("commission --serial B --skip calibrate=so"), 1, "\nFAIL: ", ""},
      {"--simulate-from @/none list", 1, "", "the bundle of a commissioning, found nothing"},
      {"--simulate-from @/short list", 1, "", "/short/run.json: expected "},
      {"--simulate-from @/short --driver @/none.so list", 2, "", "--driver"},
      {"--simulate commission", 2, "", "--serial is required"},
      {"--simulate commission --serial A --skip panel=x", 2, "", "expected STEP=REASON"},
      {stubborn("calibrate --check"), 1, "", "\"Check after calibrating\""},
      {"--simulate calibrate --check-limit 2", 2, "", "requires --check"},
      {"--simulate calibrate --check --check-limit nan", 2, "", "--check-limit"},
      {"--driver @/none.so list", 3, "", "'touchctl doctor'"},
      {"--driver @/good.vrq list", 3, "", "/good.vrq cannot be used: "},
      {"--driver \"" INCOMPLETE_LIBRARY "\" list", 4, "", "the driver knows of no controller"},
      {"--driver \"" SCANT_LIBRARY "\" list", 1, "",
       "The touch driver library lacks the operation GetExistControllers; see 'touchctl doctor'"},
      {onStubborn + "list", 4, "USB DEVICE 2", "answers"},
      {stubborn("reset", "X"), 4, "", "there is no controller \"X\""},
  });
}

TEST_F(Touchctl, WritesWithoutAWayBackOnlyWhenToldSo) {
  folder.write("backup", "somebody's file");
  const char* const refused = "No: say --without-backup to go on all the same.";
  expectAll({
      {usb("params write 03=1A2B"), 1, "", refused},
      {usb("params load @/good.vrq"), 1, "", refused},
      {usb("defaults"), 1, "", refused},
      {setPins, 1, "", refused},
      {setPins + " --without-backup", 0, "", "Yes, as --without-backup says."},
      {usb("defaults --without-backup"), 0, "", "Yes, as --without-backup says."},
      {usb("params write 03=1A2B --without-backup"), 0, "Written: 03", "?! Yes, as --yes says."},
  });
  EXPECT_EQ(folder.read("backup"), "somebody's file");
}

TEST_F(Touchctl, NeverLooksLikeSuccessWhenADriverEndsIt) {
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  for (const auto& [rudeness, program, command] :
       {std::tuple("exit", TOUCHCTL, "list"), std::tuple("quick exit", TOUCHCTL, "list"),
        std::tuple("exit", TOUCHUTILITY, "--lang en")}) {
    setenv("RUDE_DRIVER", rudeness, 1);
    const Ended ended = runProgram(
        program, wordsIn("--work-dir @ --driver-in-process " + onStubborn + command, folder));
    EXPECT_EQ(ended.status, 1) << program;
    EXPECT_THAT(ended.errors, HasSubstr("ended from within")) << program;
  }
  unsetenv("RUDE_DRIVER");
}

TEST_F(Touchctl, TakesALimitOfTheFileSizeForAFullDisk) {
  // Its words go through a pipe, which knows no limit.
  const std::string line = "ulimit -f 0; cd " + folder.path().string() + "; '" + TOUCHCTL + "' " +
                           usb("params save kept.vrq") + "; echo status $?";
  const Ended ended = runProgram("/bin/sh", {"-c", '(' + line + ") 2>&1 | cat"});
  EXPECT_THAT(ended.output, HasSubstr("/kept.vrq"));
  EXPECT_THAT(ended.output, HasSubstr("status 1\n"));
  for (const auto& file : fs::directory_iterator(folder.path()))
    EXPECT_FALSE(file.path().filename().string().starts_with("kept")) << file.path();
}

TEST_F(Touchctl, RefusesWrongUse) {
  expectAll({
      {"", 2, "", "no command"},
      {"--work-dir @/none list", 2, "", "none"},
      {"--work-dir /dev/null list", 2, "", "\"/dev/null\" is not a folder"},
      {"frobnicate\x1B[2J\x7F\u202E", 2, "", "frobnicate\\x1B[2J\\x7F\\u202E"},
      {"set rotation", 2, "", "VALUE is required"},
      {"pins set 4", 2, "", "WIRE=CHANNEL:BIT is required"},
      {"get colour", 2, "", "there are up-sound, down-sound, "},
      {"set rotation 45", 2, "", "expected 0, 90, 180 or 270, found"},
      {"params write 08=1A2B", 2, "", "found \"08=1A2B\""},
      {"params write 03=1A2B 03=1A2C", 2, "", "03 is given twice"},
      {"pins set 5 X+=0:0", 2, "", "found \"X+=0:0\""},
      {"pins set 5 S=0:0 S=1:1", 2, "", "found S twice"},
      {"pins set 4 X+=0:0", 2, "", "found nothing for X-"},
      {"--simulate pins set 4 X+=0:0 X-=0:1 Y+=2:2 Y-=3:3", 2, "", "X+, channel: 0 is used by"},
      {"measure lines @/lines.fdw --plot x.png", 2, "",
       "touchutility saves the page as PNG and PDF"},
      {"reset --json --yes", 2, "", "--json"},
  });
}

TEST_F(Touchctl, PrintsJsonAndDrawsLines) {
  expectAll({
      {"--simulate list --json", 0, "\"name\": \"RS232 DEVICE 1\"", ""},
      {"--simulate info --json", 0, "\"unitType\": \"QRMV0301\"", ""},
      {usb("get rotation") + " --json", 0, "{\n  \"rotation\": \"0\"\n}", ""},
      {usb("pins show") + " --json", 0, "\"wire\": \"UR\"", ""},
      {"measure lines @/ten.fdw --plot @/page.svg --map @/map.svg --json", 0, "\"line\": \"V-1\"",
       ""},
      {"--simulate serial send OI --set m01 --json", 0, "\"text\": \"M0130100\"", ""},
      {"--simulate serial read-word 20 --json", 0, "\"word\": \"2580\"", ""},
      {"--simulate serial find-port --json", 0, "\"port\": 1", ""},
      {"--simulate serial find-everywhere --json --com 9=/dev/none", 0, "\"line\": \"9600,n,8,1\"",
       ""},
  });
  EXPECT_EQ(json::parse(run("--simulate list --json").output).at(0).at("number"), 1);
  EXPECT_THAT(folder.read("page.svg"), HasSubstr("V-1 PASS"));
  EXPECT_THAT(folder.read("map.svg"), HasSubstr("mm nominal"));
}

TEST_F(Touchctl, ShowsTheControllerOfACommissioning) {
  ASSERT_EQ(run(usb("commission --serial A-7 --use kiosk --set --panel-size 120x90")).status, 0);
  fs::path source;
  for (const auto& entry : fs::directory_iterator(folder.path() / "commissioning"))
    if (entry.is_directory()) source = entry;
  fs::rename(source, folder.path() / "from customer");
  folder.write("from customer/recording-2.txt", "touch recording 1\n0.500000 < D8 01 02 03 04\n");
  const std::string from = "--simulate-from \"@/from customer\" ";
  expectAll({
      {from + "list", 0, "1  USB DEVICE 2  (answers)\n", ""},
      {from + "--driver-hosted info", 0, "M0110100", ""},
      {from + "serial decode recording-2.txt", 0, "touch X   257 Y   515", ""},
      {from + "serial decode recording.txt", 1, "", "recording.txt: "},
      {from + "commission --serial A-8 --use kiosk --skip calibrate=so --skip check=so", 5,
       "INCOMPLETE", ""},
  });
  fs::remove(folder.path() / "from customer" / "measurement.json");
  expectAll({{from + "info", 0, "M0110100", "leaves open: where its touches miss; its noise"}});
}

TEST_F(Touchctl, JudgesASavedMeasurementAgain) {
  ASSERT_EQ(run("measure lines @/ten.fdw --profile kiosk --operator Ada --save @/ten.json").status,
            0);
  const Ended again = run("measure judge @/ten.json --panel-size 344.5x193.5 --json");
  EXPECT_EQ(again.status, 0) << again.errors;
  const json judged = json::parse(again.output);
  EXPECT_EQ(judged.at("outcome"), "PASS");
  EXPECT_FALSE(judged.at("sizeIsNominal"));
  EXPECT_NEAR(judged.at("/lines/0/offset"_json_pointer).get<double>(), 344.5 * 2 / 15360, 0.001);
  // The same strokes, counted in half steps: they stay on their own scale.
  json finer = json::parse(folder.read("ten.json"));
  for (json& steps : finer.at("sources").at(0).at("steps"))
    steps = 2 * steps.get<double>();
  for (json& trace : finer.at("traces"))
    for (json& sample : trace.at("samples"))
      for (const std::size_t axis : {1U, 2U})
        sample.at(axis) = 2 * sample.at(axis).get<double>();
  folder.write("finer.json", finer.dump());
  EXPECT_EQ(run("measure lines @/ten.json @/finer.json").status, 0);
  folder.write("strict.json",
               R"({"schema": "touch limits", "version": 1, "offset": {"mm": 0.01}})");
  EXPECT_EQ(run("measure judge @/ten.json --limits @/strict.json").status, 1);
}

TEST_F(Touchctl, VerifiesAndComparesBundles) {
  const std::string use = " --use kiosk --set --panel-size 345x194 --out @/runs";
  expectAll({{usb("commission --serial A" + use), 0, ".tub.zip", ""},
             {usb("commission --serial =B,\"C --skip calibrate=so --out @/runs"), 1, "", ""}});
  std::string runFolder, bundle;
  for (const auto& file : fs::directory_iterator(folder.path() / "runs")) {
    const std::string name = file.path().filename().string();
    if (name.starts_with("A-")) (file.is_directory() ? runFolder : bundle) = "runs/" + name;
  }
  ASSERT_NE(bundle, "");
  const std::string whole = folder.read(bundle);
  folder.write("torn.tub.zip", whole.substr(0, whole.size() / 2));
  folder.write("copy.tub.zip", whole);
  fs::create_directory(folder.path() / "empty");
  expectAll({
      {"sheet verify @/" + bundle, 0, "unchanged: panel A, judged anew: PASS\n", ""},
      {"sheet verify @/" + bundle + " --json", 0, "\"unchanged\": true", ""},
      {"sheet verify @/torn.tub.zip", 1, "", "torn.tub.zip: expected a ZIP archive"},
      {"sheet verify @/none", 1, "", "none: expected a file, found none"},
      {"sheet summary @/runs @/copy.tub.zip", 0, "\nPASS        A  ", ""},
      {"sheet summary @/runs --csv", 0, "first visit\n\"'=B,\"\"C\",FAIL,1,", ""},
      {"sheet summary @/runs --html", 0, "<td>=B,&quot;C</td><td class=\"FAIL\">", ""},
      {"sheet summary @/runs @/copy.tub.zip --json", 0, "\"visits\": 1,", ""},
      {"sheet summary @/torn.tub.zip @/copy.tub.zip", 1, "PASS        A  ", "torn.tub.zip: "},
      {"sheet summary @/empty", 1, "", "empty: expected bundles, *.tub.zip, in this folder"},
      {"sheet summary @/runs --json --csv", 2, "", "--json"},
      {"sheet pack @/empty", 1, "", "run.json"},
  });
  // With hashes that fit, but not what the samples come to.
  std::string sheet = folder.read(runFolder + "/sheet.json");
  sheet.replace(sheet.find("PASS"), 4, "FAIL");
  folder.write(runFolder + "/sheet.json", sheet);
  expectAll({{"sheet pack @/" + runFolder, 0, bundle + "\n", ""}});
  expectAll({{"sheet verify @/" + bundle, 1, "outcome is \"FAIL\", but comes to \"PASS\"", ""}});
  EXPECT_THAT(run("sheet verify @/" + bundle).output, HasSubstr("CHANGED: panel A, judged anew"));
}

TEST_F(Touchctl, GoesOnWithAPanelsRunUnlessItIsToBeginAnew) {
  const std::string command =
      usb("commission --serial A --skip settings=no --skip calibrate=no --skip check=no "
          "--skip measure=no --skip rate=no");
  ASSERT_EQ(run(command).status, 5);
  fs::path left;
  for (const auto& entry : fs::directory_iterator(folder.path() / "commissioning"))
    if (entry.is_directory()) left = entry;
  const std::string file = (fs::relative(left, folder.path()) / "run.json").string();
  json interrupted = json::parse(folder.read(file));
  interrupted.at("steps").at("sheet").at("state") = "open";
  folder.write(file, interrupted.dump());
  EXPECT_THAT(run(command + " --anew").output, Not(HasSubstr("Going on with")));
  EXPECT_THAT(run(command).output, HasSubstr("Going on with " + left.string()));
}

TEST_F(Touchctl, TalksPastTheDriver) {
  expectAll({
      {"--simulate serial send iO", 0, "M0130100\n01 4D 30 31", ""},
      {"--simulate serial send M --set e02 --setting 1", 0, "UIL", ""},
      {"--simulate serial send OI", 2, "", "there is no command \"OI\" in this set"},
      {"--simulate serial send iG", 2, "", "read-word"},
      {"--simulate serial send iE", 2, "", "needs a digit from 0 to 4 behind it: serial send iE 4"},
      {"--simulate serial send iE 3 --json", 0, "\"bytes\": \"01 30 0D\"", ""},
      {"--simulate serial send SE 4 --set m01", 0, "0\n01 30 0D", ""},
      {"--simulate serial send iE 5", 2, "", "DIGIT"},
      {"--simulate serial send iO 3", 2, "", "\"iO\" takes no digit"},
      {"serial read-word 40", 2, "", "00 to 3F or 80 to FF"},
      {"serial read-word 7F", 2, "", "00 to 3F or 80 to FF"},
      {"--simulate serial read-word 3F", 0, "3F  ", ""},
      {"--simulate serial read-word 80", 0, "80  ", ""},
      {"serial read-word 20 --set e02", 2, "", "the E02 set has no command for a parameter word"},
      {"serial write-word 20=1234 --set e02", 2, "", "expected m01 or quorvane"},
      {"--simulate serial write-word 20=1234", 0, "20  2580 -> 1234\n", "20 holds 2580, which"},
      {"--simulate serial send iF", 1, "",
       "Send iF=Restore Default(Factory)[k]? Not at a terminal"},
      {"--simulate serial send R --set e02", 1, "", "Send R==Reset[g]? Not at a terminal"},
      {"--simulate --yes serial send iR", 0, "", "Send iR=Reset[i]? Yes, as --yes says."},
      {"serial write-word 20=12x4", 2, "", "4 hexadecimal digits"},
      {"--simulate serial find-port", 0, "COM1\n", ""},
      {"--simulate serial monitor --port 9 --com 9=/dev/none", 1, "", "COM9 (/dev/none)"},
      {"--simulate serial monitor --port 9 --com 9=./none", 1, "", "COM9 (/"},
      {"--simulate serial monitor --line 9600,n,9,1", 2, "", "5 to 8 data bits, found \"9\""},
      {"--simulate serial monitor --port 9 --com 9=none", 1, "", "COM9 (none)"},
  });
}

TEST_F(Touchctl, DecodesAndReplaysARecordingWithoutADriver) {
  folder.write("r.txt",
               "touch recording 1\n"
               "0.000000 > 01 4D 53 0D\n"
               "0.009000 > 01 4D 50 0D\n"
               "0.010000 < D8 10 20 30 01 41\n"
               "0.020000 < 98 10 20\n"
               "0.030000 < 30 01\n");
  folder.write("torn.txt", "touch recording 1\n0.000000 < D8 10 20 30 01\n0.0");
  expectAll({
      {"--driver @/none.so serial decode @/r.txt", 0,
       "0.0090 = touch X  4112 Y   176  D8 10 20 30 01\n0.0100 < 41",
       "2 reports, 1 unrecognised bytes"},
      {"serial decode --json @/r.txt", 0,
       "{\"time\":0.008958,\"touching\":true,\"x\":4112,\"y\":176,\"bytes\":\"D8 10 20 30 01\"}\n",
       ""},
      {"serial decode --csv @/r.txt", 0,
       "reckoned\n0.008959,1,4112,176,,1\n0.030000,0,4112,176,21.041,0\n", ""},
      {"serial decode --csv @/torn.txt", 1, "\n0.000000,1,4112,176,,0\n",
       "torn.txt, line 3: expected a time"},
      {"serial replay @/r.txt", 0, "0.0090 > 01 4D 50 0D", ""},
      {"serial replay @/r.txt", 0, "touch X  4112 Y   176", ""},
      {"serial decode @/torn.txt", 1, "touch X  4112 Y   176", "torn.txt, line 3: expected a time"},
      {"serial replay @/torn.txt", 1, "touch X  4112 Y   176", "torn.txt, line 3: expected a time"},
      {"serial decode @/lines.fdw", 1, "", "lines.fdw, line 1: expected \"touch recording 1\""},
  });
  const std::string line = "cd " + folder.path().string() + "; '" TOUCHSIM "' --play lines.fdw";
  EXPECT_THAT(runProgram("/bin/sh", {"-c", line}).errors,
              HasSubstr("touchsim: " + (folder.path() / "lines.fdw").string()));
}

TEST_F(Touchctl, ExaminesTheMachineWithAndWithoutALibrary) {
  expectAll({
      {"--simulate doctor --json", 0, "RS232 DEVICE 1 answers", ""},
      {"--driver @/none.so doctor --json", 3, "none.so cannot be used: ", ""},
      {onStubborn + "doctor --json", 4, "does not answer", ""},
      {"--driver \"" INCOMPLETE_LIBRARY "\" doctor --json", 4, "lacks IsPenUp", ""},
      {"--simulate --work-dir @/short doctor --json", 1, "found 99 lines", ""},
      {"--simulate --com 2=@/none doctor --json", 1, "/none): there is no such device", ""},
  });
  const std::string file = folder.path() / "Prüfung-触.zip";
  EXPECT_THAT(run("--simulate doctor --json --save @/Prüfung-触.zip --yes").errors,
              HasSubstr("will contain doctor.txt"));
  EXPECT_THAT(runProgram("/usr/bin/unzip", {"-p", file, "doctor.json"}).output,
              HasSubstr("RS232 DEVICE 1 answers"));
}

TEST_F(Touchctl, SavesComparesAndWritesParameters) {
  const std::string unasked = named("--simulate params save @/kept.vrq", "USB DEVICE 2");
  expectAll({{unasked, 0, "", ""}});
  expectAll({{unasked, 1, "", "Replace it?"}});
  expectAll({
      {usb("params diff @/kept.vrq"), 0, "The controller and the file hold the same words.\n", ""},
      {usb("params diff @/good.vrq --json"), 1, "\"file\": \"0F10\"", ""},
      {usb("params diff @/good.vrq --json"), 1, "\"equal\": false", ""},
      {usb("params load @/kept.vrq"), 0, "", "holds these words already"},
      {usb("params diff @/none.vrq"), 1, "", "none.vrq: expected a file, found none"},
      {usb("params write 03=1A2B"), 0, "USB_DEVICE_2.vrq", ""},
  });
  EXPECT_THAT(folder.read("backup/journal.txt"), HasSubstr("\t03\t0000\t1A2B\twritten"));
}

TEST_F(Touchctl, SaysToTheDriverWhatACommandIsForAndNothingElse) {
  const Lines asked = {"01 55 54 0D", "01 4F 49 0D"};
  // What is written to the controller, what is changed in the driver.
  const std::tuple<std::string, Lines, Lines> cases[] = {
      {usb("set sensitivity more"), {"01 53 45 32 0D"}, {}},
      {usb("set touch-panel off"), {"01 4D 53 0D", "01 4D 49 0D"}, {}},
      {usb("set rotation 90"), {}, {"SetRotation"}},
      {usb("set double-click-area 3"),
       {},
       {"SetRightClickTime", "SetDoubleClickSpeed", "SetDoubleClickArea"}},
      {usb("reset"), {"01 52 0D"}, {}},
      {usb("get"), {}, {}},
      {usb("info"), {asked[1], asked[1], asked[0], asked[0], asked[1]}, {}},
      {"--simulate list", {asked[0]}, {}},
      // The third does not answer, and is asked once more.
      {"--simulate doctor",
       {asked[0], asked[1], asked[0], asked[1], asked[0], asked[1], asked[0], asked[1]},
       {}},
  };
  for (const auto& [line, written, changed] : cases) {
    run("--trace @/trace.jsonl " + line);
    Lines frames, changes;
    std::istringstream trace(folder.read("trace.jsonl"));
    for (std::string entry; std::getline(trace, entry);) {
      const json call = json::parse(entry);
      const std::string name = call.at("call");
      if (name == "WriteBuffer") frames.push_back(call.at("arguments").at(1));
      if (name.starts_with("Set") || name.starts_with("Enable") || name.ends_with("COMPort"))
        changes.push_back(name);
    }
    EXPECT_EQ(frames, written) << line;
    EXPECT_EQ(changes, changed) << line;
  }
}

/// A terminal obeys what it is sent, and a program formats or executes what it takes for more than
/// text.
TEST_F(Touchctl, PrintsNothingOfAControllersThatATerminalWouldObey) {
  const std::pair<std::string, std::string> texts[] = {
      {"%s%n{}%1", "%s%n{}%1"},          {"$(id)<b>", "$(id)<b>"},
      {"\x1B[2J\a", "\\x1B[2J\\x07"},    {"a\r\nb\t\x7F", "a\\x0D\\x0Ab\\x09\\x7F"},
      {"\x9B[2J\xFF", "\\x9B[2J\u00FF"}, {"\xC2\x9B[2J\u00B5", "\\x9B[2J\u00B5"},
  };
  for (const auto& [sent, shown] : texts) {
    SCOPED_TRACE(shown);
    setenv("HOSTILE_TEXT", sent.c_str(), 1);
    expectAll({
        {onStubborn + "list", 0, "1  USB DEVICE " + shown + "  (answers)\n", ""},
        {onStubborn + "info", 0, "USB DEVICE " + shown + '\n', ""},
        {onStubborn + "doctor", 0, "USB DEVICE " + shown, ""},
        {named(onStubborn + "get", sent + '?'), 4, "", shown + '?'},
    });
    unsetenv("HOSTILE_TEXT");
  }
}

/// The loader reads its search path when a program starts, so only a program started in the folder
/// shows what it does.
TEST(LibrarySearch, NeverReachesTheCurrentFolderWhateverItIsCalled) {
  const TemporaryFolder folder;
  const TemporaryFolder elsewhere;
  const std::string here = folder.path().string();
  for (const auto& place : {folder.path(), elsewhere.path()})
    fs::copy_file(STUBBORN_LIBRARY, place / "libnexapi.so");
  fs::create_symlink(here, elsewhere.path() / "link");
  const char* const unsafe = "LD_LIBRARY_PATH has an element that leads to the current folder";
  const char* const missing = " cannot be used: ";
  // How the driver is asked for; empty: the usual one. Status 3: no driver; 4: one whose
  // controllers do not answer.
  using Text = std::string;
  const std::tuple<Text, Text, int, Text> cases[] = {
      {"", "", 3, missing},
      {":", "", 3, unsafe},
      {"/usr/lib:", "", 3, unsafe},
      {".", "", 3, unsafe},
      {elsewhere.path().string(), "", 4, "answers"},
      {here, "", 3, unsafe},
      {"/proc/self/cwd", "", 3, unsafe},
      {"/usr/lib:" + elsewhere.path().string() + "/link", "", 3, unsafe},
      {"", "libnexapi.so", 4, "answers"},
      {"", "./libnexapi.so", 4, "answers"},
      {"", "sub/libnexapi.so", 3, missing},
      {"", "libm.so.6", 3, missing},
  };
  for (const auto& [searchPath, driver, status, complaint] : cases) {
    Lines line = {"-C", here, "LD_LIBRARY_PATH=" + searchPath, TOUCHCTL, "list"};
    if (!driver.empty()) line.insert(line.end(), {"--driver", driver});
    const Ended ended = runProgram("/usr/bin/env", line);
    EXPECT_EQ(ended.status, status)
        << '"' << searchPath << "\" " << driver << ": " << ended.output << ended.errors;
    EXPECT_THAT(ended.errors, HasSubstr(complaint));
  }
}

}  // namespace
}  // namespace touch::test
