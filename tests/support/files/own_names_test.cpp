#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include "console/doctor/doctor.h"
#include "console/parameters/backup.h"
#include "console/parameters/vrq_file.h"
#include "core/driver/trace.h"
#include "linetest/files/working_files.h"
#include "measure/lines/line_files.h"
#include "support/files/marked_folder.h"
#include "support/files/whole_file.h"
#include "tests/doubles/small_disk.h"
#include "tests/doubles/temporary_folder.h"

namespace touch::test {
namespace {

constexpr ParameterBlock ownBlock = {{{1, 2}, {3, 4}, {5, 6}, {7, 8}, {9, 10}, {11, 12}}};
constexpr uid_t somebodyElse = 65534;

/// What somebody puts where the program has a name of its own; false: this user cannot. All of it
/// leads to `victim`.
struct Planted {
  const char* what;
  bool (*plant)(const fs::path& at, const fs::path& victim);
};

bool plantFile(const fs::path& at) {
  return static_cast<bool>(std::ofstream(at) << "planted");
}

bool link(const fs::path& to, const fs::path& at) {
  std::error_code failed;
  fs::create_symlink(to, at, failed);
  return !failed;
}

const Planted plantedThings[] = {
    {"a link to a file", [](auto& at, auto& victim) { return link(victim / "file", at); }},
    {"a dangling link", [](auto& at, auto& victim) { return link(victim / "new", at); }},
    {"a link to a folder", [](auto& at, auto& victim) { return link(victim, at); }},
    {"a pipe", [](auto& at, auto&) { return mkfifo(at.c_str(), 0666) == 0; }},
    {"a device",
     [](auto& at, auto&) { return mknod(at.c_str(), S_IFCHR | 0666, makedev(1, 3)) == 0; }},
    {"a folder", [](auto& at, auto&) { return fs::create_directory(at); }},
    {"another user's file",
     [](auto& at, auto&) { return plantFile(at) && chown(at.c_str(), somebodyElse, 0) == 0; }},
    {"a second name",
     [](auto& at, auto& victim) { return ::link((victim / "file").c_str(), at.c_str()) == 0; }},
    {"a file without permission",
     [](auto& at, auto&) { return plantFile(at) && chmod(at.c_str(), 0) == 0; }},
};

/// How a use of a name ends: 0 done, 1 refused with a reason, 2 refused without one.
int ended(const auto& result) {
  const std::string said = whyNot(result);
  const bool hasReason = testing::Value(said, ContainsRegex("found .|written: ."));
  return said.empty() ? 0 : (hasReason ? 1 : 2);
}

Backup backupIn(const fs::path& folder) {
  return Backup(folder, [] { return Backup::TimePoint{}; });
}

int keepResult(const fs::path& folder) {
  const measure::PanelSize size{{200}, {100}};
  return ended(writeLineFile(
      folder, lineFileOf(*measure::findGuide("V-1"), {20000, 10000}, size, {{3050, 500}})));
}

int keep(const fs::path& folder) {
  return ended(backupIn(folder).keep("D", ownBlock));
}

int note(const fs::path& folder) {
  return ended(backupIn(folder).note("D", {3, {1, 2}, {3, 4}}, Backup::Stage::begun));
}

/// For each planted thing in turn: '+' done all the same, '-' refused with a reason, '?' whatever
/// this user's permissions make of it.
struct OwnName {
  const char* name;
  const char* outcomes;
  void (*prepare)(const fs::path& folder);
  int (*use)(const fs::path& folder);
};

void makeBackup(const fs::path& folder) {
  fs::create_directory(folder / "backup");
}

const OwnName ownNames[] = {
    {"backup", "-----+---", [](auto&) {}, keep},
    {"backup/19700101-000000-D.vrq", "+++++++++", makeBackup, keep},
    {"backup/19700101-000000-D.vrq.new", "+++++++++", makeBackup, keep},
    {"backup/journal.txt", "--------?", makeBackup, note},
    {"backup/journal.txt", "--------?", makeBackup,
     [](auto& folder) { return ended(backupIn(folder).tryOut()); }},
    {"probe.new", "+++++++++", [](auto&) {},
     [](auto& folder) { return ended(OwnFolder::open(folder)->tryOut()); }},
    {"doctor-0.tmp", "+++++++++", [](auto&) {},
     [](auto& folder) { return ended(tryOutWorkFolder(folder)); }},
    {"trace", "--------?", [](auto&) {},
     [](auto& folder) { return ended(Trace().start(folder / "trace")); }},
    {"Tvm-v1.txt", "--------?", [](auto&) {}, keepResult},
    {"Tvm-v1.txt.new", "+++++++++", [](auto&) {}, keepResult},
    {"Tvm-v1.txt.old", "+++++++++", [](auto& folder) { keepResult(folder); },
     [](auto& folder) {
       EXPECT_EQ(keepResult(folder), 0);
       const measure::Guide* const first[] = {measure::findGuide("V-1")};
       return ended(setAside(folder, first));
     }},
    {"tmp", "---------", [](auto&) {},
     [](auto& folder) { return ended(MarkedFolder::make(folder / "tmp")); }},
    {"tmp/in-use.lock", "---------", [](auto& folder) { fs::create_directory(folder / "tmp"); },
     [](auto& folder) { return ended(MarkedFolder::take(folder / "tmp")); }},
    {"tmp/tmp000.tmp", "--------?",
     [](auto& folder) { EXPECT_TRUE(MarkedFolder::make(folder / "tmp")); },
     [](auto& folder) {
       const auto tmp = MarkedFolder::take(folder / "tmp");
       const auto read = tmp->files().read("tmp000.tmp", 100);
       const int written = ended(tmp->files().write("tmp000.tmp", "text"));
       const int removed = ended(tmp->files().remove("tmp000.tmp"));
       return written == removed ? written : 2;
     }},
    {"tmp/unfinished", "--------?",
     [](auto& folder) { EXPECT_TRUE(MarkedFolder::make(folder / "tmp")); },
     [](auto& folder) { return ended(WorkingFiles(folder, {}).markUnfinished()); }},
    {"tmp/left.fdw", "+++++++++",
     [](auto& folder) { EXPECT_TRUE(MarkedFolder::make(folder / "tmp")); },
     [](auto& folder) {
       const LeftStrokes left{{{0, {9, 1, {{3, 3}}}}}, {}, {}};
       return ended(WorkingFiles(folder, {}).keepAside(left));
     }},
};

TEST(OwnNames, LeadNowhereElseWhateverIsPlantedThere) {
  umask(022);
  for (const auto& [name, outcomes, prepare, use] : ownNames) {
    ASSERT_EQ(std::string(outcomes).size(), std::size(plantedThings));
    for (std::size_t i = 0; i < std::size(plantedThings); ++i) {
      const auto& [what, plant] = plantedThings[i];
      SCOPED_TRACE(std::string(name) + " is " + what);
      const TemporaryFolder folder;
      const TemporaryFolder victim;
      victim.write("file", "theirs");
      prepare(folder.path());
      const fs::path at = folder.path() / name;
      if (!plant(at, victim.path())) {
        std::cout << name << " as " << what << ": skipped, only root can plant it\n";
        continue;
      }
      struct stat before {};
      lstat(at.c_str(), &before);
      alarm(60);
      const int end = use(folder.path());
      alarm(0);
      const char expected = outcomes[i];
      EXPECT_TRUE(expected == '?' ? end < 2 : end == (expected == '+' ? 0 : 1)) << end;
      if (expected == '?' && end == 0) continue;  // it is this user's own

      struct stat after {};
      ASSERT_EQ(lstat(at.c_str(), &after), 0) << "it is not ours to delete";
      EXPECT_EQ(after.st_ino, before.st_ino);
      EXPECT_EQ(after.st_mode, before.st_mode);
      EXPECT_TRUE(S_ISDIR(after.st_mode) || after.st_size == before.st_size);
      EXPECT_EQ(victim.read("file"), "theirs");
      EXPECT_EQ(std::distance(fs::directory_iterator(victim.path()), {}), 1) << "nothing is made";
    }
  }
}

TEST(OwnFolders, StayThoseThatWereOpenedWhenAnotherTakesTheirPlace) {
  const TemporaryFolder folder;
  const TemporaryFolder victim;
  const auto own = OwnFolder::openOrMake(folder.path() / "own");
  ASSERT_TRUE(own);
  fs::rename(folder.path() / "own", folder.path() / "moved");
  fs::create_directory_symlink(victim.path(), folder.path() / "own");
  EXPECT_EQ(whyNot(own->write("file", "text")), "");
  EXPECT_EQ(whyNot(own->appendLine("lines", "one")), "");
  EXPECT_EQ(folder.read("moved/file") + folder.read("moved/lines"), "textone\n");
  EXPECT_TRUE(fs::is_empty(victim.path()));
}

TEST(OwnFolders, CutBackNoLineOfAnotherProgramOnAFullDisk) {
  const TemporaryFolder folder;
  const auto own = OwnFolder::open(folder.path());
  ASSERT_TRUE(own);
  ASSERT_EQ(whyNot(own->appendLine("lines", "one")), "");
  {
    const SmallDisk disk(6);
    EXPECT_NE(whyNot(own->appendLine("lines", "two")), "");
    EXPECT_EQ(folder.read("lines"), "one\n");
    auto others = own->openFile("lines", OwnFolder::Opening::alone);
    ASSERT_TRUE(others);
    EXPECT_NE(whyNot(own->appendLine("lines", "two")), "");
  }
  EXPECT_EQ(whyNot(own->appendLine("lines", "three")), "") << "on a line of its own";
  EXPECT_EQ(folder.read("lines"), "one\ntw\nthree\n");
}

TEST(OwnFolders, AreMadeAndMarkedOnlyWhereTheyMayBe) {
  for (const char* system :
       {"/", "/usr/share", "/etc", "/dev", "/run/lock", "/var/log", "/var/lib"})
    EXPECT_TRUE(isFolderOfTheSystem(system)) << system;
  for (const char* users : {"/var/lib/touchutility", "/run/user/1000", "/var/tmp/a", "/variant"})
    EXPECT_FALSE(isFolderOfTheSystem(users)) << users;
  const TemporaryFolder folder;
  EXPECT_FALSE(isFolderOfTheSystem(folder.path()));
  EXPECT_EQ(MarkedFolder::make("/tmp").error().found, "one of the system's");
  const auto made = MarkedFolder::make(folder.path() / "tmp");
  ASSERT_TRUE(made);
  EXPECT_EQ(MarkedFolder::take(folder.path() / "tmp").error().found,
            "one that another program has");
}

TEST(SwappedFile, IsNeitherGivenTheOldOnesModeNorItsName) {
  const TemporaryFolder folder;
  folder.write("old", "old");
  folder.write("victim", "theirs");
  fs::permissions(folder.path() / "old", fs::perms{0666});
  fs::permissions(folder.path() / "victim", fs::perms{0600});
  const auto swap = [&folder, done = false](std::string& piece) mutable {
    piece = "new";
    fs::remove(folder.path() / "old.new");
    fs::create_symlink("victim", folder.path() / "old.new");
    return !std::exchange(done, true);
  };
  EXPECT_NE(whyNot(writeWholeFile(folder.path() / "old", swap)), "");
  EXPECT_EQ(folder.read("old") + folder.read("victim"), "oldtheirs");
  EXPECT_EQ(fs::status(folder.path() / "victim").permissions(), fs::perms{0600});
  EXPECT_FALSE(fs::is_symlink(folder.path() / "old"));
}

TEST(SixPrograms, ThatKeepABlockAtOnceLeaveSix) {
  constexpr int programs = 6;
  constexpr int each = 20;
  const TemporaryFolder folder;
  for (int program = 0; program < programs; ++program) {
    if (fork() != 0) continue;
    bool done = true;
    for (int i = 0; i < each; ++i)
      done = keep(folder.path()) == 0 && done;
    _exit(done ? 0 : 1);
  }
  int status = 0;
  while (wait(&status) > 0)
    EXPECT_EQ(status, 0);
  int whole = 0;
  for (const auto& entry : fs::directory_iterator(folder.path() / "backup")) {
    const auto block = loadVrq(entry.path());
    whole += block && *block == ownBlock ? 1 : 0;
  }
  EXPECT_EQ(whole, programs * each);
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.path() / "backup"), {}), whole);
}

TEST(Reading, NeverWaitsForAPipeAndStopsAtItsLimit) {
  const TemporaryFolder folder;
  const fs::path pipe = folder.path() / "pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0666), 0);
  alarm(60);
  EXPECT_EQ(readWholeFile(pipe, 10).error().found, "something else of this name");
  const File opened = openForReading(pipe);
  alarm(0);
  EXPECT_FALSE(isRegular(opened.get()));
  folder.write("long", "");
  fs::resize_file(folder.path() / "long", std::uintmax_t{1} << 40U);
  EXPECT_EQ(readWholeFile(folder.path() / "long", 10).error().expected, "at most 10 bytes");
}

}  // namespace
}  // namespace touch::test
