#include <dlfcn.h>
#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <type_traits>

#include "core/driver_operations.h"
#include "simulator/calibration_run.h"
#include "simulator/requests.h"
#include "tests/simulator/serial_device.h"

namespace touch::simulator {
namespace {

/// The real library, bound by name as any program binds it.
class Library {
 public:
  Library() : library_(dlopen(SIMULATED_DRIVER_LIBRARY, RTLD_NOW | RTLD_LOCAL)) {
    EXPECT_TRUE(library_) << dlerror();
#define TOUCH_BIND(name, parameters, arguments) bind(name, #name);
    NEXAPI_OPERATIONS(TOUCH_BIND)
#undef TOUCH_BIND
    bind(simulate, "NexapiSimulate");
  }

// NOLINTBEGIN(bugprone-macro-parentheses): a parameter list cannot stand in parentheses of its own
#define TOUCH_POINTER(name, parameters, arguments) \
  std::add_pointer_t<std::int32_t parameters> name{};
  NEXAPI_OPERATIONS(TOUCH_POINTER)
#undef TOUCH_POINTER
  // NOLINTEND(bugprone-macro-parentheses)
  SimulateFunction simulate{};

  std::string request(const std::string& text) const {
    std::array<char, 256> answer{};
    EXPECT_EQ(simulate(text.c_str(), answer.data(), 256), 1) << text << ": " << answer.data();
    return answer.data();
  }

 private:
  struct Unload {
    void operator()(void* library) const { dlclose(library); }
  };

  template <typename Function>
  void bind(Function& function, const char* name) {
    void* const symbol = library_ ? dlsym(library_.get(), name) : nullptr;
    ASSERT_NE(symbol, nullptr) << name;
    std::memcpy(&function, &symbol, sizeof symbol);
  }

  std::unique_ptr<void, Unload> library_;
};

TEST(DriverLibrary, calibratesThroughItsExports) {
  const Library library;
  ASSERT_EQ(library.GetExistControllers(), 3);
  std::array<char, 20> name{};
  ASSERT_EQ(library.GetControllerName(1, name.data(), 20), 1);
  const auto handle = library.OpenController(name.data());
  ASSERT_GT(handle, 1);
  library.request("clock manual");
  int point = 0;
  for (const Point target : calibrationTargets(3)) {
    std::array<std::int32_t, 2> raw{};
    library.SetCalPoint(handle, point++, 60, 3);
    EXPECT_EQ(library.CalCurrentPointReady(handle, raw.data()), 0);
    library.request("touch " + std::to_string(target.x) + ' ' + std::to_string(target.y));
    EXPECT_EQ(library.IsPenUp(handle), 0);
    library.request("lift");
    EXPECT_NE(library.CalCurrentPointReady(handle, raw.data()), 0);
  }
  EXPECT_NE(library.StoreCalibrationData(handle), 0);
  EXPECT_LT(std::stod(library.request(std::string("error ") + name.data())), 0.0005);
  library.CloseController(handle);
}

TEST(DriverLibrary, answersNeverOverrunTheirBuffer) {
  const Library library;
  for (const std::int32_t size : {-1, 0, 1, 2, 9, 64}) {
    std::array<char, 65> answer{};
    answer.fill('#');
    EXPECT_EQ(library.simulate("nonsense", answer.data(), size), 0);
    const std::size_t written = size < 0 ? 0 : static_cast<std::size_t>(size);
    EXPECT_EQ(answer[written], '#') << size;
    if (written > 0) {
      EXPECT_EQ(std::string(answer.data()),
                std::string("unknown request \"nonsense\"").substr(0, written - 1));
    }
  }
  EXPECT_EQ(library.simulate("lift", nullptr, 0), 1);
  EXPECT_EQ(library.simulate(nullptr, nullptr, 100), 0);
}

TEST(DriverLibrary, takesItsPortsAlongWhenUnloaded) {
  std::optional<SerialDevice> device;
  {
    const Library library;
    library.CloseCOMPort(library.OpenController("RS232 DEVICE 1"));
    device.emplace(library.request("port RS232 DEVICE 1"));
    EXPECT_TRUE(device->isOpen());
    EXPECT_FALSE(device->hasHungUp());
    library.request("touch 0.5 0.5");
  }
  EXPECT_EQ(dlopen(SIMULATED_DRIVER_LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr);
  EXPECT_TRUE(device->hasHungUp());
}

}  // namespace
}  // namespace touch::simulator
