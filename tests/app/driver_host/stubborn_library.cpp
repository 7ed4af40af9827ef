#include <sys/stat.h>
#include <unistd.h>

#include <cfenv>
#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>

#include "tests/doubles/drivers.h"

// A touch driver that takes every setting and keeps none. "USB DEVICE 1" can be opened but does not
// answer; "USB DEVICE 2" cannot be opened. With HOSTILE_TEXT that is what the first is called
// after, and what it answers. With RUDE_DRIVER it also does to the process what is none of its
// business: "exit" and "quick exit" end it in the first call, "crash" and "hang" do that there,
// "crash loading" and "hang loading" when it is loaded, "end" asks the process to end then,
// anything else upsets it then and with each controller that is opened. What hangs says so.

namespace {

const char* hostileText() {
  return std::getenv("HOSTILE_TEXT");
}

std::string_view rudeness() {
  const char* const said = std::getenv("RUDE_DRIVER");
  return said == nullptr ? "" : said;
}

/// A null pointer that no compiler sees through.
void crash() {
  volatile int* const nowhere = nullptr;
  *nowhere = 1;
}

void hang() {
  std::fputs("it hangs\n", stderr);
  while (true)
    pause();
}

bool upset() {
  if (rudeness().empty()) return false;
  if (rudeness() == "crash loading") crash();
  if (rudeness() == "hang loading") hang();
  if (rudeness() == "end") return raise(SIGTERM) == 0;
  for (const int number : {SIGINT, SIGALRM, SIGPIPE, SIGXFSZ})
    std::signal(number, SIG_DFL);
  sigset_t all;
  sigfillset(&all);
  pthread_sigmask(SIG_BLOCK, &all, nullptr);
  umask(S_IRWXU | S_IRWXG | S_IRWXO);
  std::setlocale(LC_ALL, "C");
  std::fesetround(FE_UPWARD);
  return chdir("/") == 0;
}

[[maybe_unused]] const bool upsetWhenLoaded = upset();

std::string nameOf(std::int32_t number) {
  const bool isHostile = number == 1 && hostileText() != nullptr;
  return "USB DEVICE " + (isHostile ? hostileText() : std::to_string(number));
}

class StubbornDriver final : public touch::test::UniformDriver {
 public:
  std::int32_t GetExistControllers() override {
    if (rudeness() == "exit") std::exit(EXIT_SUCCESS);
    if (rudeness() == "quick exit") std::quick_exit(EXIT_SUCCESS);
    if (rudeness() == "crash") crash();
    if (rudeness() == "hang") hang();
    return 2;
  }
  std::int32_t GetControllerName(std::int32_t number, char* name, std::int32_t size) override {
    return std::snprintf(name, static_cast<std::size_t>(size), "%s", nameOf(number).c_str());
  }
  std::int32_t OpenController(const char* name) override {
    if (rudeness() != "end") upset();
    return name == nameOf(1) ? 2 : 0;
  }
  std::int32_t ReadBuffer(std::int32_t, std::uint8_t* bytes, std::int32_t size) override {
    if (hostileText() == nullptr) return 0;
    const std::string reply = '\x01' + std::string(hostileText()) + '\r';
    return static_cast<std::int32_t>(
        reply.copy(reinterpret_cast<char*>(bytes), static_cast<std::size_t>(size)));
  }

 private:
  std::int32_t perform(const std::string&, const Numbers&) override { return 0; }
};

}  // namespace

#define STUBBORN_DEFINE(name, parameters, arguments)                               \
  extern "C" __attribute__((visibility("default"))) std::int32_t name parameters { \
    return StubbornDriver().name arguments;                                        \
  }
NEXAPI_OPERATIONS(STUBBORN_DEFINE)
