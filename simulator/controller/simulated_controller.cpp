#include "simulator/controller/simulated_controller.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <utility>

namespace touch::simulator {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::nanoseconds serialByteTime(int baud, const LineFormat& format) {
  return bitsPerByte(format) * std::chrono::nanoseconds(1s) / baud;
}
// Longer than any wait for a reply.
constexpr auto slowness = 400ms;
// Older reports would not fit on the line any more.
constexpr auto longestBacklog = 8s;
constexpr int ownSamples = 16;
constexpr int extendedTargets = 2;

constexpr std::string_view accepted = "0";
constexpr std::string_view refusal = "1";
constexpr std::string_view pointAccepted = "1";
constexpr std::string_view pointFailed = "2";
constexpr std::string_view owner = "INHOUSE";

std::chrono::nanoseconds byteTime(Link link) {
  return link == Link::rs232 ? serialByteTime(9600, {}) : std::chrono::nanoseconds(0);
}

TimePoint after(TimePoint start, std::chrono::nanoseconds duration) {
  return start + std::chrono::duration_cast<TimePoint::duration>(duration);
}

std::vector<std::uint8_t> framed(std::string_view text) {
  std::vector<std::uint8_t> bytes(text.size() + 2);
  bytes.front() = 0x01;
  std::ranges::copy(text, bytes.begin() + 1);
  bytes.back() = 0x0D;
  return bytes;
}

// "UI", the command's letter, whether it was done, and filler; a text takes the place of the last
// two.
std::vector<std::uint8_t> packetReply(char letter, const std::optional<std::string>& text) {
  std::string reply = std::string("UI") + letter;
  reply += text ? *text : std::string(refusal);
  reply.resize(10, '0');
  return {reply.begin(), reply.end()};
}

std::uint16_t number(std::string_view hexadecimal) {
  std::uint16_t value = 0;
  std::from_chars(hexadecimal.data(), hexadecimal.data() + hexadecimal.size(), value, 16);
  return value;
}

std::string fourDigits(std::uint16_t value) {
  constexpr std::string_view digits = "0123456789ABCDEF";
  std::string text;
  for (int shift = 12; shift >= 0; shift -= 4) {
    text += digits[static_cast<std::size_t>((value >> shift) & 0xF)];
  }
  return text;
}

std::vector<std::uint8_t> spoiled(std::span<const std::uint8_t> reply, const FaultSet& faults) {
  std::vector<std::uint8_t> bytes(reply.begin(), reply.end());
  if (faults.has(Fault::garbledReply) && bytes.size() > 2) {
    // An acknowledgement must not turn into a refusal, which would be a sound reply: so the high
    // bits change.
    std::for_each(bytes.begin() + 1, bytes.end() - 1, [](std::uint8_t& byte) { byte ^= 0x50; });
  }
  if (faults.has(Fault::lostBytes)) {
    std::vector<std::uint8_t> kept;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      if (i % 3 != 2) kept.push_back(bytes[i]);
    }
    bytes = kept;
  }
  if (faults.has(Fault::shortReply)) bytes.resize(bytes.size() / 2);
  return bytes;
}

// Every fifth report follows two bytes that belong to none, every seventh lacks a byte.
std::vector<std::uint8_t> withNoise(std::vector<std::uint8_t> report, int number) {
  if (number % 7 == 0) report.erase(report.begin() + 2);
  if (number % 5 == 0) report.insert(report.begin(), {0x3C, 0xF3});
  return report;
}

// A measured panel was reported in no coarser steps than these.
constexpr double finestCount = 65535;
// What a panel reads whose calibration is written in a way that is not known.
constexpr TouchMap usualSheet{.xFromX = 0.9, .xShift = 0.05, .yFromY = 0.9, .yShift = 0.05};

bool readsWholePanel(const TouchMap& sheet) {
  constexpr double margin = 0.002;
  return std::ranges::all_of(
      std::array{Point{0, 0}, Point{1, 0}, Point{0, 1}, Point{1, 1}}, [&sheet](Point corner) {
        const Point raw = sheet(corner);
        return std::min(raw.x, raw.y) >= -margin && std::max(raw.x, raw.y) <= 1 + margin;
      });
}

/// The readings of a panel that reports rightly with the calibration that is in the memory.
TouchMap sheetUnder(ParameterMemory& memory) {
  if (const auto sheet = inverse(memory.touchMap()); sheet && readsWholePanel(*sheet))
    return *sheet;
  memory.mean(*inverse(usualSheet));
  return usualSheet;
}

Point onScreen(Point place) {
  return {std::clamp(place.x, 0.0, 1.0), std::clamp(place.y, 0.0, 1.0)};
}

}  // namespace

SimulatedController::SimulatedController(const ControllerModel& model)
    : model_(&model),
      faults_(model.faults),
      panel_(model.panel),
      memory_(model.factoryWords),
      mode_(model.reportsTouches ? Mode::stream : Mode::inactive),
      byteTime_(byteTime(model.link)),
      output_(byteTime_) {
  if (model.measured) sheet_ = sheetUnder(memory_);
}

void SimulatedController::setSpeed(int baud) {
  baud_ = baud;
  paceLine();
}

void SimulatedController::speak(LineFormat format) {
  ownFormat_ = format;
  // Without a serial line there is no pace.
  if (byteTime_.count() > 0) paceLine();
}

void SimulatedController::paceLine() {
  byteTime_ = serialByteTime(baud_, ownFormat_);
  output_.setByteTime(byteTime_);
}

bool SimulatedController::feelsAt(Point place) const {
  return feels(panel_, place) && (!model_->measured || model_->measured->feels(place));
}

Point SimulatedController::cleanReading(Point place, double seconds) const {
  const Point raw = rawReading(panel_, place);
  return model_->measured ? sheet_(model_->measured->reported(raw, seconds)) : raw;
}

Point SimulatedController::reading(Point place, int samples, TimePoint now) {
  const Point usual{panel_.noise, panel_.noise};
  if (!model_->measured)
    return sampler_.average(rawReading(panel_, place), usual, highestCount, samples);
  if (!firstTouch_) firstTouch_ = now;
  const double seconds = std::chrono::duration<double>(now - *firstTouch_).count();
  const Point measured = model_->measured->noise;
  const Point noise{std::hypot(usual.x, sheet_.xFromX * measured.x, sheet_.xFromY * measured.y),
                    std::hypot(usual.y, sheet_.yFromX * measured.x, sheet_.yFromY * measured.y)};
  return sampler_.average(cleanReading(place, seconds), noise, finestCount, samples);
}

void SimulatedController::touch(Point place, TimePoint now) {
  if (!feelsAt(place)) {
    lift(now);
    return;
  }
  reportUntil(now);
  const bool begins = !finger_;
  finger_ = place;
  if (!begins || faults_.has(Fault::noAnswer)) return;
  if (const auto samples = run_.wanted()) {
    run_.take(reading(place, *samples, now));
  }
  if (extended_) {
    takeExtended(reading(place, ownSamples, now), now);
    return;
  }
  if (mode_ == Mode::inactive) return;
  report(place, true, now);
  nextReport_ = after(now, model_->reportInterval);
}

void SimulatedController::lift(TimePoint now) {
  reportUntil(now);
  if (!finger_) return;
  const Point last = *finger_;
  finger_.reset();
  if (mode_ != Mode::inactive && !extended_) report(last, false, now);
}

Point SimulatedController::reported(Point place) const {
  return onScreen(memory_.touchMap()(cleanReading(place, 0)));
}

std::optional<Point> SimulatedController::felt(Point place, TimePoint now) {
  if (!feelsAt(place) || faults_.has(Fault::noAnswer)) return std::nullopt;
  return onScreen(memory_.touchMap()(reading(place, 1, now)));
}

void SimulatedController::receive(std::span<const std::uint8_t> bytes, TimePoint now) {
  reportUntil(now);
  if (faults_.has(Fault::noAnswer)) return;
  // At another speed no byte has its stop bit in its place.
  if (!speedsMatch()) return;
  commandLineFree_ = std::max(commandLineFree_, now);
  for (const std::uint8_t byte : bytes) {
    commandLineFree_ = after(commandLineFree_, byteTime_);
    const auto understood = heard(byte, userFormat_, ownFormat_);
    if (!understood) continue;
    if (ear_) {
      ear_({&*understood, 1});
    } else if (const auto packet = reader_.take(*understood))
      execute(*packet, commandLineFree_);
  }
}

std::size_t SimulatedController::arrived(TimePoint now) {
  reportUntil(now);
  return output_.arrived(now);
}

std::vector<std::uint8_t> SimulatedController::take(std::size_t limit, TimePoint now) {
  reportUntil(now);
  auto bytes = output_.take(limit, now);
  if (!speedsMatch()) {
    // Garbage, but the same each time.
    for (std::uint8_t& byte : bytes)
      byte = static_cast<std::uint8_t>(~byte);
    return bytes;
  }
  if (ownFormat_ == userFormat_ && ownFormat_ == LineFormat::eightN1) return bytes;
  std::vector<std::uint8_t> understood;
  for (const std::uint8_t byte : bytes) {
    if (const auto same = heard(byte, ownFormat_, userFormat_)) understood.push_back(*same);
  }
  return understood;
}

bool SimulatedController::say(std::span<const std::uint8_t> bytes, TimePoint now) {
  reportUntil(now);
  return faults_.has(Fault::noAnswer) || output_.send(bytes, now);
}

std::optional<TimePoint> SimulatedController::nextDue() const {
  auto due = output_.nextArrival();
  if (streams()) due = due ? std::min(*due, nextReport_) : nextReport_;
  return due;
}

void SimulatedController::connect(LineUser user, TimePoint now) {
  reportUntil(now);
  user_ = user;
  reader_ = {};
  commandLineFree_ = {};
  output_.clear();
}

bool SimulatedController::storeCalibration() {
  if (faults_.has(Fault::storeFails) || faults_.has(Fault::noAnswer)) return false;
  const auto map = fitAffine(run_.pairs());
  return map && memory_.storeTouchMap(*map);
}

void SimulatedController::abandonCalibration() {
  run_ = {};
  extended_.reset();
  rawCalibration_ = false;
}

void SimulatedController::execute(const Packet& packet, TimePoint now) {
  const auto command = parseCommand(packet);
  const auto text = command ? carryOut(*command) : std::nullopt;
  const TimePoint earliest = after(now, model_->thinkingTime);
  if (packet.family == Family::tenCharacters) {
    answer(packetReply(packet.text[1], text), earliest);
  } else if (command && command->action == Action::tellQuery) {
    answer(std::vector<std::uint8_t>(text->begin(), text->end()), earliest);
  } else {
    answer(framed(text.value_or(std::string(refusal))), earliest);
  }
}

std::optional<std::string> SimulatedController::carryOut(const Command& command) {
  switch (command.action) {
    case Action::nothing:
      break;
    case Action::calibrateRaw:
      rawCalibration_ = true;
      break;
    case Action::calibrateExtended:
      extended_.emplace();
      extended_->arm(0, extendedTargets, ownSamples);
      break;
    case Action::setFormat:
      format_ = static_cast<ReportFormat>(command.operand);
      break;
    case Action::setMode:
      mode_ = static_cast<Mode>(command.operand);
      break;
    case Action::setPointer:
      pointer_ = static_cast<Pointer>(command.operand);
      break;
    case Action::setSensitivity:
      sensitivity_ = command.operand;
      break;
    case Action::readParameter:
    case Action::writeParameter:
      return carryOutParameter(command);
    case Action::lockParameters:
      memory_.lock();
      break;
    case Action::restoreParameters:
    case Action::restoreAll:
      if (faults_.has(Fault::storeFails)) return std::nullopt;
      if (command.action == Action::restoreAll) {
        memory_.restoreAll();
      } else {
        memory_.restoreParameters();
      }
      reset();
      break;
    case Action::reset:
      reset();
      break;
    case Action::speakEightBits:
      speak(LineFormat::eightN1);
      break;
    case Action::tellMode:
      return std::string("M") + "SPI"[static_cast<std::size_t>(mode_)];
    case Action::tellIdentity:
      return std::string(model_->identity);
    case Action::tellStatus:
      return statusText();
    case Action::tellUnitType:
      return std::string(model_->unitType);
    case Action::tellQuery:
      return std::string(model_->queryReply);
    case Action::tellOwner:
      return std::string(owner);
  }
  return std::string(accepted);
}

std::optional<std::string> SimulatedController::carryOutParameter(const Command& command) {
  const std::string_view argument = command.argument;
  const auto address = static_cast<std::uint8_t>(number(argument.substr(0, 2)));
  if (command.action == Action::readParameter) {
    const auto word = memory_.read(address);
    if (!word) return std::nullopt;
    return std::string(accepted) + fourDigits(*word);
  }
  if (faults_.has(Fault::storeFails)) return std::nullopt;
  if (!memory_.write(address, number(argument.substr(2)))) return std::nullopt;
  return std::string(accepted);
}

// The mode, what may touch, whether the parameters are locked (L) or open (O), the sensitivity.
std::string SimulatedController::statusText() const {
  return {"SPI"[static_cast<std::size_t>(mode_)], "BFP"[static_cast<std::size_t>(pointer_)],
          memory_.isLocked() ? 'L' : 'O', static_cast<char>('0' + sensitivity_)};
}

void SimulatedController::reset() {
  abandonCalibration();
  memory_.unlock();
  mode_ = Mode::stream;
  format_ = ReportFormat::tablet;
  pointer_ = Pointer::penOrFinger;
  sensitivity_ = 1;
}

void SimulatedController::answer(std::span<const std::uint8_t> bytes, TimePoint earliest) {
  if (faults_.has(Fault::slowAnswer)) earliest += slowness;
  output_.send(spoiled(bytes, faults_), earliest);
}

void SimulatedController::takeExtended(Point raw, TimePoint now) {
  const TimePoint earliest = after(now, model_->thinkingTime);
  extended_->take(raw);
  const auto pairs = extended_->pairs();
  if (pairs.empty()) {
    extended_->arm(1, extendedTargets, ownSamples);
    answer(framed(pointAccepted), earliest);
    return;
  }
  extended_.reset();
  const auto map = fitCorners(pairs[0], pairs[1]);
  const bool kept = map && !faults_.has(Fault::storeFails) && memory_.storeTouchMap(*map);
  answer(framed(kept ? pointAccepted : pointFailed), earliest);
}

bool SimulatedController::streams() const {
  return user_ == LineUser::port && isTouched() && mode_ == Mode::stream && !extended_;
}

void SimulatedController::report(Point place, bool touching, TimePoint when) {
  if (user_ != LineUser::port || faults_.has(Fault::noAnswer)) return;
  const ReportFormat format = rawCalibration_ ? ReportFormat::raw : format_;
  const Point raw = reading(place, 1, when);
  const Point told = wantsRaw(format) ? raw : memory_.touchMap()(raw);
  auto bytes = encodeReport(format, told, touching);
  if (faults_.has(Fault::noisyReports)) bytes = withNoise(std::move(bytes), ++reportNumber_);
  output_.send(bytes, when);
}

void SimulatedController::reportUntil(TimePoint now) {
  if (!streams()) {
    nextReport_ = after(now, model_->reportInterval);
    return;
  }
  nextReport_ = std::max(nextReport_, now - longestBacklog);
  for (; nextReport_ <= now; nextReport_ = after(nextReport_, model_->reportInterval))
    report(*finger_, true, nextReport_);
}

}  // namespace touch::simulator
