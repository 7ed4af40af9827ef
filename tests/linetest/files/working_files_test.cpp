#include "linetest/files/working_files.h"

#include "linetest/files/drawing_file.h"
#include "tests/doubles/temporary_folder.h"

namespace touch::test {
namespace {

class WorkingFilesIn : public testing::Test {
 protected:
  TemporaryFolder working;
  TemporaryFolder other;
  TemporaryFolder killed;
  WorkingFiles files{working.path(), other.path()};
};

const Stroke stroke{12, 2, {{480, 15.5F}, {-1, 0}, {481, 30}, {482, 45}}};

TEST_F(WorkingFilesIn, HaveTheirRecordsInOrder) {
  ASSERT_EQ(whyNot(files.write(7, stroke)), "");
  EXPECT_EQ(working.read("tmp/tmp007.tmp"),
            " 12 \r\n 2 \r\n 480 \t 15.5 \r\n-1 \t 0 \r\n 481 \t 30 \r\n 482 \t 45 \r\n");
  EXPECT_EQ(*files.read(7), stroke);
}

TEST_F(WorkingFilesIn, AreFoundAgainAfterACrashAndDeletedWithoutOthers) {
  files.write(2, {9, 1, {{3, 3}}});
  files.write(0, stroke);
  files.write(1000, {10, 1, {{4, 4}}});
  working.write("tmp/tmp001.tmp", " 12 \r\n 1 \r\n 480 \t ");
  for (const char* name : {"tmpabc.tmp", "tmp-01.tmp", "tmp.new", "notes.new", "tmp003.tmp.newer"})
    working.write("tmp/" + std::string(name), "mine");
  for (const char* cutOff : {"tmp003.tmp.new", "tmp003.tmp.new12", "probe.tmp.new"})
    working.write("tmp/" + std::string(cutOff), " 12 \r\n");
  const auto inFolder = [this] {
    return std::distance(fs::directory_iterator(working.path() / "tmp"), {});
  };

  files = WorkingFiles(other.path(), other.path());
  const WorkingFiles next(working.path(), other.path());
  EXPECT_EQ(next.folder(), working.path() / "tmp");
  EXPECT_EQ(inFolder(), 4 + 5 + 3 + 2) << "all is as it was";
  const LeftStrokes left = next.left();
  ASSERT_EQ(left.strokes.size(), 3u);
  EXPECT_EQ(left.strokes[0].stroke, stroke);
  EXPECT_EQ(left.strokes[2].number, 1000);
  EXPECT_EQ(left.damagedNumbers, std::vector{1});
  EXPECT_EQ(whyNot(next.makeConsecutive(left)), "");
  EXPECT_EQ(next.readAll(3)->at(2).colour, 10);

  EXPECT_EQ(whyNot(next.clear()), "");
  EXPECT_EQ(inFolder(), 5 + 1 + 1) << "what is no working file, and the lock";
}

TEST_F(WorkingFilesIn, MakeTheirFolderForTheFirstStrokeAndLeaveEveryOtherAlone) {
  EXPECT_FALSE(fs::exists(files.folder()));
  EXPECT_TRUE(files.left().strokes.empty());
  EXPECT_EQ(whyNot(files.clear()), "");
  EXPECT_TRUE(fs::is_empty(working.path()) && fs::is_empty(other.path())) << "nothing is made";
  fs::create_directory(working.path() / "tmp");
  working.write("tmp/tmp000.tmp", "somebody's");
  EXPECT_EQ(whyNot(files.write(0, stroke)), "");
  EXPECT_EQ(files.folder(), other.path() / "tmp");
  EXPECT_EQ(whyNot(files.clear()), "");
  EXPECT_EQ(working.read("tmp/tmp000.tmp"), "somebody's");
  EXPECT_EQ(std::distance(fs::directory_iterator(working.path() / "tmp"), {}), 1);

  const WorkingFiles atRoot("/", working.path() / "data");
  EXPECT_EQ(atRoot.folder(), working.path() / "data" / "tmp");
  EXPECT_EQ(whyNot(atRoot.write(0, stroke)), "") << "which is made with the folder around it";
  const WorkingFiles nowhere("/", {});
  EXPECT_NE(whyNot(nowhere.write(0, stroke)), "");
  EXPECT_FALSE(fs::exists("/tmp/in-use.lock"));

  const WorkingFiles early(killed.path(), other.path());
  {
    const WorkingFiles late(killed.path(), other.path());
    late.write(0, stroke);
  }
  EXPECT_EQ(whyNot(early.write(0, {9, 1, {{3, 3}}})), "");
  EXPECT_NE(early.folder(), killed.path() / "tmp") << "another's strokes are not written over";
}

TEST_F(WorkingFilesIn, AreReadInTheOrderOfTheirNumbers) {
  for (int step = 0; step < 20; ++step) {
    const int number = step * 7 % 20;  // no file system has this order by chance
    files.write(number, {12, 1, {{static_cast<float>(number), 0}}});
  }
  const auto left = files.left().strokes;
  ASSERT_EQ(left.size(), 20u);
  for (int number = 0; number < 20; ++number)
    EXPECT_EQ(left[static_cast<std::size_t>(number)].number, number);
}

TEST_F(WorkingFilesIn, AreKeptAsideWhereNothingIsWrittenOrDeleted) {
  EXPECT_FALSE(files.isUnfinished());
  for (const char* const what : {"the first time", "the second"}) {
    files.write(0, stroke);
    files.write(2, {9, 1, {{3, 3}}});
    EXPECT_TRUE(files.isUnfinished()) << what;
    files.finish();
    EXPECT_TRUE(!files.isUnfinished() && files.read(0)) << what;
    working.write("tmp/tmp001.tmp", what);
    const LeftStrokes left = files.left();
    EXPECT_EQ(whyNot(files.setDamagedAside(left)), "");
    EXPECT_EQ(whyNot(files.keepAside(left)), "");
    EXPECT_TRUE(files.left().strokes.empty() && files.left().damaged.empty()) << what;
  }
  EXPECT_EQ(working.read("tmp/tmp001.damaged"), "the first time");
  EXPECT_EQ(working.read("tmp/tmp001.damaged2"), "the second");
  EXPECT_EQ(*readDrawing(working.path() / "tmp/left.fdw"), (Drawing{stroke, {9, 1, {{3, 3}}}}));
  EXPECT_EQ(files.asidePath(), working.path() / "tmp/left3.fdw");
  const Stroke dot{9, 1, {{3, 3}}};
  const Stroke line{9, 1, {{3, 3}, {4, 4}, {5, 5}}};
  const LeftStrokes many{{{0, dot}, {1, dot}, {2, dot}, {3, line}}, {}, {}};
  const DrawingLimits limits{2, 3};
  EXPECT_EQ(whyNot(files.keepAside(many, limits)), "");
  Drawing kept;
  for (const char* const name : {"tmp/left3.fdw", "tmp/left4.fdw", "tmp/left5.fdw"}) {
    const auto part = parseDrawing(working.read(name), name, limits);
    ASSERT_EQ(whyNot(part), "");
    kept.insert(kept.end(), part->begin(), part->end());
  }
  EXPECT_EQ(kept, (Drawing{dot, dot, dot, line}));
  LeftStrokes gone;
  gone.damagedNumbers = {5};
  EXPECT_THAT(whyNot(files.setDamagedAside(gone)), HasSubstr("a file that can be renamed"));
}

TEST_F(WorkingFilesIn, RefuseMoreThan3001Samples) {
  const Stroke longest{12, 1, std::vector<TwipsPoint>(3001, {1, 2})};
  EXPECT_EQ(whyNot(files.write(0, longest)), "");
  EXPECT_TRUE(files.read(0));
  working.write("tmp/tmp000.tmp", working.read("tmp/tmp000.tmp") + "1\t2\n");
  EXPECT_THAT(whyNot(files.read(0)), HasSubstr("the end of the file after 3001 samples"));
}

TEST_F(WorkingFilesIn, MoveToTheOtherFolderWhenTheirsCannotBeWrittenOrIsInUse) {
  const TemporaryFolder full;
  full.write("tmp", "a file of this name");
  const WorkingFiles moved(full.path(), other.path());
  EXPECT_EQ(moved.folder(), other.path() / "tmp");
  EXPECT_EQ(whyNot(moved.write(0, stroke)), "");
  EXPECT_EQ(full.read("tmp"), "a file of this name");

  files.write(0, stroke);
  const WorkingFiles third(working.path(), other.path());
  third.write(0, {9, 1, {{3, 3}}});
  EXPECT_EQ(third.folder(), other.path() / "tmp2") << "both of the others are in use";
  EXPECT_EQ(whyNot(files.clear()), "");
  EXPECT_EQ(moved.left().strokes.size(), 1u);
  EXPECT_EQ(third.left().strokes.size(), 1u);

  const TemporaryFolder shared;
  const WorkingFiles early(shared.path(), other.path());
  EXPECT_EQ(whyNot(WorkingFiles(shared.path(), {}).write(0, stroke)), "");
  EXPECT_EQ(whyNot(early.write(0, {9, 1, {{3, 3}}})), "");
  EXPECT_EQ(shared.read("tmp/tmp000.tmp"), workingText(stroke)) << "left since by another";

  const auto write = [&] {
    const WorkingFiles mine(killed.path(), killed.path());
    mine.write(0, stroke);
    std::raise(SIGKILL);
  };
  EXPECT_EXIT(write(), testing::KilledBySignal(SIGKILL), "");
  const WorkingFiles after(killed.path(), other.path());
  EXPECT_EQ(after.folder(), killed.path() / "tmp") << "nobody holds it";
  EXPECT_EQ(after.left().strokes.size(), 1u);

  const WorkingFiles nowhere(full.path() / "tmp", full.path() / "tmp");
  EXPECT_NE(whyNot(nowhere.write(0, stroke)), "");
}

}  // namespace
}  // namespace touch::test
