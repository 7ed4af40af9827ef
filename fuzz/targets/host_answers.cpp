// What a driver host answers, to each operation in turn.

#include <algorithm>
#include <array>

#include "core/driver/host/hosted_driver.h"
#include "fuzz/target.h"
#include "support/system_clock.h"

namespace touch::fuzz {

namespace {

/// A host that answers each message with some of the bytes, and ends when they are used up.
class ArbitraryHost final : public HostLink {
 public:
  explicit ArbitraryHost(Input& input) : input_(input) {}
  bool send(std::string_view) override { return !input_.empty(); }
  Arrival receive(std::string& bytes, std::chrono::milliseconds) override {
    if (input_.empty()) return Arrival::end;
    bytes += textOf(input_.take(input_.byte()));
    return Arrival::bytes;
  }
  std::string end() override { return "it was a test"; }
  std::string name() const override { return "touchdriver"; }

 private:
  Input& input_;
};

class Patience final : public DriverPatience {
 public:
  Next stillWaiting(const DriverWait&) override { return Next::wait; }
  bool isEnding() const override { return false; }
  void lost(const std::string& text) override { require(!text.empty(), "a loss is said"); }
};

void call(Driver& driver, std::size_t number) {
  // What stands behind each buffer stays as it was.
  constexpr std::uint8_t guard = 0x5A;
  std::array<std::uint8_t, 64> memory;
  memory.fill(guard);
  auto* const bytes = memory.data();
  auto* const name = reinterpret_cast<char*>(bytes);
  alignas(8) std::array<std::int32_t, 4> raw{0, 0, guard, guard};
  switch (number) {
    case 0:
      driver.GetControllerName(1, name, 20);
      break;
    case 1:
      driver.ReadBuffer(2, bytes, 10);
      break;
    case 2:
      driver.CalCurrentPointReady(2, raw.data());
      break;
    case 3:
      driver.OpenController("USB DEVICE 1");
      break;
    case 4:
      driver.WriteBuffer(2, bytes, 10);
      break;
    case 5:
      driver.CloseController(2);
      break;
    default:
      driver.GetExistControllers();
  }
  const auto behind = memory.begin() + (number == 0 ? 20 : number == 1 ? 10 : 0);
  require(std::all_of(behind, memory.end(), [](std::uint8_t byte) { return byte == guard; }) &&
              raw[2] == guard && raw[3] == guard,
          "nothing is written behind a buffer");
}

}  // namespace

void execute(std::span<const std::uint8_t> bytes) {
  Input input(bytes);
  SystemClock clock;
  Patience patience;
  const auto bound = HostedDriver::bind(
      [&input]() -> Result<std::unique_ptr<HostLink>, std::string> {
        if (input.empty()) return tl::unexpected(std::string("there is none"));
        return std::unique_ptr<HostLink>(std::make_unique<ArbitraryHost>(input));
      },
      std::nullopt, clock, patience);
  if (!bound) return;
  for (std::size_t number = 0; !input.empty(); ++number) {
    try {
      call(**bound, number % 7);
      (*bound)->simulate("lift");
    } catch (const MissingOperation&) {
    }
    if ((*bound)->report().lastLoss) (*bound)->revive();
  }
}

}  // namespace touch::fuzz
