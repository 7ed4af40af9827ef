#include <fmt/core.h>

#include <nlohmann/json.hpp>

#include "app/touchctl/command_line.h"
#include "app/touchctl/commands.h"
#include "app/touchctl/output.h"
#include "console/settings/touch_settings.h"

namespace touch {

namespace {

constexpr std::size_t nameWidth = 20;

std::vector<std::string> settingNames() {
  std::vector<std::string> names;
  for (const Setting& setting : settingTable())
    names.emplace_back(setting.name);
  return names;
}

const Setting& settingNamed(std::string_view name) {
  const Setting* const setting = findSetting(name);
  if (setting == nullptr) {
    refuseArgument("NAME", "there is no setting \"" + std::string(name) + "\"; there are " +
                               CLI::detail::join(settingNames(), ", "));
  }
  return *setting;
}

/// Names and values, for the help.
std::string settingHelp() {
  std::string text = "Settings and their values:";
  for (const Setting& setting : settingTable()) {
    std::string values = fmt::format("{} to {}", setting.lowest, setting.highest);
    if (!setting.unit.empty()) values += fmt::format(" ({})", setting.unit);
    if (!setting.choices.empty()) values.clear();
    for (const SettingChoice& choice : setting.choices)
      values += fmt::format("{}{}", values.empty() ? "" : ", ", choice.name);
    text += fmt::format("\n  {:<{}}{}", setting.name, nameWidth, values);
  }
  return text;
}

/// As it is typed: a choice's name, or a number; null where no driver can tell.
nlohmann::ordered_json jsonValue(const Setting& setting, const DriverSettings& reported) {
  if (setting.get == nullptr) return nullptr;
  const int value = setting.get(reported);
  if (setting.choices.empty()) return value;
  return settingText(setting, value);
}

std::string reportedText(const Setting& setting, const DriverSettings& reported) {
  return setting.get == nullptr ? "(the driver does not tell)"
                                : settingText(setting, setting.get(reported));
}

ExitStatus showSettings(Shell& shell, std::span<const Setting> settings) {
  const auto reported = readSettings(shell);
  if (!reported) return ExitStatus::failed;
  if (shell.options().json) {
    printJson(settingsAsJson(settings, *reported));
    return ExitStatus::done;
  }
  for (const Setting& setting : settings) {
    print("{:<{}}{}\n", setting.name, nameWidth, reportedText(setting, *reported));
  }
  return ExitStatus::done;
}

}  // namespace

nlohmann::ordered_json settingsAsJson(std::span<const Setting> settings,
                                      const DriverSettings& reported) {
  auto object = nlohmann::ordered_json::object();
  for (const Setting& setting : settings) {
    object[std::string(setting.name)] = jsonValue(setting, reported);
  }
  return object;
}

std::optional<DriverSettings> readSettings(Shell& shell) {
  const Access access = shell.access();
  auto settings = reportedSettings(access);
  if (!settings) complain(access.session.messages[Message::openError]);
  return settings;
}

ExitStatus changeSetting(Shell& shell, const Setting& setting, int value) {
  std::optional<DriverSettings> current = DriverSettings{};
  if (setting.needsCurrent) current = readSettings(shell);
  if (!current) return ExitStatus::failed;
  const SettingAnswer answer = setting.set(shell.access(), shell.prompt(), *current, value);
  print("{}\n", settingOutcome(setting, value, answer));

  // Only of numbers does the driver say whether it took them.
  const bool refused = setting.choices.empty() && answer.result == 0;
  return answer.opened && !refused ? ExitStatus::done : ExitStatus::failed;
}

void addSettingCommands(const CommandLine& line) {
  addControllerCommand(
      line, line.app, "get", "Print the settings, or one of them", [line](CLI::App& get) {
        addJson(line, get);
        const auto* const wanted = get.add_option("NAME", "The setting; all without it");
        line.known.add(*wanted, settingNames());
        get.footer(settingHelp());
        get.callback([line, wanted] {
          const auto settings = wanted->empty()
                                    ? settingTable()
                                    : std::span(&settingNamed(wanted->as<std::string>()), 1);
          line.command =
              onController([settings](Shell& shell) { return showSettings(shell, settings); });
        });
      });
  addControllerCommand(line, line.app, "set", "Change a setting", [line](CLI::App& set) {
    const auto* const name = set.add_option("NAME", "The setting")->required();
    const auto* const text = set.add_option("VALUE", "Its new value")->required();
    line.known.add(*name, settingNames());
    for (const Setting& setting : settingTable()) {
      std::vector<std::string> values;
      for (const SettingChoice& choice : setting.choices)
        values.emplace_back(choice.name);
      line.known.add(*text, std::move(values), std::string(setting.name));
    }
    set.footer(settingHelp());
    set.callback([line, name, text] {
      const Setting& setting = settingNamed(name->as<std::string>());
      const auto value = parseSetting(setting, text->as<std::string>());
      if (!value) refuseArgument("VALUE", value.error());
      line.command = onController([&setting, value = *value](Shell& shell) {
        return changeSetting(shell, setting, value);
      });
    });
  });
}

}  // namespace touch
