#pragma once

#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "ports/port_list.h"
#include "serial/commands/debugger_exchange.h"
#include "serial/debugger/console_log.h"
#include "serial/debugger/debugger_port.h"
#include "serial/debugger/returning_port.h"
#include "serial/debugger/script_player.h"
#include "serial/plots/timed_reports.h"
#include "serial/receiving/receive_mode.h"
#include "serial/recording/recording_ports.h"

namespace touch {

/// What there is to show about the line.
struct LineView {
  LineSettings settings;
  DebuggerPort::Wires wires{};     ///< as they are switched
  std::optional<LineState> state;  ///< nothing where the port does not tell
  std::uint64_t sent = 0;          ///< bytes
  std::uint64_t received = 0;
  std::uint64_t damaged = 0;
};

/// The debugger as its window uses it: the port, the console's log, the exchange, the receive mode,
/// a recording of all that passes, and a replay that takes the port's place for whoever reads
/// reports.
class Debugger {
 public:
  /// All of them outlive it, but for `formats`. Begins with the quorvane set; the port is not taken
  /// yet. `hardware` says what is behind the ports; null: as the machine has it.
  Debugger(const Access& access, Prompt& prompt, SerialPort& serial,
           std::vector<ReportFormat> formats, ComPorts comPorts = {},
           ReturningPort::List hardware = nullptr);

  /// Takes the port from the driver: COM1, or where a controller was found. The error is for a
  /// box.
  Result<void, std::string> takePort();
  /// A box. Nobody gives the port back while it is up.
  void tellUser(const std::string& text);
  /// Looks for a controller on COM1 and COM2.
  void searchPort();
  /// What there is to know about the machine's ports.
  std::vector<PortFacts> ports() const { return portFacts(comPorts_); }
  /// Opens another port, one with a number, in place of the one that is open.
  void usePort(const ListedPort& port);
  /// Looks for a controller on all ports that can be opened, at all settings of the line. Without
  /// one the port that was open is opened again.
  void searchEverywhere();
  /// That search is under way.
  bool isSearching() const { return searching_; }
  /// Ends it when the place is asked that it is at.
  void stopSearch();
  /// Its device has gone; it is opened again when that is there.
  bool isAwaitingPort() const { return port_.isAwaited(); }
  /// Ends what is going on and gives the port back to the driver.
  void leave();
  bool portIsOpen() const { return recorded_.isOpen(); }
  std::string portText() const;
  /// An exchange is under way, or a message box holds up the receive mode: nothing else may be done
  /// with the port, nor may it be given back or a replay be ended.
  bool isBusy() const { return !port_.gate().isOpen(); }
  /// Shut by who ends the debugger.
  Gate& gate() { return port_.gate(); }

  LineView lineView();
  LineSettings line() const { return port_.line(); }
  void setLine(const LineSettings& line);
  void switchLine(LineSwitch which, bool on);
  void sendBreak();

  void chooseSet(CommandSet set) { access_.session.commandSet = set; }
  /// "Send", see DebuggerExchange::send.
  std::optional<DebuggerReply> send(const SendChoice& choice);

  /// Sends them as they are, see DebuggerExchange::sendBytes.
  std::optional<DebuggerReply> sendBytes(std::span<const std::uint8_t> bytes);

  ScriptPlayer& script() { return script_; }
  /// Runs the chosen script, see ScriptPlayer::run. The windows stay in use meanwhile.
  void runScript();

  /// What was said since it was asked last about the port, bytes that were sent, a script, a
  /// recording or a replay, which the log has as well, or about the log.
  std::optional<std::string> takeStatus();
  ConsoleLog& log() { return log_; }
  const ConsoleLog& log() const { return log_; }
  /// The one whose reports the console shows: that of the replay while there is one.
  ReceiveMode& receiveMode() { return replay_ ? replay_->mode : mode_; }

  bool isRecording() const { return recorded_.isRecording(); }
  /// `program` stands in its head.
  void startRecording(const std::filesystem::path& file, const std::string& program);
  void stopRecording();

  bool isReplaying() const { return replay_ != nullptr; }
  /// What plays it, to be paused and the like; null while there is none.
  ReplayPort* replay() { return replay_ ? &replay_->port : nullptr; }
  void startReplay(const std::filesystem::path& file);
  void stopReplay();

  /// What to tell who opens the raw drawing where nothing can come in.
  std::optional<std::string> whyNothingToDraw() const;
  /// The raw drawing has the port, or the replay from its beginning, until `endDrawing`.
  ReceivingPort beginDrawing();
  void endDrawing();
  /// Tells of what comes in on the port from now on; null: tells nobody.
  void listen(RecordedPort::Listener listener) { recorded_.listen(std::move(listener)); }
  bool isListenedTo() const { return recorded_.isListenedTo(); }
  TimedReports makeReportReader() const {
    return TimedReports(familyOf(access_.session.commandSet), formats_);
  }
  ReportDecoder makeDecoder() const {
    return ReportDecoder(familyOf(access_.session.commandSet), formats_);
  }

  /// Something is under way that `watch` has to look after again and again.
  bool isActive() const {
    return isReplaying() || isRecording() || script_.isRunning() || searching_ ||
           (portIsOpen() && mode_.isReceiving() && !drawing_);
  }
  bool isDrawing() const { return drawing_; }
  /// See SerialPort::descriptor.
  std::optional<int> descriptor() const { return recorded_.descriptor(); }
  /// When `watch` last looked, bytes were coming in that nobody reads.
  bool isFlooded() const;

  /// To be called now and then: notices a device that has gone, a full disk and the end of a
  /// replay. While busy it notices nothing.
  void watch();

 private:
  struct Replay {
    Replay(std::unique_ptr<TransferSource> recording, const ReceiveMode::Parts& parts, Gate& gate)
        : port(std::move(recording), parts.clock), mode(parts, {port, gate, {}}) {}
    ReplayPort port;
    ReceiveMode mode;
    std::optional<Clock::TimePoint> finished;
  };

  ReceiveMode::Parts parts();
  void look();
  void endReplay();
  void tellOfSharing();
  /// The port that is open, or is awaited.
  std::optional<int> usedPort() const;
  /// Awaits a port that was in use, and is closed, if its device has gone meanwhile.
  void awaitIfGone(int port);
  void noteLoss();
  void tell(std::string text);

  Access access_;
  Prompt& prompt_;
  std::vector<ReportFormat> formats_;
  ComPorts comPorts_;
  ConsoleLog log_;
  RecordedPort recorded_;
  DebuggerPort port_;
  ReturningPort returning_;
  DebuggerExchange exchange_;
  ScriptPlayer script_;
  ReceiveMode mode_;
  std::unique_ptr<Replay> replay_;
  bool drawing_ = false;
  bool searching_ = false;
  bool receivedAtLoss_ = false;
  std::optional<int> chosenPort_;  ///< by the user, or where a search of all ports found one
  std::size_t unread_ = 0;         ///< bytes, when `watch` last looked
  std::size_t unreadBefore_ = 0;   ///< and the time before
  std::optional<std::string> status_;
};

}  // namespace touch
