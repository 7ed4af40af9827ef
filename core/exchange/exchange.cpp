#include "core/exchange/exchange.h"

#include "support/clock.h"

namespace touch {

namespace {
constexpr auto betweenRepeats = 30ms;
constexpr auto afterRepeat = 100ms;
}  // namespace

Reply ask(Connection& connection, Clock& clock, const Frame& frame, const Asking& asking) {
  for (int left = asking.tries;; --left) {
    connection.write(frame);
    clock.delay(asking.wait);
    Reply reply = connection.read();
    if (left <= 1 || asking.isGood(reply)) return reply;
  }
}

Reply exchange(const Access& access, const Frame& frame) {
  Connection connection(access);
  connection.flush();
  return ask(connection, access.clock, frame, {.wait = parameterWait, .tries = 2});
}

bool exchangeAcknowledged(const Access& access, const Frame& frame) {
  return exchange(access, frame).acknowledged();
}

void exchangeUnacknowledged(const Access& access, const std::string& controller,
                            const Frame& frame) {
  Connection connection(access, controller);
  connection.write(frame);
  access.clock.delay(betweenRepeats);
  ask(connection, access.clock, frame, {.wait = afterRepeat});
}

}  // namespace touch
