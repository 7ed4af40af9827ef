#include "core/driver/host/hosted_driver.h"

#include <algorithm>
#include <utility>

#include "core/driver/connection.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

using namespace std::chrono_literals;

// Nearly every operation returns within this, and the wait for it is no longer than a glance.
constexpr auto unnoticed = 50ms;
// How often those who wait are asked whether they still want to.
constexpr auto look = 50ms;
// What all operations together may still take when the program ends.
constexpr auto patienceInEnding = 1s;

constexpr std::string_view loading = "bind";

std::string shownOperation(std::string_view operation) {
  return operation == loading ? say("driver", "its start") : std::string(operation);
}

/// The operation of that name in the table, which outlives every message.
std::optional<std::string_view> knownOperation(std::string_view name) {
  const auto* const found = std::ranges::find(driverOperations, name);
  if (found == driverOperations.end()) return std::nullopt;
  return *found;
}

}  // namespace

HostedDriver::HostedDriver(HostStart start, const std::optional<std::filesystem::path>& path,
                           Clock& clock, DriverPatience& patience)
    : start_(std::move(start)), wanted_(path), clock_(clock), patience_(patience) {}

HostedDriver::~HostedDriver() = default;

BoundDriverOrError HostedDriver::bind(HostStart start,
                                      const std::optional<std::filesystem::path>& path,
                                      Clock& clock, DriverPatience& patience) {
  std::unique_ptr<HostedDriver> driver(new HostedDriver(std::move(start), path, clock, patience));
  if (const auto connected = driver->connect(); !connected)
    return tl::unexpected(connected.error());
  return std::unique_ptr<BoundDriver>(std::move(driver));
}

BindError HostedDriver::error(std::string reason) const {
  return {wanted_ ? wanted_->string() : makersLibrary, std::move(reason)};
}

Result<void, BindError> HostedDriver::connect() {
  auto started = start_();
  if (!started) return tl::unexpected(error(started.error()));
  link_ = std::move(*started);
  hostName_ = link_->name();
  reader_ = {};
  const auto greeting =
      asked(loading, {std::string(loading), {hostProtocol, wanted_ ? utf8Of(*wanted_) : ""}});
  if (!greeting) return tl::unexpected(error(lastLoss_.value_or(std::string())));
  auto taken = takeGreeting(*greeting);
  if (!taken) link_.reset();
  return taken;
}

Result<void, BindError> HostedDriver::takeGreeting(const HostMessage& greeting) {
  if (greeting.name == "refused") {
    const auto* const reason = greeting.at<std::string>(0);
    const auto* const foundAt = greeting.at<std::string>(1);
    // The host knows no language but English.
    if (reason != nullptr && foundAt != nullptr) {
      BindError refused = error(say("driver", toUtf8(*reason)));
      refused.foundAt = pathNamed(*foundAt);
      return tl::unexpected(std::move(refused));
    }
  }
  constexpr std::size_t firstMissing = 3;
  const auto* const version = greeting.at<std::int32_t>(0);
  const auto* const simulated = greeting.at<std::int32_t>(1);
  const auto* const file = greeting.at<std::string>(2);
  if (greeting.name != "bound" || version == nullptr || simulated == nullptr || file == nullptr ||
      *version != hostProtocol) {
    refuse(loading, greeting);
    return tl::unexpected(error(lastLoss_.value_or(std::string())));
  }
  Library library{pathNamed(*file), *simulated != 0, {}};
  for (std::size_t i = firstMissing; i < greeting.values.size(); ++i) {
    const auto* const name = greeting.at<std::string>(i);
    if (const auto known = name != nullptr ? knownOperation(*name) : std::nullopt)
      library.missing.push_back(*known);
  }
  library_ = std::move(library);
  return {};
}

void HostedDriver::require(std::string_view operation) const {
  const auto lacks = [this](std::string_view name) {
    return std::ranges::find(library_->missing, name) != library_->missing.end();
  };
  if (lacks(operation)) throw MissingOperation(operation);
  // What could not be closed again is not opened.
  constexpr std::string_view closing = "CloseController";
  if (operation == "OpenController" && lacks(closing)) throw MissingOperation(closing);
}

bool HostedDriver::reaches(std::string_view operation, std::int32_t handle) {
  if (asking_) return false;
  if (operation != "GetControllerName" && !open_.contains(handle) && stale_.contains(handle)) {
    if (operation == "CloseController") stale_.extract(handle);
    return false;
  }
  if (link_) return true;
  // An action begins with one of these.
  const bool begins = operation == "OpenController" || operation == "GetExistControllers";
  if (!begins || isOver() || crashes_ >= mostCrashes || !patience_.startsAfresh()) return false;
  return connect().has_value();
}

void HostedDriver::noteHandle(std::string_view operation, std::int32_t result,
                              std::int32_t handle) {
  if (operation == "OpenController" && Connection::isHandle(result)) open_.insert(result);
  if (operation == "CloseController" && !open_.extract(handle).empty()) crashes_ = 0;
}

Result<std::string, std::string> HostedDriver::simulate(const std::string& request) {
  constexpr std::string_view operation = "simulate";
  if (!library_->simulated || asking_ || !link_) return Driver::simulate(request);
  const auto answer = asked(operation, {std::string(operation), {request}});
  if (!answer) return Driver::simulate(request);
  const auto* const done = answer->at<std::int32_t>(0);
  const auto* const text = answer->at<std::string>(1);
  if (answer->name != "answer" || done == nullptr || text == nullptr) {
    refuse(operation, *answer);
    return Driver::simulate(request);
  }
  if (*done == 0) return tl::unexpected(*text);
  return *text;
}

std::optional<HostMessage> HostedDriver::asked(std::string_view operation,
                                               const HostMessage& message) {
  const auto bytes = encoded(message);
  // No caller has anything as long; what is not sent is not answered.
  if (!bytes) return HostMessage{};
  if (!link_->send(*bytes)) {
    lose(Loss::crash, operation);
    return std::nullopt;
  }
  asking_ = true;
  auto answer = awaited(operation);
  asking_ = false;
  patience_.waitEnded();
  return answer;
}

std::optional<HostMessage> HostedDriver::awaited(std::string_view operation) {
  using Arrival = HostLink::Arrival;
  const auto begin = clock_.now();
  DriverWait wait{
      wanted_ ? wanted_->filename().string() : makersLibrary, shownOperation(operation), {}};
  std::string bytes;
  Arrival arrival = link_->receive(bytes, unnoticed);
  while (true) {
    reader_.add(std::exchange(bytes, {}));
    auto message = reader_.next();
    if (!message) {
      lose(Loss::garbage, operation, message.error());
      return std::nullopt;
    }
    if (*message) return std::move(**message);
    if (arrival == Arrival::end) {
      lose(Loss::crash, operation);
      return std::nullopt;
    }
    const auto before = std::exchange(
        wait.waited, std::chrono::duration_cast<std::chrono::milliseconds>(clock_.now() - begin));
    if (isGivenUp(wait, before)) {
      lose(Loss::hang, operation);
      return std::nullopt;
    }
    arrival = Arrival::nothing;
    clock_.stand(look, [&](std::chrono::milliseconds longest) {
      arrival = link_->receive(bytes, longest);
      return arrival != Arrival::nothing;
    });
  }
}

bool HostedDriver::isOver() const {
  return waitedInEnding_ >= patienceInEnding;
}

bool HostedDriver::isGivenUp(const DriverWait& wait, std::chrono::milliseconds before) {
  if (patience_.isEnding()) {
    waitedInEnding_ += wait.waited - before;
    return isOver();
  }
  return patience_.stillWaiting(wait) == DriverPatience::Next::giveUp;
}

void HostedDriver::refuse(std::string_view operation, const HostMessage& answer) {
  // Only what a library may have can it lack: a host that says so of its own requests lies.
  if (answer.name == "lacks" && knownOperation(operation)) throw MissingOperation(operation);
  lose(Loss::garbage, operation, "another answer than \"" + toUtf8(answer.name) + '"');
}

void HostedDriver::lose(Loss how, std::string_view operation, const std::string& detail) {
  const std::string ended = link_->end();
  link_.reset();
  stale_.merge(open_);
  if (!library_) {
    lastLoss_ =
        how == Loss::crash  ? filled(say("driver", "it crashed as it was loaded: %1"), {ended})
        : how == Loss::hang ? say("driver", "it did not return as it was loaded")
                            : filled(say("driver", "it damaged its host: expected %1"), {detail});
    return;
  }
  const std::string library = wanted_ ? wanted_->string() : makersLibrary;
  const std::string shown = shownOperation(operation);
  std::string text;
  switch (how) {
    case Loss::crash:
      text =
          filled(say("driver", "The touch driver %1 crashed in %2: %3."), {library, shown, ended});
      break;
    case Loss::hang:
      text = filled(say("driver", "The touch driver %1 did not return from %2 and was ended."),
                    {library, shown});
      break;
    case Loss::garbage:
      text = filled(say("driver", "The touch driver %1 damaged its host in %2: expected %3."),
                    {library, shown, detail});
      break;
  }
  if (how == Loss::hang) {
    crashes_ = 0;
  } else if (++crashes_ >= mostCrashes) {
    text += ' ' + say("driver",
                      "It crashed three times in a row and is not started again by itself. "
                      "\"Refresh\" starts it once more.");
  }
  lastLoss_ = text;
  patience_.lost(text);
}

}  // namespace touch
