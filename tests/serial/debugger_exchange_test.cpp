#include "serial/debugger_exchange.h"

#include <set>

#include "serial/command_sets.h"
#include "tests/serial/debugger_bench.h"

namespace touch {
namespace {

using test::Bytes;
using test::bytesOf;
using test::Lines;
using test::replyOf;

class DebuggerExchangeTest : public test::DebuggerBench {
 protected:
  DebuggerExchangeTest() {
    EXPECT_EQ(port.take(), std::nullopt);
    journal.clear();
  }

  std::optional<DebuggerReply> send(CommandSet set, SendChoice choice) {
    session.commandSet = set;
    return exchange.send(choice);
  }
  static SendChoice parameter(std::string entry, std::string high = {}, std::string low = {}) {
    return {std::move(entry), std::nullopt, "20", std::move(high), std::move(low)};
  }
};

struct EntryCase {
  const char* entry;
  const char* wire;
};

const EntryCase m01Cases[] = {
    {"CR=Calibrate Raw[a]", "01 43 52 0D"},
    {"CX=Calibrate Extended[b]", "01 43 58 0D"},
    {"FD=Format Decimal[c]", "01 46 44 0D"},
    {"FH=Format Hexadecimal[d]", "01 46 48 0D"},
    {"FO=Finger Only[e]", "01 46 4F 0D"},
    {"FR=Format Raw[f]", "01 46 52 0D"},
    {"FT=Format Tablet[g]", "01 46 54 0D"},
    {"GP=Get Parameter Block[h]", "01 47 50 32 30 0D"},
    {"MI=Mode Inactive[i]", "01 4D 49 0D"},
    {"MP=Mode Point[j]", "01 4D 50 0D"},
    {"MS=Mode Stream[k]", "01 4D 53 0D"},
    {"MT=Mode Status[l]", "01 4D 54 0D"},
    {"OI=Ouput Identity[m]", "01 4F 49 0D"},
    {"OS=Output Status[n]", "01 4F 53 0D"},
    {"PF=Pen or Finger[o]", "01 50 46 0D"},
    {"PL=Parameter Lock[p]", "01 50 4C 0D"},
    {"PO=Pen Only[q]", "01 50 4F 0D"},
    {"R=Reset[r]", "01 52 0D"},
    {"RD=Restore Default(Controller)[s]", "01 52 44 0D"},
    {"RF=Restore Default(Factory)[t]", "01 52 46 0D"},
    {"SE=Sensitivity Set[u]", "01 53 45 0D"},
    {"SP=Set Parameter Block[v]", "01 53 50 32 30 31 32 33 34 0D"},
    {"UT=Unit Type[w]", "01 55 54 0D"},
    {"UV=Unit Type Verify[x]", "01 55 56 0D"},
    {"Uu=Query Format[y]", "01 55 75 32 33 34 35 36 0D 53"},
    {"Z=Null Command[z]", "01 5A 0D"},
    {"N72toN81", "01 50 4E 38 31 0D"},
};
const EntryCase quorvaneCases[] = {
    {"iC=Calibrate Raw[a]", "01 69 43 0D"},
    {"iT=Format Tablet[b]", "01 69 54 0D"},
    {"iG=Get Parameter Block[c]", "01 47 50 32 30 0D"},
    {"iI=Mode Inactive[d]", "01 69 49 0D"},
    {"iP=Mode Point[e]", "01 69 50 0D"},
    {"iS=Mode Stream[f]", "01 69 53 0D"},
    {"iO=Ouput Identity[g]", "01 69 4F 0D"},
    {"iL=Parameter Lock[h]", "01 69 4C 0D"},
    {"iR=Reset[i]", "01 69 52 0D"},
    {"iD=Restore Default(Controller)[j]", "01 69 44 0D"},
    {"iF=Restore Default(Factory)[k]", "01 69 46 0D"},
    {"iE=Sensitivity Set[l]", "01 69 45 0D"},
    {"iW=Set Parameter Block[m]", "01 53 50 32 30 31 32 33 34 0D"},
    {"iU=Unit Type[n]", "01 69 55 0D"},
    {"Uu=Query Format[o]", "01 55 75 32 33 34 35 36 0D 53"},
};
const EntryCase e02Cases[] = {
    {"a==Acknowledge[a]", "55 61 32 33 34 35 36 37 38 53"},
    {"b==Report[b]", "55 62 32 33 34 35 36 37 38 53"},
    {"d==Diagnostics[c]", "55 64 32 33 34 35 36 37 38 53"},
    {"i==ID[d]", "55 69 32 33 34 35 36 37 38 53"},
    {"o==Owner[e]", "55 6F 32 33 34 35 36 37 38 53"},
    {"R==Reset[g]", "55 52 32 33 34 35 36 37 38 53"},
    {"L==Low power[h]", "01 55 75 32 33 34 35 36 0D 53"},
    {"M==Mode[i]", "55 4C 31 33 34 35 36 37 38 53"},
};

TEST_F(DebuggerExchangeTest, EveryEntrySendsItsBytesOnceWhenTheAnswerIsGood) {
  const struct {
    CommandSet set;
    std::span<const EntryCase> cases;
    Bytes answer;
    const char* wait;
  } sets[] = {{CommandSet::m01, m01Cases, replyOf("0A"), "delay 100"},
              {CommandSet::quorvane, quorvaneCases, replyOf("0A"), "delay 100"},
              {CommandSet::e02, e02Cases, bytesOf("UIa0000000"), "delay 300"}};
  const std::set<std::string_view> reads = {"GP", "iG"};
  const std::set<std::string_view> writes = {"SP", "iW"};
  const std::set<std::string_view> changesFormat = {"R", "iR", "CR", "FR", "iC"};
  for (const auto& [set, cases, answer, wait] : sets) {
    session.commandSet = set;
    ASSERT_EQ(cm1set(set).size(), cases.size());
    for (std::size_t i = 0; i < cases.size(); ++i) {
      const std::string_view entry = cases[i].entry;
      EXPECT_EQ(cm1set(set)[i], entry);
      wire.clear();
      journal.clear();
      answers = {answer};
      DebuggerExchange fresh(access(), prompt, port, log);
      fresh.send({std::string(entry), 1, "20", "12", "34"});
      EXPECT_EQ(wire, Lines{cases[i].wire}) << entry;
      EXPECT_TRUE(journalHas(wait)) << entry;

      const auto word = entry.substr(0, entry.find('='));
      const bool framed = set != CommandSet::e02;
      EXPECT_EQ(fresh.replyFormat(), !framed || !changesFormat.contains(word)) << entry;
      EXPECT_EQ(panelsFor(set, entry), (CommandPanels{reads.contains(word) || writes.contains(word),
                                                      writes.contains(word)}))
          << entry;
    }
  }
}

TEST_F(DebuggerExchangeTest, ClearsThePortFirstAndShowsTextAndHex) {
  answers = {bytesOf("\x01 A\x1E\x02Z\xE9 \r")};
  const auto reply = send(CommandSet::m01, {"UT=Unit Type[w]"});
  EXPECT_EQ(journal, (Lines{"clear output", "clear input", "delay 100", "01 55 54 0D"}));
  ASSERT_TRUE(reply);
  EXPECT_EQ(reply->text, "A\x1EZ\xC3\xA9") << "30 is shown, 29 and less are not; blanks go";
  EXPECT_EQ(reply->hex, "01 20 41 1E 02 5A E9 20 0D ");
  const auto lines = log.lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0].kind, ConsoleLineKind::sent);
  EXPECT_EQ(lines[1].bytes, reply->bytes);
  EXPECT_EQ(lines[1].time.count(), 100);
}

TEST_F(DebuggerExchangeTest, RepeatsWhatIsAnsweredBadlyAndNoOftenerThanItsSetHasIt) {
  const Bytes none;
  const Bytes good = bytesOf("UIa0");
  const struct {
    CommandSet set;
    const char* what;
    std::deque<Bytes> answers;
    std::vector<int> waits;
    const char* text;  ///< null: nothing to show
  } cases[] = {
      {CommandSet::quorvane, "good", {replyOf("01")}, {100}, "01"},
      {CommandSet::quorvane, "three bytes", {replyOf("0"), replyOf("0")}, {100, 100}, "0"},
      {CommandSet::quorvane, "no start", {bytesOf("x12\r"), replyOf("34")}, {100, 100}, "34"},
      {CommandSet::quorvane,
       "no end, and the second is taken as it is",
       {bytesOf("\x01"
                "12\n"),
        bytesOf("garbage")},
       {100, 100},
       "garbage"},
      {CommandSet::quorvane, "late", {none, bytesOf("A")}, {100, 100}, "A"},
      {CommandSet::quorvane, "silent", {none, none}, {100, 100}, nullptr},
      {CommandSet::m01, "only controls", {none, bytesOf("\x01\r")}, {100, 100}, nullptr},
      {CommandSet::e02, "good", {good}, {300}, "UIa0"},
      {CommandSet::e02, "late", {none, good}, {300, 200}, "UIa0"},
      {CommandSet::e02, "short, then good", {bytesOf("UI"), good}, {300, 200}, "UIa0"},
      {CommandSet::e02, "three bytes", {bytesOf("UIa")}, {300}, "UIa"},
      {CommandSet::e02, "another first byte", {bytesOf("xIa0"), good}, {300, 100}, "UIa0"},
      {CommandSet::e02, "another second byte", {bytesOf("UTa0"), good}, {300, 100}, "UIa0"},
      {CommandSet::e02,
       "late and wrong",
       {none, bytesOf("abc"), bytesOf("def")},
       {300, 200, 100},
       "def"},
      {CommandSet::e02, "silent", {none, none, none}, {300, 200, 100}, nullptr},
  };
  const std::map<CommandSet, EntryCase> entries = {{CommandSet::m01, m01Cases[22]},
                                                   {CommandSet::quorvane, quorvaneCases[13]},
                                                   {CommandSet::e02, e02Cases[3]}};
  for (const auto& c : cases) {
    wire.clear();
    journal.clear();
    answers = c.answers;
    const auto reply = send(c.set, {entries.at(c.set).entry});
    EXPECT_EQ(wire, Lines(c.waits.size(), entries.at(c.set).wire)) << c.what;
    std::vector<int> waits;
    for (const std::string& line : journal)
      if (line.starts_with("delay ")) waits.push_back(std::stoi(line.substr(6)));
    EXPECT_EQ(waits, c.waits) << c.what;
    EXPECT_EQ(std::ranges::count(journal, "clear input"), 1) << c.what;
    EXPECT_EQ(reply.has_value(), c.text != nullptr) << c.what;
    EXPECT_EQ(reply ? reply->text : "", c.text ? c.text : "") << c.what;
    EXPECT_EQ(journalHas("message No Return Data ??? [Result -----]"), !c.text) << c.what;
  }
}

TEST_F(DebuggerExchangeTest, SendsNothingWithoutWhatTheCommandNeeds) {
  const struct {
    CommandSet set;
    SendChoice choice;
    Lines told;
  } cases[] = {
      {CommandSet::m01, {}, {}},
      {CommandSet::m01, {"R="}, {}},
      {CommandSet::e02, {"a="}, {}},
      {CommandSet::e02, {"UT=Unit Type[w]"}, {}},
      {CommandSet::e02, {"M==Mode[i]"}, {"message Select Setting Mode First!!"}},
      {CommandSet::m01,
       parameter("SP=Set Parameter Block[v]", "1", "34"),
       {"message Data High Byte Error!!"}},
      {CommandSet::m01,
       parameter("SP=Set Parameter Block[v]", "G1", "3"),
       {"message Data High Byte Error!!"}},
      {CommandSet::quorvane,
       parameter("iW=Set Parameter Block[m]", "12", "345"),
       {"message Data Low Byte Error!!"}},
      {CommandSet::quorvane,
       parameter("iW=Set Parameter Block[m]", "12", " 3"),
       {"message Data Low Byte Error!!"}},
  };
  for (const auto& [set, choice, told] : cases) {
    journal.clear();
    EXPECT_FALSE(send(set, choice)) << choice.entry;
    EXPECT_EQ(journal, told) << choice.entry;
    EXPECT_EQ(serial.unread, 0u) << choice.entry;
  }
}

TEST_F(DebuggerExchangeTest, ChangesTheLineOnlyWhenTheUserSaysSo) {
  const std::string question = "confirm Comport setting from 9600,N,7,2 Change to 9600,N,8,1 ";
  prompt.answerYes = false;
  EXPECT_FALSE(send(CommandSet::m01, {"N72toN81"}));
  EXPECT_EQ(journal, Lines{question});
  EXPECT_TRUE(log.lines().empty());
  prompt.answerYes = true;
  send(CommandSet::m01, {"N72toN81"});
  EXPECT_TRUE(journalHas("01 50 4E 38 31 0D at 7N2"));
  ASSERT_EQ(log.lines().size(), 1u);
  EXPECT_EQ(log.lines()[0].text, "Comport setting from 9600,N,7,2 Change to 9600,N,8,1 ");
}

TEST_F(DebuggerExchangeTest, NoSecondOneStartsInsideTheFirst) {
  std::size_t inner = 0;
  clock.after(std::chrono::milliseconds(50), [&] {
    EXPECT_TRUE(port.isBusy());
    EXPECT_FALSE(exchange.send({"OI=Ouput Identity[m]"}));
    ++inner;
  });
  send(CommandSet::m01, {"UT=Unit Type[w]"});
  EXPECT_EQ(inner, 1u);
  EXPECT_EQ(wire, Lines(2, "01 55 54 0D"));
  EXPECT_FALSE(port.isBusy());
}

TEST_F(DebuggerExchangeTest, SaysThatThePortIsClosed) {
  port.giveBack();
  for (const auto& [set, entry] :
       {std::pair(CommandSet::m01, "UT=Unit Type[w]"), std::pair(CommandSet::m01, "N72toN81"),
        std::pair(CommandSet::e02, "i==ID[d]")}) {
    journal.clear();
    EXPECT_FALSE(send(set, {entry}));
    EXPECT_EQ(journal, Lines{"message The serial port is closed."}) << entry;
  }
}

TEST(CommandSets, TellWhichSettingsBelongToAnE02Position) {
  for (std::size_t position = 0; position < 7; ++position)
    EXPECT_FALSE(settingListAt(position));
  using Texts = std::vector<std::string_view>;
  const auto texts = [](std::size_t position) {
    const auto list = settingListAt(position).value();
    return Texts{list.caption, list.items[0], list.items[1]};
  };
  EXPECT_EQ(texts(7), (Texts{"Power Saving Mode", "0 - Keep Power On", "1 - Power Saving Mode"}));
  EXPECT_EQ(texts(8), (Texts{"Operating Mode", "1 - Stream Mode", "2 - Untouch Mide"}));
  EXPECT_FALSE(settingListAt(9));
}

TEST(CommandSets, MapAnE02PositionToItsPacketWhateverItsLetter) {
  const struct {
    std::size_t position;
    std::optional<std::size_t> setting;
    std::string packet;
  } cases[] = {{0, std::nullopt, "Ua2345678S"},
               {0, 1, "Ua2345678S"},
               {5, std::nullopt, "UR2345678S"},
               {6, std::nullopt, "\x01Uu23456\rS"},
               {7, 0, "UL0345678S"},
               {7, 1, "UL1345678S"},
               {7, 2, ""},
               {7, std::nullopt, ""},
               {8, 0, "UM1345678S"},
               {8, 1, "UM2345678S"},
               {8, std::nullopt, ""},
               {9, 0, ""}};
  for (const auto& [position, setting, packet] : cases) {
    EXPECT_EQ(e02Packet(position, setting), packet) << position;
  }
}

}  // namespace
}  // namespace touch
