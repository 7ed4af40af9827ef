#include <fmt/core.h>

#include <charconv>
#include <nlohmann/json.hpp>

#include "app/declarations.h"
#include "app/touchctl/command_line.h"
#include "app/touchctl/commands.h"
#include "app/touchctl/output.h"
#include "console/parameters/backup.h"
#include "console/pins/sensor_pins.h"

namespace touch {

namespace {

/// A wire's name with the minus that keyboards have.
std::string typedName(std::string_view wire) {
  constexpr std::string_view minus = "\u2212";
  std::string name(wire);
  if (const auto place = name.find(minus); place != name.npos) {
    name.replace(place, minus.size(), "-");
  }
  return name;
}

/// What is typed to define all wires of a type: "X+=CHANNEL:BIT X-=CHANNEL:BIT ...".
std::string wiresText(SensorType type) {
  std::string text;
  for (const std::string_view wire : wireNames(type)) {
    text += fmt::format("{}{}=CHANNEL:BIT", text.empty() ? "" : " ", typedName(wire));
  }
  return text;
}

std::optional<PinAssignment> parseAssignment(std::string_view text) {
  PinAssignment pins;
  const char* const end = text.data() + text.size();
  const auto channel = std::from_chars(text.data(), end, pins.channel);
  if (channel.ec != std::errc() || channel.ptr == end || *channel.ptr != ':') return std::nullopt;
  const auto bit = std::from_chars(channel.ptr + 1, end, pins.bit);
  if (bit.ec != std::errc() || bit.ptr != end) return std::nullopt;
  return pins;
}

/// The place of `name` among the wires; their number when it is none of them.
std::size_t wireNamed(std::span<const std::string_view> wires, std::string_view name) {
  std::size_t wire = 0;
  while (wire < wires.size() && typedName(wires[wire]) != typedName(name)) {
    ++wire;
  }
  return wire;
}

PinDefinition parsePins(SensorType type, const std::vector<std::string>& texts) {
  const auto names = wireNames(type);
  std::vector<std::optional<PinAssignment>> wires(names.size());
  const auto refuse = [type](const std::string& found) {
    refuseArgument("WIRE=CHANNEL:BIT", "expected " + wiresText(type) + ", found " + found);
  };
  for (const std::string& text : texts) {
    const auto [name, numbers] = nameAndValue(text);
    const auto wire = wireNamed(names, name);
    const auto pins = parseAssignment(numbers);
    if (wire == names.size() || !pins) refuse('"' + text + '"');
    if (wires[wire]) refuse(typedName(names[wire]) + " twice");
    wires[wire] = pins;
  }
  PinDefinition definition{type, {}};
  for (std::size_t wire = 0; wire < names.size(); ++wire) {
    if (!wires[wire]) refuse("nothing for " + typedName(names[wire]));
    definition.wires.push_back(*wires[wire]);
  }
  return definition;
}

nlohmann::ordered_json jsonOf(const PinDefinition& definition,
                              std::span<const PinProblem> problems) {
  auto wires = nlohmann::ordered_json::array();
  for (std::size_t wire = 0; wire < definition.wires.size(); ++wire) {
    const auto& [channel, bit] = definition.wires[wire];
    wires.push_back({{"wire", typedName(wireNames(definition.type)[wire])},
                     {"channel", channel},
                     {"bit", bit}});
  }
  auto texts = nlohmann::ordered_json::array();
  for (const PinProblem& problem : problems)
    texts.push_back(problem.text);
  return {{"wires", wires}, {"problems", texts}};
}

ExitStatus showPins(Shell& shell) {
  const auto pins = readPins(shell.access());
  if (!pins) {
    complain(pins.error().reason);
    return ExitStatus::failed;
  }
  const auto problems = checkPins(shell.access().session.messages, *pins);
  if (shell.options().json) {
    printJson(jsonOf(*pins, problems));
    return ExitStatus::done;
  }
  print("{} wires\nWire  Channel  Bit\n", pins->wires.size());
  for (std::size_t wire = 0; wire < pins->wires.size(); ++wire) {
    const auto& [channel, bit] = pins->wires[wire];
    print("{:<6}{:<9}{}\n", typedName(wireNames(pins->type)[wire]), channel, bit);
  }
  for (const PinProblem& problem : problems)
    complain(problem.text);
  return ExitStatus::done;
}

ExitStatus setPins(Shell& shell, const PinDefinition& definition) {
  const Backup backup(shell.options().workFolder);
  const PinsWrite result = updatePins(shell.access(), shell.prompt(), backup, definition);
  if (result.end == PinsEnd::brokenOff) complain(result.reason);
  if (result.end == PinsEnd::declined) complain("nothing was written");
  return result.end == PinsEnd::done ? ExitStatus::done : ExitStatus::failed;
}

/// `definition`, once nothing is wrong with it; before a controller is asked for anything.
ExitStatus checkAndSetPins(Shell& shell, const PinDefinition& definition) {
  const auto problems = checkPins(shell.access().session.messages, definition);
  for (const PinProblem& problem : problems)
    complain(problem.text);
  if (!problems.empty()) return ExitStatus::wrongUse;
  return onController([&definition](Shell& chosen) { return setPins(chosen, definition); })(shell);
}

void addShow(const CommandLine& line, CLI::App& group) {
  addControllerCommand(line, group, "show", "Print the definition that the controller holds",
                       [line](CLI::App& show) {
                         addJson(line, show);
                         show.callback([line] { line.command = onController(showPins); });
                       });
}

void addSet(const CommandLine& line, CLI::App& group) {
  addControllerCommand(line, group, "set", "Write another definition", [line](CLI::App& set) {
    addWithoutBackup(line, set);
    const auto* const type = set.add_option("WIRES", "The sensor's number of wires: 4 or 5")
                                 ->required()
                                 ->check(CLI::IsMember({4, 5}));
    const auto* const wires =
        set.add_option(argumentName("WIRE=CHANNEL:BIT"), "Each wire's channel and bit, from 0 to 7")
            ->required()
            ->expected(1, static_cast<int>(wireNames(SensorType::fiveWire).size()))
            ->allow_extra_args();
    set.footer("With 4 wires: " + wiresText(SensorType::fourWire) +
               "\nWith 5 wires: " + wiresText(SensorType::fiveWire));
    set.callback([line, type, wires] {
      const auto definition =
          parsePins(type->as<int>() == 4 ? SensorType::fourWire : SensorType::fiveWire,
                    wires->as<std::vector<std::string>>());
      line.command = [definition](Shell& shell) { return checkAndSetPins(shell, definition); };
    });
  });
}

}  // namespace

void addPinCommands(const CommandLine& line) {
  addGroup(line, "pins", "How the touch sensor's wires are attached", [line](CLI::App& group) {
    addShow(line, group);
    addSet(line, group);
  });
}

}  // namespace touch
