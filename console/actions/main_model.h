#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/discovery/identity.h"
#include "core/driver/simulation.h"
#include "support/notice.h"

namespace touch {

/// What is under way: until it has ended no control can be used.
struct Work {
  std::string what;
  bool canBeStopped = false;  ///< by the user
};

/// What a controller of the list has said since the list was made.
struct Heard {
  enum class Answer : std::uint8_t { notAsked, none, given };
  Answer answer = Answer::notAsked;
  Identity identity{};
};

/// How far a simulated panel's touches miss.
struct PanelErrors {
  std::optional<Simulation::PanelError> before;  ///< the calibration that was just stored
  std::optional<Simulation::PanelError> now;     ///< nothing: the panel is a real one
};

/// A part of what is shown, to be drawn anew.
enum class Part : std::uint8_t {
  work,
  notice,
  page,
  controllers,
  identity,
  information,
  settings,    ///< what the SettingsPanel holds
  parameters,  ///< what the ParameterEditor holds
  panelErrors,
  password,
  end
};

/// What the main window and its pages show, as plain values. The logic changes them and says so;
/// whoever draws them watches.
class MainModel {
 public:
  using Watcher = std::function<void(Part)>;

  std::optional<Work> work;  ///< nothing: an action may begin
  std::vector<std::string> controllers;
  std::optional<std::size_t> selected;  ///< of the controllers
  std::vector<Heard> heard;             ///< of each controller
  Identity identity;
  std::vector<std::string> information;
  PanelErrors panelErrors;
  std::string password;  ///< what the user has typed so far
  bool passwordWanted = false;
  bool ended = false;  ///< nothing more is to be done with the controller: the program may go

  std::string selectedName() const { return selected ? controllers[*selected] : std::string(); }

  /// Has `watcher` told of every change, for as long as the model lives.
  void watch(Watcher watcher) { watchers_.push_back(std::move(watcher)); }
  void changed(Part part) const {
    for (const Watcher& watcher : watchers_)
      watcher(part);
  }

  void turnTo(int page) {
    page_ = page;
    changed(Part::page);
  }
  /// What has just happened on the page that is shown.
  void tell(Notice notice) {
    said_[page_] = std::move(notice);
    changed(Part::notice);
  }
  /// How the current controller is: what was said of another no longer holds, on any page.
  void tellReady(Notice notice) {
    said_.clear();
    ready_ = std::move(notice);
    changed(Part::notice);
  }
  /// What was last said on the page that is shown, else how the controller is.
  const Notice& notice() const {
    const auto own = said_.find(page_);
    return own == said_.end() || own->second.text.empty() ? ready_ : own->second;
  }

 private:
  std::vector<Watcher> watchers_;
  int page_ = 0;
  std::map<int, Notice> said_;  ///< on each page
  Notice ready_;
};

}  // namespace touch
