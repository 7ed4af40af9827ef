#include "console/main/first_start.h"

#include "tests/doubles/temporary_folder.h"
#include "tests/doubles/test.h"

namespace touch::test {
namespace {

namespace fs = std::filesystem;

TEST(FirstStartOfTheProgram, IsTakenOnceAndOnlyWhereNothingTellsOfAnEarlierOne) {
  const struct {
    const char* what;
    void (*prepare)(const fs::path& own, const fs::path& work);
    bool isFirst;
  } cases[] = {
      {"an empty machine", [](const fs::path&, const fs::path&) {}, true},
      {"a folder for strokes alone",
       [](const fs::path& own, const fs::path&) { fs::create_directories(own / "tmp"); }, true},
      {"parameters that were kept",
       [](const fs::path&, const fs::path& work) { fs::create_directories(work / "backup"); },
       false},
      {"a file in place of the own folder",
       [](const fs::path& own, const fs::path&) { std::ofstream(own) << "x"; }, false},
      {"a folder in place of the mark",
       [](const fs::path& own, const fs::path&) { fs::create_directories(own / "greeted"); },
       false},
      {"a link in place of the mark",
       [](const fs::path& own, const fs::path& work) {
         fs::create_directories(own);
         fs::create_symlink(work / "elsewhere", own / "greeted");
       },
       false},
  };
  for (const auto& [what, prepare, isFirst] : cases) {
    SCOPED_TRACE(what);
    const TemporaryFolder folder;
    const fs::path own = folder.path() / "own";
    const fs::path work = folder.path() / "work";
    fs::create_directories(work);
    prepare(own, work);
    EXPECT_EQ(FirstStart(own, work).take(), isFirst);
    EXPECT_FALSE(FirstStart(own, work).take()) << "never again";
    EXPECT_FALSE(fs::exists(work / "elsewhere")) << "nothing is made through a link";
  }
}

TEST(FirstStartOfTheProgram, IsNoneWhereNothingIsRemembered) {
  const TemporaryFolder folder;
  EXPECT_FALSE(FirstStart({}, folder.path()).take());
}

}  // namespace
}  // namespace touch::test
