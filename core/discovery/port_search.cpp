#include "core/discovery/port_search.h"

#include <chrono>

#include "core/driver/connection.h"
#include "core/serial_port.h"
#include "support/clock.h"

namespace touch {

namespace {

using namespace std::chrono_literals;

constexpr int lastPort = 16;
constexpr auto answerWait = 200ms;
constexpr auto setUpWait = 100ms;

/// Leaves the port closed, however the search ends.
class ClosedAfterwards {
 public:
  explicit ClosedAfterwards(SerialPort& serial) : serial_(serial) {}
  ClosedAfterwards(const ClosedAfterwards&) = delete;
  ClosedAfterwards& operator=(const ClosedAfterwards&) = delete;
  ~ClosedAfterwards() { serial_.close(); }

 private:
  SerialPort& serial_;
};

void makeDriverLetGo(const Access& access) {
  // Without a controller the driver holds no port.
  if (access.session.controllerName.empty()) return;
  const Connection connection(access);
  access.driver.CloseCOMPort(connection.handle());
}

Result<void, std::string> openPort(SerialPort& serial, int port) {
  if (serial.isOpen()) serial.close();
  serial.selectPort(port);
  if (auto set = serial.setSettings(normalLineSettings); !set) return set;
  return serial.open();
}

Reply ask(const Access& access, SerialPort& serial, std::string_view command,
          std::chrono::milliseconds wait) {
  access.session.outputFrame = commandFrame(command);
  serial.write(access.session.outputFrame.bytes());
  access.clock.delay(wait);
  return {serial.readAll()};
}

}  // namespace

PortSearch searchComPorts(const Access& access, SerialPort& serial, const PortProgress& progress) {
  const ClosedAfterwards closed(serial);
  makeDriverLetGo(access);
  bool oneOpened = false;
  std::string shared;
  std::string complaint;
  for (int port = lastPort; port >= 1; --port) {
    if (progress && !progress(port)) return {.cancelled = true};
    if (const auto opened = openPort(serial, port); !opened) {
      complaint = opened.error();
      continue;
    }
    oneOpened = true;
    if (const std::string sharing = serial.sharedWith(); !sharing.empty())
      shared += (shared.empty() ? "" : " ") + sharing;
    if (!ask(access, serial, "UT", answerWait).isFramed()) continue;
    return {.port = port,
            .setUp = ask(access, serial, "MS", setUpWait).acknowledged(),
            .shared = shared};
  }
  return {.noneOpened = oneOpened ? std::string() : complaint, .shared = shared};
}

std::string describe(const PortSearch& search) {
  if (search.cancelled) return {};
  if (!search.port) return "controller not found ??";
  const std::string port = std::to_string(*search.port);
  return search.setUp ? "Setup Ok in Com:" + port
                      : "Controller in com:" + port + "  But Setup Error";
}

}  // namespace touch
