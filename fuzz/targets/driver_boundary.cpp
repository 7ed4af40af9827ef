// The driver boundary: start-up, settings, maintenance, parameters, pins, calibration, the
// debugger's port and the ways out, over a driver library and a serial port whose every answer
// comes from the input, and with a user who does what the input says at any moment. After each
// action every controller that was opened is closed again. The first byte is the length of what the
// user does, which follows; the rest is what driver and port answer.

#include <bit>
#include <memory>
#include <stdexcept>
#include <utility>

#include "calibration/calibration.h"
#include "console/main/main_console.h"
#include "console/panels/monitors.h"
#include "console/pins/pin_editor.h"
#include "core/discovery/discovery.h"
#include "core/driver/nexapi.h"
#include "core/driver/trace.h"
#include "fuzz/fuzzed_driver.h"
#include "serial/commands/command_sets.h"
#include "serial/debugger/debugger.h"
#include "support/system_clock.h"

namespace touch::fuzz {

namespace {

using namespace std::chrono_literals;

constexpr int mostActions = 12;
// Each line of a trace is written on its own, which takes longer than what it tells of.
constexpr int mostActionsTraced = 2;
// Nothing can be made in such a folder, so that no execution leaves files behind.
constexpr const char* noFolder = "/dev/null/none";
// A small screen: its time bar is soon full.
constexpr TwipsSize screenSize{2000, 1500};

/// Time that jumps, and stands still where nothing is waited for unless the driver lets it pass.
class JumpingClock final : public QueuedClock {
 public:
  std::function<void()> onWait;

  TimePoint now() const override { return now_; }
  void pass(std::chrono::milliseconds time) { now_ += time; }
  void delay(std::chrono::milliseconds duration, const std::function<bool()>& cutShort) override {
    if (onWait) onWait();
    QueuedClock::delay(duration, cutShort);
  }

 private:
  void sleepUntil(TimePoint time) override { now_ = std::max(now_, time); }

  TimePoint now_{};
};

/// A box that is up for a while, in which timers tick and anything can happen.
class FuzzedPrompt final : public Prompt {
 public:
  FuzzedPrompt(Input& input, Clock& clock) : input_(input), clock_(clock) {}

  void message(std::string_view text, std::string_view) override {
    require(!text.empty(), "a message says something");
    clock_.delay(whileUp);
  }
  bool await(std::string_view text, std::string_view title) override {
    message(text, title);
    return input_.flag();
  }
  bool proceed(std::string_view text, std::string_view title) override {
    return ask(text, title) == Answer::yes;
  }
  Answer ask(std::string_view text, std::string_view title) override {
    message(text, title);
    constexpr std::array answers = {Answer::no, Answer::yes, Answer::none};
    return answers.at(input_.below(answers.size()));
  }
  std::optional<std::string> input(std::string_view text, std::string_view title) override {
    message(text, title);
    switch (input_.below(4)) {
      case 0:
        return std::nullopt;
      case 1:
        return std::string(textOf(input_.take(input_.byte())));
      default:
        return " kqzm ";
    }
  }

 private:
  static constexpr auto whileUp = 300ms;

  Input& input_;
  Clock& clock_;
};

class FuzzedPort final : public SerialPort {
 public:
  explicit FuzzedPort(Input& input) : input_(input) {}

  Result<void, std::string> setSettings(std::string_view) override { return answer(); }
  void selectPort(int) override { require(!open_, "a port is chosen while none is open"); }
  Result<void, std::string> open() override {
    lost_.reset();
    auto opened = answer();
    open_ = opened.has_value();
    return opened;
  }
  void close() override { open_ = false; }
  bool isOpen() const override { return open_; }
  std::optional<std::string> lost() const override { return lost_; }
  std::size_t inBufferCount() override { return open_ ? input_.byte() : 0; }
  void clearInput() override { mayGo(); }
  void clearOutput() override {}
  bool write(std::span<const std::uint8_t>) override {
    mayGo();
    return open_ && input_.byte() < 0xF0;
  }
  std::size_t takeDamaged() override { return input_.byte() / 0xF0; }
  std::vector<std::uint8_t> readAll() override {
    mayGo();
    if (!open_) return {};
    const auto bytes = input_.take(input_.byte());
    return {bytes.begin(), bytes.end()};
  }

 private:
  Result<void, std::string> answer() {
    if (input_.byte() < 0xC0) return {};
    return tl::unexpected(std::string("no such device"));
  }
  void mayGo() {
    if (!open_ || input_.byte() < 0xF0) return;
    open_ = false;
    lost_ = "the device has gone";
  }

  Input& input_;
  bool open_ = false;
  std::optional<std::string> lost_;
};

class Screen final : public CalibrationScreen, private Surface {
 public:
  Surface& surface() override { return *this; }
  void showButtons(bool, bool) override {}
  void showTimeBar(float) override {}
  void allowExit(bool) override {}
  void leave() override {
    require(!left_, "a calibration leaves its screen once");
    left_ = true;
  }
  void ended(CalibrationOutcome how) override {
    require(left_ && !outcome, "a calibration ends once, behind its screen");
    outcome = how;
  }

  std::optional<CalibrationOutcome> outcome;

 private:
  void clear() override {}
  void line(TwipsPoint, TwipsPoint, Colour, int) override {}
  void circle(TwipsPoint, float, Colour, int) override {}

  bool left_ = false;
};

/// The library of all executions, with this execution's driver behind it.
NexapiDriver& libraryWith(Driver& driver) {
  static const std::unique_ptr<NexapiDriver> library = [] {
    auto bound = NexapiDriver::bind(ATTACHED_LIBRARY);
    if (!bound) throw std::runtime_error(bound.error().describe());
    return std::move(*bound);
  }();
  static const auto attach = std::bit_cast<void (*)(Driver*)>(library->extraExport("AttachDriver"));
  attach(&driver);
  return *library;
}

/// One run of the system, from its start to one of the ways out or the input's end.
class Run final {
 public:
  Run(Input user, Input answers)
      : user_(user),
        answers_(answers),
        driver_(libraryWith(fuzzed_), trace_),
        console_(access(), prompt_, model_, port_, noFolder),
        pins_(access(), prompt_, Backup(noFolder)) {
    model_.watch([this](Part part) { shown(part); });
    if (user_.byte() == 't') trace_.start("/dev/null");
    fuzzed_.onCall = [this] { clock_.pass(std::chrono::milliseconds(answers_.byte() / 16)); };
    clock_.onWait = [this] {
      if (answers_.byte() >= 0xF0) interfere();
    };
  }

  void perform() {
    console_.startUp(static_cast<int>(user_.below(12)), {});
    afterAction();
    const int most = trace_.isOn() ? mostActionsTraced : mostActions;
    for (int i = 0; i < most && !user_.empty() && !ended_; ++i) {
      act();
      afterAction();
    }
    console_.close();
    require(ended_, "the program can be left");
    require(!fuzzed_.anyOpen(), "no controller stays open");
  }

 private:
  Access access() { return {session_, driver_, clock_}; }

  void afterAction() {
    require(!fuzzed_.anyOpen(), "an action closes what it opens");
    require(console_.busy() == ended_, "an action gives the window back, but for the last one");
  }

  /// What can be done at any moment, also in the middle of something else.
  void interfere() {
    const std::function<void()> ways[] = {
        [this] { console_.exit(); },
        [this] { console_.close(); },
        [this] { console_.cancelSearch(); },
        [this] { console_.releaseAndExit(); },
        [this] { console_.refresh(); },
        [this] { console_.selectController(user_.byte()); },
        [this] {
          require(!console_.requestPinDefinition() || !model_.ended, "nothing opens at the end");
        },
        [this] {
          const std::string typed(textOf(user_.take(user_.below(16))));
          if (console_.passwordEntered(console_.passwordEdited(typed))) openDebugger();
        },
        [this] { calibration_ ? calibration_->start() : void(); },
        [this] { cancelCalibration(); },
        [this] { calibration_ ? calibration_->escape() : void(); },
        [this] {
          console_.openTest({[this] { console_.testEnded(); }, [] {}});
        },
    };
    ways[user_.below(std::size(ways))]();
  }

  void act() {
    const std::function<void()> actions[] = {
        [this] { console_.information(); },
        [this] { console_.searchComPorts(); },
        [this] { changeSetting(); },
        [this] { moveBars(); },
        [this] { changeParameters(); },
        [this] { perform("Restoring", [this] { return parameters().restoreDefaults(); }); },
        [this] { perform("Resetting", [this] { return parameters().reset(); }); },
        [this] { perform("Undoing", [this] { return parameters().undo(); }); },
        [this] { definePins(); },
        [this] { assign(); },
        [this] { calibrate(); },
        [this] { calibrate(); },
        [this] {
          console_.passwordEdited("kqzm");
          if (console_.requestDebugger()) openDebugger();
        },
        [this] { interfere(); },
    };
    actions[std::min(user_.below(16), std::size(actions) - 1)]();
  }

  void assign() {
    perform("Assigning", [this] {
      return std::string(assignMonitor(access(), prompt_, user_.byte()) ? "done" : "not done");
    });
  }

  void calibrate() {
    console_.calstart(static_cast<int>(user_.below(14)),
                      {[this] { openCalibration(); }, [this] { cancelCalibration(); }});
  }
  void cancelCalibration() {
    if (calibration_) calibration_->cancel();
  }

  void perform(const std::string& what, const std::function<Notice()>& action) {
    console_.actions().perform(what, action);
  }

  SettingsPanel& settings() { return console_.settings(); }
  ParameterEditor& parameters() { return console_.parameters(); }

  void changeSetting() {
    console_.actions().perform("Setting", [this] {
      const auto table = settingTable();
      const Setting& setting = table[user_.below(table.size())];
      if (setting.name == "sensitivity") {
        return settings().changeSensitivity(user_.number()).value_or(Notice("not changed"));
      }
      return settings().change(setting, user_.number());
    });
  }

  void moveBars() {
    for (const auto bar : {TimingBars::Bar::doubleClickSpeed, TimingBars::Bar::doubleClickArea,
                           TimingBars::Bar::rightClickTime}) {
      settings().moveBar(bar, user_.byte());
      const auto [lowest, highest] = settings().bars().range(bar);
      const int position = settings().bars().position(bar);
      require(position >= lowest && position <= highest, "a bar stands within its range");
      require(!settings().bars().label(bar).empty(), "a bar has a label");
    }
    console_.actions().perform("Confirming", [this] { return settings().confirm(); });
  }

  void changeParameters() {
    console_.actions().perform("Reading", [this] { return parameters().read(); });
    ParameterTable& table = parameters().table();
    table.setBase(user_.flag() ? NumberBase::hexadecimal : NumberBase::decimal);
    for (std::size_t edits = user_.below(10); edits > 0; --edits) {
      table.edit(user_.below(ParameterTable::rows), user_.flag() ? WordByte::high : WordByte::low,
                 textOf(user_.take(user_.below(4))));
    }
    console_.actions().perform("Writing", [this] { return parameters().write(); });
  }

  void definePins() {
    console_.actions().perform("Reading pins", [this] { return pins_.read(); });
    pins_.setType(user_.flag() ? SensorType::fiveWire : SensorType::fourWire);
    for (std::size_t wires = user_.below(8); wires > 0; --wires) {
      pins_.assign(user_.below(pins_.definition().wires.size()),
                   {static_cast<int>(user_.byte()), static_cast<int>(user_.byte())});
    }
    console_.actions().perform("Writing pins", [this] { return pins_.update(); });
    if (pins_.canPutBack() && user_.flag()) {
      console_.actions().perform("Putting pins back", [this] { return pins_.putBack(); });
    }
  }

  void openCalibration() {
    Screen screen;
    calibration_.emplace(access(), prompt_, screen, screenSize);
    calibration_->activate();
    clock_.delay(1000ms, nullptr);
    if (!screen.outcome) calibration_->cancel();
    require(screen.outcome.has_value(), "a calibration can be left");
    calibration_.reset();
    console_.calibrationEnded(screen.outcome == CalibrationOutcome::stored, Notice("Calibrated."));
  }

  void openDebugger() {
    console_.debuggerOpened({[] { return false; }, [] {}});
    {
      Debugger debugger(access(), prompt_, port_, console_.reportFormats());
      debugger.takePort();
      for (std::size_t steps = user_.below(8); steps > 0; --steps)
        debug(debugger);
      debugger.leave();
    }
    console_.debuggerEnded(user_.flag());
  }

  void debug(Debugger& debugger) {
    const auto set = static_cast<CommandSet>(user_.below(3));
    switch (user_.below(6)) {
      case 0:
        return debugger.searchPort();
      case 1:
        return debugger.receiveMode().receive();
      case 2:
        clock_.delay(std::chrono::milliseconds(user_.byte()), nullptr);
        return debugger.watch();
      default:
        debugger.chooseSet(set);
        const auto entries = cm1set(set);
        SendChoice choice;
        choice.entry = std::string(entries[user_.below(entries.size())]);
        if (user_.flag()) choice.setting = user_.below(2);
        choice.address = textOf(user_.take(2));
        choice.high = textOf(user_.take(2));
        choice.low = textOf(user_.take(2));
        debugger.send(choice);
    }
  }

  void shown(Part part) {
    const auto& selected = model_.selected;
    require(!model_.work || !model_.work->what.empty(), "work has a name");
    require(model_.controllers.size() <= ControllerList::limit, "the list has a limit");
    require(!selected || *selected < model_.controllers.size(), "what is selected is in the list");
    // As the page does once its controls show what the panel holds.
    if (part == Part::settings) settings().filled();
    if (part == Part::identity) modelName(model_.identity.unitType);
    if (part == Part::end) require(!std::exchange(ended_, true), "the program ends once");
  }

  Input user_;
  Input answers_;
  FuzzedDriver fuzzed_{answers_};
  Trace trace_;
  TracingDriver driver_;
  JumpingClock clock_;
  FuzzedPrompt prompt_{user_, clock_};
  TracingSerialPort port_{std::make_unique<FuzzedPort>(answers_), trace_};
  Session session_;
  MainModel model_;
  MainConsole console_;
  PinEditor pins_;
  std::optional<Calibration> calibration_;
  bool ended_ = false;
};

}  // namespace

void execute(std::span<const std::uint8_t> bytes) {
  Input input(bytes);
  const Input user(input.take(input.byte()));
  Run(user, input).perform();
}

}  // namespace touch::fuzz
