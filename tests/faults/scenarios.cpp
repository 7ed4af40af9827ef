#include "calibration/calibration.h"
#include "console/main/main_console.h"
#include "console/parameters/kept_calibration.h"
#include "console/parameters/parameter_editor.h"
#include "console/settings/touch_settings.h"
#include "core/driver/driver_settings.h"
#include "linetest/canvas/canvas.h"
#include "linetest/files/drawing_file.h"
#include "measure/lines/line_files.h"
#include "serial/debugger/debugger.h"
#include "serial/rawdrawing/raw_drawing.h"
#include "support/files/whole_file.h"
#include "tests/calibration/recording_screen.h"
#include "tests/faults/fault_world.h"
#include "tests/linetest/canvas/recording_view.h"

namespace touch::test {
namespace {

Outcome startUpAndExit(FaultWorld& world) {
  MainModel model;
  MainConsole console(world.access(), world.prompt, model, world.serial, world.disk());
  console.startUp(10, {});
  const Identity& identity = model.identity;
  const std::string told = model.notice().text + identity.unitType + identity.firmware;
  console.exit();
  EXPECT_TRUE(model.ended) << "the way out is always open";
  return {identity.unitType == "QRMV0301" && identity.firmware == "M0130100", told + world.told()};
}

Outcome changeEachSetting(FaultWorld& world) {
  Outcome outcome{true, {}};
  for (const Setting& setting : settingTable()) {
    DriverSettings before;
    readset(world.access(), before);
    const int value = setting.get ? setting.get(before) : 1;
    const SettingAnswer answer = setting.set(world.access(), world.prompt, before, value);
    const std::string told = settingOutcome(setting, value, answer);
    if (told.find("was asked") != told.npos) outcome.done = false;
    outcome.told += told + '\n';
  }
  outcome.told += world.told();
  return outcome;
}

Outcome writeParameters(FaultWorld& world) {
  ParameterEditor editor(world.access(), world.prompt, Backup(world.disk()));
  std::string told = editor.read().text;
  // Bytes that differ from whatever a former try has left behind.
  const std::uint8_t before = world.memory[3].low;
  const std::string text = before == 0x7F ? "1A" : "7F";
  editor.table().edit(3, WordByte::low, text);
  editor.table().edit(4, WordByte::low, text);
  told += editor.write().text;
  return {world.memory[3].low != before && world.memory[4].low == world.memory[3].low,
          told + world.told()};
}

template <int points>
Outcome calibrate(FaultWorld& world) {
  world.session.calibrationPoints = points;
  RecordingScreen window;
  const auto& endings = window.endings;
  Calibration calibration(world.access(), world.prompt, window, {15000, 9000});
  calibration.activate();
  world.clock.delay(10min, [&endings] { return !endings.empty(); });
  // A controller that cannot be opened leaves the screen as it is, for another try.
  if (endings.empty()) calibration.cancel();
  world.clock.delay(10s);
  EXPECT_EQ(endings.size(), 1u) << "a calibration ends once";
  return {endings == std::vector{CalibrationOutcome::stored},
          testing::PrintToString(endings) + world.told()};
}

Outcome putBackCalibration(FaultWorld& world) {
  const auto before = world.memory;
  KeptCalibration kept(world.access(), Backup(world.disk()));
  if (!kept.whyNone().empty()) return {false, kept.whyNone()};
  for (auto& [address, word] : world.memory)
    word.low = static_cast<std::uint8_t>(word.low ^ 0x40);
  const Notice said = kept.putBack();
  return {world.memory == before && said.kind == NoticeKind::success, said.text};
}

Outcome drawAndSave(FaultWorld& world) {
  constexpr int strokes = 3;
  RecordingView window;
  window.chosen = world.disk() / "panel.fdw";
  {
    const Pause pause(world.plan);
    EXPECT_EQ(whyNot(writeDrawing(window.chosen, {})), "");
  }
  DrawingSwitches switches{true, false};
  const WorkingFiles files(world.disk(), world.disk());
  Canvas canvas({world.clock, world.prompt, world.session.messages, switches, files, world.disk()},
                window, {10240, 5120});
  canvas.activate();
  for (int stroke = 0; stroke < strokes; ++stroke) {
    const float x = 1000 * static_cast<float>(stroke + 1);
    canvas.pointerDown(PointerButton::left, {x, 1000});
    for (float y = 1100; y < 4000; y += 100)
      canvas.pointerMove({x, y});
    canvas.pointerUp({x, 4000});
  }
  canvas.perform(CanvasAction::save);
  const Pause pause(world.plan);
  const auto drawing = readDrawing(window.chosen);
  EXPECT_TRUE(drawing) << "a file is whole, the old one or the new one";
  return {drawing && drawing->size() == strokes, world.told()};
}

Outcome keepLine(FaultWorld& world) {
  const measure::Guide& line = *measure::findGuide("V-1");
  const auto remains = [&world] {
    int count = 0;
    for (const auto& entry : fs::directory_iterator(world.disk())) {
      const auto text = readWholeFile(entry.path(), 1'000'000);
      if (text && *text == "earlier") ++count;
    }
    return count;
  };
  int before = 0;
  {
    const Pause pause(world.plan);
    EXPECT_EQ(whyNot(writeWholeFile(world.disk() / lineFileName(line), "earlier")), "");
    before = remains();
  }
  measure::Measurement measurement;
  measurement.size = {{200}, {100}, measure::SizeSource::user};
  measure::LineProcedure procedure(measurement, {20000, 10000});
  procedure.penDown({{625, 0}});
  for (float y = 1000; y < 10000; y += 1000)
    procedure.penMove({{625, y}});
  procedure.penUp();
  const auto error = keepAndGoOn(world.disk(), procedure, measurement.size);
  const Pause pause(world.plan);
  EXPECT_EQ(remains(), before) << "an earlier result was lost";
  return {whyNot(error).empty() && readLineFile(world.disk(), line), whyNot(error)};
}

/// Does something on the serial line, past the driver.
Outcome onTheLine(FaultWorld& world, const std::function<Outcome(Debugger&)>& work) {
  Debugger debugger(world.access(), world.prompt, world.serial, {});
  debugger.takePort();
  Outcome outcome = work(debugger);
  debugger.leave();
  for (const auto& line : debugger.log().lines()) {
    if (line.kind == ConsoleLineKind::note) outcome.told += line.text + '\n';
  }
  outcome.told += world.told();
  return outcome;
}

Outcome askOnTheLine(FaultWorld& world) {
  return onTheLine(world, [](Debugger& debugger) {
    const auto reply = debugger.send({"UT=Unit Type[w]"});
    return Outcome{reply && reply->text == "QRMV0301", {}};
  });
}

constexpr int reports = 20;
Bytes tabletReports() {
  Bytes all;
  for (std::uint8_t i = 0; i < reports; ++i)
    all.insert(all.end(), {0xD8, i, 2, i, 3});
  return all;
}

Outcome receiveReports(FaultWorld& world) {
  return onTheLine(world, [&world](Debugger& debugger) {
    world.streaming = tabletReports();
    debugger.receiveMode().receive();
    world.clock.delay(600ms);
    const auto shown = std::ranges::count_if(debugger.log().lines(), [](const auto& line) {
      return line.kind == ConsoleLineKind::report;
    });
    return Outcome{shown == reports, std::to_string(shown)};
  });
}

Outcome drawReports(FaultWorld& world) {
  return onTheLine(world, [&world](Debugger& debugger) {
    RecordingSurface surface;
    RawDrawing drawing(world.clock, debugger.beginDrawing(), {surface, {10000, 10000}, {}},
                       debugger.makeDecoder());
    world.streaming = tabletReports();
    drawing.start();
    world.clock.delay(5s);
    drawing.stop();
    debugger.endDrawing();
    return Outcome{drawing.reports() == reports, {}};
  });
}

constexpr Scenario all[] = {
    {"StartUp", startUpAndExit},
    {"Settings", changeEachSetting},
    {"ParameterWrite", writeParameters},
    {"Calibration2", calibrate<2>},
    {"Calibration3", calibrate<3>},
    {"Calibration5", calibrate<5>},
    {"Calibration9", calibrate<9>},
    {"CalibrationPutBack", putBackCalibration},
    {"DrawingSave", drawAndSave},
    {"SerialExchange", askOnTheLine},
    {"ReportStream", receiveReports},
    {"RawDrawing", drawReports},
    {"LineKeep", keepLine},
};

}  // namespace

std::span<const Scenario> scenarios() {
  return all;
}

}  // namespace touch::test
