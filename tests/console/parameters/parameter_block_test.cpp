#include "console/parameters/parameter_block.h"

#include "console/parameters/parameter_editor.h"
#include "console/parameters/parameter_table.h"
#include "console/parameters/vrq_file.h"
#include "support/files/whole_file.h"
#include "tests/console/parameters/parameter_controller.h"

namespace touch::test {
namespace {

class ParameterWords : public Desk {};

TEST_F(ParameterWords, AreAskedForTwiceAndNotMadeOfGarbage) {
  script.replies["GP0A"] = {{}, replyOf("01AfF")};
  EXPECT_EQ(*readWord(access(), 0x0A), (ParameterWord{0x1A, 0xFF}));
  EXPECT_EQ(journal, (Lines{"OpenController RS232 DEVICE 1", "FlushReadBuffer", "WriteBuffer GP0A",
                            "delay 200", "ReadBuffer 10", "WriteBuffer GP0A", "delay 200",
                            "ReadBuffer 10", "delay 200", "FlushReadBuffer", "CloseController"}))
      << "the answer to the second question is not left to be the next word";
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

class BlockWriting : public ParameterDesk {
 protected:
  /// The journal from the address on, blanks for tabs: "03 1003 AB03 written".
  Lines noted() {
    Lines lines;
    std::string text = folder.read("backup/journal.txt");
    std::replace(text.begin(), text.end(), '\t', ' ');
    for (const auto line : linesOf(text))
      lines.emplace_back(line.substr(line.find("DEVICE 1 ") + 9));
    return lines;
  }
  /// Each word is announced before it is sent.
  static void announce(Lines& lines, const WordChange& change, const char* ended) {
    const std::string words = hexByte(change.address) + ' ' + wordText(change.before) + ' ' +
                              wordText(change.after) + ' ';
    lines.insert(lines.end(), {words + "begun", words + ended});
  }
  const std::vector<WordValue> wanted = {
      {1, {0xAB, 1}}, {2, {0x10, 2}}, {3, {0xAB, 3}}, {6, {0xAB, 6}}};
};

TEST_F(BlockWriting, WritesOnlyWhatDiffersAndReadsEachBack) {
  const auto before = memory;
  const auto result = writeBlock(access(), prompt, backup, wanted);
  EXPECT_EQ(result.end, WriteEnd::done);
  EXPECT_EQ(written(),
            (Lines{"WriteBuffer SP01AB01", "WriteBuffer SP03AB03", "WriteBuffer SP06AB06"}));
  EXPECT_EQ(said(), (Lines{"confirm Are you sure ?!", "message Write ok!!"}));
  EXPECT_EQ(noted(), (Lines{"01 1001 AB01 begun", "01 1001 AB01 written", "03 1003 AB03 begun",
                            "03 1003 AB03 written", "06 1006 AB06 begun", "06 1006 AB06 written"}));
  EXPECT_EQ((*loadVrq(result.kept))[3], (ParameterWord{0x10, 3})) << "the block before the write";
  EXPECT_EQ(undoBlock(access(), prompt, backup, result.report.oldWords()).end, WriteEnd::done);
  EXPECT_EQ(memory, before);
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
  EXPECT_THAT(said().back(), EndsWith(" no parameter word. Nothing was written."));

  memory[7] = {0x10, 7};
  folder.write("backup", "a file where the folder should be");
  prompt.answerYes = false;
  EXPECT_EQ(undoBlock(access(), prompt, backup, wanted).end, WriteEnd::declined)
      << "without a way back";
  EXPECT_TRUE(written().empty());
}

TEST_F(BlockWriting, NamesTheWordThatIsReadBackWrongAndPutsTheOldOnesBack) {
  stuck[3] = {0, 0};
  EXPECT_EQ(writeBlock(access(), prompt, backup, wanted).end, WriteEnd::brokenOff);
  EXPECT_THAT(said(), ElementsAre(testing::_,
                                  "confirm Written: 01. Word 03: AB03 was written, 0000 "
                                  "was read back. Put the old words back?",
                                  "message The old words are not all back. Written: 01. "
                                  "Word 03: 1003 was written, 0000 was read back."));
  EXPECT_EQ(memory[1], (ParameterWord{0x10, 1}));
  EXPECT_THAT(noted(),
              IsSupersetOf({"03 1003 AB03 failed", "01 AB01 1001 written", "03 0000 1003 failed"}));

  prompt.answers = false;
  EXPECT_TRUE(undoBlock(access(), prompt, backup, wanted).putBack) << "nobody is left to say";
  EXPECT_EQ(memory[1], (ParameterWord{0x10, 1}));
}

TEST_F(BlockWriting, TellsTheTruthWhenThePowerGoesAtAnyPoint) {
  const auto before = memory;
  // Eight reads, then a write and a read back for each of the three words that differ.
  for (int answered = 8; answered < 8 + 3 * 2; ++answered) {
    for (const bool storesLast : {false, true}) {
      SCOPED_TRACE(testing::Message() << answered << " answers, the last stored: " << storesLast);
      fs::remove_all(folder.path() / "backup");
      storesWhatItDoesNotAcknowledge = storesLast;
      callsUntilPowerLoss = answered;
      const auto result = writeBlock(access(), prompt, backup, wanted);
      EXPECT_EQ(result.end, WriteEnd::brokenOff);
      EXPECT_EQ(result.report.written.size(), static_cast<std::size_t>((answered - 8) / 2));
      EXPECT_TRUE(result.putBack && result.putBack->written.empty());
      Lines expected;
      for (const auto& change : result.report.written) {
        EXPECT_EQ(memory[change.address], change.after) << "reported as written";
        announce(expected, change, "written");
      }
      announce(expected, result.report.brokenOffAt.value(), "failed");
      EXPECT_EQ(noted(), expected);

      // The power is back: the way back covers the word in doubt as well.
      callsUntilPowerLoss = -1;
      EXPECT_TRUE(putBack(access(), backup, result.report.oldWords()).complete());
      EXPECT_EQ(memory, before);
    }
  }
}

TEST_F(BlockWriting, TellsThatTheJournalIsNotComplete) {
  fs::create_directories(folder.path() / "backup" / "journal.txt");
  EXPECT_EQ(writeBlock(access(), prompt, backup, wanted).end, WriteEnd::done);
  EXPECT_THAT(said().back(), StartsWith("message The journal is not complete: "));
}

TEST(ParameterTable, TakesBytesInTheChosenBaseOnly) {
  ParameterTable table;
  EXPECT_EQ(whyNot(table.edit(3, WordByte::low, "a")), "");
  for (const char* text : {"100", "0x1", "G0", "", "-1", " 1"})
    EXPECT_NE(whyNot(table.edit(3, WordByte::low, text)), "") << text;
  EXPECT_EQ(table.newText(3, WordByte::low), " 1") << "what is refused stays in sight";
  table.setBase(NumberBase::decimal);
  EXPECT_EQ(whyNot(table.edit(3, WordByte::low, "255")), "");
  for (const char* text : {"256", "A", "0010", "-1"})
    EXPECT_NE(whyNot(table.edit(3, WordByte::low, text)), "") << text;
  EXPECT_TRUE(table.isRejected(3, WordByte::low));
}

TEST(ParameterTable, WritesOnlyWhatChangedAndNothingThatIsEmpty) {
  const ParameterBlock before = {
      {{0x10, 0}, {0x10, 1}, {0x10, 2}, {0x10, 3}, {0x10, 4}, {0x10, 5}, {0x10, 6}, {0x10, 7}}};
  ParameterTable table;
  table.take(before);
  EXPECT_EQ(whyNot(table.edit(4, WordByte::high, "AB")), "");
  EXPECT_EQ(whyNot(table.edit(5, WordByte::high, "10")), "") << "typed, but the same";
  EXPECT_EQ(*table.changes(), (std::vector<WordValue>{{4, {0xAB, 4}}}));
  EXPECT_EQ(table.compare(before).at(0).here, (ParameterWord{0xAB, 4}));
  table.clear();
  EXPECT_TRUE(table.changes()->empty());
  EXPECT_EQ(whyNot(table.block()), "Word 00, high byte: value missing");
  EXPECT_EQ(whyNot(table.edit(6, WordByte::high, "10")), "");
  EXPECT_EQ(whyNot(table.changes()), "Word 06, low byte: value missing");
  EXPECT_EQ(whyNot(table.edit(6, WordByte::low, "07")), "");
  EXPECT_EQ(*table.changes(), (std::vector<WordValue>{{6, {0x10, 7}}}));

  ParameterBlock other = before;
  other[7] = {0x20, 7};
  table.load(other);
  EXPECT_EQ(*table.changes(), (std::vector<WordValue>{{7, {0x20, 7}}}));
  EXPECT_EQ(*table.block(), other);
}

/// What was read or can be undone never outlives what it belongs to.
TEST_F(BlockWriting, OfTheEditorForgetsWhatIsStaleAndUndoesOnlyTheLast) {
  ParameterEditor editor(access(), prompt, backup);
  editor.read();
  editor.table().edit(3, WordByte::high, "AB");
  editor.write();
  ASSERT_TRUE(editor.canUndo());
  prompt.onMessage = [this] { memory.erase(5); };
  editor.table().edit(3, WordByte::high, "AC");
  EXPECT_TRUE(
      editor.write().text.ends_with("Word 05: the controller's answer holds no parameter word"));
  EXPECT_EQ(editor.parameter01(), std::nullopt) << "nobody knows what the controller holds";
  EXPECT_EQ(editor.table().newText(3, WordByte::high), "AC");
  prompt.onMessage = nullptr;
  editor.table().edit(3, WordByte::high, "AD");
  editor.calibrated();
  EXPECT_EQ(editor.parameter01(), std::nullopt);
  EXPECT_FALSE(editor.canUndo());
}

TEST_F(BlockWriting, OfTheEditorShowsWhatIsNoLongerRead) {
  ParameterEditor editor(access(), prompt, backup);
  EXPECT_EQ(editor.table().oldText(3, WordByte::low), "") << "never read";
  for (const auto action : {&ParameterEditor::restoreDefaults, &ParameterEditor::reset}) {
    editor.read();
    editor.table().edit(3, WordByte::high, "AB");
    (editor.*action)();
    EXPECT_EQ(editor.table().oldText(3, WordByte::low), "?");
    EXPECT_EQ(editor.table().newText(3, WordByte::high), "AB") << "typed, not written";
    EXPECT_EQ(editor.table().newText(3, WordByte::low), "") << "read, and gone";
    EXPECT_EQ(editor.parameter01(), std::nullopt);
  }
  editor.read();
  EXPECT_EQ(editor.table().oldText(3, WordByte::low), "03");
  editor.table().setBase(NumberBase::decimal);
  editor.forget();
  EXPECT_EQ(editor.table().oldText(3, WordByte::low), "") << "another controller's";
  EXPECT_EQ(editor.table().base(), NumberBase::decimal);
}

TEST_F(BlockWriting, OfTheEditorKeepsTheWayBackOfTheFirstDefaults) {
  ParameterEditor editor(access(), prompt, backup);
  const auto before = memory;
  for (const bool readableThen : {true, false}) {
    editor.restoreDefaults();
    if (!readableThen) memory.erase(5);
    EXPECT_EQ(editor.restoreDefaults().text,
              "Defaults restored; press Read to see them. Undo puts back the parameters from "
              "before." +
                  std::string(readableThen ? ""
                                           : " There is no backup: Word 05: the controller's "
                                             "answer holds no parameter word."));
    memory[5] = {0x33, 5};
    EXPECT_EQ(std::count(journal.begin(), journal.end(), "confirm Are you sure ?!"), 0);
    editor.undo();
    EXPECT_EQ(memory, before);
  }
  editor.read();
  editor.table().edit(3, WordByte::high, "AB");
  editor.write();
  memory.erase(5);
  editor.restoreDefaults();
  EXPECT_FALSE(editor.canUndo()) << "the block before is not known, and the write's is not it";
}

}  // namespace
}  // namespace touch::test
