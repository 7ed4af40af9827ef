#include "simulator/controller/request_interpreter.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>

#include "simulator/controller/words.h"

namespace touch::simulator {

namespace {

constexpr int gridSteps = 8;
constexpr double longestAdvance = 24.0 * 60 * 60 * 1000;

RequestAnswer done(std::string text = {}) {
  return {true, std::move(text)};
}
RequestAnswer refused(std::string reason) {
  return {false, std::move(reason)};
}

std::string decimal(double value) {
  std::array<char, 32> text{};
  const auto [end, problem] =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, 6);
  return problem == std::errc() ? std::string(text.data(), end) : std::string();
}

RequestAnswer unknownController(std::string_view name) {
  return refused("no controller is called " + quoted(name));
}

// Two fractions, or the reason why they are none.
std::optional<Point> takePlace(Words& words, RequestAnswer& problem) {
  std::array<double, 2> place{};
  for (double& coordinate : place) {
    const auto word = words.next();
    const auto value = numberIn(word, 0, 1);
    if (!value) {
      problem = refused("expected a fraction from 0 to 1, found " + quoted(word));
      return std::nullopt;
    }
    coordinate = *value;
  }
  return Point{place[0], place[1]};
}

RequestAnswer touchPanels(SimulatedDevices& devices, Words& words) {
  RequestAnswer problem;
  const auto place = takePlace(words, problem);
  if (!place) return problem;
  devices.touch(*place);
  return done();
}

RequestAnswer liftFinger(SimulatedDevices& devices, Words&) {
  devices.lift();
  return done();
}

RequestAnswer tellError(SimulatedDevices& devices, Words& words) {
  const auto name = words.rest();
  const SimulatedUnit* const unit = devices.find(name);
  if (unit == nullptr) return unknownController(name);
  double sum = 0;
  double highest = 0;
  for (int row = 0; row <= gridSteps; ++row) {
    for (int column = 0; column <= gridSteps; ++column) {
      const Point finger{static_cast<double>(column) / gridSteps,
                         static_cast<double>(row) / gridSteps};
      const Point reported = unit->controller.reported(finger);
      const double distance =
          std::hypot(reported.x - finger.x, (reported.y - finger.y) * panelHeight);
      sum += distance;
      highest = std::max(highest, distance);
    }
  }
  constexpr int places = (gridSteps + 1) * (gridSteps + 1);
  return done(decimal(sum / places) + ' ' + decimal(highest));
}

RequestAnswer tellMapped(SimulatedDevices& devices, Words& words) {
  RequestAnswer problem;
  const auto place = takePlace(words, problem);
  if (!place) return problem;
  const auto name = words.rest();
  const SimulatedUnit* const unit = devices.find(name);
  if (unit == nullptr) return unknownController(name);
  const Point reported = unit->controller.reported(*place);
  return done(decimal(reported.x) + ' ' + decimal(reported.y));
}

RequestAnswer tellReport(SimulatedDevices& devices, Words& words) {
  RequestAnswer problem;
  const auto place = takePlace(words, problem);
  if (!place) return problem;
  const auto name = words.rest();
  SimulatedUnit* const unit = devices.find(name);
  if (unit == nullptr) return unknownController(name);
  const auto report = unit->controller.felt(*place, devices.clock().now());
  return done(report ? decimal(report->x) + ' ' + decimal(report->y) : std::string());
}

RequestAnswer tellPort(SimulatedDevices& devices, Words& words) {
  const auto name = words.rest();
  const SimulatedUnit* const unit = devices.find(name);
  if (unit == nullptr) return unknownController(name);
  return done(unit->line ? unit->line->path() : std::string());
}

RequestAnswer listControllers(SimulatedDevices& devices, Words&) {
  std::string names;
  for (const SimulatedUnit& unit : devices.units())
    if (!unit.replaced)
      names.append(names.empty() ? "" : "\n").append(unit.controller.model().name);
  return done(names);
}

RequestAnswer tellRate(SimulatedDevices& devices, Words& words) {
  const auto name = words.rest();
  const SimulatedUnit* const unit = devices.find(name);
  if (unit == nullptr) return unknownController(name);
  const std::chrono::duration<double> interval = unit->controller.model().reportInterval;
  return done(decimal(1 / interval.count()));
}

RequestAnswer takeProperty(SimulatedDevices& devices, Words& words) {
  if (devices.isDescribed()) return refused("a controller has been described before");
  const auto line = words.rest();
  if (line != "done") {
    auto taken = devices.description().add(line);
    return taken ? done() : refused(std::move(taken.error()));
  }
  auto described = std::exchange(devices.description(), {}).finish();
  if (!described) return refused(std::move(described.error()));
  devices.become(std::move(*described));
  return done();
}

RequestAnswer switchFault(SimulatedDevices& devices, Words& words) {
  const auto faultWord = words.next();
  const auto fault = faultNamed(faultWord);
  if (!fault) return refused("no fault is called " + quoted(faultWord) + "; see faults");
  const auto state = words.next();
  if (state != "on" && state != "off") {
    return refused("expected on or off, found " + quoted(state));
  }
  const auto name = words.rest();
  SimulatedUnit* const unit = devices.find(name);
  if (unit == nullptr) return unknownController(name);
  unit->controller.faults().set(*fault, state == "on");
  return done();
}

RequestAnswer listFaults(SimulatedDevices&, Words&) {
  std::string names;
  for (const FaultName& fault : faultNames) {
    if (!names.empty()) names += '\n';
    names += fault.name;
  }
  return done(names);
}

struct PanelKey {
  std::string_view name;
  double PanelTraits::*value;
  double lowest;
  double highest;
};

constexpr std::array panelKeys{
    PanelKey{"offset-x", &PanelTraits::offsetX, -1, 1},
    PanelKey{"offset-y", &PanelTraits::offsetY, -1, 1},
    PanelKey{"gain-x", &PanelTraits::gainX, -2, 2},
    PanelKey{"gain-y", &PanelTraits::gainY, -2, 2},
    PanelKey{"skew", &PanelTraits::skew, -1, 1},
    PanelKey{"noise", &PanelTraits::noise, 0, 1},
    PanelKey{"bow", &PanelTraits::bow, -1, 1},
    PanelKey{"dead-strip", &PanelTraits::deadStrip, 0, 1},
};

RequestAnswer changePanel(SimulatedDevices& devices, Words& words) {
  const auto keyWord = words.next();
  const auto* const key = std::ranges::find(panelKeys, keyWord, &PanelKey::name);
  if (key == panelKeys.end()) return refused("a panel has no " + quoted(keyWord));
  const auto valueWord = words.next();
  const bool asNew = valueWord == "new";
  const auto value = numberIn(valueWord, key->lowest, key->highest);
  if (!value && !asNew) {
    return refused("expected a number from " + decimal(key->lowest) + " to " +
                   decimal(key->highest) + ", found " + quoted(valueWord));
  }
  const auto name = words.rest();
  SimulatedUnit* const unit = devices.find(name);
  if (unit == nullptr) return unknownController(name);
  auto& controller = unit->controller;
  controller.panel().*(key->value) = asNew ? controller.model().panel.*(key->value) : *value;
  return done();
}

RequestAnswer setClock(SimulatedDevices& devices, Words& words) {
  const auto kind = words.next();
  if (kind == "manual") {
    devices.clock().setManual();
  } else if (kind == "real") {
    devices.clock().setReal();
  } else {
    return refused("expected manual or real, found " + quoted(kind));
  }
  return done();
}

RequestAnswer advanceClock(SimulatedDevices& devices, Words& words) {
  const auto word = words.next();
  const auto milliseconds = numberIn(word, 0, longestAdvance);
  if (!milliseconds) {
    return refused("expected milliseconds from 0 to a day, found " + quoted(word));
  }
  if (!devices.clock().isManual()) return refused("the clock is not manual");
  devices.clock().advance(
      std::chrono::microseconds(static_cast<std::int64_t>(*milliseconds * 1000)));
  return done();
}

RequestAnswer resetAll(SimulatedDevices& devices, Words&) {
  devices.reset();
  return done();
}

struct Request {
  std::string_view name;
  RequestAnswer (*carryOut)(SimulatedDevices&, Words&);
  std::string_view form;
};

constexpr std::array requests{
    Request{"touch", touchPanels, "touch X Y"},
    Request{"lift", liftFinger, "lift"},
    Request{"error", tellError, "error NAME"},
    Request{"map", tellMapped, "map X Y NAME"},
    Request{"report", tellReport, "report X Y NAME"},
    Request{"controllers", listControllers, "controllers"},
    Request{"port", tellPort, "port NAME"},
    Request{"rate", tellRate, "rate NAME"},
    Request{"become", takeProperty, "become NAME"},
    Request{"fault", switchFault, "fault FAULT on|off NAME"},
    Request{"faults", listFaults, "faults"},
    Request{"panel", changePanel, "panel KEY VALUE NAME"},
    Request{"clock", setClock, "clock manual|real"},
    Request{"advance", advanceClock, "advance MS"},
    Request{"reset", resetAll, "reset"},
};

// Counts the words that a request must have at least and, unless it ends in a name, at most.
bool hasForm(std::string_view text, std::string_view form) {
  Words words(text);
  Words expected(form);
  while (!expected.empty()) {
    if (words.empty()) return false;
    if (expected.next() == "NAME") return true;
    words.next();
  }
  return words.empty();
}

}  // namespace

RequestAnswer carryOutRequest(SimulatedDevices& devices, std::string_view request) {
  Words words(request);
  const auto name = words.next();
  const auto* const found = std::ranges::find(requests, name, &Request::name);
  if (found == requests.end()) return refused("unknown request " + quoted(name));
  if (!hasForm(request, found->form)) return refused("expected " + quoted(found->form));
  RequestAnswer answer = found->carryOut(devices, words);
  devices.wakeLines();
  return answer;
}

}  // namespace touch::simulator
