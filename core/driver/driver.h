#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "core/driver/driver_operations.h"
#include "support/result.h"
#include "support/text/language.h"

namespace touch {

/// Thrown by the call of an operation that the driver library lacks: the action that needs it ends.
class MissingOperation : public std::runtime_error {
 public:
  explicit MissingOperation(std::string_view operation)
      : std::runtime_error(filled(say("driver", "The touch driver library lacks the operation %1"),
                                  {std::string(operation)})),
        operation_(operation) {}
  const std::string& operation() const { return operation_; }

 private:
  std::string operation_;
};

/// Where a driver runs, and how that went.
struct DriverReport {
  std::string host;                     ///< the program it runs in; empty: this one
  std::optional<std::string> lastLoss;  ///< how it was last lost: it crashed, it hung
};

/// The touch driver as the rest of the system sees it: the 36 operations, and which of them are not
/// there. Used through Connection wherever a controller is open; what it returns is not to be
/// trusted.
class Driver {
 public:
  Driver() = default;
  Driver(const Driver&) = delete;
  Driver& operator=(const Driver&) = delete;
  virtual ~Driver() = default;

#define TOUCH_DECLARE(name, parameters, arguments) virtual std::int32_t name parameters = 0;
  NEXAPI_OPERATIONS(TOUCH_DECLARE)
#undef TOUCH_DECLARE

  /// Whether panels and controllers are simulated: such a library has one function beside the 36.
  virtual bool isSimulated() const {
    return false;
  }
  /// Calls that function: `request` is in the simulator's own words, and so is the answer.
  virtual Result<std::string, std::string> simulate(const std::string& request) {
    return tl::unexpected(request);
  }

  /// The operations that the library lacks, without those that nobody needs.
  virtual std::vector<std::string_view> missing() const {
    return {};
  }
  virtual DriverReport report() const {
    return {};
  }
  /// The user wants a driver that has been given up to be tried once more.
  virtual void revive() {}
};

/// Every operation by its name.
inline constexpr std::array driverOperations = {
#define TOUCH_NAME(name, parameters, arguments) std::string_view(#name),
    NEXAPI_OPERATIONS(TOUCH_NAME)
#undef TOUCH_NAME
};

/// What it takes to have the driver's COM port for a while: what could not be given back is not
/// taken.
inline constexpr std::array<std::string_view, 4> portLoanOperations = {
    "OpenController", "CloseController", "CloseCOMPort", "ReopenCOMPort"};

}  // namespace touch
