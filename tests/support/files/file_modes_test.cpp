#include <sys/stat.h>

#include "linetest/files/working_files.h"
#include "serial/recording/recording.h"
#include "support/files/own_folder.h"
#include "support/files/whole_file.h"
#include "tests/doubles/temporary_folder.h"

namespace touch::test {
namespace {

using fs::perms;

const std::pair<const char*, bool (*)(const fs::path&)> writers[] = {
    {"whole file",
     [](const fs::path& file) { return whyNot(writeWholeFile(file, "text")).empty(); }},
    {"recording", [](const fs::path& file) { return whyNot(Recorder().start(file, {})).empty(); }},
};

perms modeOf(const fs::path& file) {
  return fs::symlink_status(file).permissions();
}

class FileModes : public testing::Test {
 protected:
  ~FileModes() override { umask(usual_); }

  TemporaryFolder folder;

 private:
  mode_t usual_ = umask(0);
};

TEST_F(FileModes, AreTheUsersForNewFilesAndStayForOldOnes) {
  for (const mode_t kept : {0022U, 0027U, 0077U}) {
    umask(kept);
    const auto usual = static_cast<perms>(0666U & ~kept);
    for (const auto& [name, write] : writers) {
      SCOPED_TRACE(name);
      const fs::path file = folder.path() / (name + std::to_string(kept));
      const fs::path link = file.string() + " link";
      EXPECT_TRUE(write(file));
      EXPECT_EQ(modeOf(file), usual);
      fs::create_symlink(file, link);
      for (const perms old : {perms{0600}, perms{0640}, perms{0606}}) {
        fs::permissions(file, old);
        EXPECT_TRUE(write(file) && write(link));
        EXPECT_EQ(modeOf(file), old);
      }
    }
    const auto own = OwnFolder::openOrMake(folder.path() / ("own" + std::to_string(kept)));
    EXPECT_EQ(modeOf(own->path()), static_cast<perms>(0777U & ~kept));
    EXPECT_EQ(whyNot(own->appendLine("line", "text")) + whyNot(own->write("file", "text")), "");
    EXPECT_EQ(modeOf(own->path() / "line"), usual);
    EXPECT_EQ(modeOf(own->path() / "file"), usual);
    const WorkingFiles files(folder.path() / std::to_string(kept), {});
    EXPECT_EQ(whyNot(files.write(0, {})), "");
    EXPECT_EQ(modeOf(files.pathOf(0)), usual);
    EXPECT_EQ(modeOf(files.folder()), static_cast<perms>(0777U & ~kept));
  }
}

TEST_F(FileModes, ArePrivateAlreadyBeforeTheFirstByteIsWritten) {
  const fs::path file = folder.path() / "private";
  folder.write("private", "old");
  fs::permissions(file, perms{0600});
  perms found{};
  const auto look = [&](std::string&) {
    found = modeOf(file.string() + std::string(unfinishedEnding));
    return false;
  };
  EXPECT_EQ(whyNot(writeWholeFile(file, look)), "");
  EXPECT_EQ(found, perms{0600});
}

}  // namespace
}  // namespace touch::test
