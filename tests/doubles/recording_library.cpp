#include "tests/doubles/recording_script.h"

#if defined(_WIN32)
#define RECORDING_EXPORT extern "C" __declspec(dllexport)
#else
#define RECORDING_EXPORT extern "C" __attribute__((visibility("default")))
#endif

namespace {

touch::test::RecordingScript*& script() {
  static touch::test::RecordingScript* attached = nullptr;
  return attached;
}

}  // namespace

/// Whoever loads the library attaches its script first, and keeps it for as long as it calls.
/// Without one it does nothing.
RECORDING_EXPORT void RecordingAttach(touch::test::RecordingScript* attached) {
  script() = attached;
}

#define RECORDING_DEFINE(name, parameters, arguments)                          \
  RECORDING_EXPORT std::int32_t NEXAPI_CALL name parameters {                  \
    return script() ? script()->perform(#name, std::make_tuple arguments) : 0; \
  }
NEXAPI_OPERATIONS(RECORDING_DEFINE)
