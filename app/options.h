#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "serial/com_ports.h"

namespace CLI {
class App;
}

namespace touch {

/// Width and height in pixels, as given for --screen.
struct ScreenSize {
  int width = 0;
  int height = 0;
};

/// What touchutility and touchctl can be told on their command lines.
struct Options {
  bool simulate = false;
  std::optional<std::filesystem::path> driver;
  std::filesystem::path workFolder;  ///< absolute
  ComPorts comPorts;
  std::optional<ScreenSize> screen;
  std::optional<std::filesystem::path> trace;
};

/// The program's full name and version, for --version.
std::string programVersion();

/// Makes `app` read the options that both programs have into `options`, which must outlive the parsing. A bad value is
/// refused with a message that names it and what was expected.
void addCommonOptions(CLI::App& app, Options& options);

}  // namespace touch
