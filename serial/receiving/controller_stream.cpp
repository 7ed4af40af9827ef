#include "serial/receiving/controller_stream.h"

#include <utility>

#include "support/clock.h"

namespace touch {

namespace {
using Seconds = std::chrono::duration<double>;
}  // namespace

ControllerStream::ControllerStream(const Access& access, Prompt& prompt, SerialPort& serial,
                                   std::vector<ReportFormat> formats)
    : access_(access),
      serial_(serial),
      formats_(std::move(formats)),
      log_(access.clock),
      port_(access, prompt, serial, log_) {}

Result<void, std::string> ControllerStream::begin(int port) {
  auto taken = port_.take(port);
  if (!taken) {
    port_.giveBack();
    return taken;
  }
  serial_.clearInput();
  decoder_.emplace(familyOf(access_.session.commandSet), formats_);
  return {};
}

// Bytes that are read together came one after the other, the last of them just now.
std::vector<ArrivedReport> ControllerStream::read() {
  if (!port_.isTaken()) return {};
  std::vector<TouchReport> found;
  decoder_->feed(serial_.readAll(), found);
  const Seconds perByte = byteTime(port_.line());
  const Seconds now = access_.clock.now().time_since_epoch();
  std::vector<ArrivedReport> arrived;
  for (const TouchReport& report : found) {
    const std::uint64_t end = report.offset + report.length;
    const std::uint64_t later = decoder_->received() > end ? decoder_->received() - end : 0;
    arrived.push_back({report, now - perByte * static_cast<double>(later)});
  }
  return arrived;
}

std::optional<std::string> ControllerStream::lost() const {
  if (!port_.isTaken() || serial_.isOpen()) return std::nullopt;
  return serial_.lost();
}

}  // namespace touch
