#pragma once

#include <memory>
#include <optional>
#include <string>

namespace touch {

/// True when a person at a terminal can answer questions.
bool isTerminalInput();

/// Waits for that person to type something; false when the program is to end instead.
bool awaitInput();

/// The keys of the terminal, each as it is pressed, unseen, and none of them ends the program. The
/// terminal is as before when this has gone.
class Keys {
 public:
  Keys() = default;
  Keys(const Keys&) = delete;
  Keys& operator=(const Keys&) = delete;
  virtual ~Keys() = default;
  /// Those that were pressed since it was asked last; nothing once the terminal has gone.
  virtual std::optional<std::string> pressed() = 0;
};
std::unique_ptr<Keys> takeKeys();

/// True when a person at a terminal sees what is printed.
bool isTerminalOutput();
/// Where a system changes line ends on the way, it leaves them alone from now on.
void makeOutputBinary();

/// Whatever is still to be printed goes nowhere: the program waits for nobody who might read it.
void dropOutput();

}  // namespace touch
