#include "serial/debugger/debugger.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "ports/port_holders.h"
#include "serial/debugger/port_search.h"
#include "support/prompt.h"
#include "support/text/language.h"
#include "support/text/text_encoding.h"

namespace touch {

namespace {

using namespace std::chrono_literals;

// Long enough for the receive mode to find the line idle and to show a packet's rest.
constexpr auto afterReplay = 500ms;
// Far more than an answer, and less than a port keeps.
constexpr std::size_t plenty = std::size_t{32} << 10U;

// Whoever opens a long recording of commands alone must not wait until all of it was read.
constexpr int mostLookedAt = 50'000;

bool mayHoldAnswers(TransferSource& recording) {
  for (int i = 0; i < mostLookedAt; ++i) {
    const auto transfer = recording.next();
    if (!transfer) return false;
    if (transfer->direction == Direction::fromController) return true;
  }
  return true;
}

}  // namespace

Debugger::Debugger(const Access& access, Prompt& prompt, SerialPort& serial,
                   std::vector<ReportFormat> formats, ComPorts comPorts,
                   ReturningPort::List hardware)
    : access_(access),
      prompt_(prompt),
      formats_(std::move(formats)),
      comPorts_(std::move(comPorts)),
      log_(access.clock),
      recorded_(serial, access.clock),
      port_(access, prompt, recorded_, log_),
      returning_(
          port_, access.clock,
          hardware ? std::move(hardware) : [this] { return knownHardware(comPorts_); }),
      exchange_(access, prompt, port_, log_),
      script_(access, prompt, port_, log_, formats_),
      mode_(parts(), {recorded_, port_.gate(), [this] {
                        receivedAtLoss_ = mode_.isReceiving();
                        noteLoss();
                      }}) {
  chooseSet(CommandSet::quorvane);
  recorded_.keepTimes(true);
}

ReceiveMode::Parts Debugger::parts() {
  return {access_.session, access_.clock, prompt_, log_, formats_, [this] { return port_.line(); }};
}

void Debugger::tell(std::string text) {
  log_.note(text);
  status_ = std::move(text);
}

std::optional<std::string> Debugger::takeStatus() {
  if (auto remark = receiveMode().takeRemark(); remark && !status_) return remark;
  return std::exchange(status_, std::nullopt);
}

Result<void, std::string> Debugger::takePort() {
  if (isBusy()) return {};
  const int number = chosenPort_.value_or(port_.foundPort().value_or(DebuggerPort::startPort));
  const bool wasUsed = usedPort() == number;
  auto taken = port_.take(number);
  const std::string driver = port_.driverText();
  if (!taken && wasUsed) awaitIfGone(number);
  tell(!taken ? taken.error() : driver.empty() ? portText() : driver + ' ' + portText());
  tellOfSharing();
  return taken;
}

void Debugger::tellUser(const std::string& text) {
  gate().runWithin([this, &text] { prompt_.message(text); });
}

void Debugger::searchPort() {
  gate().run([this] {
    tell(say("debugger", "Searching COM1 and COM2 for a controller …"));
    chosenPort_.reset();
    const auto before = usedPort();
    const auto found = port_.comporttest();
    if (!found && before) awaitIfGone(*before);
    tell(found ? filled(say("debugger", "A controller answers on COM%1."), {std::to_string(*found)})
               : say("debugger", "No controller answers on COM1 or COM2."));
    tellOfSharing();
  });
}

void Debugger::usePort(const ListedPort& port) {
  if (isBusy()) return;
  if (port.number == 0) {
    tell(filled(say("debugger", "%1 has no number. Start the program with --com N=%1."),
                {port.device}));
    return;
  }
  const bool wasUsed = usedPort() == port.number;
  recorded_.close();
  chosenPort_ = port.number;
  const auto taken = port_.take(port.number);
  if (!taken && wasUsed) awaitIfGone(port.number);
  tell(taken ? portText() : taken.error());
  tellOfSharing();
}

void Debugger::searchEverywhere() {
  gate().run([this] {
    const auto before = usedPort();
    searching_ = true;
    tell(say("debugger", "Searching all ports for a controller …"));
    ControllerSearch search;
    runThen(
        [&] {
          search = touch::searchEverywhere(
              port_, comPorts_,
              [this](const SearchProgress& progress) { status_ = describe(progress); });
        },
        [this] { searching_ = false; });
    if (search.found) {
      chosenPort_ = search.found->port;
    } else if (before && !port_.take(*before)) {
      recorded_.close();
      awaitIfGone(*before);
    }
    tell(search.outcome());
    tellOfSharing();
  });
}

void Debugger::stopSearch() {
  if (searching_) gate().cutShort();
}

void Debugger::noteLoss() {
  // No box: nobody may be there to close it when the port comes back.
  if (const auto reason = port_.takeLoss()) tell(*reason);
}

std::optional<int> Debugger::usedPort() const {
  return portIsOpen() || isAwaitingPort() ? std::optional(port_.selected()) : std::nullopt;
}

void Debugger::awaitIfGone(int port) {
  if (portIsOpen() || port_.isAwaited() || portExists(comPorts_.device(port))) return;
  port_.await(port);
}

void Debugger::tellOfSharing() {
  if (const std::string sharing = recorded_.sharedWith(); !sharing.empty()) tell(sharing);
}

void Debugger::leave() {
  // It may be in the middle of a tick, after which this is run.
  if (replay_) replay_->mode.suspend();
  mode_.debug();
  stopRecording();
  port_.giveBack();
}

std::string Debugger::portText() const {
  const std::string name = "COM" + std::to_string(port_.selected());
  std::string text =
      portIsOpen() ? filled(say("debugger", "%1 is open, %2."), {name, describe(port_.line())})
                   : filled(say("debugger", "%1 is closed."), {name});
  if (port_.damaged() > 0) {
    text += ' ' + filled(say("debugger", "Damaged bytes: %1."), {std::to_string(port_.damaged())});
  }
  return text;
}

LineView Debugger::lineView() {
  return {port_.line(),
          port_.wires(),
          recorded_.lineState(),
          recorded_.sentBytes(),
          recorded_.receivedBytes(),
          port_.damaged()};
}

void Debugger::setLine(const LineSettings& line) {
  gate().run([&] {
    const auto set = port_.setLine(line);
    tell(set ? portText() : set.error());
  });
}

void Debugger::switchLine(LineSwitch which, bool on) {
  gate().run([&] {
    const bool done = port_.switchLine(which, on);
    const std::string name = which == LineSwitch::dtr ? "DTR" : "RTS";
    tell(filled(!done ? say("debugger", "The port has no %1.")
                : on  ? say("debugger", "%1 is on.")
                      : say("debugger", "%1 is off."),
                {name}));
  });
}

void Debugger::sendBreak() {
  gate().run([this] {
    tell(port_.sendBreak() ? say("debugger", "A break was sent.")
                           : say("debugger", "The port sends no break."));
  });
}

std::optional<DebuggerReply> Debugger::send(const SendChoice& choice) {
  auto reply = exchange_.send(choice);
  mode_.setReplyFormat(exchange_.replyFormat());
  return reply;
}

std::optional<DebuggerReply> Debugger::sendBytes(std::span<const std::uint8_t> bytes) {
  auto reply = exchange_.sendBytes(bytes);
  mode_.setReplyFormat(exchange_.replyFormat());
  if (reply) {
    status_ = filled(say("debugger", "Bytes sent: %1, received: %2."),
                     {std::to_string(bytes.size()), std::to_string(reply->bytes.size())});
  }
  return reply;
}

void Debugger::runScript() {
  if (!portIsOpen() || isReplaying()) return;
  if (auto outcome = script_.run(); !outcome.empty()) tell(std::move(outcome));
}

void Debugger::startRecording(const std::filesystem::path& file, const std::string& program) {
  const auto started = recorded_.startRecording(
      file, {.controller = access_.session.controllerName, .program = program});
  tell(started ? filled(say("debugger", "Recording to %1"), {toUtf8(file.string())})
               : started.error().describe());
}

void Debugger::stopRecording() {
  const bool wasOn = isRecording();
  if (const auto recorded = recorded_.stopRecording(); !recorded) {
    tell(say("debugger", "The recording broke off.") + ' ' + recorded.error().describe());
  } else if (wasOn) {
    tell(say("debugger", "The recording has ended."));
  }
}

void Debugger::startReplay(const std::filesystem::path& file) {
  if (isBusy()) return;
  auto recording = RecordingFile::open(file);
  if (!recording) {
    tell(recording.error().describe());
    return;
  }
  if (!mayHoldAnswers(**recording)) {
    const auto failed = (*recording)->error();
    tell(failed ? failed->describe()
                : filled(say("debugger", "%1 holds nothing that came from a controller."),
                         {toUtf8(file.string())}));
    return;
  }
  auto replay = std::make_unique<Replay>(std::move(*recording), parts(), gate());
  stopReplay();
  mode_.suspend();
  replay_ = std::move(replay);
  replay_->mode.takeOverRate(mode_);
  replay_->mode.receive();
  replay_->port.onSent = [this](std::span<const std::uint8_t> bytes) {
    log_.sent(bytes, replay_->port.sentAt());
  };
  replay_->port.open();
  tell(filled(say("debugger", "Replaying %1"), {toUtf8(file.string())}));
}

void Debugger::stopReplay() {
  if (!isBusy()) endReplay();
}

void Debugger::endReplay() {
  if (!isReplaying() || drawing_) return;
  const auto failed = replay_->port.error();
  mode_.takeOverRate(replay_->mode);
  replay_.reset();
  mode_.resume();
  tell(failed ? say("debugger", "The replay broke off.") + ' ' + failed->describe()
              : say("debugger", "The replay has ended."));
}

std::optional<std::string> Debugger::whyNothingToDraw() const {
  if (portIsOpen() || isReplaying()) return std::nullopt;
  return filled(say("debugger",
                    "COM%1 is closed: no touches will be drawn. To mend that, leave the drawing "
                    "and press \"Open port\", or replay a recording."),
                {std::to_string(port_.selected())});
}

ReceivingPort Debugger::beginDrawing() {
  drawing_ = true;
  mode_.suspend();
  // It reads often by itself, and shows no times.
  recorded_.keepTimes(false);
  if (!replay_) {
    // The drawing begins with what comes from now on.
    if (!isBusy()) recorded_.clearInput();
    return {recorded_, gate(), [this] { port_.tellLoss(); }};
  }
  replay_->mode.suspend();
  replay_->port.close();
  replay_->port.open();
  return {replay_->port, gate(), {}};
}

void Debugger::endDrawing() {
  drawing_ = false;
  recorded_.keepTimes(true);
  if (isReplaying()) {
    replay_->mode.resume();
  } else {
    mode_.resume();
  }
}

bool Debugger::isFlooded() const {
  return unread_ > unreadBefore_ || unread_ > plenty;
}

void Debugger::watch() {
  gate().run([this] { look(); });
}

void Debugger::look() {
  if (const int before = port_.selected(); returning_.takeUpAgain()) {
    if (before != port_.selected()) chosenPort_ = port_.selected();
    tell(portText());
    if (std::exchange(receivedAtLoss_, false)) mode_.receive();
  }
  // A port that nobody uses does not notice by itself that its device has gone.
  unreadBefore_ = std::exchange(unread_, recorded_.inBufferCount());
  port_.noteDamage();
  noteLoss();
  returning_.remember();
  if (!isRecording()) stopRecording();
  if (!isReplaying()) return;
  if (!replay_->port.isFinished() || replay_->port.isPaused()) {
    replay_->finished.reset();
    return;
  }
  const auto now = access_.clock.now();
  if (!replay_->finished) replay_->finished = now;
  if (now - *replay_->finished >= afterReplay) endReplay();
}

}  // namespace touch
