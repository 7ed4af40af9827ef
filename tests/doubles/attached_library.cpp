#include "core/driver/driver.h"

#if defined(_WIN32)
#define ATTACHED_EXPORT extern "C" __declspec(dllexport)
#else
#define ATTACHED_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace {

touch::Driver*& driver() {
  static touch::Driver* attached = nullptr;
  return attached;
}

}  // namespace

/// Whoever loads the library attaches a driver first, which every call is passed on to, and keeps
/// it for as long as they call. Without one it does nothing.
ATTACHED_EXPORT void AttachDriver(touch::Driver* attached) {
  driver() = attached;
}

#define ATTACHED_DEFINE(name, parameters, arguments)         \
  ATTACHED_EXPORT std::int32_t NEXAPI_CALL name parameters { \
    return driver() ? driver()->name arguments : 0;          \
  }
NEXAPI_OPERATIONS(ATTACHED_DEFINE)
