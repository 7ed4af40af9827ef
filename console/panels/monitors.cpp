#include "console/panels/monitors.h"

#include "core/driver/connection.h"
#include "support/clock.h"
#include "support/prompt.h"

namespace touch {

namespace {

using namespace std::chrono_literals;

constexpr auto betweenQueries = 200ms;
constexpr auto longestWait = 3000ms;

bool becomesAssigned(const Access& access, int monitor) {
  const Connection connection(access);
  if (!connection.isOpen()) return false;
  access.driver.AskToSetMultiMonitor(connection.handle(), monitor);
  for (auto waited = 0ms; waited < longestWait; waited += betweenQueries) {
    access.clock.delay(betweenQueries);
    if (access.driver.QueryMultiMonitorSetOK() != 0) return true;
  }
  return false;
}

}  // namespace

bool assignMonitor(const Access& access, Prompt& prompt, int monitor) {
  const bool assigned = becomesAssigned(access, monitor);
  prompt.message(access.session.messages[assigned ? Message::settingOk : Message::settingError]);
  return assigned;
}

}  // namespace touch
