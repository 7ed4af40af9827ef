#include "serial/debugger/debugger_port.h"

#include "tests/doubles/temporary_folder.h"
#include "tests/serial/debugger/debugger_bench.h"

namespace touch::test {
namespace {

using DebuggerPortTest = DebuggerBench;

TEST_F(DebuggerPortTest, TakesThePortFromTheDriverAndGivesItBackOnceWhateverBecameOfIt) {
  const Lines letGo = {"OpenController RS232 DEVICE 1", "CloseCOMPort"};
  const Lines end = {"ReopenCOMPort", "CloseController"};
  const Lines set = {"settings 9600,n,8,1"};
  const std::tuple<const char*, std::function<void()>, Lines> cases[] = {
      {"open", [] {}, set + Lines{"open 1", "close"}},
      {"refused", [&] { serial.present = {}; }, set},
      {"refused, then there",
       [&] {
         serial.present = {};
         port.take();
         serial.present = {1};
       },
       set + set + Lines{"open 1", "close"}},
      {"closed before", [&] { clock.after(std::chrono::seconds(1), [&] { serial.close(); }); },
       set + Lines{"open 1", "delay 2000", "close"}},
  };
  for (const auto& [what, arrange, between] : cases) {
    SCOPED_TRACE(what);
    serial.present = {1};
    journal.clear();
    arrange();
    EXPECT_EQ(whyNot(port.take()), serial.present.empty() ? "there is no COM1" : "");
    EXPECT_FALSE(script.openHandles.empty()) << "the driver takes its port back by the same handle";
    if (what == std::string("closed before")) clock.delay(std::chrono::seconds(2));
    port.giveBack();
    port.giveBack();
    EXPECT_EQ(journal, letGo + between + end);
  }
}

TEST_F(DebuggerPortTest, ClosesItsControllerAlsoWhenTheDriverFailsAsItIsDestroyed) {
  {
    DebuggerPort forgotten(access(), prompt, serial, log);
    forgotten.take();
    script.onCall = [](const std::string& line) {
      if (line == "ReopenCOMPort") throw std::bad_alloc();
    };
  }
  EXPECT_EQ(journal.back(), "CloseController");
}

TEST_F(DebuggerPortTest, NamesADriverThatDoesNotLetGoAndAsksItAgain) {
  serial.present = {};
  script.results["CloseCOMPort"] = 0;
  const std::string kept = "The driver has not released the port of RS232 DEVICE 1.";
  EXPECT_EQ(whyNot(port.take()), kept + " there is no COM1");
  EXPECT_EQ(port.driverText(), kept);
  script.results["CloseCOMPort"] = 1;
  port.take();
  port.take();
  EXPECT_EQ(port.driverText(), "The driver has released its port.");
  EXPECT_EQ(std::ranges::count(journal, "CloseCOMPort"), 2);

  port.giveBack();
  session.controllerName.clear();
  script.results["CloseCOMPort"] = 0;
  EXPECT_EQ(whyNot(port.take()), "there is no COM1") << "without a controller nobody has a port";
  EXPECT_EQ(port.driverText(), "") << "and nobody let go of one";
  EXPECT_EQ(port.letGoResult(), 0);
}

TEST_F(DebuggerPortTest, SelectcomOpensWhateverIsThereUpToCom16) {
  serial.present = {1, 3, 16, 17};
  port.selectcom();
  EXPECT_EQ(journal, (Lines{"open 1", "close", "open 3", "close", "open 16"}));
}

TEST_F(DebuggerPortTest, ComporttestFindsAControllerOnCom1OrCom2Only) {
  const Bytes none;
  using Found = std::optional<int>;
  const std::tuple<const char*, int, Bytes, Bytes, Found> cases[] = {
      {"COM1", 1, replyOf("0"), replyOf("0"), 1},
      {"COM1, deaf at first", 1, none, replyOf("0"), 1},
      {"COM1, silent the second time", 1, replyOf("0"), none, std::nullopt},
      {"COM2", 2, none, replyOf("0"), 2},
      {"COM3", 3, none, replyOf("0"), std::nullopt},
      {"two bytes", 1, none, bytesOf("0\r"), std::nullopt},
      {"three bytes", 1, none, bytesOf("ab\r"), 1},
      {"another end", 1, none, bytesOf("\x01:\r\n"), std::nullopt},
  };
  for (const auto& [what, onPort, firstAnswer, answer, found] : cases) {
    SCOPED_TRACE(what);
    serial.present = {onPort};
    serial.answers = {firstAnswer, answer};
    journal.clear();
    EXPECT_EQ(port.comporttest(), found);
    EXPECT_EQ(port.foundPort(), found);
    EXPECT_EQ(serial.isOpen(), found.has_value());
    EXPECT_EQ(journal.back() == "message Device Can't found!!", !found);
    port.giveBack();
    EXPECT_EQ(std::ranges::count(journal, "ReopenCOMPort"), 1);
  }
}

TEST_F(DebuggerPortTest, ComporttestAsksEachPortTwiceAndShowsWhatPassed) {
  serial.present = {2};
  port.take();
  journal.clear();
  serial.answers = {{}, {}, {}, bytesOf("x")};
  serial.present = {1, 2};
  EXPECT_EQ(port.comporttest(), std::nullopt);
  const Lines asked = {"clear output", "clear input", "01 5A 0D",  "delay 30", "clear output",
                       "clear input",  "01 5A 0D",    "delay 100", "close"};
  EXPECT_EQ(journal, Lines{"settings 9600,n,8,1"} + Lines{"open 1"} + asked + Lines{"open 2"} +
                         asked + Lines{"message Device Can't found!!"});
  const Lines sent = {"> 01 5A 0D", "> 01 5A 0D"};
  EXPECT_EQ(console(),
            Lines{"Asking on COM1 …"} + sent + Lines{"Asking on COM2 …"} + sent + Lines{"< 78"});
}

TEST_F(DebuggerPortTest, ConvertsAControllerAtTwoStopBitsAndReturnsToOne) {
  port.take();
  serial.answers = {bytesOf("any")};
  journal.clear();
  EXPECT_TRUE(port.N72toN81());
  EXPECT_EQ(journal, (Lines{"settings 9600,n,7,2", "clear output", "clear input",
                            "01 50 4E 38 31 0D", "delay 100", "settings 9600,n,8,1"}));
  EXPECT_EQ(serial.inBufferCount(), 0u) << "the answer is thrown away";
  EXPECT_EQ(console(), (Lines{"9600,n,7,2", "> 01 50 4E 38 31 0D", "9600,n,8,1", "< 61 6E 79"}));
  journal.clear();
  for (const bool blocked : {false, true}) {
    serial.impossible = blocked ? "" : "9600,n,7,2";
    serial.blocked = blocked;
    log.clear();
    EXPECT_FALSE(port.N72toN81());
    EXPECT_THAT(journal.back(), StartsWith(blocked ? "message The command was not sent: "
                                                   : "message 9600,n,7,2 is refused"));
    EXPECT_THAT(console(), Not(Contains(StartsWith(">"))));
  }
  EXPECT_EQ(sent(), Lines{}) << "nothing is sent at other settings";
  EXPECT_TRUE(serial.isOpen());
}

TEST_F(DebuggerPortTest, RecordsNoWriteThatDidNotGoOutAndCountsDamagedBytes) {
  const TemporaryFolder folder;
  RecordedPort recorded(serial, clock);
  recorded.open();
  recorded.startRecording(folder.path() / "taken.txt");
  for (const bool blocked : {true, false}) {
    serial.blocked = blocked;
    EXPECT_EQ(recorded.write(bytesOf("Z")), !blocked);
  }
  recorded.stopRecording();
  EXPECT_THAT(
      folder.read("taken.txt"),
      MatchesRegex("touch recording 1\n# Started: [^\n]+\n# Times: [^\n]+\n0.000000 > 5A\n"));

  serial.damaged = 2;
  port.noteDamage();
  port.noteDamage();
  EXPECT_EQ(port.damaged(), 2u);
  EXPECT_EQ(console(), Lines{"Of the bytes that came, 2 were damaged on the line (parity, stop bit "
                             "or break)."});
}

TEST_F(DebuggerPortTest, SwitchesTheWiresAgainWhenThePortIsOpenedAgain) {
  serial.present = {1, 2};
  ASSERT_EQ(whyNot(port.take()), "");
  EXPECT_FALSE(port.switchLine(LineSwitch::rts, false)) << "it has none";
  serial.state.emplace();
  const std::tuple<const char*, LineSwitch, bool, Lines> cases[] = {
      {"one off", LineSwitch::dtr, false, {"DTR off"}},
      {"both off", LineSwitch::rts, false, {"DTR off", "RTS off"}},
      {"one on again", LineSwitch::dtr, true, {"RTS off"}}};
  for (const auto& [what, which, on, again] : cases) {
    SCOPED_TRACE(what);
    EXPECT_TRUE(port.switchLine(which, on));
    serial.unplug();
    EXPECT_TRUE(port.tellLoss());
    journal.clear();
    EXPECT_TRUE(port.takeUpAgain());
    EXPECT_EQ(journal, Lines{"open 1"} + again);
  }
  journal.clear();
  EXPECT_EQ(whyNot(port.take(2)), "");
  EXPECT_THAT(journal, Not(Contains("RTS off"))) << "another port has its own";
  EXPECT_TRUE(port.wires().rts);
}

TEST_F(DebuggerPortTest, SearchesTheLikeliestSettingsFirstAndEachOnce) {
  const auto [likely, others] = searchedSettings();
  std::set<std::string> texts;
  for (const auto* const settings : {&likely, &others})
    for (const LineSettings& one : *settings)
      texts.insert(describe(one));
  constexpr std::size_t forms = 12;  // 7 or 8 bits, three parities, 1 or 2 stop bits
  EXPECT_EQ(texts.size(), (usualSpeeds.size() + highSpeeds.size()) * forms);
  EXPECT_EQ(likely.size() + others.size(), texts.size());
  EXPECT_EQ(likely.size(), usualSpeeds.size() * 6);
  for (std::size_t i = 0; i < 13; ++i)
    EXPECT_EQ(describe(likely[i]).ends_with(",n,8,1"), i == 0 || i >= 6) << i;
  EXPECT_EQ(describe(likely[5]), "9600,o,7,1");
  EXPECT_EQ(describe(likely[12]), "1200,n,8,1");
}

TEST_F(DebuggerPortTest, SearchPassesOverWhatAPortRefusesAndEndsWhenItIsCutShort) {
  serial.present = {2};
  serial.impossible = "4000000,n,8,1";
  const DebuggerPort::Place places[] = {
      {1, {}}, {1, {.baud = 1200}}, {2, {.baud = 4000000}}, {2, {}}, {2, {.baud = 1200}}};
  std::vector<std::size_t> asked;
  auto search = port.search(places, [&asked](std::size_t place) { asked.push_back(place); });
  EXPECT_FALSE(search.found);
  EXPECT_TRUE(search.isComplete);
  EXPECT_EQ(search.refused, (std::map<int, std::string>{{1, "there is no COM1"}}));
  EXPECT_EQ(asked, (std::vector<std::size_t>{3, 4}));
  EXPECT_EQ(sent().size(), 2 * asked.size());

  journal.clear();
  serial.replies["2 Z"] = replyOf("0");
  search = port.search(places, [this](std::size_t) { port.gate().cutShort(); });
  EXPECT_FALSE(search.found || search.isComplete);
  EXPECT_EQ(sent(), Lines{});
  EXPECT_FALSE(serial.isOpen());
}

TEST_F(DebuggerPortTest, KeepsEachPortsLineUntilASearchOrAChangeToTheNormalOne) {
  serial.present = {1, 2};
  const LineSettings line{19200, Parity::even, 7, 2};
  EXPECT_EQ(whyNot(port.take(2, line)), "");
  EXPECT_EQ(port.line(), line);
  EXPECT_EQ(whyNot(port.take(1)), "");
  EXPECT_EQ(port.line(), LineSettings{});
  EXPECT_EQ(whyNot(port.take(2)), "");
  EXPECT_EQ(port.line(), line);
  serial.impossible = "1200,n,8,1";
  EXPECT_EQ(whyNot(port.setLine({.baud = 1200})), "1200,n,8,1 is refused");
  EXPECT_EQ(port.line(), line) << "as before";
  port.N72toN81();
  EXPECT_EQ(port.line(), LineSettings{});
  EXPECT_EQ(whyNot(port.setLine(line)), "");
  serial.replies["2 Z"] = replyOf("0");
  EXPECT_EQ(port.comporttest(), 2);
  EXPECT_EQ(port.line(), LineSettings{}) << "it has answered so";
  const DebuggerPort::Place places[] = {{1, {}}, {2, line}};
  EXPECT_EQ(port.search(places).found.value().port, 2);
  EXPECT_EQ(port.line(), line) << "it has answered so";

  journal.clear();
  EXPECT_FALSE(port.sendBreak());
  serial.state.emplace();
  EXPECT_TRUE(port.sendBreak());
  EXPECT_EQ(journal, (Lines{"break on", "break on", "delay 250", "break off"}));
}

}  // namespace
}  // namespace touch::test
