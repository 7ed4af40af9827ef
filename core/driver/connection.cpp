#include "core/driver/connection.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace touch {

namespace {

// A driver that writes past the count it was given damages this margin instead of our memory.
constexpr std::size_t overrunMargin = 256;

constexpr std::size_t nameSize = 20;

}  // namespace

Connection::Connection(const Access& access, const std::string& name)
    : session_(access.session), driver_(access.driver), handle_(0) {
  handle_ = driver_.OpenController(name.c_str());
  session_.controllerName = name;
  session_.handle = handle_;
}

Connection::~Connection() {
  try {
    driver_.CloseController(handle_);
  } catch (...) {  // NOLINT(bugprone-empty-catch): another error may be on its way through
  }
}

void Connection::flush() {
  driver_.FlushReadBuffer(handle_);
}

void Connection::write(const Frame& frame) {
  session_.outputFrame = frame;
  if (frame.empty()) return;
  driver_.WriteBuffer(handle_, frame.bytes().data(),
                      static_cast<std::int32_t>(frame.bytes().size()));
}

Reply Connection::read(std::size_t limit) {
  std::array<std::uint8_t, replyLimit + overrunMargin> buffer{};
  limit = std::min(limit, replyLimit);
  const std::int32_t count =
      driver_.ReadBuffer(handle_, buffer.data(), static_cast<std::int32_t>(limit));
  const auto taken = std::min(limit, static_cast<std::size_t>(std::max(count, 0)));
  Reply reply;
  reply.bytes.assign(buffer.begin(), buffer.begin() + static_cast<std::ptrdiff_t>(taken));
  return reply;
}

bool canBeOpened(const Access& access) {
  const std::int32_t handle = access.driver.OpenController(access.session.controllerName.c_str());
  access.session.handle = handle;
  if (!Connection::isHandle(handle)) return false;
  access.driver.CloseController(handle);
  return true;
}

std::optional<std::string> controllerName(Driver& driver, int number) {
  std::array<char, nameSize + overrunMargin> buffer{};
  if (driver.GetControllerName(number, buffer.data(), static_cast<std::int32_t>(nameSize)) == 0) {
    return std::nullopt;
  }
  return std::string(buffer.data(), strnlen(buffer.data(), nameSize));
}

}  // namespace touch
