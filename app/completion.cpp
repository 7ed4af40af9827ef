#include "app/completion.h"

#include <algorithm>

#include "app/declarations.h"

namespace touch {

namespace {

/// Where on a command line one has come to.
struct Place {
  std::vector<const CLI::App*> path;    ///< the program, then the commands named
  std::size_t arguments = 0;            ///< of the last command, how many there are already
  const CLI::Option* option = nullptr;  ///< the one whose value comes next
  int valuesMissing = 0;                ///< of that option
};

const CLI::Option* findOption(const std::vector<const CLI::App*>& path, const std::string& name) {
  for (auto app = path.rbegin(); app != path.rend(); ++app) {
    if (const CLI::Option* const option = (*app)->get_option_no_throw(name)) return option;
  }
  return nullptr;
}

const CLI::App* findCommand(const CLI::App& app, const std::string& name) {
  const auto commands = shownCommands(app);
  const auto named = std::ranges::find(commands, name, &CLI::App::get_name);
  return named == commands.end() ? nullptr : *named;
}

/// The argument that comes next; the last one may go on and on. Null when none can follow.
const CLI::Option* nextArgument(const Place& place) {
  std::size_t taken = place.arguments;
  for (const CLI::Option* argument : shownArguments(*place.path.back())) {
    const auto most = static_cast<std::size_t>(argument->get_items_expected_max());
    if (taken < most) return argument;
    taken -= most;
  }
  return nullptr;
}

Place follow(const CLI::App& app, std::span<const std::string> words) {
  Place place{{&app}};
  for (const std::string& word : words) {
    if (place.valuesMissing > 0) {
      --place.valuesMissing;
    } else if (word.starts_with('-')) {
      place.option = findOption(place.path, word);  // "--name=value" is none: it has its value
      place.valuesMissing = place.option == nullptr ? 0 : place.option->get_items_expected_max();
    } else if (const CLI::App* const command = findCommand(*place.path.back(), word)) {
      place.path.push_back(command);
      place.arguments = 0;
    } else {
      ++place.arguments;
    }
  }
  return place;
}

class Suggestions {
 public:
  explicit Suggestions(const std::string& beginning) : beginning_(beginning) {}

  void add(const std::string& word, const std::string& meaning = {}) {
    if (word.starts_with(beginning_)) text_ += word + "\t" + meaning + "\n";
  }
  void addOptions(const Place& place) {
    for (auto app = place.path.rbegin(); app != place.path.rend(); ++app) {
      for (const CLI::Option* option : shownOptions(**app)) {
        const bool repeated = option == (*app)->get_help_ptr() && app != place.path.rbegin();
        if (repeated) continue;
        for (const std::string& name : spellings(*option))
          add(name, option->get_description());
      }
    }
  }
  /// The values of `option`, each with `prefix` in front.
  void addValues(const CLI::Option& option, const KnownValues& known,
                 std::span<const std::string> before, const std::string& prefix) {
    const std::string name = option.get_positional() ? option.get_name() : valueName(option);
    const bool namesDevice = name == "N=DEVICE" && beginning_.find('=') != beginning_.npos;
    // "FILE.zip" says beside it what it is to end in.
    if (name.starts_with("FILE") || name == "PATH" || name == "SOURCE" || namesDevice)
      text_ = "files\n";
    if (name == "DIR") text_ = "folders\n";
    for (const std::string& value : choices(option))
      add(prefix + value);
    for (const std::string& value : known.of(option, before))
      add(prefix + value);
  }
  const std::string& text() const { return text_; }

 private:
  std::string beginning_;
  std::string text_ = "words\n";
};

}  // namespace

void KnownValues::add(const CLI::Option& argument, std::vector<std::string> values,
                      std::optional<std::string> after) {
  known_.push_back({&argument, std::move(values), std::move(after)});
}

std::vector<std::string> KnownValues::of(const CLI::Option& argument,
                                         std::span<const std::string> before) const {
  for (const auto& [known, values, after] : known_) {
    if (known == &argument && (!after || std::ranges::find(before, *after) != before.end())) {
      return values;
    }
  }
  return {};
}

std::string completions(const CLI::App& app, const KnownValues& known,
                        std::span<const std::string> words) {
  if (words.empty()) return completions(app, known, std::vector<std::string>{""});
  const auto before = words.first(words.size() - 1);
  const std::string& beginning = words.back();
  const Place place = follow(app, before);
  Suggestions answer(beginning);

  if (place.valuesMissing > 0) {
    answer.addValues(*place.option, known, before, "");
    return answer.text();
  }
  if (beginning.starts_with('-')) {
    const auto equals = beginning.find('=');
    const auto* const option =
        equals == beginning.npos ? nullptr : findOption(place.path, beginning.substr(0, equals));
    if (option != nullptr) {
      answer.addValues(*option, known, before, beginning.substr(0, equals + 1));
    } else {
      answer.addOptions(place);
    }
    return answer.text();
  }
  std::vector<const CLI::App*> commands;
  if (place.arguments == 0) commands = shownCommands(*place.path.back());
  for (const CLI::App* command : commands)
    answer.add(command->get_name(), command->get_description());
  const auto* const argument = nextArgument(place);
  if (argument != nullptr) answer.addValues(*argument, known, before, "");
  const bool complete = shownCommands(*place.path.back()).empty() && argument == nullptr;
  if (complete) answer.addOptions(place);
  return answer.text();
}

}  // namespace touch
