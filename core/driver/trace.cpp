#include "core/driver/trace.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <tuple>

#include "support/files/own_folder.h"
#include "support/text/hex.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

// The longest text that a driver call carries is a controller's name.
constexpr std::size_t longestText = 256;

std::string jsonBytes(std::span<const std::uint8_t> bytes) {
  std::string json = "\"";
  for (const std::uint8_t byte : bytes) {
    if (json.size() > 1) json += ' ';
    json += hexByte(byte);
  }
  return json + '"';
}

std::string jsonBytes(const std::uint8_t* bytes, std::int32_t count) {
  if (bytes == nullptr || count <= 0) return "\"\"";
  return jsonBytes({bytes, static_cast<std::size_t>(count)});
}

std::string jsonValue(std::int32_t number) {
  return std::to_string(number);
}
std::string jsonValue(const char* text) {
  return text == nullptr ? "null" : jsonText({text, strnlen(text, longestText)});
}

enum class Operation : std::uint8_t {
#define TOUCH_NAMED(name, parameters, arguments) name,
  NEXAPI_OPERATIONS(TOUCH_NAMED)
#undef TOUCH_NAMED
};

template <Operation operation, typename... Arguments>
std::string jsonArguments(std::int32_t result, const std::tuple<Arguments...>& arguments) {
  using enum Operation;
  std::string json;
  if constexpr (operation == WriteBuffer || operation == ReadBuffer) {
    const auto [handle, bytes, count] = arguments;
    const std::int32_t used = operation == ReadBuffer ? std::min(result, count) : count;
    json = jsonValue(handle) + ',' + jsonBytes(bytes, used) + ',' + jsonValue(count);
  } else if constexpr (operation == CalCurrentPointReady) {
    const auto [handle, raw] = arguments;
    const bool taken = raw != nullptr && result != 0;
    json = jsonValue(handle) +
           (taken ? ",[" + jsonValue(raw[0]) + ',' + jsonValue(raw[1]) + ']' : ",[]");
  } else {
    const auto add = [&json](const auto& each) {
      json += (json.empty() ? "" : ",") + jsonValue(each);
    };
    std::apply([&add](const auto&... each) { (add(each), ...); }, arguments);
  }
  return json;
}

std::string utcNow() {
  using namespace std::chrono;
  const auto now = system_clock::now();
  const std::time_t seconds = system_clock::to_time_t(now);
  std::tm parts{};
#if defined(_WIN32)
  gmtime_s(&parts, &seconds);
#else
  gmtime_r(&seconds, &parts);
#endif
  const auto thousandths = duration_cast<milliseconds>(now.time_since_epoch()).count() % 1000;
  std::array<char, 80> text{};
  std::snprintf(text.data(), text.size(), "%04d-%02d-%02dT%02d:%02d:%02d.%03dZ",
                parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min,
                parts.tm_sec, static_cast<int>(thousandths));
  return text.data();
}

}  // namespace

Result<void, std::string> Trace::start(const std::filesystem::path& file) {
  stop();
  path_ = file;
  written_ = 0;
  auto opened = openOwnFile(file);
  if (opened) {
    file_ = std::move(*opened);
    return {};
  }
  return tl::unexpected(filled(say("driver", "The trace file %1 cannot be written: %2"),
                               {file.string(), opened.error().found}));
}

void Trace::stop() {
  file_.reset();
}

void Trace::write(std::string_view members) {
  if (!isOn()) return;
  if (written_ >= limit_) {
    put("{\"time\":\"" + utcNow() + "\",\"end\":\"the limit is reached\"}\n");
    breakOff(
        filled(say("driver", "The trace file %1 ends here: it has reached its limit of %2 bytes"),
               {path_.string(), std::to_string(limit_)}));
    return;
  }
  const std::string line = "{\"time\":\"" + utcNow() + "\"," + std::string(members) + "}\n";
  if (put(line)) return;
  breakOff(
      filled(say("driver", "The trace file %1 ends early, because it cannot be written on: %2"),
             {path_.string(), std::strerror(errno)}));
}

bool Trace::put(const std::string& line) {
  errno = 0;
  const bool isWhole = std::fwrite(line.data(), 1, line.size(), file_.get()) == line.size() &&
                       std::fflush(file_.get()) == 0;
  const int why = errno;
  // Half an object would be none to whoever reads it.
  if (!isWhole) cutTo(file_.get(), written_);
  if (isWhole) written_ += line.size();
  errno = why;
  return isWhole;
}

void Trace::breakOff(std::string why) {
  break_ = std::move(why);
  stop();
}

std::optional<std::string> Trace::end(std::size_t limit) const {
  if (!isOn()) return std::nullopt;
  const std::uintmax_t size = sizeOf(file_.get());
  const auto kept = static_cast<std::size_t>(std::min<std::uintmax_t>(size, limit));
  std::string text(kept, '\0');
  if (std::fseek(file_.get(), -static_cast<long>(kept), SEEK_END) != 0) return std::nullopt;
  text.resize(std::fread(text.data(), 1, kept, file_.get()));
  // What is written next goes behind the end by itself, but not without this between.
  std::fseek(file_.get(), 0, SEEK_END);
  if (kept < size) text.erase(0, text.find('\n') + 1);
  return text;
}

#define TOUCH_TRACED(name, parameters, arguments)                                      \
  std::int32_t TracingDriver::name parameters {                                        \
    const std::int32_t result = inner_.name arguments;                                 \
    if (trace_.isOn()) {                                                               \
      trace_.write("\"call\":\"" #name "\",\"arguments\":[" +                          \
                   jsonArguments<Operation::name>(result, std::make_tuple arguments) + \
                   "],\"result\":" + std::to_string(result));                          \
    }                                                                                  \
    return result;                                                                     \
  }
NEXAPI_OPERATIONS(TOUCH_TRACED)
#undef TOUCH_TRACED

void TracingSerialPort::note(std::string_view operation, std::string_view argument) {
  if (!trace_.isOn()) return;
  std::string members = "\"serial\":\"" + std::string(operation) + '"';
  if (!argument.empty()) members += ",\"argument\":" + std::string(argument);
  trace_.write(members);
}

Result<void, std::string> TracingSerialPort::setSettings(std::string_view settings) {
  if (trace_.isOn()) note("settings", jsonText(settings));
  return inner_->setSettings(settings);
}

void TracingSerialPort::selectPort(int number) {
  note("port", std::to_string(number));
  inner_->selectPort(number);
}

Result<void, std::string> TracingSerialPort::open() {
  auto opened = inner_->open();
  if (trace_.isOn()) note("open", opened ? std::string() : jsonText(opened.error()));
  return opened;
}

void TracingSerialPort::close() {
  note("close");
  inner_->close();
}

void TracingSerialPort::clearInput() {
  note("clear input");
  inner_->clearInput();
}

void TracingSerialPort::clearOutput() {
  note("clear output");
  inner_->clearOutput();
}

bool TracingSerialPort::switchLine(LineSwitch which, bool on) {
  constexpr std::array<std::string_view, 3> names = {"dtr", "rts", "break"};
  note(names[static_cast<std::size_t>(which)], on ? "on" : "off");
  return inner_->switchLine(which, on);
}

bool TracingSerialPort::write(std::span<const std::uint8_t> bytes) {
  const bool wentOut = inner_->write(bytes);
  if (trace_.isOn()) note(wentOut ? "write" : "write failed", jsonBytes(bytes));
  return wentOut;
}

std::vector<std::uint8_t> TracingSerialPort::readAll() {
  auto bytes = inner_->readAll();
  if (trace_.isOn() && !bytes.empty()) note("read", jsonBytes(bytes));
  return bytes;
}

}  // namespace touch
