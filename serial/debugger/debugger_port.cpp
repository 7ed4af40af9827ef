#include "serial/debugger/debugger_port.h"

#include <chrono>
#include <utility>

#include "core/driver/driver.h"
#include "serial/debugger/console_log.h"
#include "serial/port/arrival_times.h"
#include "serial/recording/recording.h"
#include "support/clock.h"
#include "support/prompt.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

using namespace std::chrono_literals;

constexpr std::string_view sevenBitSettings = "9600,n,7,2";
constexpr int lastSelectedPort = 16;
constexpr int lastProbedPort = 2;
constexpr auto afterFirstProbe = 30ms;
constexpr auto afterSecondProbe = 100ms;
constexpr auto afterLineChange = 100ms;
// Longer than a byte at any usual speed, as other programs hold it.
constexpr auto breakTime = 250ms;
constexpr std::uint8_t answerEnd = 0x0D;
constexpr std::size_t shortestAnswer = 3;

bool isAnswer(const std::vector<std::uint8_t>& reply) {
  return reply.size() >= shortestAnswer && reply.back() == answerEnd;
}

std::string notSentText() {
  return say(
      "debugger",
      "The command was not sent: the line takes no bytes. Look at the cable and at what holds "
      "the controller up, then try again.");
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
  if (!isTaken()) {
    controller_ = access_.session.controllerName;
    connection_.emplace(access_);
  } else if (!driverHoldsPort()) {
    return;
  }
  letGo_ = access_.driver.CloseCOMPort(connection_->handle());
}

std::string DebuggerPort::driverText() const {
  if (!letGo_ || controller_.empty()) return {};
  if (!driverHoldsPort()) return say("debugger", "The driver has released its port.");
  return filled(say("debugger", "The driver has not released the port of %1."),
                {toUtf8(controller_)});
}

Result<void, std::string> DebuggerPort::take(int port, const std::optional<LineSettings>& line) {
  if (line) lines_[port] = *line;
  takeFromDriver();
  auto opened = openPort(port);
  if (!opened && driverHoldsPort()) return tl::unexpected(driverText() + ' ' + opened.error());
  return opened;
}

Result<void, std::string> DebuggerPort::openPort(int port) {
  lossTold_ = false;
  awaited_ = false;
  // A port that turns out to have gone here closes, and may be there again below.
  const auto chosen = lines_.find(port);
  auto set = serial_.setSettings(chosen == lines_.end() ? std::string(normalLineSettings)
                                                        : describe(chosen->second));
  if (!set && serial_.isOpen()) return set;
  select(port);
  log_.setDataBits(line().dataBits);
  return open();
}

LineSettings DebuggerPort::line() const {
  const auto chosen = lines_.find(selected_);
  return chosen == lines_.end() ? LineSettings{} : chosen->second;
}

Result<void, std::string> DebuggerPort::setLine(const LineSettings& line) {
  auto set = serial_.setSettings(describe(line));
  if (!set) {
    tellLoss();
    return set;
  }
  lines_[selected_] = line;
  log_.setDataBits(line.dataBits);
  log_.note(describe(line));
  return {};
}

Result<void, std::string> DebuggerPort::open() {
  const bool wasOpen = serial_.isOpen();
  auto opened = serial_.open();
  if (!opened || wasOpen) return opened;
  const Wires wanted = wires();
  if (!wanted.dtr) serial_.switchLine(LineSwitch::dtr, false);
  if (!wanted.rts) serial_.switchLine(LineSwitch::rts, false);
  return opened;
}

DebuggerPort::Wires DebuggerPort::wires() const {
  const auto switched = wires_.find(selected_);
  return switched == wires_.end() ? Wires{} : switched->second;
}

bool DebuggerPort::switchLine(LineSwitch which, bool on) {
  if (!serial_.switchLine(which, on)) return false;
  (which == LineSwitch::dtr ? wires_[selected_].dtr : wires_[selected_].rts) = on;
  return true;
}

bool DebuggerPort::sendBreak() {
  if (!serial_.switchLine(LineSwitch::holdBreak, true)) return false;
  runThen([this] { access_.clock.delay(breakTime); },
          [this] { serial_.switchLine(LineSwitch::holdBreak, false); });
  return true;
}

DebuggerPort::~DebuggerPort() {
  try {
    giveBack();
  } catch (...) {  // NOLINT(bugprone-empty-catch): from here nobody can be told
  }
}

void DebuggerPort::giveBack() {
  if (!isTaken()) return;
  const auto end = [this] {
    connection_.reset();
    letGo_.reset();
  };
  runThen(
      [this] {
        serial_.close();
        access_.driver.ReopenCOMPort(connection_->handle());
      },
      end);
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
    open();
  }
}

std::optional<int> DebuggerPort::comporttest() {
  gate_.runWithin([this] { findController(); });
  return foundPort_;
}

void DebuggerPort::findController() {
  foundPort_.reset();
  takeFromDriver();
  lossTold_ = false;
  awaited_ = false;
  serial_.setSettings(normalLineSettings);
  for (int port = 1; port <= lastProbedPort; ++port) {
    select(port);
    if (const auto opened = open(); !opened) {
      log_.note(opened.error());
      continue;
    }
    log_.note(filled(say("debugger", "Asking on COM%1 …"), {std::to_string(port)}));
    if (isAnswer(probe())) {
      foundPort_ = port;
      lines_.erase(port);
      log_.setDataBits(line().dataBits);
      return;
    }
    serial_.close();
  }
  // Whatever became of the ports, this is what is to be said.
  lossTold_ = true;
  prompt_.message("Device Can't found!!");
}

std::vector<std::uint8_t> DebuggerPort::probe() {
  const Frame nullCommand = commandFrame("Z");
  sendFresh(nullCommand);
  access_.clock.delay(afterFirstProbe);
  sendFresh(nullCommand);
  access_.clock.delay(afterSecondProbe);
  return receive();
}

bool DebuggerPort::N72toN81() {
  bool told = false;
  gate_.runWithin([this, &told] { told = changeLineSettings(); });
  return told;
}

bool DebuggerPort::changeLineSettings() {
  lines_.erase(selected_);
  log_.setDataBits(line().dataBits);
  Result<void, std::string> set;
  bool wentOut = false;
  {
    const NormalAfterwards normal(serial_);
    set = serial_.setSettings(sevenBitSettings);
    if (set) {
      log_.note(sevenBitSettings);
      wentOut = sendFresh(commandFrame("PN81"));
      access_.clock.delay(afterLineChange);
    }
  }
  if (serial_.isOpen()) log_.note(normalLineSettings);
  receive();
  if (tellLoss()) return false;
  if (!set) {
    prompt_.message(set.error());
  } else if (!wentOut) {
    tellNotSent();
  }
  return wentOut;
}

bool DebuggerPort::sendFresh(const Frame& frame) {
  serial_.clearOutput();
  serial_.clearInput();
  access_.session.outputFrame = frame;
  if (send(frame.bytes())) return true;
  if (serial_.isOpen()) log_.note(notSentText());
  return false;
}

bool DebuggerPort::send(std::span<const std::uint8_t> bytes) {
  if (!serial_.write(bytes)) return false;
  log_.sent(bytes);
  return true;
}

std::vector<std::uint8_t> DebuggerPort::receive() {
  ReadBytes read = readTimed(serial_, access_.clock.now());
  if (!read.bytes.empty()) log_.received(read.bytes, read.parts.back().time);
  noteDamage();
  return std::move(read.bytes);
}

void DebuggerPort::noteDamage() {
  const std::size_t count = serial_.takeDamaged();
  if (count == 0) return;
  damaged_ += count;
  log_.note(filled(say("debugger",
                       "Of the bytes that came, %1 were damaged on the line (parity, stop bit or "
                       "break)."),
                   {std::to_string(count)}));
}

void DebuggerPort::tellNotSent() {
  prompt_.message(notSentText());
}

bool DebuggerPort::tellLoss() {
  if (!isTaken() || serial_.isOpen() || lossTold_) return false;
  const auto reason = serial_.lost();
  if (!reason) return false;
  lossTold_ = true;
  awaited_ = true;
  log_.note(
      filled(say("debugger", "COM%1 has gone. %2"), {std::to_string(selected_), zonedTimeNow()}));
  gate_.runWithin([this, &reason] { prompt_.message(*reason); });
  return true;
}

bool DebuggerPort::takeUpAgain() {
  if (!isAwaited() || !open()) return false;
  lossTold_ = false;
  awaited_ = false;
  log_.note(filled(say("debugger", "COM%1 is there again. %2"),
                   {std::to_string(selected_), zonedTimeNow()}));
  return true;
}

std::optional<DebuggerPort::Place> DebuggerPort::search(std::span<const Place> places) {
  std::optional<Place> found;
  gate_.runWithin([&] {
    takeFromDriver();
    for (const Place& place : places) {
      if (gate_.isCutShort()) break;
      select(place.port);
      if (!serial_.setSettings(describe(place.line)) || !open()) continue;
      log_.note(filled(say("debugger", "Asking on COM%1, %2 …"),
                       {std::to_string(place.port), describe(place.line)}));
      if (!isAnswer(probe())) continue;
      found = place;
      break;
    }
    lossTold_ = awaited_ = false;
    if (found) {
      lines_[found->port] = found->line;
      log_.setDataBits(found->line.dataBits);
    } else {
      serial_.close();
    }
  });
  return found;
}

}  // namespace touch
