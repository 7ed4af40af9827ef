#pragma once

#include <asio/steady_timer.hpp>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>

#include "serial/port/asio_serial_port.h"
#include "serial/port/line_settings.h"
#include "simulator/port/served_port.h"

namespace touch::simulator {

/// A real serial port with a controller at it: who talks to that is at the other end of the cable,
/// or of a pair of ports. Looked after every few milliseconds while its context runs. One that is
/// unplugged is taken up again when it comes back.
class CablePort final : public ServedPort {
 public:
  /// `line` is the controller's when new. The error says why the port cannot be opened.
  static Result<std::unique_ptr<ServedPort>, std::string> open(asio::io_context& context,
                                                               const ComPorts& ports, int number,
                                                               const LineSettings& line,
                                                               const ControllerEnd& controller);
  CablePort(asio::io_context& context, const ComPorts& ports, int number, const LineSettings& line,
            const ControllerEnd& controller);

  const std::string& path() const override { return path_; }
  void wake() override {}
  void stop() override { stopping_.request_stop(); }

 private:
  void takeTurn();
  void takeTurnLater();
  void takeUpAgain();

  asio::steady_timer timer_;
  AsioSerialPort port_;
  std::string path_;
  LineSettings line_;  ///< that the port is set to
  ControllerEnd controller_;
  std::stop_source stopping_;
};

}  // namespace touch::simulator
