#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "reports/touch_stream.h"
#include "serial/debugger/console_log.h"
#include "serial/debugger/debugger_port.h"

namespace touch {

/// The reports of the session's controller: the driver lets go of its port for as long as they are
/// read, and takes it again afterwards.
class ControllerStream final : public TouchStream {
 public:
  /// All of them outlive this. `formats` are known beside those of the session's command set.
  ControllerStream(const Access& access, Prompt& prompt, SerialPort& serial,
                   std::vector<ReportFormat> formats);

  Result<void, std::string> begin(int port) override;
  void end() override { port_.giveBack(); }
  std::vector<ArrivedReport> read() override;
  std::optional<std::string> lost() const override;

 private:
  Access access_;
  SerialPort& serial_;
  std::vector<ReportFormat> formats_;
  ConsoleLog log_;
  DebuggerPort port_;
  std::optional<ReportDecoder> decoder_;
};

}  // namespace touch
