#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <asio/io_context.hpp>
#include <asio/signal_set.hpp>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "app/options.h"
#include "app/parsing.h"
#include "app/process/guarded_run.h"
#include "app/process/orderly_process.h"
#include "app/process/system_text.h"
#include "serial/recording/recording.h"
#include "simulator/controller/controllers.h"
#include "simulator/panel/strokes.h"
#include "simulator/port/pty_line.h"
#include "support/text/text_encoding.h"

namespace {

using namespace touch::simulator;
using namespace std::chrono_literals;

constexpr int exitFailed = 1;

constexpr auto fingerStep = 10ms;
constexpr int stepsInStroke = 100;
constexpr auto betweenStrokes = 500ms;

constexpr std::size_t mostInOneGo = 512;
constexpr auto lineIsFull = 100ms;

/// What makes the controller report touches in each form.
struct ReportCommand {
  const char* name;
  std::string_view command;  ///< empty: it does so when new
};
constexpr std::array reportCommands{
    ReportCommand{"tablet", ""},
    ReportCommand{"raw",
                  "\x01"
                  "FR\r"},
    ReportCommand{"decimal",
                  "\x01"
                  "FD\r"},
    ReportCommand{"hexadecimal",
                  "\x01"
                  "FH\r"},
    ReportCommand{"packet", "Ub2345678S"},
};

/// The faults that make sense without a driver.
constexpr std::array faults{Fault::noAnswer,     Fault::slowAnswer, Fault::shortReply,
                            Fault::garbledReply, Fault::lostBytes,  Fault::noisyReports,
                            Fault::storeFails};

struct Options {
  std::string controller{controllerModels.front().name};
  std::string line = "8N1";
  std::string reports = "tablet";
  std::string strokes;
  std::optional<std::filesystem::path> recording;
  bool once = false;
  std::vector<std::string> faults;
};

/// Waits that the user can end with Ctrl+C.
class Pause {
 public:
  Pause() {
    signals_.async_wait([this](const std::error_code&, int) { interrupted_ = true; });
  }

  /// False when the user wants the program to end.
  bool until(TimePoint time) {
    if (!interrupted_) context_.run_until(time);
    return !interrupted_;
  }
  bool of(TimePoint::duration duration) {
    return until(std::chrono::steady_clock::now() + duration);
  }
  void untilInterrupted() {
    if (!interrupted_) context_.run();
  }

 private:
  asio::io_context context_{1};
  asio::signal_set signals_{context_, SIGINT, SIGTERM};
  bool interrupted_ = false;
};

/// A controller at the end of a pseudo-terminal.
class Bench {
 public:
  static std::unique_ptr<Bench> open(const ControllerModel& model) {
    auto bench = std::make_unique<Bench>(model);
    bench->line_ = PtyLine::open(bench->controller_, bench->clock_, bench->guard_);
    return bench->line_ ? std::move(bench) : nullptr;
  }
  explicit Bench(const ControllerModel& model) : controller_(model) {
    controller_.connect(LineUser::port, clock_.now());
  }

  const std::string& path() const { return line_->path(); }

  /// Does something with the controller: `action` is given it and the time.
  template <typename Action>
  void with(const Action& action) {
    {
      const std::lock_guard lock(guard_);
      action(controller_, clock_.now());
    }
    line_->wake();
  }

 private:
  std::mutex guard_;
  SimulatedClock clock_;
  SimulatedController controller_;
  std::unique_ptr<PtyLine> line_;  // last: its thread ends before what it uses goes
};

const ControllerModel& modelNamed(const std::string& name) {
  return *std::ranges::find(controllerModels, std::string_view(name), &ControllerModel::name);
}

void setUp(Bench& bench, const Options& options) {
  bench.with([&](SimulatedController& controller, TimePoint now) {
    const auto* const reports =
        std::ranges::find(reportCommands, options.reports, &ReportCommand::name);
    const std::vector<std::uint8_t> command(reports->command.begin(), reports->command.end());
    controller.receive(command, now);
    // Drops the answer: nobody has asked.
    controller.connect(LineUser::port, now);
    if (options.line == "7N2") controller.speak(LineFormat::sevenN2);
    for (const std::string& fault : options.faults)
      controller.faults().set(*faultNamed(fault), true);
  });
}

/// Returns false when the user wants the program to end.
bool draw(Bench& bench, Pause& pause, const std::vector<Stroke>& strokes) {
  for (const Stroke& stroke : strokes) {
    for (const Point place : stroke) {
      bench.with([place](auto& controller, TimePoint now) { controller.touch(place, now); });
      if (!pause.of(fingerStep)) return false;
    }
    bench.with([](auto& controller, TimePoint now) { controller.lift(now); });
    if (!pause.of(betweenStrokes)) return false;
  }
  return true;
}

/// Sends `bytes`, however many, as the line takes them. Returns false when the user wants the
/// program to end.
bool say(Bench& bench, Pause& pause, std::span<const std::uint8_t> bytes) {
  while (!bytes.empty()) {
    const auto piece = bytes.first(std::min(bytes.size(), mostInOneGo));
    bool taken = false;
    bench.with([&](auto& controller, TimePoint now) { taken = controller.say(piece, now); });
    if (taken) {
      bytes = bytes.subspan(piece.size());
    } else if (!pause.of(lineIsFull)) {
      return false;
    }
  }
  return true;
}

/// Returns false when the user wants the program to end.
bool play(Bench& bench, Pause& pause, touch::TransferSource& recording) {
  const auto start = std::chrono::steady_clock::now();
  recording.rewind();
  while (const auto transfer = recording.next()) {
    if (transfer->direction != touch::Direction::fromController) continue;
    if (!pause.until(start + transfer->time)) return false;
    if (!say(bench, pause, transfer->bytes)) return false;
  }
  if (const auto failed = recording.error()) {
    std::fprintf(stderr, "touchsim: %s\n", touch::printable(failed->describe()).c_str());
    return false;
  }
  return pause.of(betweenStrokes);
}

int run(const Options& options) {
  std::unique_ptr<touch::TransferSource> recording;
  if (options.recording) {
    auto read = touch::RecordingFile::open(*options.recording);
    if (!read) {
      std::fprintf(stderr, "touchsim: %s\n", touch::printable(read.error().describe()).c_str());
      return exitFailed;
    }
    recording = std::move(*read);
  }
  Pause pause;
  const auto bench = Bench::open(modelNamed(options.controller));
  if (!bench) {
    std::fputs(
        "touchsim: this system offers no pseudo-terminal, and without one no program can open the "
        "simulated controller. "
        "On Linux mount devpts on /dev/pts; Windows has none: use 'touchctl --simulate' there.\n",
        stderr);
    return exitFailed;
  }
  setUp(*bench, options);
  std::printf("%s\n", bench->path().c_str());
  std::fflush(stdout);

  const auto strokes = options.strokes == "lines"     ? lines(stepsInStroke)
                       : options.strokes == "circles" ? circles(stepsInStroke)
                                                      : std::vector<Stroke>();
  bool goesOn = true;
  while (goesOn && (!strokes.empty() || recording)) {
    goesOn = draw(*bench, pause, strokes) && (!recording || play(*bench, pause, *recording)) &&
             !options.once;
  }
  pause.untilInterrupted();
  return 0;
}

void addOptions(CLI::App& app, Options& options) {
  std::vector<std::string> controllers;
  for (const ControllerModel& model : controllerModels) {
    if (model.link == Link::rs232) controllers.emplace_back(model.name);
  }
  std::vector<std::string> reports;
  reports.reserve(std::size(reportCommands));
  for (const ReportCommand& command : reportCommands)
    reports.emplace_back(command.name);
  std::vector<std::string> known;
  for (const FaultName& fault : faultNames) {
    if (std::ranges::find(faults, fault.fault) != faults.end()) known.emplace_back(fault.name);
  }
  app.set_version_flag("--version", touch::programVersion(), "Print the version and exit");
  app.add_option("--controller", options.controller, "Which controller to be")
      ->check(CLI::IsMember(controllers))
      ->capture_default_str();
  app.add_option("--line", options.line,
                 "8N1, or 7N2 for a controller that must be told to change with N72toN81")
      ->check(CLI::IsMember({"8N1", "7N2"}))
      ->capture_default_str();
  app.add_option("--reports", options.reports, "The form of its touch reports")
      ->check(CLI::IsMember(reports))
      ->capture_default_str();
  auto* const strokes = app.add_option("--strokes", options.strokes, "Draw over and over")
                            ->check(CLI::IsMember({"lines", "circles"}));
  app.add_option_function<std::string>(
         "--play",
         [&options](const std::string& file) {
           options.recording = touch::absolutePathNamed(file);
         },
         "Play a recording over and over: what came from the controller is sent again")
      ->type_name("FILE")
      ->check(CLI::ExistingFile)
      ->excludes(strokes);
  app.add_flag("--once", options.once, "Draw or play only once, and then wait for commands");
  app.add_option("--fault", options.faults, "What goes wrong; may be given more than once")
      ->check(CLI::IsMember(known))
      ->expected(1)
      ->allow_extra_args(false)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

int runProgram(int argc, char** argv) {
  const touch::OrderlyProcess process("touchsim");
  const touch::SystemText text(argc, argv);
  CLI::App arguments(
      "A simulated controller on a pseudo-terminal. Prints the device to open, and serves it until "
      "Ctrl+C.",
      "touchsim");
  Options options;
  addOptions(arguments, options);
  arguments.footer(touch::exitStatusLine(touch::touchsimManual));
  if (const auto status = touch::parseCommandLine(arguments, touch::touchsimManual, {}, argc, argv))
    return *status;
  return run(options);
}

}  // namespace

int main(int argc, char** argv) {
  return touch::guardedRun("touchsim", [&] { return runProgram(argc, argv); });
}
