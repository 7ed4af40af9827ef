#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <cstdlib>

#include <array>
#include <csignal>
#include <tuple>

#include "tests/app/child_process.h"

// Drivers that hang, crash or are of other bits, as a user of touchctl meets them.

namespace touch::test {
namespace {

using testing::HasSubstr;

const std::string stubbornly = "--driver \"" STUBBORN_LIBRARY "\" ";

/// What the driver does to its process, as long as it lives.
class Rudeness {
 public:
  explicit Rudeness(const char* how) : sanitizer_(given()) {
    setenv("RUDE_DRIVER", how, 1);
    // A sanitizer would report the crash itself, and not let the system do it.
    setenv("ASAN_OPTIONS", (sanitizer_ + ":handle_segv=0").c_str(), 1);
  }
  ~Rudeness() {
    unsetenv("RUDE_DRIVER");
    setenv("ASAN_OPTIONS", sanitizer_.c_str(), 1);
  }
  Rudeness(const Rudeness&) = delete;
  Rudeness& operator=(const Rudeness&) = delete;

 private:
  static std::string given() {
    const char* const options = std::getenv("ASAN_OPTIONS");
    return options == nullptr ? "" : options;
  }

  std::string sanitizer_;
};

TEST(DriverHost, OutlivesWhatADriverDoes) {
  const TemporaryFolder folder;
  const std::tuple<const char*, std::string, int, const char*, const char*> cases[] = {
      {"crash", "list", 3, "", "crashed in GetExistControllers: Segmentation fault (SIGSEGV)."},
      {"crash loading", "list", 3, "", "it crashed as it was loaded: Segmentation fault (SIGSEGV)"},
      {"exit", "list", 3, "", "crashed in GetExistControllers: it ended by itself, with status 0."},
      {"hang", "list --driver-timeout 0.2", 3, "", "did not return from GetExistControllers"},
      {"hang loading", "list --driver-timeout 0.2", 3, "", "it did not return as it was loaded"},
      {"hang loading", "list --driver-timeout 0", 2, "", "--driver-timeout"},
      {"crash", "doctor", 4, "crashed in GetExistControllers: Segmentation fault", ""},
      {"", "doctor", 4, "touchdriver", ""},
      {"upsets", "list", 4, "USB DEVICE 2", ""},
  };
  for (const auto& [rudeness, command, status, output, errors] : cases) {
    const Rudeness rude(rudeness);
    const Ended ended =
        runProgram(TOUCHCTL, wordsIn("--work-dir @ " + stubbornly + command, folder));
    EXPECT_EQ(ended.status, status) << rudeness << ": " << ended.output << ended.errors;
    EXPECT_THAT(ended.output, HasSubstr(output)) << rudeness;
    EXPECT_THAT(ended.errors, HasSubstr(errors)) << rudeness;
  }
}

TEST(DriverHost, ServesEveryDriverThatItsOptionsSay) {
  const TemporaryFolder folder;
  const std::tuple<std::string, int, const char*> cases[] = {
    {"--simulate --driver-hosted list", 0, "1  RS232 DEVICE 1  (answers)"},
    {"--simulate --driver-hosted get --controller \"USB DEVICE 2\"", 0, "rotation            0\n"},
    {stubbornly + "--driver-in-process list", 4, "USB DEVICE 2"},
    {stubbornly + "--driver-in-process --driver-hosted list", 2, ""},
#if defined(STUBBORN_LIBRARY_32)
    {"--driver \"" STUBBORN_LIBRARY_32 "\" list", 4, "USB DEVICE 2"},
    {"--driver \"" STUBBORN_LIBRARY_32 "\" doctor", 4, "32 bits"},
    {"--driver \"" STUBBORN_LIBRARY_32 "\" --driver-in-process list", 3, ""},
    {"--driver \"" SIMULATED_LIBRARY_32 "\" list", 0, "1  RS232 DEVICE 1  (answers)"},
    {"--driver \"" SIMULATED_LIBRARY_32 "\" demo", 0, "the panel is calibrated"},
#endif
  };
  for (const auto& [line, status, output] : cases) {
    const Ended ended = runProgram(TOUCHCTL, wordsIn("--work-dir @ " + line, folder));
    EXPECT_EQ(ended.status, status) << line << ": " << ended.output << ended.errors;
    EXPECT_THAT(ended.output, HasSubstr(output)) << line;
  }
}

TEST(DriverHost, IsStartedByNobodyElse) {
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{}, {"1"}, {"--help"}, {"1", "2"}})
    EXPECT_EQ(runProgram(TOUCHDRIVER, arguments).status, 2);
}

/// A program whose driver hangs: everything it prints goes to a pipe that its host has open as
/// well.
TEST(DriverHost, EndsWithItsProgramHoweverThatEnds) {
  const Rudeness rude("hang");
  setenv("QT_QPA_PLATFORM", "offscreen", 1);
  for (const auto& [program, signal, status] :
       {std::tuple(TOUCHCTL, SIGTERM, 3), std::tuple(TOUCHCTL, SIGINT, 3),
        std::tuple(TOUCHCTL, SIGKILL, -1), std::tuple(TOUCHUTILITY, SIGTERM, 0)}) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, ends[1], STDERR_FILENO);
    std::vector<std::string> arguments = {"--driver", STUBBORN_LIBRARY};
    if (program == std::string(TOUCHCTL)) arguments.emplace_back("list");
    const pid_t child = startProgram(program, arguments, files);
    close(ends[1]);
    std::string said;
    char character = 0;
    while (said.find("it hangs") == said.npos && read(ends[0], &character, 1) == 1)
      said += character;
    ASSERT_THAT(said, HasSubstr("it hangs"));
    kill(child, signal);
    EXPECT_EQ(endOf(child), status) << program << ' ' << signal;
    while (read(ends[0], &character, 1) == 1) {
    }
    close(ends[0]);
  }
}

}  // namespace
}  // namespace touch::test
