#include "console/pins/sensor_pins.h"

#include <array>

#include "console/parameters/backup.h"
#include "support/prompt.h"
#include "support/text/hex.h"
#include "support/text/language.h"

namespace touch {

namespace {

constexpr std::uint8_t typeAddress = 0x80;
constexpr std::uint8_t firstWireAddress = 0x81;
constexpr int highestPin = 7;
constexpr int refusedOutright = 128;

constexpr std::array<std::string_view, 4> fourWires = {"X+", "X\u2212", "Y+", "Y\u2212"};
constexpr std::array<std::string_view, 5> fiveWires = {"UL", "UR", "LL", "LR", "S"};

struct PinKind {
  std::string_view name;
  int PinAssignment::*number;
};
constexpr std::array pinKinds = {PinKind{marked("pins", "channel"), &PinAssignment::channel},
                                 PinKind{marked("pins", "bit"), &PinAssignment::bit}};

std::uint8_t wireAddress(std::size_t wire) {
  return static_cast<std::uint8_t>(firstWireAddress + wire);
}

std::optional<SensorType> sensorType(const ParameterWord& word) {
  if (word == ParameterWord{0, 4}) return SensorType::fourWire;
  if (word == ParameterWord{0, 5}) return SensorType::fiveWire;
  return std::nullopt;
}

/// The wires first: the controller is to know of a fifth wire only when that is defined.
std::vector<WordValue> wordsOf(const PinDefinition& definition) {
  std::vector<WordValue> words;
  for (std::size_t wire = 0; wire < definition.wires.size(); ++wire) {
    const auto& [channel, bit] = definition.wires[wire];
    words.push_back(
        {wireAddress(wire), {static_cast<std::uint8_t>(channel), static_cast<std::uint8_t>(bit)}});
  }
  words.push_back({typeAddress, {0, static_cast<std::uint8_t>(definition.type)}});
  return words;
}

void checkNumber(const MessageTable& messages, const PinDefinition& definition, std::size_t wire,
                 const PinKind& kind, std::vector<PinProblem>& problems) {
  const auto names = wireNames(definition.type);
  const int number = definition.wires[wire].*kind.number;
  const std::string place = std::string(names[wire]) + ", " + say("pins", kind.name);
  if (number >= refusedOutright) {
    problems.push_back({wire, std::nullopt, messages[Message::valueTooLarge]});
    return;
  }
  if (number < 0 || number > highestPin) {
    problems.push_back(
        {wire, std::nullopt,
         filled(say("pins", "%1: expected 0 to 7, found %2"), {place, std::to_string(number)})});
    return;
  }
  for (std::size_t other = 0; other < definition.wires.size(); ++other) {
    if (other == wire || definition.wires[other].*kind.number != number) continue;
    problems.push_back({wire, other,
                        filled(say("pins", "%1: %2 is used by %3 too"),
                               {place, std::to_string(number), names[other]})});
  }
}

PinsWrite writePins(const Access& access, Prompt& prompt, const Backup& backup,
                    std::span<const WordValue> words) {
  const MessageTable& messages = access.session.messages;
  PinsWrite result;
  if (!prompt.confirm(messages[Message::updatePinsQuestion])) return result;
  // The old words are in no block: what the journal says of them is the way back.
  if (const auto prepared = backup.prepare();
      !prepared && !prompt.goWithoutWayBack(
                       filled(say("pins",
                                  "The old pin definition cannot be noted. %1. Go on without a "
                                  "way back?"),
                              {prepared.error().describe()}))) {
    return result;
  }
  if (!prompt.await(messages[Message::disconnectSensor])) return result;

  if (const auto type = readWord(access, typeAddress); !type) {
    result.end = PinsEnd::typeUnreadable;
    result.reason = messages[Message::sensorTypeError];
    prompt.message(result.reason);
    return result;
  }
  const auto changes = changesTo(access, words);
  if (changes) {
    result.report = writeChanges(access, backup, *changes);
  } else {
    result.report.error = changes.error();
  }
  if (result.report.complete()) {
    result.end = PinsEnd::done;
    prompt.message(messages[Message::pinsUpdated]);
    tellOfJournal(prompt, result.report);
    return result;
  }
  result.end = PinsEnd::brokenOff;
  result.reason = result.report.describe();
  prompt.message(messages[Message::updateError]);
  result.putBack = putBack(access, backup, result.report.oldWords());
  if (!result.putBack->complete()) {
    prompt.message(say("pins", "The old pin definition is not wholly back.") + ' ' +
                   result.putBack->describe() + '.');
  }
  tellOfJournal(prompt, result.report);
  return result;
}

}  // namespace

std::span<const std::string_view> wireNames(SensorType type) {
  if (type == SensorType::fourWire) return fourWires;
  return fiveWires;
}

std::vector<PinProblem> checkPins(const MessageTable& messages, const PinDefinition& definition) {
  const std::size_t count = wireNames(definition.type).size();
  if (definition.wires.size() != count) {
    return {{0, std::nullopt,
             filled(say("pins", "expected %1 wires, found %2"),
                    {std::to_string(count), std::to_string(definition.wires.size())})}};
  }
  std::vector<PinProblem> problems;
  for (std::size_t wire = 0; wire < count; ++wire) {
    for (const PinKind& kind : pinKinds)
      checkNumber(messages, definition, wire, kind, problems);
  }
  return problems;
}

Result<PinDefinition, PinsUnread> readPins(const Access& access) {
  const auto typeWord = readWord(access, typeAddress);
  const auto type = typeWord ? sensorType(*typeWord) : std::nullopt;
  if (!type)
    return tl::unexpected(
        PinsUnread{access.session.messages[Message::sensorTypeError], typeWord.has_value()});
  PinDefinition definition{*type, {}};
  for (std::size_t wire = 0; wire < wireNames(*type).size(); ++wire) {
    const auto word = readWord(access, wireAddress(wire));
    if (!word) return tl::unexpected(PinsUnread{word.error().describe()});
    definition.wires.push_back({word->high, word->low});
  }
  return definition;
}

PinsWrite updatePins(const Access& access, Prompt& prompt, const Backup& backup,
                     const PinDefinition& definition) {
  if (const auto problems = checkPins(access.session.messages, definition); !problems.empty()) {
    PinsWrite result;
    result.end = PinsEnd::invalid;
    result.reason = problems.front().text;
    prompt.message(result.reason);
    return result;
  }
  return writePins(access, prompt, backup, wordsOf(definition));
}

PinsWrite putBackPins(const Access& access, Prompt& prompt, const Backup& backup,
                      std::span<const WordValue> old) {
  return writePins(access, prompt, backup, old);
}

}  // namespace touch
