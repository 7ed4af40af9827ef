#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

#include "core/trace.h"
#include "core/whole_file.h"
#include "linetest/working_files.h"
#include "serial/recording.h"
#include "tests/support/temporary_folder.h"

namespace touch {
namespace {

namespace fs = std::filesystem;
using fs::perms;

const std::pair<const char*, bool (*)(const fs::path&)> writers[] = {
    {"whole file", [](const fs::path& file) { return !writeWholeFile(file, "text"); }},
    {"line", [](const fs::path& file) { return !appendLine(file, "text"); }},
    {"trace", [](const fs::path& file) { return !Trace().start(file); }},
    {"recording", [](const fs::path& file) { return !Recorder().start(file, {}); }},
};

perms modeOf(const fs::path& file) {
  return fs::symlink_status(file).permissions();
}

class FileModes : public testing::Test {
 protected:
  ~FileModes() override { umask(usual_); }

  test::TemporaryFolder folder;

 private:
  mode_t usual_ = umask(0);
};

TEST_F(FileModes, AreTheUsersForNewFilesAndStayForOldOnes) {
  for (const mode_t kept : {0022U, 0027U, 0077U}) {
    umask(kept);
    const auto usual = static_cast<perms>(0666U & ~kept);
    for (const auto& [name, write] : writers) {
      const fs::path file = folder.path() / (std::string(name) + std::to_string(kept));
      EXPECT_TRUE(write(file)) << name;
      EXPECT_EQ(modeOf(file), usual) << name;
      for (const perms old : {perms{0600}, perms{0640}, perms{0606}}) {
        fs::permissions(file, old);
        EXPECT_TRUE(write(file)) << name;
        EXPECT_EQ(modeOf(file), old) << name;
      }
      const fs::path link = file.string() + " link";
      fs::create_symlink(file, link);
      EXPECT_TRUE(write(link)) << name;
      EXPECT_TRUE(fs::is_symlink(link)) << name;
      EXPECT_EQ(modeOf(file), perms{0606}) << name;
    }
    const WorkingFiles files(folder.path() / std::to_string(kept), {});
    EXPECT_EQ(files.write(0, {}), std::nullopt);
    EXPECT_EQ(modeOf(files.pathOf(0)), usual);
    EXPECT_EQ(modeOf(files.folder()), static_cast<perms>(0777U & ~kept));
  }
}

// What a signal finds has nowhere else to go.
fs::path unfinished;
mode_t found;

/// The system stops the writing half-way by a limit, and tells of it while the unfinished file is there.
TEST_F(FileModes, ArePrivateAlreadyWhileTheFileIsWritten) {
  const fs::path file = folder.path() / "private";
  unfinished = file.string() + std::string(unfinishedEnding);
  folder.write("private", "old");
  fs::permissions(file, perms{0600});
  const auto before = std::signal(SIGXFSZ, [](int) {
    struct stat status {};
    if (stat(unfinished.c_str(), &status) == 0) found = status.st_mode & 0777U;
  });
  rlimit usual{};
  getrlimit(RLIMIT_FSIZE, &usual);
  const rlimit none{0, usual.rlim_max};
  setrlimit(RLIMIT_FSIZE, &none);
  const auto error = writeWholeFile(file, "new");
  setrlimit(RLIMIT_FSIZE, &usual);
  std::signal(SIGXFSZ, before);
  EXPECT_TRUE(error);
  EXPECT_EQ(found, 0600U);
  EXPECT_EQ(folder.read("private"), "old");
}

}  // namespace
}  // namespace touch
