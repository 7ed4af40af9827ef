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
  const bool wasOpen = selected_ == port && wasOpenLast();
  // A port that turns out to have gone here closes, and may be there again below.
  const auto chosen = lines_.find(port);
  auto set = serial_.setSettings(chosen == lines_.end() ? std::string(normalLineSettings)
                                                        : describe(chosen->second));
  if (!set && serial_.isOpen()) return set;
  const bool isGone = wasOpen && !serial_.isOpen();
  select(port);
  log_.setDataBits(line().dataBits);
  auto opened = open();
  if (opened) awaited_.reset();
  if (!opened && isGone) await(port);
  lossTold_ = isAwaited();
  return opened;
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
  const int before = wasOpenLast() || isAwaited() ? selected_ : 0;
  serial_.setSettings(normalLineSettings);
  bool isGone = before != 0 && !serial_.isOpen();
  for (int port = 1; port <= lastProbedPort; ++port) {
    select(port);
    if (const auto opened = open(); !opened) {
      log_.note(opened.error());
      continue;
    }
    log_.note(filled(say("debugger", "Asking on COM%1 …"), {std::to_string(port)}));
    if (isAnswer(probe())) {
      foundPort_ = port;
      awaited_.reset();
      lines_.erase(port);
      log_.setDataBits(line().dataBits);
      return;
    }
    if (port == before) isGone = !serial_.isOpen();
    serial_.close();
  }
  // Whatever became of the ports, this is what is to be said.
  lossTold_ = true;
  if (isGone) {
    await(before);
  } else {
    awaited_.reset();
  }
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

std::optional<std::string> DebuggerPort::takeLoss() {
  if (!isTaken() || serial_.isOpen() || lossTold_) return std::nullopt;
  auto reason = serial_.lost();
  if (reason) noteGone();
  return reason;
}

bool DebuggerPort::tellLoss() {
  const auto reason = takeLoss();
  if (reason) gate_.runWithin([this, &reason] { prompt_.message(*reason); });
  return reason.has_value();
}

void DebuggerPort::await(int port) {
  select(port);
  setUsualLine();
  log_.setDataBits(line().dataBits);
  noteGone();
}

void DebuggerPort::noteGone() {
  lossTold_ = true;
  if (awaited_ == selected_) return;
  awaited_ = selected_;
  log_.note(
      filled(say("debugger", "COM%1 has gone. %2"), {std::to_string(selected_), zonedTimeNow()}));
}

bool DebuggerPort::takeUpAgain() {
  if (!isTaken() || !isAwaited() || !open()) return false;
  lossTold_ = false;
  awaited_.reset();
  log_.note(filled(say("debugger", "COM%1 is there again. %2"),
                   {std::to_string(selected_), zonedTimeNow()}));
  return true;
}

bool DebuggerPort::takeUpAs(int port, const std::string& device) {
  if (!isTaken() || !isAwaited()) return false;
  const int before = selected_;
  const auto linesBefore = lines_;
  const auto wiresBefore = wires_;
  lines_[port] = line();
  wires_[port] = wires();
  select(port);
  setUsualLine();
  if (!open()) {
    lines_ = linesBefore;
    wires_ = wiresBefore;
    select(before);
    return false;
  }
  lossTold_ = false;
  awaited_.reset();
  log_.note(filled(say("debugger", "COM%1 is there again as COM%2 (%3). %4"),
                   {std::to_string(before), std::to_string(port), device, zonedTimeNow()}));
  return true;
}

DebuggerPort::Search DebuggerPort::search(std::span<const Place> places,
                                          const std::function<void(std::size_t)>& onAsking) {
  Search search;
  gate_.runWithin([&] {
    takeFromDriver();
    for (std::size_t i = 0; i < places.size() && !search.found; ++i) {
      const Place& place = places[i];
      if (search.refused.contains(place.port) || !isReadyAt(place, search)) continue;
      if (onAsking) onAsking(i);
      search.isComplete = !gate_.isCutShort();
      if (!search.isComplete) break;
      log_.note(filled(say("debugger", "Asking on COM%1, %2 …"),
                       {std::to_string(place.port), describe(place.line)}));
      if (isAnswer(probe())) search.found = place;
    }
    lossTold_ = true;
    if (search.found) {
      lossTold_ = false;
      awaited_.reset();
      lines_[search.found->port] = search.found->line;
      log_.setDataBits(search.found->line.dataBits);
    } else {
      serial_.close();
    }
  });
  return search;
}

bool DebuggerPort::isReadyAt(const Place& place, Search& search) {
  select(place.port);
  if (!serial_.isOpen()) {
    // At settings that every port takes: what is refused then is the port.
    serial_.setSettings(normalLineSettings);
    if (const auto opened = open(); !opened) {
      log_.note(opened.error());
      search.refused[place.port] = opened.error();
      return false;
    }
  }
  return serial_.setSettings(describe(place.line)).has_value();
}

}  // namespace touch
