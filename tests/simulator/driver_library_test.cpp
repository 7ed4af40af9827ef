#include <dlfcn.h>
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <memory>
#include <optional>
#include <string>

#include "core/nexapi.h"
#include "simulator/requests.h"
#include "tests/simulator/serial_device.h"

namespace touch::simulator {
namespace {

/// The real library, bound as the programs bind it.
struct Library {
  std::unique_ptr<NexapiDriver> driver = std::move(*NexapiDriver::bind(SIMULATOR_LIBRARY));
  SimulateFunction simulate =
      std::bit_cast<SimulateFunction>(driver->extraExport("NexapiSimulate"));
};

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
    library.driver->CloseCOMPort(library.driver->OpenController("RS232 DEVICE 1"));
    std::array<char, 64> port{};
    ASSERT_EQ(library.simulate("port RS232 DEVICE 1", port.data(), 64), 1);
    device.emplace(port.data());
    EXPECT_TRUE(device->isOpen());
    EXPECT_FALSE(device->hasHungUp());
    library.simulate("touch 0.5 0.5", nullptr, 0);
  }
  EXPECT_EQ(dlopen(SIMULATOR_LIBRARY, RTLD_NOW | RTLD_NOLOAD), nullptr);
  EXPECT_TRUE(device->hasHungUp());
}

}  // namespace
}  // namespace touch::simulator
