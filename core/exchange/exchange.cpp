#include "core/exchange/exchange.h"

#include "support/clock.h"

namespace touch {

namespace {
constexpr auto betweenRepeats = 30ms;
constexpr auto afterRepeat = 100ms;
}  // namespace

Reply ask(Connection& connection, Clock& clock, const Frame& frame,
          std::chrono::milliseconds wait) {
  connection.write(frame);
  clock.delay(wait);
  return connection.read();
}

Reply exchange(const Access& access, const Frame& frame) {
  Connection connection(access);
  connection.flush();
  const Reply first = ask(connection, access.clock, frame, parameterWait);
  return first.acknowledged() ? first : ask(connection, access.clock, frame, parameterWait);
}

bool exchangeAcknowledged(const Access& access, const Frame& frame) {
  return exchange(access, frame).acknowledged();
}

void exchangeUnacknowledged(const Access& access, const std::string& controller,
                            const Frame& frame) {
  Connection connection(access, controller);
  connection.write(frame);
  access.clock.delay(betweenRepeats);
  ask(connection, access.clock, frame, afterRepeat);
}

}  // namespace touch
