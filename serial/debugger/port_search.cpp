#include "serial/debugger/port_search.h"

#include <algorithm>

#include "ports/port_list.h"
#include "support/text/language.h"

namespace touch {

namespace {

std::string nameOf(const ListedPort& port, const ComPorts& comPorts) {
  return port.number == 0 ? port.device : comPorts.describe(port.number);
}

std::vector<DebuggerPort::Place> placesOn(const std::vector<int>& ports) {
  const SearchedSettings searched = searchedSettings();
  std::vector<DebuggerPort::Place> places;
  for (const auto* const settings : {&searched.likely, &searched.others})
    for (const int port : ports)
      for (const LineSettings& line : *settings)
        places.push_back({port, line});
  return places;
}

}  // namespace

std::string ControllerSearch::outcome() const {
  if (found) {
    return filled(say("debugger", "A controller answers on COM%1, %2."),
                  {std::to_string(found->port), describe(found->line)});
  }
  std::string text = isComplete
                         ? say("debugger", "No controller answers on any port that can be opened.")
                         : say("debugger", "The search was ended before all was asked.");
  for (const PortLeftOut& port : leftOut)
    text += ' ' + port.reason;
  return text;
}

std::string describe(const SearchProgress& progress) {
  return filled(say("debugger", "Asking on COM%1, %2 … (%3 of %4)"),
                {std::to_string(progress.place.port), describe(progress.place.line),
                 std::to_string(progress.number), std::to_string(progress.all)});
}

ControllerSearch searchEverywhere(DebuggerPort& port, const ComPorts& comPorts,
                                  const std::function<void(const SearchProgress&)>& onAsking) {
  // What this program has open itself is in nobody's way.
  port.takeFromDriver();
  port.serial().close();
  ControllerSearch search;
  std::vector<int> numbers;
  std::vector<ListedPort> asked;
  for (const auto& [listed, driver, maker, hindrance, state] : portFacts(comPorts)) {
    const std::string reason =
        listed.number == 0 ? say("debugger", "it has no number; --com N=DEVICE gives it one")
                           : hindrance;
    if (reason.empty()) {
      numbers.push_back(listed.number);
      asked.push_back(listed);
    } else {
      search.leftOut.push_back(
          {listed.number, listed.device,
           filled(say("debugger", "%1 was not asked: %2."), {nameOf(listed, comPorts), reason})});
    }
  }
  const auto places = placesOn(numbers);
  auto [found, refused, isComplete] = port.search(places, [&](std::size_t i) {
    if (onAsking) onAsking({places[i], i + 1, places.size()});
  });
  for (const ListedPort& one : asked)
    if (const auto why = refused.find(one.number); why != refused.end())
      search.leftOut.push_back({one.number, one.device, why->second});
  search.found = found;
  search.isComplete = isComplete;
  return search;
}

}  // namespace touch
