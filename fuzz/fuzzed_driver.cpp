#include "fuzz/fuzzed_driver.h"

#include <cstring>
#include <string_view>

#include "serial/commands/h2d.h"

namespace touch::fuzz {

namespace {

constexpr std::array<std::string_view, 6> names = {
    "RS232 DEVICE 1",        "USB   DEVICE 2",        "USB   DEVICE 3 OF 20 LONG",
    "../../RS232 DEVICE %n", "\xFFUSB\xE4\tDEVICE\n", "PS2 DEVICE"};

constexpr std::array<std::string_view, 6> texts = {"QMRV0301",   "QRMV1000",    "OI 30100",
                                                   "UIQRMV0302", "\xE4%s\x1B[", "2"};

// What the system keeps free behind the buffers that it gives a driver, and the whole buffer of a
// raw reading.
constexpr std::size_t margin = 256;
constexpr std::size_t rawReadingRoom = 256;

// The kind of reply whose count is not that of its bytes.
constexpr std::uint8_t lie = 5;

std::span<const std::uint8_t> bytesOf(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::uint8_t byteAt(std::string_view digits, std::size_t place) {
  return static_cast<std::uint8_t>(
      h2d(digits.substr(std::min(place, digits.size()), 2)).value_or(0));
}

void fill(void* buffer, std::span<const std::uint8_t> bytes, std::size_t room) {
  if (!bytes.empty()) std::memcpy(buffer, bytes.data(), std::min(bytes.size(), room));
}

}  // namespace

FuzzedDriver::FuzzedDriver(Input& input) : input_(input) {
  constexpr std::size_t wireCount = 0x80;
  memory_[wireCount] = {0, 4};
}

std::int32_t FuzzedDriver::result() {
  if (onCall) onCall();
  constexpr std::array<std::int32_t, 8> usual = {0, 1, 2, 3, -1, 300, INT32_MAX, INT32_MIN};
  constexpr std::uint8_t anyNumber = 8;
  const std::uint8_t choice = input_.byte();
  if (choice < usual.size()) return usual[choice];
  return choice == anyNumber ? input_.number() : choice;
}

std::span<const std::uint8_t> FuzzedDriver::reply(std::uint8_t kind) {
  const auto framed = [this](std::string_view text) {
    answer_ = '\x01' + std::string(text) + '\r';
    return bytesOf(answer_);
  };
  switch (kind) {
    case 0:
      return {};
    case 1:
      // An honest controller, which stores what it acknowledges.
      if (asked_.starts_with("GP")) return framed('0' + wordText(memory_[byteAt(asked_, 2)]));
      if (asked_.starts_with("SP")) {
        memory_[byteAt(asked_, 2)] = {byteAt(asked_, 4), byteAt(asked_, 6)};
      }
      return framed(asked_ == "UT" || asked_ == "OI" ? texts[0] : "0");
    case 2:
      return framed("0");
    case 3:
      return framed("1");
    case 4:
      return framed(texts[input_.below(texts.size())]);
    case lie:
      return input_.take(input_.byte());
    default:
      return input_.take(kind);
  }
}

std::int32_t FuzzedDriver::GetControllerName(std::int32_t, char* name, std::int32_t size) {
  const std::size_t choice = input_.byte();
  const bool known = choice < names.size();
  fill(name, known ? bytesOf(names[choice]) : input_.take(choice),
       static_cast<std::size_t>(size) + margin);
  return known ? 1 : result();
}

std::int32_t FuzzedDriver::OpenController(const char* name) {
  require(name != nullptr && std::strlen(name) <= 20, "a controller is opened by its name");
  if (onCall) onCall();
  const std::uint8_t choice = input_.byte();
  const std::int32_t handle = choice < 16 ? ++lastHandle_ : result();
  if (handle > 1) ++open_[handle];
  return handle;
}

std::int32_t FuzzedDriver::CloseController(std::int32_t handle) {
  if (const auto open = open_.find(handle); open != open_.end()) {
    if (--open->second == 0) open_.erase(open);
  } else {
    require(handle <= 1, "only what is open is closed");
  }
  return result();
}

std::int32_t FuzzedDriver::WriteBuffer(std::int32_t handle, const std::uint8_t* bytes,
                                       std::int32_t count) {
  require(handle <= 1 || open_.contains(handle), "only to what is open is written");
  require(count >= 2 && bytes[0] == 0x01 && bytes[count - 1] == '\r', "commands are framed");
  asked_.assign(bytes + 1, bytes + count - 1);
  return result();
}

std::int32_t FuzzedDriver::ReadBuffer(std::int32_t, std::uint8_t* bytes, std::int32_t count) {
  const std::uint8_t kind = input_.byte();
  const auto answer = reply(kind);
  fill(bytes, answer, static_cast<std::size_t>(count) + margin);
  return kind == lie ? result() : static_cast<std::int32_t>(answer.size());
}

std::int32_t FuzzedDriver::CalCurrentPointReady(std::int32_t, std::int32_t* raw) {
  const std::int32_t ready = result();
  if (ready == 0) return ready;
  const std::uint8_t choice = input_.byte();
  if (choice == 1) {
    // A finger that touches another place each time.
    raw[0] = raw[1] = ++touches_ * 1000;
  } else {
    fill(raw, input_.take(choice), rawReadingRoom);
  }
  return ready;
}

#define FUZZED_RESULT(name, parameters)        \
  std::int32_t FuzzedDriver::name parameters { \
    return result();                           \
  }
FUZZED_RESULT(GetExistControllers, ())
FUZZED_RESULT(QueryMultiMonitorSetOK, ())

#define FUZZED_QUERY(name) FUZZED_RESULT(name, (std::int32_t))
FUZZED_QUERY(DisableTouchRePort)
FUZZED_QUERY(CloseCOMPort)
FUZZED_QUERY(ReopenCOMPort)
FUZZED_QUERY(FlushReadBuffer)
FUZZED_QUERY(ReadLength)
FUZZED_QUERY(GetReportMode)
FUZZED_QUERY(GetReportStatus)
FUZZED_QUERY(GetRotation)
FUZZED_QUERY(GetUpSoundStatus)
FUZZED_QUERY(GetDownSoundStatus)
FUZZED_QUERY(GetDoubleClickEnabled)
FUZZED_QUERY(GetDoubleClickSpeed)
FUZZED_QUERY(GetDoubleClickArea)
FUZZED_QUERY(GetRightClickEnabled)
FUZZED_QUERY(GetRightClickTime)
FUZZED_QUERY(IsPenUp)
FUZZED_QUERY(StoreCalibrationData)

#define FUZZED_SETTER(name) FUZZED_RESULT(name, (std::int32_t, std::int32_t))
FUZZED_SETTER(SetReportMode)
FUZZED_SETTER(SetRotation)
FUZZED_SETTER(EnableUpSound)
FUZZED_SETTER(EnableDownSound)
FUZZED_SETTER(EnableDoubleClick)
FUZZED_SETTER(SetDoubleClickSpeed)
FUZZED_SETTER(SetDoubleClickArea)
FUZZED_SETTER(EnableRightClick)
FUZZED_SETTER(SetRightClickTime)
FUZZED_SETTER(AskToSetMultiMonitor)

FUZZED_RESULT(SetCalPoint, (std::int32_t, std::int32_t, std::int32_t, std::int32_t))

}  // namespace touch::fuzz
