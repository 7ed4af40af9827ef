#include "tests/faults/scenarios.h"

#include "calibration/calibration.h"
#include "console/main_console.h"
#include "console/parameter_editor.h"
#include "console/touch_settings.h"
#include "core/driver_settings.h"
#include "linetest/canvas.h"
#include "linetest/drawing_file.h"
#include "serial/debugger.h"
#include "serial/raw_drawing.h"
#include "tests/linetest/recording_surface.h"

namespace touch::test {

namespace {

using namespace std::chrono_literals;

class MainWindow final : public MainView {
 public:
  std::string status;
  Identity identity;
  int endings = 0;

  void showBusy(const std::string&) override {}
  void showIdle() override {}
  void showStatus(const std::string& text) override { status = text; }
  void showControllers(const std::vector<std::string>&, std::optional<std::size_t>) override {}
  void showSettings() override {}
  void showParameters() override {}
  void showIdentity(const Identity& shown) override { identity = shown; }
  void showInformation(const std::vector<std::string>&) override {}
  std::string showPicture(const std::filesystem::path&) override { return {}; }
  std::string showIcon(const std::filesystem::path&) override { return {}; }
  void showAdvancedFrame() override {}
  void showPasswordFrame(bool) override {}
  void openDebugger() override {}
  void openPinDefinition() override {}
  void openCalibration() override {}
  void cancelCalibration() override {}
  void openTest(TestScreen) override {}
  void closeTest() override {}
  void closeDebugger() override {}
  void endProgram() override { ++endings; }
};

Outcome startUpAndExit(FaultWorld& world) {
  MainWindow window;
  MainConsole console(world.access(), world.prompt, window, world.serial, world.disk());
  console.startUp(10);
  const std::string told = window.status + window.identity.unitType + window.identity.firmware;
  console.exit();
  EXPECT_EQ(window.endings, 1) << "the way out is always open";
  return {window.identity.unitType == "QRMV0301" && window.identity.firmware == "M0130100",
          told + world.told()};
}

Outcome changeEachSetting(FaultWorld& world) {
  Outcome outcome{true, {}};
  for (const Setting& setting : settingTable()) {
    const DriverSettings before = readset(world.access());
    const int value = setting.get ? setting.get(before) : 1;
    const SettingAnswer answer = setting.set(world.access(), world.prompt, before, value);
    const std::string told = settingOutcome(setting, value, answer, readset(world.access()));
    if (told.find("was asked") != told.npos) outcome.done = false;
    outcome.told += told + '\n';
  }
  outcome.told += world.told();
  return outcome;
}

Outcome writeParameters(FaultWorld& world) {
  ParameterEditor editor(world.access(), world.prompt, Backup(world.disk()));
  std::string told = editor.read();
  // Bytes that differ from whatever a former try has left behind.
  const std::uint8_t before = world.memory[3].low;
  const std::string text = before == 0x7F ? "1A" : "7F";
  editor.table().edit(3, WordByte::low, text);
  editor.table().edit(4, WordByte::low, text);
  told += editor.write();
  return {world.memory[3].low != before && world.memory[4].low == world.memory[3].low,
          told + world.told()};
}

class CalibrationWindow final : public CalibrationScreen {
 public:
  RecordingSurface drawing;
  std::vector<CalibrationOutcome> endings;

  Surface& surface() override { return drawing; }
  void showButtons(bool, bool) override {}
  void showTimeBar(float) override {}
  void allowExit(bool) override {}
  void leave() override {}
  void ended(CalibrationOutcome outcome) override { endings.push_back(outcome); }
};

template <int points>
Outcome calibrate(FaultWorld& world) {
  world.session.calibrationPoints = points;
  CalibrationWindow window;
  Calibration calibration(world.access(), world.prompt, window, {15000, 9000});
  calibration.activate();
  world.clock.delay(10min, [&window] { return !window.endings.empty(); });
  // A controller that cannot be opened leaves the screen as it is, for another try.
  if (window.endings.empty()) calibration.cancel();
  world.clock.delay(10s);
  EXPECT_EQ(window.endings.size(), 1u) << "a calibration ends once";
  if (window.endings.empty()) return {};
  const auto end = window.endings.front();
  return {end == CalibrationOutcome::stored, std::to_string(static_cast<int>(end)) + world.told()};
}

class DrawingWindow final : public CanvasView {
 public:
  explicit DrawingWindow(std::filesystem::path file) : file_(std::move(file)) {}
  RecordingSurface drawing;

  Surface& surface() override { return drawing; }
  TwipsSize sizeOf(CanvasPanel) const override { return {1000, 1000}; }
  void place(CanvasPanel, TwipsPoint) override {}
  void show(CanvasPanel, bool) override {}
  void setHelp(std::span<const std::string>) override {}
  void setResultsList(std::span<const std::string>) override {}
  void setResultsTable(const ResultsSheet&) override {}
  void setTolerance(float) override {}
  std::filesystem::path askSaveName(const std::filesystem::path&, std::string_view) override {
    return file_;
  }
  std::filesystem::path askOpenName(const std::filesystem::path&, std::string_view) override {
    return file_;
  }
  void leave() override {}

 private:
  std::filesystem::path file_;
};

Outcome drawAndSave(FaultWorld& world) {
  constexpr int strokes = 3;
  const auto file = world.disk() / "panel.fdw";
  {
    const FaultPlan::Pause pause(world.plan);
    std::filesystem::remove(file);
    EXPECT_EQ(writeDrawing(file, {}), std::nullopt);
  }
  DrawingSwitches switches{true, false};
  const WorkingFiles files(world.disk(), world.disk());
  DrawingWindow window(file);
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
  const FaultPlan::Pause pause(world.plan);
  const auto drawing = readDrawing(file);
  EXPECT_TRUE(drawing) << "a file is whole, the old one or the new one";
  return {drawing && drawing->size() == strokes, world.told()};
}

std::string notesOf(const Debugger& debugger) {
  std::string notes;
  for (const auto& line : debugger.log().lines()) {
    if (line.kind == ConsoleLineKind::note) notes += line.text + '\n';
  }
  return notes;
}

Outcome askOnTheLine(FaultWorld& world) {
  Debugger debugger(world.access(), world.prompt, world.serial, {});
  debugger.takePort();
  const auto reply = debugger.send({"UT=Unit Type[w]"});
  debugger.leave();
  return {reply && reply->text == "QRMV0301", notesOf(debugger) + world.told()};
}

constexpr int reports = 20;
Bytes tabletReports() {
  Bytes all;
  for (std::uint8_t i = 0; i < reports; ++i) {
    const Bytes report{0xD8, i, 2, i, 3};
    all.insert(all.end(), report.begin(), report.end());
  }
  return all;
}

Outcome receiveReports(FaultWorld& world) {
  Debugger debugger(world.access(), world.prompt, world.serial, {});
  debugger.takePort();
  world.stream(tabletReports());
  debugger.receiveMode().receive();
  world.clock.delay(5s);
  debugger.leave();
  int shown = 0;
  for (const auto& line : debugger.log().lines())
    shown += line.kind == ConsoleLineKind::report;
  return {shown == reports, std::to_string(shown) + notesOf(debugger) + world.told()};
}

Outcome drawReports(FaultWorld& world) {
  Debugger debugger(world.access(), world.prompt, world.serial, {});
  debugger.takePort();
  std::uint64_t drawn = 0;
  {
    RecordingSurface surface;
    RawDrawing drawing(world.clock, debugger.beginDrawing(), {surface, {10000, 10000}, {}},
                       debugger.makeDecoder());
    world.stream(tabletReports());
    drawing.start();
    world.clock.delay(5s);
    drawn = drawing.reports();
  }
  debugger.endDrawing();
  debugger.leave();
  return {drawn == reports, notesOf(debugger) + world.told()};
}

constexpr Scenario all[] = {
    {"StartUp", startUpAndExit},         {"Settings", changeEachSetting},
    {"ParameterWrite", writeParameters}, {"Calibration2", calibrate<2>},
    {"Calibration3", calibrate<3>},      {"Calibration5", calibrate<5>},
    {"Calibration9", calibrate<9>},      {"DrawingSave", drawAndSave},
    {"SerialExchange", askOnTheLine},    {"ReportStream", receiveReports},
    {"RawDrawing", drawReports},
};

}  // namespace

std::span<const Scenario> scenarios() {
  return all;
}

}  // namespace touch::test
