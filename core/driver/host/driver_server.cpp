#include "core/driver/host/driver_server.h"

#include <utility>

#include "core/driver/host/operation_codec.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

template <typename... Arguments>
std::optional<HostMessage> perform(Driver& driver, std::int32_t (Driver::*operation)(Arguments...),
                                   const HostMessage& message) {
  auto received = operation_codec::Received<Arguments...>::from(message);
  if (!received) return std::nullopt;
  try {
    const std::int32_t result = received->perform(
        [&](Arguments... arguments) { return (driver.*operation)(arguments...); });
    return received->result(result);
  } catch (const MissingOperation& missing) {
    return HostMessage{"lacks", {missing.operation()}};
  }
}

}  // namespace

DriverServer::DriverServer(Bind bind) : bind_(std::move(bind)) {}

std::optional<HostMessage> DriverServer::answer(const HostMessage& message) {
  if (message.name == "bind") return bind(message);
  if (!driver_) return std::nullopt;
  if (message.name == "simulate") return simulate(message);
  const std::string& operation = message.name;
#define TOUCH_SERVED(name, parameters, arguments) \
  if (operation == #name) return perform(*driver_, &Driver::name, message);
  NEXAPI_OPERATIONS(TOUCH_SERVED)
#undef TOUCH_SERVED
  return std::nullopt;
}

std::optional<HostMessage> DriverServer::bind(const HostMessage& message) {
  const auto* const version = message.at<std::int32_t>(0);
  const auto* const file = message.at<std::string>(1);
  if (driver_ || version == nullptr || file == nullptr) return std::nullopt;
  if (*version != hostProtocol)
    return HostMessage{"refused", {"this driver host is of another version", std::string()}};
  auto bound = bind_(file->empty() ? std::nullopt : std::optional(pathNamed(*file)));
  if (!bound) return HostMessage{"refused", {bound.error().reason, utf8Of(bound.error().foundAt)}};
  driver_ = std::move(*bound);
  HostMessage greeting{
      "bound",
      {hostProtocol, std::int32_t{driver_->isSimulated() ? 1 : 0}, utf8Of(driver_->path())}};
  for (const std::string_view missing : driver_->missing())
    greeting.values.emplace_back(std::string(missing));
  return greeting;
}

std::optional<HostMessage> DriverServer::simulate(const HostMessage& message) {
  const auto* const request = message.at<std::string>(0);
  if (request == nullptr) return std::nullopt;
  const auto answer = driver_->simulate(*request);
  return HostMessage{"answer", {std::int32_t{answer ? 1 : 0}, answer ? *answer : answer.error()}};
}

}  // namespace touch
