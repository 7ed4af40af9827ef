#include "app/options.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <string_view>
#include <vector>

#include "app/completion.h"
#include "support/text/decimal.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

constexpr int largestScreen = 16384;  // pixels

std::optional<ScreenSize> parseScreen(std::string_view text) {
  const auto cross = text.find('x');
  if (cross == text.npos) return std::nullopt;
  const auto width = parseDecimal(text.substr(0, cross), 1, largestScreen);
  const auto height = parseDecimal(text.substr(cross + 1), 1, largestScreen);
  if (!width || !height) return std::nullopt;
  return ScreenSize{*width, *height};
}

/// "N=DEVICE" with the device from the root on where it stands in a folder; a mere name such as
/// COM3 is no file, and "\\\\.\\pipe\\touchsim-1" stands in none.
std::string withWholeDevice(const std::string& text) {
  const auto sign = text.find('=');
  if (sign == text.npos) return text;
  const std::string device = text.substr(sign + 1);
  if (!pathNamed(device).has_parent_path() || device.starts_with(R"(\\)")) return text;
  const auto path = absolutePathNamed(device).u8string();
  return text.substr(0, sign + 1) + std::string(path.begin(), path.end());
}

}  // namespace

std::string programVersion() {
  return "TouchUtility " PROGRAM_VERSION;
}

void addComPorts(CLI::App& app, ComPorts& ports) {
  app.add_option_function<std::vector<std::string>>(
         "--com",
         [&ports](const std::vector<std::string>& texts) {
           for (const std::string& text : texts) {
             const auto assigned = ports.assign(withWholeDevice(text));
             if (!assigned) {
               throw CLI::ValidationError("--com", assigned.error());
             }
           }
         },
         "The device behind COM port number N; may be given more than once")
      ->type_name("N=DEVICE")
      ->expected(1)
      ->allow_extra_args(false)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

void addCommonOptions(CLI::App& app, Options& options) {
  // Without a current folder, which can be deleted while one stands in it, "." fails later and in
  // plain words.
  std::error_code failed;
  options.workFolder = std::filesystem::current_path(failed);
  if (failed) options.workFolder = ".";
  app.set_version_flag("--version", programVersion(), "Print the version and exit");

  auto* const simulate = app.add_flag("--simulate", options.simulate,
                                      "Use the bundled simulated controllers instead of a driver");
  auto* const source =
      app.add_option_function<std::string>(
             "--simulate-from",
             [&options](const std::string& path) {
               if (path.empty())
                 throw CLI::ValidationError("--simulate-from",
                                            "expected the folder or the bundle of a commissioning");
               options.simulateFrom = absolutePathNamed(path);
               options.simulate = true;
             },
             "Use one simulated controller that is like the one of this commissioning, with its "
             "panel: the folder of the run, or its bundle")
          ->type_name("SOURCE");
  app.add_option_function<std::string>(
         "--driver",
         [&options](const std::string& path) {
           if (path.empty())
             throw CLI::ValidationError("--driver", "expected the path of a library");
           options.driver = absolutePathNamed(path);
         },
         "Use this touch driver library instead of the system's nexapi")
      ->type_name("PATH")
      ->excludes(simulate)
      ->excludes(source);
  auto* const hosted = app.add_flag_callback(
      "--driver-hosted", [&options] { options.driverHosted = true; },
      "Run the driver in a process of its own, also a simulated one");
  app.add_flag_callback(
         "--driver-in-process", [&options] { options.driverHosted = false; },
         "Run the driver in this program: when it hangs or crashes, so does the program")
      ->excludes(hosted);
  app.add_option_function<std::string>(
         "--work-dir",
         [&options](const std::string& folder) { options.workFolder = absolutePathNamed(folder); },
         "The folder with errmsg.txt, pic01.jpg and the other optional files (default: the current "
         "one)")
      ->type_name("DIR");
  addComPorts(app, options.comPorts);
  app.add_option_function<std::string>(
         "--screen",
         [&options](const std::string& text) {
           options.screen = parseScreen(text);
           if (!options.screen) {
             throw CLI::ValidationError(
                 "--screen", '"' + text + "\" is not WIDTHxHEIGHT in pixels, e.g. 1024x768");
           }
         },
         "For tests and demonstrations: a window of this size in place of each full screen")
      ->type_name("WxH");
  app.add_option_function<std::string>(
         "--trace",
         [&options](const std::string& file) { options.trace = absolutePathNamed(file); },
         "Write every driver call and every serial transfer to this file, one JSON object a line")
      ->type_name("FILE");
}

void refuseMissingFolder(CLI::App& app) {
  app.get_option("--work-dir")->check([](const std::string& folder) -> std::string {
    std::error_code unknown;
    const auto found = std::filesystem::status(absolutePathNamed(folder), unknown);
    if (std::filesystem::is_directory(found)) return {};
    return std::filesystem::exists(found) ? '"' + folder + "\" is not a folder"
                                          : "there is no folder \"" + folder + '"';
  });
}

void addWindowOptions(CLI::App& app, KnownValues& known, Options& options) {
  std::string offered;
  for (const std::string_view language : languages)
    offered.append(offered.empty() ? "" : ", ").append(language);
  auto* const option =
      app.add_option_function<std::string>(
             "--lang",
             [&options, offered](const std::string& language) {
               if (std::find(languages.begin(), languages.end(), language) == languages.end()) {
                 throw CLI::ValidationError(
                     "--lang", '"' + language +
                                   "\" is not a language of this program: expected one of " +
                                   offered);
               }
               options.language = language;
             },
             "The language of the windows: " + offered + " (default: the system's, else en)")
          ->type_name("LANG");
  known.add(*option, {languages.begin(), languages.end()});
  auto* const theme = app.add_option_function<std::string>(
                             "--theme",
                             [&options](const std::string& name) {
                               if (name != "system") options.dark = name == "dark";
                             },
                             "The colours of the windows: system, light or dark (default: system)")
                          ->check(CLI::IsMember({"system", "light", "dark"}))
                          ->type_name("THEME");
  known.add(*theme, {"system", "light", "dark"});
  app.add_option_function<std::string>(
         "--print-sheet",
         [&options](const std::string& folder) { options.printSheet = absolutePathNamed(folder); },
         "Write the sheet of the commissioning in this folder as sheet.pdf and sheet.html, in the "
         "language of the windows, and exit; no window opens")
      ->type_name("FOLDER");
  app.add_option(
         "--monitor", options.monitor,
         "The monitor that the panel covers, counted from 1: full-screen windows open there "
         "(default: the main window's)")
      ->check(CLI::PositiveNumber)
      ->type_name("N");
}

}  // namespace touch
