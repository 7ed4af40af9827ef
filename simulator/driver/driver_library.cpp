#include <algorithm>
#include <cstddef>
#include <string_view>

#include "simulator/controller/requests.h"
#include "simulator/driver/simulated_driver.h"

#if defined(_WIN32)
#define NEXAPI_EXPORT __declspec(dllexport)
#else
#define NEXAPI_EXPORT __attribute__((visibility("default")))
#endif

namespace {

using touch::simulator::RequestAnswer;
using touch::simulator::SimulatedDriver;

SimulatedDriver& driver() {
  static SimulatedDriver instance;
  return instance;
}

// No exception may cross the C boundary; the only ones are those of a machine out of memory or
// threads.
template <typename Work>
std::int32_t guarded(Work work) noexcept {
  try {
    return work();
  } catch (...) {
    return 0;
  }
}

}  // namespace

#define TOUCH_EXPORT(name, parameters, arguments)                    \
  extern "C" NEXAPI_EXPORT std::int32_t NEXAPI_CALL name parameters; \
  extern "C" std::int32_t NEXAPI_CALL name parameters {              \
    return guarded([&] { return driver().name arguments; });         \
  }
NEXAPI_OPERATIONS(TOUCH_EXPORT)
#undef TOUCH_EXPORT

extern "C" NEXAPI_EXPORT std::int32_t NEXAPI_CALL NexapiSimulate(const char* request, char* answer,
                                                                 std::int32_t size) {
  return guarded([&]() -> std::int32_t {
    const RequestAnswer result =
        driver().answer(request == nullptr ? std::string_view() : std::string_view(request));
    if (answer != nullptr && size > 0) {
      const auto shown =
          std::string_view(result.text).substr(0, static_cast<std::size_t>(size) - 1);
      *std::ranges::copy(shown, answer).out = '\0';
    }
    return result.done ? 1 : 0;
  });
}
