#include <conio.h>
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>

#include "app/touchctl/interrupt.h"
#include "app/touchctl/terminal.h"

namespace touch {

bool isTerminalInput() {
  return _isatty(_fileno(stdin)) != 0;
}

// Ctrl+C ends reading there.
bool awaitInput() {
  return !interrupted();
}

namespace {

class ConsoleKeys final : public Keys {
 public:
  ConsoleKeys() : isTaken_(GetConsoleMode(input_, &before_) != 0) {
    constexpr DWORD lines = ENABLE_LINE_INPUT | ENABLE_ECHO_INPUT | ENABLE_PROCESSED_INPUT;
    if (isTaken_) SetConsoleMode(input_, before_ & ~lines);
  }
  ConsoleKeys(const ConsoleKeys&) = delete;
  ConsoleKeys& operator=(const ConsoleKeys&) = delete;
  ~ConsoleKeys() override {
    if (isTaken_) SetConsoleMode(input_, before_);
  }

  std::optional<std::string> pressed() override {
    std::string keys;
    while (_kbhit() != 0) {
      const int key = _getch();
      // Keys without a character come as two.
      if (key == 0 || key == 0xE0) {
        _getch();
      } else {
        keys += static_cast<char>(key);
      }
    }
    return keys;
  }

 private:
  HANDLE input_ = GetStdHandle(STD_INPUT_HANDLE);
  DWORD before_ = 0;
  bool isTaken_;
};

}  // namespace

std::unique_ptr<Keys> takeKeys() {
  return std::make_unique<ConsoleKeys>();
}

bool isTerminalOutput() {
  return _isatty(_fileno(stdout)) != 0;
}

void makeOutputBinary() {
  _setmode(_fileno(stdout), _O_BINARY);
}

// A write that nobody waits for fails there.
void dropOutput() {}

}  // namespace touch
