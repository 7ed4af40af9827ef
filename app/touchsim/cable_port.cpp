#include "app/touchsim/cable_port.h"

#include <chrono>
#include <cstdio>
#include <utility>

#include "app/touchsim/line_form.h"
#include "support/text/text_encoding.h"

namespace touch::simulator {

namespace {

using namespace std::chrono_literals;

constexpr auto betweenTurns = 5ms;
constexpr auto betweenTries = 1000ms;

void tell(const std::string& text) {
  std::fprintf(stderr, "touchsim: %s\n", printable(text).c_str());
}

// The wire itself spoils what is written in another form or at another speed.
UserLine sameAs(const LineFormat& own) {
  return {own, std::nullopt};
}

}  // namespace

Result<std::unique_ptr<ServedPort>, std::string> CablePort::open(asio::io_context& context,
                                                                 const ComPorts& ports, int number,
                                                                 const LineSettings& line,
                                                                 const ControllerEnd& controller) {
  auto port = std::make_unique<CablePort>(context, ports, number, line, controller);
  auto opened = port->port_.setSettings(describe(line));
  if (opened) opened = port->port_.open();
  if (!opened) return tl::unexpected(opened.error());
  port->takeTurnLater();
  return port;
}

CablePort::CablePort(asio::io_context& context, const ComPorts& ports, int number,
                     const LineSettings& line, const ControllerEnd& controller)
    : timer_(context),
      port_(ports),
      path_(ports.device(number)),
      line_(line),
      controller_(controller) {
  port_.selectPort(number);
}

void CablePort::takeTurn() {
  if (!port_.isOpen()) return takeUpAgain();
  const auto turn = controller_.takeTurn(stopping_.get_token(), port_.readAll(), sameAs);
  if (!turn) return;
  if (const auto line = settingsOf(turn->format, line_.baud); line != line_) {
    line_ = line;
    if (const auto set = port_.setSettings(describe(line)); !set) tell(set.error());
  }
  if (!turn->output.empty()) port_.write(turn->output);
  if (const auto lost = port_.lost()) tell(*lost);
  takeTurnLater();
}

void CablePort::takeUpAgain() {
  if (port_.open()) tell(path_ + " is there again");
  takeTurnLater();
}

void CablePort::takeTurnLater() {
  timer_.expires_after(port_.isOpen() ? betweenTurns : betweenTries);
  timer_.async_wait([this](const std::error_code& ended) {
    if (!ended) takeTurn();
  });
}

}  // namespace touch::simulator
