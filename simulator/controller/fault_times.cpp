#include "simulator/controller/fault_times.h"

#include <charconv>
#include <cmath>
#include <system_error>

namespace touch::simulator {

namespace {

std::optional<double> seconds(std::string_view text) {
  constexpr double aDay = 24.0 * 60 * 60;
  double value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value, std::chars_format::fixed);
  if (error != std::errc() || stop != end || !(value >= 0 && value <= aDay)) return std::nullopt;
  return value;
}

}  // namespace

bool FaultTimes::isThere(std::chrono::duration<double> since) const {
  if (!isTimed()) return true;
  const double time = every > 0 ? std::fmod(since.count(), every) : since.count();
  return time >= from && time < to;
}

std::optional<FaultTimes> parseFaultTimes(std::string_view text) {
  const auto at = text.find('@');
  const auto fault = faultNamed(text.substr(0, at));
  if (!fault) return std::nullopt;
  FaultTimes times{.fault = *fault};
  if (at == text.npos) return times;
  text.remove_prefix(at + 1);
  const auto slash = text.find('/');
  if (slash != text.npos) {
    const auto every = seconds(text.substr(slash + 1));
    if (!every) return std::nullopt;
    times.every = *every;
    text = text.substr(0, slash);
  }
  const auto dash = text.find('-');
  if (dash == text.npos) return std::nullopt;
  const auto from = seconds(text.substr(0, dash));
  const auto to = seconds(text.substr(dash + 1));
  if (!from || !to || *from >= *to) return std::nullopt;
  if (slash != text.npos && times.every < *to) return std::nullopt;
  times.from = *from;
  times.to = *to;
  return times;
}

}  // namespace touch::simulator
