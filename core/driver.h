#pragma once

#include <cstdint>

#include "core/driver_operations.h"

namespace touch {

/// The touch driver as the rest of the system sees it: the 36 operations, nothing else.
/// Used through Connection wherever a controller is open; what it returns is not to be trusted.
class Driver {
 public:
  Driver() = default;
  Driver(const Driver&) = delete;
  Driver& operator=(const Driver&) = delete;
  virtual ~Driver() = default;

#define TOUCH_DECLARE(name, parameters, arguments) virtual std::int32_t name parameters = 0;
  NEXAPI_OPERATIONS(TOUCH_DECLARE)
#undef TOUCH_DECLARE
};

}  // namespace touch
