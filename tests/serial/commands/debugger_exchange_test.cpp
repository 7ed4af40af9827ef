#include "serial/commands/debugger_exchange.h"

#include "serial/commands/command_sets.h"
#include "tests/serial/debugger/debugger_bench.h"

namespace touch::test {
namespace {

using enum CommandSet;

class DebuggerExchangeTest : public DebuggerBench {
 protected:
  DebuggerExchangeTest() {
    EXPECT_EQ(whyNot(port.take()), "");
    journal.clear();
  }

  std::optional<DebuggerReply> send(CommandSet set, const SendChoice& choice) {
    session.commandSet = set;
    return exchange.send(choice);
  }
};

TEST_F(DebuggerExchangeTest, EveryEntrySendsItsBytesOnceWhenTheAnswerIsGood) {
  const std::tuple<CommandSet, Bytes, std::string> sets[] = {
      // "Ouput" and the leap from e to g look like slips and are what the lists have always said.
      {m01, replyOf("0A"),
       ",CR=Calibrate Raw[a],CX=Calibrate Extended[b],FD=Format Decimal[c],FH=Format Hexadecimal[d]"
       ",FO=Finger Only[e],FR=Format Raw[f],FT=Format Tablet[g],GP=Get Parameter Block[h]"
       ",MI=Mode Inactive[i],MP=Mode Point[j],MS=Mode Stream[k],MT=Mode Status[l]"
       ",OI=Ouput Identity[m],OS=Output Status[n],PF=Pen or Finger[o],PL=Parameter Lock[p]"
       ",PO=Pen Only[q],R=Reset[r],RD=Restore Default(Controller)[s]"
       ",RF=Restore Default(Factory)[t],SE=Sensitivity Set[u],SP=Set Parameter Block[v]"
       ",UT=Unit Type[w],UV=Unit Type Verify[x],Uu=Query Format[y],Z=Null Command[z],N72toN81"},
      {quorvane, replyOf("0A"),
       ",iC=Calibrate Raw[a],iT=Format Tablet[b],iG=Get Parameter Block[c],iI=Mode Inactive[d]"
       ",iP=Mode Point[e],iS=Mode Stream[f],iO=Ouput Identity[g],iL=Parameter Lock[h],iR=Reset[i]"
       ",iD=Restore Default(Controller)[j],iF=Restore Default(Factory)[k],iE=Sensitivity Set[l]"
       ",iW=Set Parameter Block[m],iU=Unit Type[n],Uu=Query Format[o]"},
      {e02, bytesOf("UIa0000000"),
       ",a==Acknowledge[a],b==Report[b],d==Diagnostics[c],i==ID[d],o==Owner[e],R==Reset[g]"
       ",L==Low power[h],M==Mode[i]"},
  };
  // All others go out as their word in the set's framing.
  const std::map<std::string, std::string> special = {
      {"GP", "\x01GP20\r"},     {"SP", "\x01SP201AFF\r"},   {"iG", "\x01GP20\r"},
      {"iW", "\x01SP201AFF\r"}, {"Uu", "\x01Uu23456\rS"},   {"L", "\x01Uu23456\rS"},
      {"M", "UL1345678S"},      {"N72toN81", "\x01PN81\r"},
  };
  const std::set<std::string> reads = {"GP", "iG"};
  const std::set<std::string> writes = {"SP", "iW"};
  const std::set<std::string> changesFormat = {"R", "iR", "CR", "FR", "iC"};
  for (const auto& [set, answer, entries] : sets) {
    std::string listed;
    for (const std::string_view entry : cm1set(set)) {
      SCOPED_TRACE(entry);
      const std::string word(entry.substr(0, entry.find('=')));
      listed.append(1, ',').append(entry);
      journal.clear();
      serial.answers = {answer};
      session.commandSet = set;
      DebuggerExchange fresh(access(), prompt, port, log);
      fresh.send({std::string(entry), 1, "20", "1a", "fF"});
      const std::string framed = set == e02 ? 'U' + word + "2345678S" : '\x01' + word + '\r';
      const std::string bytes = special.contains(word) ? special.at(word) : framed;
      EXPECT_EQ(sent(), Lines{hexText(bytesOf(bytes))});
      EXPECT_EQ(hexText(session.outputFrame.bytes()), sent().front());
      EXPECT_EQ(fresh.replyFormat(), set == e02 || !changesFormat.contains(word));
      EXPECT_EQ(panelsFor(set, entry), (CommandPanels{reads.contains(word) || writes.contains(word),
                                                      writes.contains(word)}));
    }
    EXPECT_EQ(listed, entries);
  }
}

TEST(ShownReply, HasTheCharactersFrom30OnWithoutOuterBlanksAndAllBytes) {
  const auto reply = shownReply(bytesOf("\x01 A\x1E\x1DZ\xE9 \r"));
  EXPECT_EQ(reply.text, "A\x1EZ\xC3\xA9");
  EXPECT_EQ(reply.hex, "01 20 41 1E 1D 5A E9 20 0D ");
}

TEST_F(DebuggerExchangeTest, RepeatsWhatIsAnsweredBadlyAndNoOftenerThanItsSetHasIt) {
  const Bytes none;
  const Bytes good = bytesOf("UIa0");
  using Waits = std::vector<int>;
  const std::tuple<CommandSet, const char*, std::deque<Bytes>, Waits, std::string> cases[] = {
      {quorvane, "good", {replyOf("01")}, {100}, "01"},
      {quorvane, "three bytes", {replyOf("0"), replyOf("0")}, {100, 100}, "0"},
      {quorvane, "no start", {bytesOf("x12\r"), replyOf("34")}, {100, 100}, "34"},
      {quorvane, "no end, twice", {bytesOf("\1@12\n"), bytesOf("garbage")}, {100, 100}, "garbage"},
      {quorvane, "late", {none, bytesOf("A")}, {100, 100}, "A"},
      {quorvane, "silent", {none, none}, {100, 100}, ""},
      {m01, "only controls", {none, bytesOf("\x01\r")}, {100, 100}, ""},
      {e02, "good", {good}, {300}, "UIa0"},
      {e02, "short, then good", {bytesOf("UI"), good}, {300, 200}, "UIa0"},
      {e02, "three bytes", {bytesOf("UIa")}, {300}, "UIa"},
      {e02, "another first byte", {bytesOf("xIa0"), good}, {300, 100}, "UIa0"},
      {e02, "another second byte", {bytesOf("UTa0"), good}, {300, 100}, "UIa0"},
      {e02, "late and wrong", {none, bytesOf("abc"), bytesOf("def")}, {300, 200, 100}, "def"},
      {e02, "silent", {none, none, none}, {300, 200, 100}, ""},
  };
  const std::map<CommandSet, std::array<std::string, 2>> entries = {
      {m01, {"UT=Unit Type[w]", "01 55 54 0D"}},
      {quorvane, {"iU=Unit Type[n]", "01 69 55 0D"}},
      {e02, {"i==ID[d]", "55 69 32 33 34 35 36 37 38 53"}}};
  for (const auto& [set, what, given, waits, text] : cases) {
    SCOPED_TRACE(what);
    journal.clear();
    serial.answers = given;
    const auto& [entry, bytes] = entries.at(set);
    const auto reply = send(set, {entry});
    Lines expected = {"clear output", "clear input"};
    for (const int wait : waits)
      expected.insert(expected.end(), {bytes, "delay " + std::to_string(wait)});
    if (text.empty()) expected.push_back("message No Return Data ??? [Result -----]");
    EXPECT_EQ(journal, expected);
    EXPECT_EQ(reply ? reply->text : "", text);
  }
}

TEST_F(DebuggerExchangeTest, TheLastE02AttemptIsWhatStandsInTheSharedOutputFrame) {
  clock.after(std::chrono::milliseconds(450), [&] { session.outputFrame = commandFrame("Z"); });
  serial.answers = {{}, bytesOf("abc"), bytesOf("UIa")};
  send(e02, {"i==ID[d]"});
  const std::string packet = "55 69 32 33 34 35 36 37 38 53";
  EXPECT_EQ(sent(), (Lines{packet, packet, "01 5A 0D"}));
}

TEST_F(DebuggerExchangeTest, SaysThatACommandDidNotGoOut) {
  for (const bool again : {false, true}) {
    SCOPED_TRACE(again ? "the second attempt" : "the first attempt");
    journal.clear();
    log.clear();
    serial.blocked = !again;
    clock.after(std::chrono::milliseconds(50), [&] { serial.blocked = true; });
    EXPECT_FALSE(send(m01, {"UT=Unit Type[w]"}));
    EXPECT_THAT(journal.back(), StartsWith("message The command was not sent: the line"));
    EXPECT_EQ(console(), Lines(again ? 1 : 0, "> 01 55 54 0D"));
  }
}

TEST_F(DebuggerExchangeTest, SendsNothingWithoutWhatTheCommandNeeds) {
  const std::string write = "SP=Set Parameter Block[v]";
  const std::string iWrite = "iW=Set Parameter Block[m]";
  prompt.answerYes = false;
  const std::tuple<CommandSet, SendChoice, Lines> cases[] = {
      {m01, {}, {}},
      {m01, {"R="}, {}},
      {e02, {"a="}, {}},
      {e02, {"UT=Unit Type[w]"}, {}},
      {m01, {"N72toN81"}, {"proceed Comport setting from 9600,N,7,2 Change to 9600,N,8,1 "}},
      {e02, {"M==Mode[i]"}, {"message Select Setting Mode First!!"}},
      {m01, {write, {}, "20", "1", "34"}, {"message Data High Byte Error!!"}},
      {m01, {write, {}, "20", "G1", "3"}, {"message Data High Byte Error!!"}},
      {quorvane, {iWrite, {}, "20", "12", "345"}, {"message Data Low Byte Error!!"}},
      {quorvane, {iWrite, {}, "20", "12", " 3"}, {"message Data Low Byte Error!!"}},
  };
  for (const auto& [set, choice, told] : cases) {
    journal.clear();
    EXPECT_FALSE(send(set, choice)) << choice.entry;
    EXPECT_EQ(journal, told) << choice.entry;
  }
  port.giveBack();
  for (const auto& [set, entry] : {std::pair(m01, "UT=Unit Type[w]"), std::pair(m01, "N72toN81"),
                                   std::pair(e02, "i==ID[d]")}) {
    journal.clear();
    EXPECT_FALSE(send(set, {entry}));
    EXPECT_EQ(journal, Lines{"message The serial port is closed."}) << entry;
  }
}

TEST_F(DebuggerExchangeTest, NoSecondOneStartsInsideTheFirst) {
  clock.after(std::chrono::milliseconds(50), [&] {
    journal.push_back(exchange.send({"OI=Ouput Identity[m]"}) ? "sent" : "refused");
  });
  send(m01, {"UT=Unit Type[w]"});
  EXPECT_THAT(journal, Contains("refused"));
  EXPECT_EQ(sent(), Lines(2, "01 55 54 0D"));
  EXPECT_TRUE(port.gate().isOpen());
}

TEST(CommandSets, HaveTheSettingsOfAnE02PositionWhateverItsLetter) {
  std::string listed;
  for (const std::size_t position : {6U, 7U, 8U, 9U}) {
    const auto list = settingListAt(position);
    if (!list) continue;
    listed.append(list->caption) += ':';
    for (const std::size_t item : {0U, 1U})
      listed.append(list->items[item]) += '=' + e02Packet(position, item) + ';';
  }
  EXPECT_EQ(listed,
            "Power Saving Mode:0 - Keep Power On=UL0345678S;1 - Power Saving Mode=UL1345678S;"
            "Operating Mode:1 - Stream Mode=UM1345678S;2 - Untouch Mide=UM2345678S;");
  EXPECT_EQ(e02Packet(7, 2) + e02Packet(9, 0), "");
}

}  // namespace
}  // namespace touch::test
