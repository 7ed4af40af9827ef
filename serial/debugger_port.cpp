#include "serial/debugger_port.h"

#include <chrono>

#include "core/clock.h"
#include "core/driver.h"
#include "core/prompt.h"

namespace touch {

namespace {

using namespace std::chrono_literals;

constexpr std::string_view sevenBitSettings = "9600,n,7,2";
constexpr int lastSelectedPort = 16;
constexpr int lastProbedPort = 2;
constexpr auto afterFirstProbe = 30ms;
constexpr auto afterSecondProbe = 100ms;
constexpr auto afterLineChange = 100ms;
constexpr std::uint8_t answerEnd = 0x0D;
constexpr std::size_t shortestAnswer = 3;

bool isAnswer(const std::vector<std::uint8_t>& reply) {
  return reply.size() >= shortestAnswer && reply.back() == answerEnd;
}

/// Sets the port to 8 data bits and 1 stop bit, however the work at 7 and 2 ends.
class NormalAfterwards {
 public:
  explicit NormalAfterwards(SerialPort& serial) : serial_(serial) {}
  NormalAfterwards(const NormalAfterwards&) = delete;
  NormalAfterwards& operator=(const NormalAfterwards&) = delete;
  ~NormalAfterwards() { serial_.setSettings(normalLineSettings); }

 private:
  SerialPort& serial_;
};

}  // namespace

void DebuggerPort::takeFromDriver() {
  if (isTaken()) return;
  connection_.emplace(access_);
  access_.driver.CloseCOMPort(connection_->handle());
}

std::optional<std::string> DebuggerPort::take(int port) {
  takeFromDriver();
  // A port that turns out to have gone here closes, and may be there again below.
  auto refused = serial_.setSettings(normalLineSettings);
  if (refused && serial_.isOpen()) return refused;
  select(port);
  refused = serial_.open();
  if (refused) giveBack();
  return refused;
}

void DebuggerPort::giveBack() {
  if (!isTaken()) return;
  serial_.close();
  access_.driver.ReopenCOMPort(connection_->handle());
  connection_.reset();
}

void DebuggerPort::select(int port) {
  if (serial_.isOpen() && selected_ == port) return;
  serial_.close();
  serial_.selectPort(port);
  selected_ = port;
}

void DebuggerPort::selectcom() {
  for (int port = 1; port <= lastSelectedPort; ++port) {
    serial_.close();
    select(port);
    serial_.open();
  }
}

std::optional<int> DebuggerPort::comporttest() {
  const Use use(*this);
  foundPort_.reset();
  takeFromDriver();
  serial_.setSettings(normalLineSettings);
  for (int port = 1; port <= lastProbedPort; ++port) {
    select(port);
    if (serial_.open()) continue;
    if (isAnswer(probe())) {
      foundPort_ = port;
      return foundPort_;
    }
    serial_.close();
  }
  giveBack();
  prompt_.message("Device Can't found!!");
  return foundPort_;
}

std::vector<std::uint8_t> DebuggerPort::probe() {
  const Frame nullCommand = commandFrame("Z");
  sendFresh(nullCommand);
  access_.clock.delay(afterFirstProbe);
  sendFresh(nullCommand);
  access_.clock.delay(afterSecondProbe);
  return serial_.readAll();
}

bool DebuggerPort::N72toN81() {
  const Use use(*this);
  std::optional<std::string> refused;
  {
    const NormalAfterwards normal(serial_);
    refused = serial_.setSettings(sevenBitSettings);
    if (!refused) {
      sendFresh(commandFrame("PN81"));
      access_.clock.delay(afterLineChange);
    }
  }
  serial_.readAll();
  if (tellLoss()) return false;
  if (refused) prompt_.message(*refused);
  return !refused;
}

void DebuggerPort::sendFresh(const Frame& frame) {
  serial_.clearOutput();
  serial_.clearInput();
  access_.session.outputFrame = frame;
  serial_.write(frame.bytes());
}

bool DebuggerPort::tellLoss() {
  if (!isTaken() || serial_.isOpen()) return false;
  const auto reason = serial_.lost();
  if (!reason) return false;
  giveBack();
  prompt_.message(*reason);
  return true;
}

}  // namespace touch
