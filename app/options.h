#pragma once

#include <array>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "ports/com_ports.h"

namespace CLI {
class App;
}

namespace touch {

class KnownValues;
namespace commission {
struct Replay;
}

/// Width and height in pixels, as given for --screen.
struct ScreenSize {
  int width = 0;
  int height = 0;
};

/// The languages of the windows. English is the one that they are written in; each other one has
/// its translation in `translations`.
inline constexpr std::array<std::string_view, 2> languages = {"en", "de"};

/// What touchutility and touchctl can be told on their command lines.
struct Options {
  bool simulate = false;
  std::optional<std::filesystem::path> simulateFrom;  ///< a commissioning; then it simulates
  std::shared_ptr<const commission::Replay> replay;   ///< what was read there
  std::optional<std::filesystem::path> driver;
  std::optional<bool> driverHosted;  ///< in a process of its own; none: a real one is
  std::filesystem::path workFolder;  ///< absolute
  ComPorts comPorts;
  std::optional<ScreenSize> screen;
  std::optional<std::filesystem::path> trace;
  std::optional<std::string> language;  ///< of `languages`; none: the system's
  std::optional<bool> dark;             ///< the colours of the windows; none: as the system's
  std::optional<int> monitor;           ///< that the panel covers, counted from 1
  std::optional<std::filesystem::path> printSheet;  ///< folder of a commissioning
};

/// The program's full name and version, for --version.
std::string programVersion();

/// Makes `app` read which devices stand behind COM port numbers.
void addComPorts(CLI::App& app, ComPorts& ports);

/// Makes `app` read the options that both programs have into `options`, which must outlive the
/// parsing. A bad value is refused with a message that names it and what was expected.
void addCommonOptions(CLI::App& app, Options& options);

/// Makes `app` refuse a working folder that is none. A program with windows says so in one of them:
/// whoever starts it from a menu sees no terminal.
void refuseMissingFolder(CLI::App& app);

/// The same for what only windows have: their language, and their monitor.
void addWindowOptions(CLI::App& app, KnownValues& known, Options& options);

}  // namespace touch
