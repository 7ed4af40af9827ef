#include "core/discovery/discovery.h"

#include <algorithm>
#include <numeric>
#include <string_view>
#include <utility>

#include "core/exchange/exchange.h"
#include "support/clock.h"
#include "support/prompt.h"

namespace touch {

namespace {

// A reply this short holds no unit type: start byte, carriage return and three characters.
constexpr std::size_t longestNonAnswer = 5;
constexpr auto pauseAfterSilence = 100ms;

bool isUnitType(const Reply& reply) {
  return reply.size() > longestNonAnswer;
}

bool answersUnitType(const Access& access, const std::string& name) {
  Connection connection(access, name);
  return isUnitType(ask(connection, access.clock, commandFrame("UT"),
                        {.wait = enquiryWait, .tries = 2, .isGood = isUnitType}));
}

/// The list's places in the order in which they are probed.
std::vector<std::size_t> probeOrder(const ControllerList& list, const std::string& preferred) {
  std::vector<std::size_t> order(list.names.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::stable_partition(order.begin(), order.end(),
                        [&](std::size_t place) { return list.names[place] == preferred; });
  return order;
}

}  // namespace

bool isServedName(std::string_view name) {
  const bool servedLine = name.find("RS232") != name.npos || name.find("USB") != name.npos;
  // The line's name stands before the word: a name that begins with it is another maker's.
  const auto device = name.find("DEVICE");
  return servedLine && device != name.npos && device >= 3;
}

std::optional<std::size_t> ControllerList::find(const std::string& name) const {
  const auto found = std::ranges::find(names, name);
  if (found == names.end()) return std::nullopt;
  return static_cast<std::size_t>(found - names.begin());
}

KnownControllers knownControllers(Driver& driver) {
  const std::int32_t said = driver.GetExistControllers();
  KnownControllers known{.count = said < 0 ? 0 : said & 0xFF};
  for (int number = 1; number <= known.count && known.served.size() < ControllerList::limit;
       ++number) {
    auto name = controllerName(driver, number);
    if (!name) continue;
    (isServedName(*name) ? known.served : known.others).push_back(std::move(*name));
  }
  return known;
}

ControllerList getctrnameo(const Access& access, Prompt& prompt) {
  KnownControllers known = knownControllers(access.driver);
  if (known.count == 0) prompt.message(access.session.messages[Message::noDevice]);
  return {.names = std::move(known.served)};
}

ControllerList getctrname(const Access& access, Prompt& prompt, const ProbeProgress& progress,
                          const std::string& preferred) {
  ControllerList list = getctrnameo(access, prompt);
  for (const std::size_t place : probeOrder(list, preferred)) {
    if (progress && !progress(list.names[place])) break;
    list.lastAsked = place;
    if (answersUnitType(access, list.names[place])) {
      list.answered = place;
      break;
    }
    access.clock.delay(pauseAfterSilence);
  }
  return list;
}

}  // namespace touch
