#include "support/process_state.h"

#include <sys/stat.h>

#include <cfenv>

#include "core/driver/nexapi.h"
#include "tests/doubles/comma_locale.h"
#include "tests/doubles/temporary_folder.h"

namespace touch::test {
namespace {

/// What a driver may have changed, in words.
std::string stateInWords() {
  const mode_t mask = umask(0);
  umask(mask);
  sigset_t blocked;
  pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
  std::string words = std::to_string(mask) + ' ' + fs::current_path().string() + ' ' +
                      std::setlocale(LC_ALL, nullptr) + ' ' + std::to_string(std::fegetround()) +
                      (sigismember(&blocked, SIGTERM) == 1 ? " blocked" : "");
  for (const int number : {SIGINT, SIGPIPE, SIGXFSZ}) {
    struct sigaction action {};
    sigaction(number, nullptr, &action);
    words += action.sa_handler == SIG_DFL ? " default" : " own";
  }
  return words;
}

TEST(ProcessState, IsPutRightWhenADriverIsLoadedAndWhenItOpensAController) {
  const CommaLocale german;
  const TemporaryFolder folder;
  const auto folderBefore = fs::current_path();
  fs::current_path(folder.path());
  for (const int number : {SIGINT, SIGPIPE, SIGXFSZ})
    std::signal(number, SIG_IGN);
  const std::string before = stateInWords();
  ASSERT_TRUE(before.ends_with("own own own"));
  setenv("RUDE_DRIVER", "upsets", 1);
  {
    const auto driver = NexapiDriver::bind(STUBBORN_LIBRARY);
    ASSERT_TRUE(driver);
    EXPECT_EQ(stateInWords(), before) << "as it was loaded";
    (*driver)->OpenController("USB DEVICE 1");
    EXPECT_EQ(stateInWords(), before) << "as it opened a controller";
  }
  unsetenv("RUDE_DRIVER");
  for (const int number : {SIGINT, SIGPIPE, SIGXFSZ})
    std::signal(number, SIG_DFL);
  fs::current_path(folderBefore);
}

}  // namespace
}  // namespace touch::test
