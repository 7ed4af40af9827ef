#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "app/options.h"
#include "app/parsing.h"
#include "app/process/guarded_run.h"
#include "app/process/orderly_process.h"
#include "app/process/system_text.h"
#include "app/simulated_source.h"
#include "app/touchsim/bench.h"
#include "app/touchsim/cable_port.h"
#include "app/touchsim/line_form.h"
#include "app/touchsim/outside.h"
#include "app/touchsim/playback.h"
#include "serial/scripts/script_run.h"
#include "simulator/controller/controllers.h"
#include "simulator/controller/described_controller.h"
#include "simulator/panel/strokes.h"
#include "support/text/text_encoding.h"

namespace {

using namespace touch::simulator;
using namespace std::chrono_literals;

constexpr int exitFailed = 1;

#if defined(_WIN32)
constexpr std::string_view noPort =
    "Windows has no named pipe left for it, and without one no program can open the simulated "
    "controller. Where there is a pair of ports, name one of them with --port.";
#else
constexpr std::string_view noPort =
    "this system offers no pseudo-terminal, and without one no program can open the simulated "
    "controller. On Linux mount devpts on /dev/pts.";
#endif

constexpr auto fingerStep = 10ms;
constexpr int stepsInStroke = 100;
constexpr auto betweenStrokes = 500ms;

// Times as fast as a recording.
constexpr double slowest = 0.1;
constexpr double fastest = 100;

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
  std::optional<std::filesystem::path> source;
  std::string controller{controllerModels.front().name};
  touch::LineSettings line;
  std::optional<int> port;  ///< that it is at; none: one of its own
  touch::ComPorts comPorts;
  std::string reports = "tablet";
  std::string strokes;
  std::optional<int> speed;              ///< in place of the line's
  std::optional<std::string> recording;  ///< as it was typed
  std::optional<std::string> dialogue;
  double replaySpeed = 1;
  std::optional<std::filesystem::path> script;
  bool once = false;
  std::vector<FaultTimes> faults;
};

/// What a second process asks of the one that runs.
struct Errand {
  std::string request;  ///< empty: this process is to be the controller
  double seconds = 0;   ///< then the finger is lifted; 0: it stays
  std::optional<std::string> device;
};

int failed(const std::string& why) {
  std::fprintf(stderr, "touchsim: %s\n", touch::printable(why).c_str());
  return exitFailed;
}

const ControllerModel& modelNamed(const std::string& name) {
  return *std::ranges::find(controllerModels, std::string_view(name), &ControllerModel::name);
}

void setUp(Bench& bench, const Options& options) {
  bench.with([&](SimulatedController& controller, TimePoint now) {
    const auto* const reports =
        std::ranges::find(reportCommands, options.reports, &ReportCommand::name);
    const std::vector<std::uint8_t> command(reports->command.begin(), reports->command.end());
    // Whatever the device is set to: this comes from nobody there.
    controller.setUserSpeed(std::nullopt);
    controller.receive(command, now);
    // Drops the answer: nobody has asked.
    controller.connect(LineUser::port, now);
    controller.speak(formatOf(options.line));
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

/// Answers as a script says, also behind its last step.
int follow(Bench& bench, Pause& pause, const touch::Script& script) {
  BenchPort port(bench, pause);
  BenchClock clock(pause);
  touch::ScriptRun running(script, port, clock,
                           {.onStep = nullptr,
                            .onNote =
                                [](const std::string& note) {
                                  std::fprintf(stderr, "touchsim: %s\n",
                                               touch::printable(note).c_str());
                                },
                            .onSent = nullptr,
                            .onReceived = nullptr,
                            .isStopped = [&pause] { return pause.isInterrupted(); },
                            .isPaused = nullptr});
  const auto done = running.run();
  if (pause.isInterrupted()) return 0;
  if (!done) return failed(script.name + ", " + done.error().describe());
  running.serve();
  return 0;
}

/// What is read before the device is there.
struct Sources {
  touch::commission::SourceRecordings recordings;
  std::unique_ptr<Playback> playback;
  std::optional<touch::Script> script;
};

touch::Result<Sources> readSources(const Options& options) {
  Sources sources;
  auto recordings = touch::recordingsOf(options.source);
  if (!recordings) return tl::unexpected(recordings.error());
  sources.recordings = std::move(*recordings);
  for (const auto& [file, way] : {std::pair(&options.recording, Playback::Way::again),
                                  std::pair(&options.dialogue, Playback::Way::answers)}) {
    if (!*file) continue;
    const auto recording = touch::recordingNamed(**file, sources.recordings);
    if (!recording) return tl::unexpected(recording.error());
    auto opened = Playback::open(*recording, way, options.replaySpeed);
    if (!opened) return tl::unexpected(opened.error());
    sources.playback = std::move(*opened);
  }
  if (options.script) {
    auto script = touch::readScript(*options.script);
    if (!script) return tl::unexpected(script.error());
    sources.script = std::move(*script);
  }
  return sources;
}

int serve(Bench& bench, Pause& pause, const Options& options, Sources& sources) {
  if (sources.script) return follow(bench, pause, *sources.script);
  if (sources.playback) {
    const auto played = sources.playback->serve(bench, pause, options.once);
    return played ? 0 : failed(played.error().describe());
  }
  const auto strokes = options.strokes == "lines"     ? lines(stepsInStroke)
                       : options.strokes == "circles" ? circles(stepsInStroke)
                                                      : std::vector<Stroke>();
  bool goesOn = !strokes.empty();
  while (goesOn)
    goesOn = draw(bench, pause, strokes) && !options.once;
  pause.untilInterrupted();
  return 0;
}

/// The controller of a commissioning.
touch::Result<std::unique_ptr<const DescribedController>, std::string> describedBy(
    const std::filesystem::path& source) {
  const auto replay = touch::replayNamed(source, "touchsim");
  if (!replay) return tl::unexpected(replay.error().describe());
  Description description;
  for (const std::string& property : (*replay)->properties)
    if (auto taken = description.add(property); !taken)
      return tl::unexpected(source.string() + ": " + taken.error());
  return std::move(description).finish();
}

void tellOf(const std::vector<std::string>& recordings) {
  std::string list;
  for (const std::string& name : recordings)
    list.append(list.empty() ? "" : ", ").append(name);
  if (!list.empty()) {
    std::fprintf(stderr,
                 "touchsim: it comes with %s; --play NAME sends it again, and --replay NAME "
                 "answers as in it\n",
                 touch::printable(list).c_str());
  }
}

touch::Result<std::unique_ptr<ServedPort>, std::string> portFor(const Options& options, int baud,
                                                                const ControllerEnd& controller,
                                                                asio::io_context& context) {
  if (options.port) {
    return CablePort::open(context, options.comPorts, *options.port,
                           settingsOf(formatOf(options.line), baud), controller);
  }
  auto port = ServedPort::open(controller);
  if (!port) return tl::unexpected(std::string(noPort));
  return port;
}

int run(const Options& options) {
  auto sources = readSources(options);
  if (!sources) return failed(sources.error().describe());
  std::unique_ptr<const DescribedController> described;
  if (options.source) {
    auto read = describedBy(*options.source);
    if (!read) return failed(read.error());
    described = std::move(*read);
    if (!sources->playback) tellOf(sources->recordings.names());
  }
  Pause pause;
  const int baud = options.speed.value_or(options.line.baud);
  const auto opened = Bench::open(described ? described->model() : modelNamed(options.controller),
                                  baud, [&](const ControllerEnd& controller) {
                                    return portFor(options, baud, controller, pause.context());
                                  });
  if (!opened) return failed(opened.error());
  const auto& bench = *opened;
  setUp(*bench, options);
  const PassingFaults passing(*bench, pause, options.faults);
  OutsideFinger::OnReplay onReplay;
  if (sources->playback)
    onReplay = [&](const ReplayRequest& request) { return sources->playback->carryOut(request); };
  const auto finger = OutsideFinger::open(
      pause.context(), bench->path(),
      [&](const FingerRequest& request) {
        bench->with([&request](auto& controller, TimePoint now) {
          request.down ? controller.touch({request.x, request.y}, now) : controller.lift(now);
        });
      },
      onReplay);
  if (!finger) {
    std::fprintf(stderr, "touchsim: out of reach of 'touchsim touch' and the like: %s\n",
                 std::string(doorNeeds).c_str());
  }
  std::printf("%s\n", bench->path().c_str());
  std::fflush(stdout);
  return serve(*bench, pause, options, *sources);
}

int runErrand(const Errand& errand) {
  const auto sent = sendRequest(errand.request, errand.device);
  if (!sent) return failed(sent.error());
  if (!sent->empty()) std::printf("%s\n", touch::printable(*sent).c_str());
  if (errand.seconds == 0) return 0;
  Pause pause;
  pause.of(std::chrono::duration_cast<TimePoint::duration>(
      std::chrono::duration<double>(errand.seconds)));
  const auto lifted = sendRequest("lift", errand.device);
  return lifted ? 0 : failed(lifted.error());
}

void addErrands(CLI::App& app, Errand& errand) {
  const auto addDevice = [&errand](CLI::App& command) {
    command
        .add_option_function<std::string>(
            "--device", [&errand](const std::string& device) { errand.device = device; },
            "What the running touchsim has printed (default: the only one)")
        ->type_name("DEVICE");
  };
  CLI::App* const touch =
      app.add_subcommand("touch", "Touch the panel of a running simulated controller");
  const auto* const x =
      touch->add_option("X", "From 0 (left) to 1 (right)")->required()->check(CLI::Range(0.0, 1.0));
  const auto* const y =
      touch->add_option("Y", "From 0 (top) to 1 (bottom)")->required()->check(CLI::Range(0.0, 1.0));
  touch->add_option("--seconds", errand.seconds, "Then the finger is lifted; 0: it stays down")
      ->check(CLI::Range(0.0, 86400.0))
      ->default_str("0.2");
  errand.seconds = 0.2;
  addDevice(*touch);
  touch->callback([&errand, x, y] {
    errand.request = "touch " + x->as<std::string>() + ' ' + y->as<std::string>();
  });
  constexpr std::pair<const char*, const char*> plain[] = {
      {"lift", "Lift a finger that stays down"},
      {"pause", "Hold the recording that a running simulated controller plays"},
      {"go", "Let it go on"},
      {"step", "Let its next bytes pass, then hold it"},
      {"progress", "Print where it is and whether it is held"}};
  for (const auto& [name, description] : plain) {
    CLI::App* const command = app.add_subcommand(name, description);
    addDevice(*command);
    command->callback([&errand, request = name] { errand = {request, 0, errand.device}; });
  }
  CLI::App* const seek = app.add_subcommand("seek", "Go on with it from another place");
  const auto* const seconds = seek->add_option("SECONDS", "From its beginning")
                                  ->required()
                                  ->check(CLI::Range(0.0, longestSeek));
  addDevice(*seek);
  seek->callback([&errand, seconds] {
    errand = {"seek " + seconds->as<std::string>(), 0, errand.device};
  });
}

std::vector<std::string> faultNamesHere() {
  std::vector<std::string> names;
  for (const FaultName& fault : faultNames)
    if (std::ranges::find(faults, fault.fault) != faults.end()) names.emplace_back(fault.name);
  return names;
}

std::string faultList() {
  std::string list;
  for (const std::string& name : faultNamesHere())
    list += (list.empty() ? "" : ", ") + name;
  return list;
}

void addOptions(CLI::App& app, touch::KnownValues& known, Options& options) {
  std::vector<std::string> controllers;
  controllers.reserve(std::size(controllerModels));
  for (const ControllerModel& model : controllerModels)
    controllers.emplace_back(model.name);
  std::vector<std::string> reports;
  reports.reserve(std::size(reportCommands));
  for (const ReportCommand& command : reportCommands)
    reports.emplace_back(command.name);
  app.set_version_flag("--version", touch::programVersion(), "Print the version and exit");
  auto* const controller =
      app.add_option("--controller", options.controller, "Which controller to be")
          ->check(CLI::IsMember(controllers))
          ->capture_default_str();
  app.add_option_function<std::string>(
         "--simulate-from",
         [&options](const std::string& path) { options.source = touch::absolutePathNamed(path); },
         "Be the controller of this commissioning, with its panel: the folder of the run, or its "
         "bundle")
      ->type_name("SOURCE")
      ->excludes(controller);
  const auto speeds = ServedPort::speeds();
  const auto* const line =
      app.add_option_function<std::string>(
             "--line", [&options](const std::string& text) { options.line = *lineNamed(text); },
             "Data bits, parity and stop bits of its line, or all as in 9600,e,7,1. One that is "
             "not at 8N1 must be told to change with N72toN81")
          ->check([speeds](const std::string& text) -> std::string {
            const auto named = lineNamed(text);
            if (!named) return named.error();
            return std::ranges::find(speeds, named->baud) != speeds.end()
                       ? std::string()
                       : "no port of its own has this speed";
          })
          ->type_name("LINE")
          ->default_str("8N1");
  known.add(*line, {"8N1", "7N2", "7E1", "7O1", "8E1", "8O1", "8N2"});
  app.add_option_function<int>(
         "--speed", [&options](int speed) { options.speed = speed; }, "Bits a second on its line")
      ->check(CLI::IsMember(speeds))
      ->default_str(std::to_string(touch::LineSettings{}.baud));
  app.add_option_function<int>(
         "--port", [&options](int number) { options.port = number; },
         "Be at this COM port instead of one of its own: who talks to it is at the other end of "
         "the "
         "cable, or of a pair of ports")
      ->check(CLI::Range(1, touch::ComPorts::greatestNumber))
      ->type_name("N");
  touch::addComPorts(app, options.comPorts);
  app.add_option("--reports", options.reports, "The form of its touch reports")
      ->check(CLI::IsMember(reports))
      ->capture_default_str();
  auto* const strokes = app.add_option("--strokes", options.strokes, "Draw over and over")
                            ->check(CLI::IsMember({"lines", "circles"}));
  const auto addRecording = [&app](const char* name, std::optional<std::string>& file,
                                   const char* description) {
    return app
        .add_option_function<std::string>(
            name, [&file](const std::string& typed) { file = typed; }, description)
        ->type_name("FILE");
  };
  auto* const play =
      addRecording(
          "--play", options.recording,
          "Play a recording over and over: what came from the controller is sent again. Behind "
          "--simulate-from also one of SOURCE, by its name")
          ->excludes(strokes);
  auto* const replay =
      addRecording(
          "--replay", options.dialogue,
          "Answer each command as the controller in a recording did, and none that it was not "
          "sent; one of SOURCE as for --play")
          ->excludes(strokes)
          ->excludes(play);
  const auto* const replaySpeed =
      app.add_option("--replay-speed", options.replaySpeed,
                     "How many times as fast the recording is played or answers")
          ->check(CLI::Range(slowest, fastest))
          ->type_name("FACTOR")
          ->capture_default_str();
  app.parse_complete_callback([replaySpeed, play, replay] {
    if (replaySpeed->count() > 0 && play->count() == 0 && replay->count() == 0)
      throw CLI::RequiresError("--replay-speed", "--play or --replay");
  });
  app.add_option_function<std::string>(
         "--script",
         [&options](const std::string& path) { options.script = touch::absolutePathNamed(path); },
         "Answer as a script says, and nothing else")
      ->type_name("FILE")
      ->check(CLI::ExistingFile)
      ->excludes(strokes)
      ->excludes(play)
      ->excludes(replay);
  app.add_flag("--once", options.once, "Draw or play only once, and then wait for commands");
  const auto* const fault =
      app.add_option_function<std::vector<std::string>>(
             "--fault",
             [&options](const std::vector<std::string>& texts) {
               for (const std::string& text : texts)
                 options.faults.push_back(*parseFaultTimes(text));
             },
             "What goes wrong, and from when to when in seconds, again in every so many: "
             "lost-bytes, lost-bytes@5-10, lost-bytes@5-10/60; may be given more than once")
          ->type_name("FAULT")
          ->check([](const std::string& text) {
            const auto times = parseFaultTimes(text);
            return times && std::ranges::find(faults, times->fault) != faults.end()
                       ? std::string()
                       : "expected " + faultList() + ", or such with @FROM-TO or @FROM-TO/EVERY";
          })
          ->expected(1)
          ->allow_extra_args(false)
          ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
  known.add(*fault, faultNamesHere());
}

int runProgram(int argc, char** argv) {
  const touch::OrderlyProcess process("touchsim");
  const touch::SystemText text(argc, argv);
  CLI::App arguments(
      "A simulated controller on a serial port of its own. Prints the device to open, and serves "
      "it "
      "until Ctrl+C.",
      "touchsim");
  Options options;
  Errand errand;
  touch::KnownValues known;
  addOptions(arguments, known, options);
  addErrands(arguments, errand);
  arguments.footer(touch::exitStatusLine(touch::touchsimManual));
  if (const auto status =
          touch::parseCommandLine(arguments, touch::touchsimManual, known, argc, argv))
    return *status;
  return errand.request.empty() ? run(options) : runErrand(errand);
}

}  // namespace

int main(int argc, char** argv) {
  return touch::guardedRun("touchsim", [&] { return runProgram(argc, argv); });
}
