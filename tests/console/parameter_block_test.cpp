#include "console/parameter_block.h"

#include "console/backup.h"
#include "console/parameter_editor.h"
#include "console/parameter_table.h"
#include "console/vrq_file.h"
#include "core/whole_file.h"
#include "tests/console/parameter_controller.h"

namespace touch {
namespace {

using test::bytesOf;
using test::Lines;
using test::replyOf;

class ParameterWords : public test::Desk {};

TEST_F(ParameterWords, AreAskedForTwiceAndNotMadeOfGarbage) {
  script.replies["GP0A"] = {{}, replyOf("01AfF")};
  EXPECT_EQ(*readWord(access(), 0x0A), (ParameterWord{0x1A, 0xFF}));
  EXPECT_EQ(journal, (Lines{"OpenController RS232 DEVICE 1", "FlushReadBuffer", "WriteBuffer GP0A",
                            "delay 200", "ReadBuffer 10", "WriteBuffer GP0A", "delay 200",
                            "ReadBuffer 10", "CloseController"}));
  // A reply is 0x01, "0" and the word, 0x0D.
  for (const char* reply : {"", "\0011\r", "\00101AF\r", "\00101AFF0\r", "\00111AFF\r",
                            "\00101AFG\r", "\0010-1AF\r", "y01AFF\r", "\00101AFF\n"}) {
    journal.clear();
    script.replies["GP01"] = {bytesOf(reply)};
    const auto word = readWord(access(), 1);
    ASSERT_FALSE(word) << testing::PrintToString(reply);
    EXPECT_EQ(word.error().problem,
              *reply == 0 ? WordError::Problem::noAnswer : WordError::Problem::badReply);
    EXPECT_EQ(std::count(journal.begin(), journal.end(), "WriteBuffer GP01"), 2);
  }
}

class BlockWriting : public test::ParameterDesk {
 protected:
  const Backup backup{folder.path(), [] { return Backup::TimePoint{}; }};

  /// The journal's lines from the address on: "03 1003 AB03 written".
  Lines noted() {
    Lines lines;
    const std::string text = folder.read("backup/journal.txt");
    for (const auto line : linesOf(text)) {
      std::string rest(line.substr(line.find("1\t") + 2));
      std::replace(rest.begin(), rest.end(), '\t', ' ');
      // Each word is announced before it is sent: the ends are only told when the beginning was.
      if (rest.ends_with(" begun")) {
        begun_ = rest.substr(0, rest.rfind(' '));
      } else {
        EXPECT_EQ(rest.substr(0, rest.rfind(' ')), begun_);
        lines.push_back(rest);
      }
    }
    return lines;
  }
  static std::string lineFor(const WordChange& change, const char* ended) {
    std::string line = hexByte(change.address);
    for (const auto& part : {wordText(change.before), wordText(change.after), std::string(ended)}) {
      line.append(" ").append(part);
    }
    return line;
  }
  const std::vector<WordValue> wanted = {
      {1, {0xAB, 1}}, {2, {0x10, 2}}, {3, {0xAB, 3}}, {6, {0xAB, 6}}};

 private:
  std::string begun_;
};

TEST_F(BlockWriting, WritesOnlyWhatDiffersAndReadsEachBack) {
  const auto result = writeBlock(access(), prompt, backup, wanted);
  EXPECT_EQ(result.end, WriteEnd::done);
  EXPECT_EQ(written(), (Lines{"SP01AB01", "SP03AB03", "SP06AB06"}));
  EXPECT_EQ(said(), (Lines{"confirm Are you sure ?!", "message Write ok!!"}));
  EXPECT_EQ(noted(),
            (Lines{"01 1001 AB01 written", "03 1003 AB03 written", "06 1006 AB06 written"}));
  EXPECT_EQ((*loadVrq(result.kept))[3], (ParameterWord{0x10, 3})) << "the block before the write";
  const auto write = std::find(journal.begin(), journal.end(), "WriteBuffer SP01AB01");
  EXPECT_EQ(Lines(write - 2, write + 9),
            (Lines{"OpenController RS232 DEVICE 1", "FlushReadBuffer", "WriteBuffer SP01AB01",
                   "delay 200", "ReadBuffer 10", "CloseController", "OpenController RS232 DEVICE 1",
                   "FlushReadBuffer", "WriteBuffer GP01", "delay 200", "ReadBuffer 10"}));

  EXPECT_EQ(undoBlock(access(), prompt, backup, result.report.oldWords()).end, WriteEnd::done);
  for (const auto& [address, word] : memory)
    EXPECT_EQ(word, (ParameterWord{0x10, address}));
}

TEST_F(BlockWriting, DoesNothingUnaskedOrUnneeded) {
  prompt.answerYes = false;
  EXPECT_EQ(writeBlock(access(), prompt, backup, wanted).end, WriteEnd::declined);
  EXPECT_EQ(journal, Lines{"confirm Are you sure ?!"});

  prompt.answerYes = true;
  const std::vector<WordValue> same = {{2, {0x10, 2}}};
  EXPECT_EQ(writeBlock(access(), prompt, backup, same).end, WriteEnd::nothingToWrite);
  memory.erase(7);
  EXPECT_EQ(writeBlock(access(), prompt, backup, wanted).end, WriteEnd::unreadable);
  EXPECT_EQ(
      said().back(),
      "message Word 07: the controller's answer holds no parameter word. Nothing was written.");
  EXPECT_TRUE(written().empty());
}

TEST_F(BlockWriting, NamesTheWordThatIsReadBackWrongAndPutsTheOldOnesBack) {
  stuck[3] = {0, 0};
  const auto result = writeBlock(access(), prompt, backup, wanted);
  EXPECT_EQ(result.end, WriteEnd::brokenOff);
  EXPECT_EQ(said()[1],
            "confirm Written: 01. Word 03: AB03 was written, 0000 was read back. Put the old words "
            "back?");
  EXPECT_EQ(said()[2],
            "message The old words are not all back. Written: 01. Word 03: 1003 was "
            "written, 0000 was read back.");
  EXPECT_EQ(memory[1], (ParameterWord{0x10, 1}));
  EXPECT_EQ(noted(), (Lines{"01 1001 AB01 written", "03 1003 AB03 failed", "01 AB01 1001 written",
                            "03 0000 1003 failed"}));
}

TEST_F(BlockWriting, PutsTheOldWordsBackWhenNobodyIsLeftToSay) {
  stuck[3] = {0, 0};
  prompt.answers = false;
  const auto result = undoBlock(access(), prompt, backup, wanted);
  EXPECT_EQ(result.end, WriteEnd::brokenOff);
  EXPECT_TRUE(result.putBack);
  EXPECT_EQ(memory[1], (ParameterWord{0x10, 1}));
}

TEST_F(BlockWriting, TellsTheTruthWhenThePowerGoesAtAnyPoint) {
  // Eight reads, then a write and a read back for each of the three words that differ.
  constexpr int commands = 8 + 3 * 2;
  for (const bool storesLast : {false, true}) {
    for (int answered = 8; answered < commands; ++answered) {
      SCOPED_TRACE(std::to_string(answered) +
                   (storesLast ? " answers, the last stored" : " answers"));
      for (auto& [address, word] : memory)
        word = {0x10, address};
      std::filesystem::remove_all(folder.path() / "backup");
      storesWhatItDoesNotAcknowledge = storesLast;
      callsUntilPowerLoss = answered;
      const auto before = memory;

      const auto result = writeBlock(access(), prompt, backup, wanted);

      EXPECT_EQ(result.end, WriteEnd::brokenOff);
      EXPECT_EQ(result.report.written.size(), static_cast<std::size_t>((answered - 8) / 2));
      ASSERT_TRUE(result.putBack);
      EXPECT_TRUE(result.putBack->written.empty());
      Lines expected;
      for (const auto& change : result.report.written) {
        EXPECT_EQ(memory[change.address], change.after) << "reported as written";
        expected.push_back(lineFor(change, "written"));
      }
      ASSERT_TRUE(result.report.brokenOffAt);
      expected.push_back(lineFor(*result.report.brokenOffAt, "failed"));
      EXPECT_EQ(noted(), expected);

      // The power is back: the way back covers the word in doubt as well.
      callsUntilPowerLoss = -1;
      EXPECT_TRUE(putBack(access(), backup, result.report.oldWords()).complete());
      EXPECT_EQ(memory, before);
    }
  }
}

TEST_F(BlockWriting, TellsThatTheJournalIsNotComplete) {
  std::filesystem::create_directories(folder.path() / "backup" / "journal.txt");
  EXPECT_EQ(writeBlock(access(), prompt, backup, wanted).end, WriteEnd::done);
  EXPECT_THAT(said().back(), testing::StartsWith("message The journal is not complete: "));
}

ParameterBlock blockOf(std::uint8_t high) {
  ParameterBlock block;
  for (std::uint8_t i = 0; i < block.size(); ++i)
    block[i] = {high, i};
  return block;
}

TEST(ParameterTables, AcceptBytesInTheChosenBaseOnly) {
  const struct {
    NumberBase base;
    std::vector<std::pair<const char*, const char*>> taken;  ///< typed and shown
    std::vector<const char*> refused;
  } cases[] = {
      {NumberBase::hexadecimal, {{"ff", "FF"}, {"A", "0A"}}, {"100", "0x1", "G0", "", "-1", " 1"}},
      {NumberBase::decimal, {{"255", "255"}, {"0", "0"}}, {"256", "A", "0010", "-1"}}};
  for (const auto& [base, taken, refused] : cases) {
    ParameterTable table;
    table.take(blockOf(0x10));
    table.setBase(base);
    for (const auto& [text, shown] : taken) {
      EXPECT_EQ(table.edit(3, WordByte::low, text), std::nullopt);
      EXPECT_EQ(table.newText(3, WordByte::low), shown);
    }
    for (const char* text : refused)
      EXPECT_TRUE(table.edit(3, WordByte::low, text)) << text;
    EXPECT_EQ(table.newText(3, WordByte::low), taken.back().second) << "what is refused stays out";
  }
  ParameterTable table;
  EXPECT_EQ(table.edit(2, WordByte::high, "GG"),
            "Word 02, high byte: expected two hexadecimal digits, 00 to FF, found \"GG\"");
}

TEST(ParameterTables, MarkWhatChangedAndWriteNothingElse) {
  ParameterTable table;
  table.take(blockOf(0x10));
  EXPECT_TRUE(table.changes()->empty());
  EXPECT_FALSE(table.edit(4, WordByte::high, "AB"));
  EXPECT_FALSE(table.edit(5, WordByte::high, "10")) << "typed, but the same";
  EXPECT_TRUE(table.changed(4));
  EXPECT_FALSE(table.changed(5));
  EXPECT_EQ(*table.changes(), (std::vector<WordValue>{{4, {0xAB, 4}}}));
  EXPECT_EQ(table.oldText(4, WordByte::high), "10");
  table.setBase(NumberBase::decimal);
  EXPECT_EQ(table.newText(4, WordByte::high), "171");

  const auto differences = table.compare(blockOf(0x10));
  ASSERT_EQ(differences.size(), 1u);
  EXPECT_EQ(differences[0].address, 4);
  EXPECT_EQ(differences[0].here, (ParameterWord{0xAB, 4}));

  table.load(blockOf(0x20));
  EXPECT_EQ(table.changes()->size(), 8u);
  EXPECT_EQ(*table.block(), blockOf(0x20));
  EXPECT_EQ(table.old(), blockOf(0x10));
}

TEST(ParameterTables, AClearedTableWritesNothingAndIsNotSaved) {
  ParameterTable table;
  table.take(blockOf(0x10));
  table.clear();
  EXPECT_TRUE(table.changes()->empty());
  EXPECT_EQ(table.newText(0, WordByte::low), "");
  EXPECT_EQ(table.oldText(0, WordByte::low), "00");
  EXPECT_EQ(table.block().error(), "Word 00, high byte: expected a value, found nothing");
  EXPECT_FALSE(table.edit(6, WordByte::high, "10"));
  EXPECT_EQ(table.changes().error(), "Word 06, low byte: expected a value, found nothing");
  EXPECT_FALSE(table.edit(6, WordByte::low, "07"));
  EXPECT_EQ(*table.changes(), (std::vector<WordValue>{{6, {0x10, 7}}}));
}

/// What was read or can be undone never outlives what it belongs to.
class ParameterEditing : public BlockWriting {
 protected:
  ParameterEditor editor{access(), prompt, backup};
};

TEST_F(ParameterEditing, ForgetsWhatACalibrationHasMadeStale) {
  editor.read();
  EXPECT_EQ(editor.parameter01(), (ParameterWord{0x10, 1}));
  editor.table().edit(3, WordByte::high, "AB");
  editor.write();
  ASSERT_TRUE(editor.canUndo());
  editor.forget();
  EXPECT_EQ(editor.parameter01(), std::nullopt);
  EXPECT_FALSE(editor.canUndo());
}

TEST_F(ParameterEditing, ReadsAgainAfterDefaultsAndUndoesOnlyThese) {
  editor.read();
  editor.table().edit(3, WordByte::high, "AB");
  editor.write();
  editor.restoreDefaults();
  EXPECT_EQ(editor.parameter01(), memory[1]) << "not the word from before";
  EXPECT_NE(editor.parameter01(), (ParameterWord{0x10, 1}));
  EXPECT_TRUE(editor.canUndo());

  memory.erase(5);
  editor.restoreDefaults();
  EXPECT_FALSE(editor.canUndo()) << "the block before could not be read: there is no way back";
  EXPECT_EQ(editor.parameter01(), std::nullopt);
}

}  // namespace
}  // namespace touch
