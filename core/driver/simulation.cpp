#include "core/driver/simulation.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <cstring>
#include <string_view>
#include <utility>

#include "core/driver/nexapi.h"

namespace touch {

namespace {

constexpr const char* exportName = "NexapiSimulate";

/// A decimal number with a point, whatever the locale.
std::string decimal(double value) {
  std::array<char, 64> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
  return {digits.data(), end};
}

std::optional<double> takeNumber(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  double value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{}) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return value;
}

std::string placeText(double x, double y) {
  return decimal(std::clamp(x, 0.0, 1.0)) + ' ' + decimal(std::clamp(y, 0.0, 1.0));
}

/// The two numbers that an answer consists of.
std::optional<std::pair<double, double>> twoNumbers(const std::optional<std::string>& answer) {
  std::string_view rest = answer ? std::string_view(*answer) : std::string_view();
  const auto first = takeNumber(rest);
  const auto second = first ? takeNumber(rest) : std::nullopt;
  if (!second) return std::nullopt;
  return std::pair(*first, *second);
}

}  // namespace

std::optional<Simulation> Simulation::of(const NexapiDriver& driver) {
  void* const address = driver.extraExport(exportName);
  if (address == nullptr) return std::nullopt;
  return Simulation(std::bit_cast<Function>(address));
}

std::optional<std::string> Simulation::request(const std::string& words,
                                               std::string* refused) const {
  std::array<char, 512> answer{};
  const bool done =
      function_(words.c_str(), answer.data(), static_cast<std::int32_t>(answer.size())) != 0;
  std::string text(answer.data(), strnlen(answer.data(), answer.size()));
  if (done) return text;
  if (refused != nullptr) *refused = std::move(text);
  return std::nullopt;
}

void Simulation::touch(double x, double y) const {
  request("touch " + placeText(x, y));
}

void Simulation::lift() const {
  request("lift");
}

std::optional<Simulation::PanelError> Simulation::panelError(const std::string& controller) const {
  const auto numbers = twoNumbers(request("error " + controller));
  if (!numbers) return std::nullopt;
  return PanelError{numbers->first, numbers->second};
}

std::optional<Simulation::Place> Simulation::report(double x, double y,
                                                    const std::string& controller) const {
  const auto numbers = twoNumbers(request("report " + placeText(x, y) + ' ' + controller));
  if (!numbers) return std::nullopt;
  return Place{numbers->first, numbers->second};
}

void Simulation::changePanel(const std::string& trait, const std::string& value,
                             const std::string& controller) const {
  request("panel " + trait + ' ' + value + ' ' + controller);
}

std::string Simulation::port(const std::string& controller) const {
  return request("port " + controller).value_or(std::string());
}

}  // namespace touch
