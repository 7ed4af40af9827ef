#include "serial/scripts/script_run.h"
#include "simulator/controller/controllers.h"
#include "simulator/controller/simulated_controller.h"
#include "tests/doubles/test.h"
#include "tests/doubles/virtual_clock.h"

namespace touch::test {
namespace {

using simulator::LineFormat;
using simulator::SimulatedController;

/// A serial port with a simulated controller at its end, both in the time of the virtual clock.
class SimulatedPort final : public SerialPort {
 public:
  SimulatedPort(SimulatedController& controller, const Clock& clock)
      : controller_(controller), clock_(clock) {
    controller_.connect(simulator::LineUser::port, clock_.now());
  }

  Result<void, std::string> setSettings(std::string_view settings) override {
    controller_.setUserFormat(settings == "9600,n,7,2" ? LineFormat::sevenN2 : LineFormat::eightN1);
    return {};
  }
  void selectPort(int /*number*/) override {}
  Result<void, std::string> open() override { return {}; }
  void close() override {}
  bool isOpen() const override { return true; }
  std::optional<std::string> lost() const override { return std::nullopt; }
  std::size_t inBufferCount() override { return controller_.arrived(clock_.now()); }
  void clearInput() override { readAll(); }
  void clearOutput() override {}
  bool write(std::span<const std::uint8_t> bytes) override {
    controller_.receive(bytes, clock_.now());
    return true;
  }
  Bytes readAll() override { return controller_.take(inBufferCount(), clock_.now()); }

 private:
  SimulatedController& controller_;
  const Clock& clock_;
};

/// A script that comes with the program, and what it is for.
struct Packaged {
  std::string file;
  bool speaks7N2 = false;       ///< the controller, until it is told otherwise
  bool touchedAfter1s = false;  ///< and the finger stays
};

class PackagedScripts : public testing::TestWithParam<Packaged> {};

const Packaged packaged[] = {
    // It proves that a controller changes its line, so that one must begin with the other.
    {.file = "7n2-to-8n1.tus", .speaks7N2 = true},
    // Controllers answer packets of any set, so that this one needs none of its own.
    {.file = "e02-identify.tus"},
    {.file = "identify.tus"},
    {.file = "model.tus"},
    // Only under a finger does it show that the panel is off.
    {.file = "mute-and-wake.tus", .touchedAfter1s = true},
    {.file = "null-with-pauses.tus"},
    {.file = "read-all-words.tus"},
    {.file = "silence.tus"},
    // In full: in virtual time its exchanges take none.
    {.file = "stress-1000.tus"},
    {.file = "wait-for-a-touch.tus", .touchedAfter1s = true},
};

const fs::path packagedFolder = fs::path(SOURCE_FOLDER) / "packaging/scripts";

TEST_P(PackagedScripts, EndWellOnTheirControllerAndWithAReasonOnASilentOne) {
  const auto script = readScript(packagedFolder / GetParam().file);
  ASSERT_EQ(whyNot(script), "");
  EXPECT_EQ(script->question(), std::nullopt) << "none changes what a controller has stored";
  for (const bool answers : {true, false}) {
    Lines journal;
    VirtualClock clock(journal);
    SimulatedController controller{simulator::rs232Device1};
    controller.faults().set(simulator::Fault::noAnswer, !answers);
    SimulatedPort port(controller, clock);
    if (GetParam().speaks7N2) controller.speak(LineFormat::sevenN2);
    if (GetParam().touchedAfter1s)
      clock.after(1s, [&] { controller.touch({0.5, 0.5}, clock.now()); });
    Lines notes;
    ScriptRun run(*script, port, clock,
                  {.onStep = nullptr,
                   .onNote = [&notes](const std::string& note) { notes.push_back(note); },
                   .onSent = nullptr,
                   .onReceived = nullptr,
                   .isStopped = nullptr,
                   .isPaused = nullptr});
    const auto done = run.run();
    EXPECT_EQ(done.has_value(), answers) << whyNot(done);
    EXPECT_EQ(notes.empty(), !answers) << "each says at its end what it has found";
  }
}

INSTANTIATE_TEST_SUITE_P(All, PackagedScripts, testing::ValuesIn(packaged), [](const auto& test) {
  std::string name = test.param.file.substr(0, test.param.file.find('.'));
  std::ranges::replace(name, '-', '_');
  return name;
});

TEST(PackagedScriptFolder, IsTriedWhole) {
  std::set<std::string> there;
  for (const auto& entry : fs::directory_iterator(packagedFolder))
    there.insert(entry.path().filename().string());
  std::set<std::string> tried;
  for (const Packaged& script : packaged)
    tried.insert(script.file);
  EXPECT_EQ(tried, there);
}

}  // namespace
}  // namespace touch::test
