#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "core/driver/driver.h"
#include "core/exchange/frame.h"
#include "core/exchange/reply.h"
#include "core/session.h"

namespace touch {

/// One open controller. Opens on construction, closes on destruction, whatever happens between.
/// The name becomes the session's controller name and the handle its handle. A failed open is no
/// error here: it shows as empty replies, which the caller reports.
class Connection {
 public:
  /// The count that every reply is read with, in bytes.
  static constexpr std::size_t replyLimit = 10;

  Connection(const Access& access, const std::string& name);
  /// Opens the session's current controller.
  explicit Connection(const Access& access) : Connection(access, access.session.controllerName) {}
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection();

  /// False when the driver gave no usable handle.
  bool isOpen() const { return isHandle(handle_); }
  static bool isHandle(std::int32_t value) { return value > 1; }
  /// First argument of every driver operation.
  std::int32_t handle() const { return handle_; }

  /// Throws away what the controller has sent so far.
  void flush();
  /// Writes one frame; an empty one is not written.
  void write(const Frame& frame);
  /// What has arrived, at most `limit` bytes (up to replyLimit).
  Reply read(std::size_t limit = replyLimit);

 private:
  Session& session_;
  Driver& driver_;
  std::int32_t handle_;
};

/// Whether the session's controller can be opened; it is closed again.
bool canBeOpened(const Access& access);

/// The name of controller `number` (counted from 1), cut at the end of the 20-character buffer that
/// the driver is given; nothing when the driver has none.
std::optional<std::string> controllerName(Driver& driver, int number);

}  // namespace touch
