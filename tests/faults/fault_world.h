#pragma once

#include <algorithm>
#include <filesystem>
#include <string>

#include "serial/asio_serial_port.h"
#include "tests/console/parameter_controller.h"
#include "tests/faults/faulty_driver.h"
#include "tests/faults/faulty_system.h"
#include "tests/serial/pseudo_terminal.h"

namespace touch::test {

/// Everything that a program reaches outside, in working order but for what the plan says: a driver with one controller
/// that has a parameter memory and a finger on its panel, a disk, and a serial line with a controller at its end.
class FaultWorld final : public ParameterDesk {
 public:
  using Desk::clock;
  using Desk::journal;
  using Desk::prompt;
  using Desk::session;
  using ParameterDesk::memory;

  explicit FaultWorld(FaultPlan faults) : plan(faults) {
    script.replies["UT"] = {replyOf("QRMV0301")};
    script.replies["OI"] = {replyOf("M0130100")};
    script.replies["CR"] = script.replies["CX"] = script.replies["R"] = {acknowledgement};
    script.onCall = [this, serveMemory = script.onCall](const std::string& line) {
      serve(line, serveMemory);
    };
    clock.onAdvance = [this](auto) { answerOnTheLine(); };
  }
  void TestBody() override {}

  Access access() { return {session, driver, clock}; }
  /// What the user was told so far.
  std::string told() const {
    std::string all;
    for (const std::string& line : said())
      all += line + '\n';
    return all;
  }
  /// Bytes that the controller on the line sends by itself, a few at a time.
  void stream(Bytes bytes) { streaming_ = std::move(bytes); }
  const std::filesystem::path& disk() const { return folder.path(); }

  /// What is not as a program has to leave it; empty when all is in order.
  std::string disorder() {
    const FaultPlan::Pause pause(plan);
    std::string all;
    if (!driver.openControllers.empty()) all += "a controller stayed open\n";
    if (driver.portIsTaken) all += "the driver did not get its port back\n";
    if (serial.isOpen()) all += "the serial port stayed open\n";
    for (const auto& entry : std::filesystem::recursive_directory_iterator(disk())) {
      if (entry.path().filename().string().find(".new") != std::string::npos) {
        all += "half a file was left: " + entry.path().filename().string() + '\n';
      }
    }
    return all;
  }

  FaultPlan plan;
  FaultyDriver driver{ParameterDesk::driver(), plan};
  AsioSerialPort serial{ports()};

 private:
  using Served = std::function<void(const std::string&)>;

  void serve(const std::string& line, const Served& serveMemory) {
    const auto is = [&line](std::string_view begin) { return line.starts_with(begin); };
    if (is("WriteBuffer GP") || is("WriteBuffer SP") || is("WriteBuffer RD")) serveMemory(line);
    // Two touches at one place would be taken for one.
    if (is("CalCurrentPointReady")) script.touches = {std::pair{500 * (++touches_ % 30), 2000}};
    if (is("ReadLength")) script.pending = replyOf("1");
  }

  void answerOnTheLine() {
    const FaultPlan::Pause pause(plan);
    if (terminal_.receive(system_.takeSent()).size() > 0) terminal_.send(replyOf("QRMV0301"));
    if (streaming_.empty() || !serial.isOpen()) return;
    constexpr std::ptrdiff_t most = 10;
    const auto end = streaming_.begin() + std::min(most, std::ssize(streaming_));
    terminal_.send(Bytes(streaming_.begin(), end));
    streaming_.erase(streaming_.begin(), end);
  }

  ComPorts ports() {
    ComPorts ports;
    ports.assignUnlessGiven(1, [this] { return terminal_.path(); });
    return ports;
  }

  PseudoTerminal terminal_;
  Bytes streaming_;
  int touches_ = 0;
  FaultySystem system_{plan};
};

}  // namespace touch::test
