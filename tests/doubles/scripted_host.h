#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "core/driver/host/driver_patience.h"
#include "core/driver/host/driver_server.h"
#include "core/driver/host/host_link.h"

namespace touch::test {

/// What befalls a host over a message.
enum class HostFault { none, hang, crash, garbage, endOfPipe };

/// Which of the messages to a host goes wrong, and how; counted from 1 over all hosts.
struct HostPlan {
  int failing = 0;  ///< 0: none
  HostFault fault = HostFault::none;
  int passed = 0;
};

/// A driver that is used as if it were bound.
class BorrowedDriver final : public BoundDriver {
 public:
  explicit BorrowedDriver(Driver& driver) : driver_(driver) {}

#define TOUCH_BORROWED(name, parameters, arguments) \
  std::int32_t name parameters override {           \
    return driver_.name arguments;                  \
  }
  NEXAPI_OPERATIONS(TOUCH_BORROWED)
#undef TOUCH_BORROWED
  std::vector<std::string_view> missing() const override {
    return driver_.missing();
  }
  const std::filesystem::path& path() const override {
    return path_;
  }

 private:
  Driver& driver_;
  std::filesystem::path path_ = "/lib/driver.so";
};

/// A driver host that is no process: its end of the protocol over a driver of the test's, at once
/// and without a wait. `onEnd` is what the end of its process would do to the driver.
class ScriptedHost final : public HostLink {
 public:
  ScriptedHost(Driver& driver, HostPlan& plan, std::function<void()> onEnd)
      : plan_(plan),
        onEnd_(std::move(onEnd)),
        server_([&driver](const auto&) -> BoundDriverOrError {
          return std::unique_ptr<BoundDriver>(std::make_unique<BorrowedDriver>(driver));
        }) {}
  ~ScriptedHost() override { end(); }

  bool send(std::string_view bytes) override {
    reader_.add(bytes);
    const auto message = reader_.next();
    if (!message || !*message) throw std::runtime_error("a host is sent whole messages");
    if (++plan_.passed == plan_.failing && plan_.fault != HostFault::none) {
      fault_ = plan_.fault;
      if (fault_ == HostFault::garbage) answers_ = {"\x05\0\0\0\x9Fhurt", 9};
      return fault_ != HostFault::endOfPipe;
    }
    if (const auto answer = server_.answer(**message)) answers_ += encoded(*answer).value();
    return true;
  }
  Arrival receive(std::string& bytes, std::chrono::milliseconds) override {
    if (fault_ == HostFault::crash) return Arrival::end;
    if (answers_.empty()) return Arrival::nothing;
    // In two pieces, as pipes have it.
    const auto piece = answers_.substr(0, (answers_.size() + 1) / 2);
    answers_.erase(0, piece.size());
    bytes += piece;
    return Arrival::bytes;
  }
  std::string end() override {
    if (onEnd_) std::exchange(onEnd_, nullptr)();
    return "Segmentation fault (SIGSEGV)";
  }
  std::string name() const override { return "touchdriver"; }

 private:
  HostPlan& plan_;
  std::function<void()> onEnd_;
  DriverServer server_;
  HostMessageReader reader_;
  HostFault fault_ = HostFault::none;
  std::string answers_;
};

/// Gives a driver three seconds, and remembers what is said of it.
class ScriptedPatience final : public DriverPatience {
 public:
  std::vector<std::string> losses;
  std::vector<std::string> givenUp;  ///< operations
  bool ending = false;
  std::function<void()> onWait;

  Next stillWaiting(const DriverWait& wait) override {
    if (onWait) onWait();
    if (wait.waited < std::chrono::seconds(3)) return Next::wait;
    givenUp.push_back(wait.operation);
    return Next::giveUp;
  }
  bool isEnding() const override { return ending; }
  void lost(const std::string& text) override { losses.push_back(text); }
};

}  // namespace touch::test
