#include <cstdint>

#include "core/driver/driver_operations.h"

// A touch driver that opens controllers, and has nothing else.
extern "C" __attribute__((visibility("default"))) std::int32_t NEXAPI_CALL
OpenController(const char*) {
  return 2;
}
