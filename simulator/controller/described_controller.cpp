#include "simulator/controller/described_controller.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>

#include "simulator/controller/rs232_device_1.h"
#include "simulator/controller/usb_device_2.h"
#include "simulator/controller/words.h"

namespace touch::simulator {

namespace {

constexpr std::size_t longestName = 19;
constexpr std::size_t longestReply = 8;
constexpr std::size_t longestQueryReply = 10;
constexpr std::size_t mostGridLines = 100;
constexpr std::size_t mostDeadAreas = 2000;
constexpr double slowest = 1;  // reports a second
constexpr double fastest = 1000;
constexpr double farthest = 4;  // fractions of the panel

using Taken = Result<void, std::string>;

Taken refused(std::string reason) {
  return tl::unexpected(std::move(reason));
}

bool isPlain(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c > ' ' && c <= '~'; });
}

/// `count` numbers and nothing behind them.
Taken takeNumbers(Words& words, std::span<double> numbers, double lowest, double highest) {
  for (double& number : numbers) {
    const auto word = words.next();
    const auto value = numberIn(word, lowest, highest);
    if (!value) return refused("expected a number in range, found " + quoted(word));
    number = *value;
  }
  if (!words.empty()) return refused("expected no more, found " + quoted(words.rest()));
  return {};
}

Taken takePoint(Words& words, Point& point, double lowest, double highest) {
  std::array<double, 2> numbers{};
  auto taken = takeNumbers(words, numbers, lowest, highest);
  if (taken) point = {numbers[0], numbers[1]};
  return taken;
}

Taken takeText(Words& words, std::string& text, std::size_t longest) {
  const auto found = words.rest();
  if (found.empty() || found.size() > longest || !isPlain(found))
    return refused("expected 1 to " + std::to_string(longest) + " characters, found " +
                   quoted(found));
  text = found;
  return {};
}

Taken takeName(Words& words, std::string& name) {
  const auto found = words.rest();
  const bool tellsLink = found.find("RS232") != found.npos || found.find("USB") != found.npos;
  const bool isShown =
      std::ranges::all_of(found, [](char c) { return c == ' ' || (c > ' ' && c <= '~'); });
  if (!tellsLink || !isShown || found.size() > longestName)
    return refused("expected a name with RS232 or USB in at most " + std::to_string(longestName) +
                   " characters, found " + quoted(found));
  name = found;
  return {};
}

std::optional<unsigned> hexadecimal(std::string_view text, std::size_t digits) {
  unsigned value = 0;
  const auto* const end = text.data() + text.size();
  const auto [stop, problem] = std::from_chars(text.data(), end, value, 16);
  if (problem != std::errc() || stop != end || text.size() != digits) return std::nullopt;
  return value;
}

Taken takeWord(Words& words, std::vector<FactoryWord>& into) {
  const auto address = hexadecimal(words.next(), 2);
  const auto value = hexadecimal(words.next(), 4);
  if (!address || !value || !words.empty() ||
      !ParameterMemory({}).read(static_cast<std::uint8_t>(*address)))
    return refused("expected an address of two and a word of four hexadecimal digits");
  into.push_back({static_cast<std::uint8_t>(*address), static_cast<std::uint16_t>(*value)});
  return {};
}

struct SettingKey {
  std::string_view name;
  std::int32_t PointerSettings::*value;
  std::int32_t lowest;
  std::int32_t highest;
};
constexpr std::array settingKeys{
    SettingKey{"touch-mode", &PointerSettings::reportMode, 1, 3},
    SettingKey{"rotation", &PointerSettings::rotation, 0, 3},
    SettingKey{"up-sound", &PointerSettings::upSound, 0, 1},
    SettingKey{"down-sound", &PointerSettings::downSound, 0, 1},
    SettingKey{"double-click", &PointerSettings::doubleClick, 0, 1},
    SettingKey{"double-click-speed", &PointerSettings::doubleClickSpeed, 1, 255},
    SettingKey{"double-click-area", &PointerSettings::doubleClickArea, 0, 255},
    SettingKey{"right-click", &PointerSettings::rightClick, 0, 1},
    SettingKey{"right-click-time", &PointerSettings::rightClickTime, 300, 1200},
};

Taken takeSetting(Words& words, PointerSettings& settings) {
  const auto name = words.next();
  const auto* const key = std::ranges::find(settingKeys, name, &SettingKey::name);
  if (key == settingKeys.end()) return refused("no setting is called " + quoted(name));
  double value = 0;
  auto taken = takeNumbers(words, {&value, 1}, key->lowest, key->highest);
  if (taken) settings.*(key->value) = static_cast<std::int32_t>(value);
  return taken;
}

Taken takeReports(Words& words, bool& reports) {
  const auto state = words.rest();
  if (state != "on" && state != "off") return refused("expected on or off, found " + quoted(state));
  reports = state == "on";
  return {};
}

Taken takeDirections(Words& words, TouchMap& map) {
  std::array<double, 6> factors{};
  auto taken = takeNumbers(words, factors, -farthest, farthest);
  if (taken) map = {factors[0], factors[1], factors[2], factors[3], factors[4], factors[5]};
  return taken;
}

Taken takeDead(Words& words, std::vector<DeadArea>& areas) {
  if (areas.size() == mostDeadAreas)
    return refused("expected at most " + std::to_string(mostDeadAreas) + " dead areas");
  std::array<double, 4> edges{};
  auto taken = takeNumbers(words, edges, -farthest, farthest);
  if (taken) areas.push_back({{edges[0], edges[1]}, {edges[2], edges[3]}});
  return taken;
}

Taken takeColumns(Words& words, Grid& grid) {
  std::vector<double> columns;
  while (!words.empty()) {
    const auto word = words.next();
    const auto value = numberIn(word, 0, 1);
    if (!value || (!columns.empty() && *value <= columns.back()) || columns.size() == mostGridLines)
      return refused("expected at most " + std::to_string(mostGridLines) +
                     " ascending fractions, found " + quoted(word));
    columns.push_back(*value);
  }
  if (columns.empty()) return refused("expected fractions, found nothing");
  grid = {std::move(columns), {}, {}};
  return {};
}

Taken takeRow(Words& words, Grid& grid) {
  const auto word = words.next();
  const auto row = numberIn(word, 0, 1);
  if (!row || grid.columns.empty() || (!grid.rows.empty() && *row <= grid.rows.back()) ||
      grid.rows.size() == mostGridLines)
    return refused("expected columns, and then at most " + std::to_string(mostGridLines) +
                   " rows from top to bottom, found " + quoted(word));
  std::vector<double> values(grid.columns.size());
  auto taken = takeNumbers(words, values, -farthest, farthest);
  if (!taken) return taken;
  grid.rows.push_back(*row);
  grid.values.insert(grid.values.end(), values.begin(), values.end());
  return {};
}

Taken takeGrid(Words& words, Grid& grid) {
  const auto what = words.next();
  if (what == "columns") return takeColumns(words, grid);
  if (what == "row") return takeRow(words, grid);
  return refused("expected columns or row, found " + quoted(what));
}

}  // namespace

struct Description::Property {
  std::string_view name;
  Result<void, std::string> (*take)(Words&, Description&);
};

Description::Description() : described_(std::make_unique<DescribedController>()) {}

const std::vector<Description::Property>& Description::properties() {
  static const std::vector<Property> all{
      {"name", [](Words& words, Description& of) { return takeName(words, of.described_->name_); }},
      {"identity",
       [](Words& words, Description& of) {
         return takeText(words, of.described_->identity_, longestReply);
       }},
      {"unit-type",
       [](Words& words, Description& of) {
         return takeText(words, of.described_->unitType_, longestReply);
       }},
      {"query",
       [](Words& words, Description& of) {
         return takeText(words, of.described_->queryReply_, longestQueryReply);
       }},
      {"word",
       [](Words& words, Description& of) { return takeWord(words, of.described_->words_); }},
      {"setting", [](Words& words, Description& of) { return takeSetting(words, of.settings_); }},
      {"reports", [](Words& words, Description& of) { return takeReports(words, of.reports_); }},
      {"rate",
       [](Words& words, Description& of) {
         return takeNumbers(words, {&of.rate_, 1}, slowest, fastest);
       }},
      {"noise",
       [](Words& words, Description& of) {
         return takePoint(words, of.described_->panel_.noise, 0, 1);
       }},
      {"drift",
       [](Words& words, Description& of) {
         return takePoint(words, of.described_->panel_.drift, -1, 1);
       }},
      {"directions",
       [](Words& words, Description& of) {
         return takeDirections(words, of.described_->panel_.directions);
       }},
      {"dead", [](Words& words,
                  Description& of) { return takeDead(words, of.described_->panel_.deadAreas); }},
      {"error-x",
       [](Words& words, Description& of) { return takeGrid(words, of.described_->panel_.errorX); }},
      {"error-y",
       [](Words& words, Description& of) { return takeGrid(words, of.described_->panel_.errorY); }},
  };
  return all;
}

Result<void, std::string> Description::add(std::string_view line) {
  if (line.size() > longestLine || lines_ == mostLines)
    return refused("expected at most " + std::to_string(mostLines) + " properties of at most " +
                   std::to_string(longestLine) + " characters");
  Words words(line);
  const auto name = words.next();
  const auto found = std::ranges::find(properties(), name, &Property::name);
  if (found == properties().end()) return refused("no property is called " + quoted(name));
  ++lines_;
  return found->take(words, *this);
}

Result<std::unique_ptr<const DescribedController>, std::string> Description::finish() && {
  DescribedController& described = *described_;
  for (const Grid* grid : {&described.panel_.errorX, &described.panel_.errorY})
    if (!grid->columns.empty() && grid->rows.empty())
      return tl::unexpected(std::string("expected rows of an error, found columns only"));
  const bool serial = described.name_.find("RS232") != std::string::npos;
  ControllerModel& model = described.model_;
  model = serial ? rs232Device1 : usbDevice2;
  model.name = described.name_;
  if (!described.identity_.empty()) model.identity = described.identity_;
  if (!described.unitType_.empty()) model.unitType = described.unitType_;
  if (!described.queryReply_.empty()) model.queryReply = described.queryReply_;
  // Of two words at one address the last one counts.
  described.words_.insert(described.words_.begin(), model.factoryWords.begin(),
                          model.factoryWords.end());
  model.factoryWords = described.words_;
  model.panel = {};
  model.measured = &described.panel_;
  model.settings = settings_;
  model.reportsTouches = reports_;
  model.reportInterval = std::chrono::nanoseconds(static_cast<std::int64_t>(1e9 / rate_));
  return std::unique_ptr<const DescribedController>(std::move(described_));
}

}  // namespace touch::simulator
