#include "serial/debugger/returning_port.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "serial/debugger/debugger_port.h"

namespace touch {

namespace {

using namespace std::chrono_literals;

// Looking at all devices takes the system a while.
constexpr auto whileOpen = 2s;
constexpr auto whileAwaited = 500ms;

}  // namespace

bool ReturningPort::isTooSoon(std::chrono::milliseconds betweenLooks) {
  const auto now = clock_.now();
  if (now - looked_ < betweenLooks) return true;
  looked_ = now;
  return false;
}

void ReturningPort::remember() {
  if (!port_.serial().isOpen()) return;
  if (remembered_ == port_.selected() && isTooSoon(whileOpen)) return;
  auto now = list_();
  // One that goes at this very moment is to be remembered as it was.
  const bool isThere = std::ranges::any_of(
      now, [this](const KnownHardware& known) { return known.port.number == port_.selected(); });
  if (remembered_ == port_.selected() && !isThere) return;
  remembered_ = port_.selected();
  known_ = std::move(now);
}

bool ReturningPort::takeUpAgain() {
  if (port_.takeUpAgain()) return true;
  if (!port_.isAwaited() || remembered_ != port_.selected() || isTooSoon(whileAwaited))
    return false;
  const auto gone = std::ranges::find(known_, remembered_,
                                      [](const KnownHardware& known) { return known.port.number; });
  if (gone == known_.end()) return false;
  const auto port = cameBackAs(gone->hardware, known_, list_());
  return port && port->number != 0 && port_.takeUpAs(port->number, port->device);
}

}  // namespace touch
