#include "core/driver/simulation.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <utility>

namespace touch {

namespace {

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
std::optional<std::pair<double, double>> twoNumbers(const Result<std::string, std::string>& said) {
  std::string_view rest = said ? std::string_view(*said) : std::string_view();
  const auto first = takeNumber(rest);
  const auto second = first ? takeNumber(rest) : std::nullopt;
  if (!second) return std::nullopt;
  return std::pair(*first, *second);
}

}  // namespace

Result<std::string, std::string> Simulation::request(const std::string& words) const {
  if (driver_ == nullptr) return tl::unexpected(std::string());
  return driver_->simulate(words);
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

double Simulation::reportRate(const std::string& controller) const {
  constexpr double usual = 100;
  const auto said = request("rate " + controller);
  std::string_view rest = said ? std::string_view(*said) : std::string_view();
  return takeNumber(rest).value_or(usual);
}

void Simulation::holdTime() const {
  request("clock manual");
}

void Simulation::letPass(std::chrono::microseconds duration) const {
  request("advance " + decimal(std::chrono::duration<double, std::milli>(duration).count()));
}

void Simulation::letTimeGo() const {
  request("clock real");
}

void Simulation::changePanel(const std::string& trait, const std::string& value,
                             const std::string& controller) const {
  request("panel " + trait + ' ' + value + ' ' + controller);
}

std::string Simulation::port(const std::string& controller) const {
  return request("port " + controller).value_or(std::string());
}

}  // namespace touch
