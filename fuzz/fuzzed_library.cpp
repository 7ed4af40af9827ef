// A driver library that passes every call on to the driver that the target has attached, so that
// the system binds and calls it as it does any other.

#include "core/driver/driver.h"

#define FUZZED_EXPORT extern "C" __attribute__((visibility("default")))

namespace {

touch::Driver*& driver() {
  static touch::Driver* attached = nullptr;
  return attached;
}

}  // namespace

FUZZED_EXPORT void FuzzedAttach(touch::Driver* attached) {
  driver() = attached;
}

#define FUZZED_DEFINE(name, parameters, arguments)         \
  FUZZED_EXPORT std::int32_t NEXAPI_CALL name parameters { \
    return driver()->name arguments;                       \
  }
NEXAPI_OPERATIONS(FUZZED_DEFINE)
