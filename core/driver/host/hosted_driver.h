#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "core/driver/bound_driver.h"
#include "core/driver/host/driver_patience.h"
#include "core/driver/host/host_link.h"
#include "core/driver/host/host_message.h"
#include "core/driver/host/operation_codec.h"
#include "support/clock.h"

namespace touch {

/// A driver library in a process of its own, so that it can hang or crash without this program, and
/// may be of other bits. A driver that is lost answers 0 to everything, as one without a controller
/// does, until an action begins: that starts a fresh host. One that crashes three times in a row is
/// not started again before `revive`.
///
/// While an operation takes long, the clock stands: windows are painted, and no action starts. What
/// calls the driver all the same meanwhile is answered 0.
class HostedDriver final : public BoundDriver {
 public:
  /// The crashes in a row after which a driver is left alone.
  static constexpr int mostCrashes = 3;

  /// Binds the library at `path`, or the maker's, in a host that `start` starts. Both references
  /// outlive the driver.
  static BoundDriverOrError bind(HostStart start, const std::optional<std::filesystem::path>& path,
                                 Clock& clock, DriverPatience& patience);
  ~HostedDriver() override;

  const std::filesystem::path& path() const override { return library_->path; }
  bool isSimulated() const override { return library_->simulated; }
  Result<std::string, std::string> simulate(const std::string& request) override;
  std::vector<std::string_view> missing() const override { return library_->missing; }
  DriverReport report() const override { return {hostName_, lastLoss_}; }
  void revive() override { crashes_ = 0; }

#define TOUCH_HOSTED(name, parameters, arguments)     \
  std::int32_t name parameters override {             \
    return perform(#name, std::make_tuple arguments); \
  }
  NEXAPI_OPERATIONS(TOUCH_HOSTED)
#undef TOUCH_HOSTED

 private:
  enum class Loss : std::uint8_t { crash, hang, garbage };
  /// What a host has said of the library that it bound.
  struct Library {
    std::filesystem::path path;
    bool simulated = false;
    std::vector<std::string_view> missing;
  };

  HostedDriver(HostStart start, const std::optional<std::filesystem::path>& path, Clock& clock,
               DriverPatience& patience);

  template <typename... Arguments>
  std::int32_t perform(std::string_view operation, const std::tuple<Arguments...>& arguments) {
    require(operation);
    std::int32_t handle = 0;
    if constexpr (sizeof...(Arguments) > 0) {
      if constexpr (operation_codec::isNumber<std::tuple_element_t<0, std::tuple<Arguments...>>>)
        handle = std::get<0>(arguments);
    }
    if (!reaches(operation, handle)) return 0;
    const std::optional<HostMessage> result =
        asked(operation, {std::string(operation), operation_codec::valuesOf(arguments)});
    if (!result) return 0;
    const auto* const value = result->at<std::int32_t>(0);
    if (result->name != "result" || value == nullptr ||
        !operation_codec::takeBuffers(*result, arguments)) {
      refuse(operation, *result);
      return 0;
    }
    noteHandle(operation, *value, handle);
    return *value;
  }

  /// Throws where the library lacks the operation.
  void require(std::string_view operation) const;
  /// Whether the operation can be asked for, with a fresh host if need be.
  bool reaches(std::string_view operation, std::int32_t handle);
  void noteHandle(std::string_view operation, std::int32_t result, std::int32_t handle);
  /// What the host answers to `message`; nothing when it was lost over it.
  std::optional<HostMessage> asked(std::string_view operation, const HostMessage& message);
  std::optional<HostMessage> awaited(std::string_view operation);
  /// The program ends and has waited for long enough: no host is started any more.
  bool isOver() const;
  bool isGivenUp(const DriverWait& wait, std::chrono::milliseconds before);
  void refuse(std::string_view operation, const HostMessage& answer);
  void lose(Loss how, std::string_view operation, const std::string& detail = {});
  /// Starts a host and binds the library in it; why that failed, or nothing.
  Result<void, BindError> connect();
  Result<void, BindError> takeGreeting(const HostMessage& greeting);
  BindError error(std::string reason) const;

  HostStart start_;
  std::optional<std::filesystem::path> wanted_;
  Clock& clock_;
  DriverPatience& patience_;

  std::unique_ptr<HostLink> link_;
  HostMessageReader reader_;
  std::string hostName_;
  std::optional<Library> library_;  ///< nothing before it was bound for the first time

  bool asking_ = false;
  std::multiset<std::int32_t> open_;   ///< handles of this host
  std::multiset<std::int32_t> stale_;  ///< handles of hosts before, not closed yet
  int crashes_ = 0;                    ///< in a row
  std::chrono::milliseconds waitedInEnding_{};
  std::optional<std::string> lastLoss_;
};

}  // namespace touch
