#include "core/exchange.h"

#include "core/clock.h"

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

bool exchangeAcknowledged(const Access& access, const Frame& frame) {
  Connection connection(access);
  connection.flush();
  if (ask(connection, access.clock, frame, parameterWait).acknowledged()) return true;
  return ask(connection, access.clock, frame, parameterWait).acknowledged();
}

void exchangeUnacknowledged(const Access& access, const std::string& controller,
                            const Frame& frame) {
  Connection connection(access, controller);
  connection.write(frame);
  access.clock.delay(betweenRepeats);
  ask(connection, access.clock, frame, afterRepeat);
}

}  // namespace touch
