// What a driver host is sent.

#include <algorithm>
#include <tuple>
#include <type_traits>

#include "core/driver/host/driver_server.h"
#include "fuzz/target.h"

namespace touch::fuzz {

namespace {

/// Fills each buffer to its end and beyond, as no driver should.
class OverrunningDriver final : public BoundDriver {
 public:
#define TOUCH_OVERRUN(name, parameters, arguments) \
  std::int32_t name parameters override {          \
    return overrun(std::make_tuple arguments);     \
  }
  NEXAPI_OPERATIONS(TOUCH_OVERRUN)
#undef TOUCH_OVERRUN
  const std::filesystem::path& path() const override {
    return path_;
  }
  bool isSimulated() const override {
    return true;
  }
  Result<std::string, std::string> simulate(const std::string& request) override {
    if (request.size() % 2 == 0) return request;
    return tl::unexpected(request);
  }

 private:
  static constexpr std::size_t tooMuch = 200;

  static std::int32_t overrun(const auto&) {
    return -1;
  }
  template <typename Byte>
  requires(sizeof(Byte) == 1 && !std::is_const_v<Byte>) static std::int32_t
      overrun(const std::tuple<std::int32_t, Byte*, std::int32_t>& buffer) {
    const auto [handle, bytes, count] = buffer;
    std::fill_n(bytes, static_cast<std::size_t>(count) + tooMuch, Byte{'X'});
    return INT32_MAX;
  }
  static std::int32_t overrun(const std::tuple<std::int32_t, std::int32_t*>& reading) {
    std::fill_n(std::get<1>(reading), tooMuch / sizeof(std::int32_t), -1);
    return 1;
  }

  std::filesystem::path path_ = "/lib/driver.so";
};

}  // namespace

void execute(std::span<const std::uint8_t> bytes) {
  DriverServer server([](const auto& path) -> BoundDriverOrError {
    if (path && path->string().size() % 2 != 0)
      return tl::unexpected(BindError{path->string(), "it is odd"});
    return std::unique_ptr<BoundDriver>(std::make_unique<OverrunningDriver>());
  });
  HostMessageReader reader;
  reader.add(textOf(bytes));
  while (true) {
    const auto message = reader.next();
    if (!message || !*message) return;
    const auto answer = server.answer(**message);
    if (!answer) return;
    if (const auto sent = encoded(*answer)) {
      HostMessageReader far;
      far.add(*sent);
      const auto arrived = far.next();
      require(arrived && *arrived == answer, "an answer arrives as it was sent");
    }
  }
}

}  // namespace touch::fuzz
