#pragma once

#include "serial/port/asio_serial_port.h"
#include "tests/console/parameters/parameter_controller.h"
#include "tests/faults/faulty_driver.h"
#include "tests/ports/pseudo_terminal.h"

namespace touch::test {

/// Everything that a program reaches outside, in working order but for what the plan says: a driver
/// with one controller that has a parameter memory and a finger on its panel, a disk, and a serial
/// line with a controller at its end.
class FaultWorld final : public ParameterDesk {
 public:
  using Desk::clock, Desk::journal, Desk::prompt, Desk::session, ParameterDesk::memory;

  explicit FaultWorld(FaultPlan faults) : plan(faults) {
    planObeyed = &plan;
    sentBytes = 0;
    script.results["GetRightClickTime"] = 1000;
    script.replies["UT"] = {replyOf("QRMV0301")};
    script.replies["OI"] = {replyOf("M0130100")};
    script.replies["CR"] = script.replies["CX"] = script.replies["R"] = {acknowledgement};
    script.onCall = [this, serveMemory = script.onCall](const std::string& line) {
      serveMemory(line);
      // Two touches at one place would be taken for one.
      if (line.starts_with("CalCurrentPointReady"))
        script.touches = {std::pair{500 * (++touches_ % 30), 2000}};
      if (line.starts_with("ReadLength")) script.pending = replyOf("1");
    };
    clock.onAdvance = [this](auto) { answerOnTheLine(); };
  }
  ~FaultWorld() override { planObeyed = nullptr; }
  void TestBody() override {}

  Access access() { return {session, *used, clock}; }
  /// The process of the driver is gone.
  void forgetHandles() { script.openHandles.clear(); }
  /// What the user was told so far.
  std::string told() const { return said().empty() ? "" : testing::PrintToString(said()); }
  /// Bytes that the controller on the line sends by itself, a few at a time.
  Bytes streaming;
  const fs::path& disk() const { return folder.path(); }

  /// Everything is as a program has to leave it.
  void expectOrder() {
    const Pause pause(plan);
    EXPECT_TRUE(driver.openControllers.empty()) << "a controller stayed open";
    EXPECT_FALSE(driver.portIsTaken) << "the driver did not get its port back";
    EXPECT_FALSE(serial.isOpen()) << "the serial port stayed open";
    for (const auto& entry : fs::recursive_directory_iterator(disk())) {
      const std::string file = entry.path().filename().string();
      EXPECT_EQ(file.find(".new"), file.npos) << "half a file was left: " << file;
    }
  }

  FaultPlan plan;
  FaultyDriver driver{ParameterDesk::driver(), plan};
  Driver* used = &driver;  ///< what the program talks to
  AsioSerialPort serial{[this] {
    ComPorts ports;
    ports.assignUnlessGiven(1, [this] { return terminal_.path(); });
    return ports;
  }()};

 private:
  void answerOnTheLine() {
    const Pause pause(plan);
    if (terminal_.receive(std::exchange(sentBytes, 0)).size() > 0)
      terminal_.send(replyOf("QRMV0301"));
    if (streaming.empty() || !serial.isOpen()) return;
    const auto end = streaming.begin() + std::min<std::ptrdiff_t>(10, std::ssize(streaming));
    terminal_.send(Bytes(streaming.begin(), end));
    streaming.erase(streaming.begin(), end);
  }

  PseudoTerminal terminal_;
  int touches_ = 0;
};

struct Outcome {
  bool done = false;
  std::string told;  ///< what the user sees of it
};

/// Something that a user does from beginning to end, as often as they like in one world.
struct Scenario {
  const char* name;
  Outcome (*run)(FaultWorld&);
};

std::span<const Scenario> scenarios();

}  // namespace touch::test
