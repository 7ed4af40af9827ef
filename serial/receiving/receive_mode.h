#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/session.h"
#include "serial/debugger/console_log.h"
#include "serial/receiving/receive_display.h"
#include "serial/receiving/receiving_port.h"
#include "serial/receiving/report_rate.h"
#include "support/clock.h"

namespace touch {

class Prompt;

/// The debugger's receive mode: its timer shows what the controller sends in the console, or
/// measures the report rate when that is switched on. The active command set tells how reports are
/// recognised. That the console is too long is said in a box once each time that receiving begins,
/// and then as a remark: a box for every hundred reports would leave nothing to be seen.
class ReceiveMode {
 public:
  /// What it works with; all of it outlives the mode.
  struct Parts {
    const Session& session;
    Clock& clock;
    Prompt& prompt;
    ConsoleLog& log;
    std::vector<ReportFormat> formats;     ///< known beside the built-in ones
    std::function<LineSettings()> line{};  ///< how the port is set; empty: as usual
  };
  ReceiveMode(Parts parts, ReceivingPort port);

  /// The buttons "Receive" and "Debuger"; the latter also for a double click on the console.
  /// Receiving begins with what comes from then on.
  void receive();
  void debug();
  bool isReceiving() const { return stage_ != Stage::idle; }

  /// The check box "Report Rate".
  void measureRate(bool on);
  bool isMeasuring() const { return rate_.has_value(); }
  /// Measures if `other` does, and knows what that measured last. The box was not checked: the
  /// console stays as it is.
  void takeOverRate(const ReceiveMode& other);
  /// The stroke measured last; its evidence is not in the console.
  const std::optional<StrokeRate>& lastStroke() const { return lastStroke_; }
  /// The reports a second while the panel is touched, the mean of all strokes since measuring
  /// began.
  struct MeanRate {
    double rate = 0;
    int strokes = 0;
  };
  const MeanRate& meanRate() const { return mean_; }
  /// The most reports a second that are possible now.
  double ceiling() const;

  /// False after a command that may have changed what coordinates mean: see
  /// DebuggerExchange::replyFormat.
  void setReplyFormat(bool usual) { replyFormat_ = usual; }

  /// What is to be said beside the console since it was asked last.
  std::optional<std::string> takeRemark() { return std::exchange(remark_, std::nullopt); }

  /// Stops the timer while another screen reads the port, and starts it again.
  void suspend();
  void resume();

 private:
  enum class Stage : std::uint8_t { idle, receiving, suspended };
  /// Whether it was said, since receiving began, that the console is too long. A box that is up
  /// counts for a receiving that begins meanwhile, too.
  enum class TooLong : std::uint8_t { unsaid, boxIsUp, said };

  LineSettings line() const { return parts_.line ? parts_.line() : LineSettings{}; }
  ReportFamily family() const { return familyOf(parts_.session.commandSet); }
  void poll();
  void tick();
  void trim();
  void collect();
  void measure();
  void display();
  void runTimers();

  Parts parts_;
  ReceivingPort port_;
  Stage stage_ = Stage::idle;
  TooLong tooLong_ = TooLong::unsaid;
  bool replyFormat_ = true;
  std::optional<std::string> remark_;
  ReceiveDisplay display_;
  std::optional<ReportRate> rate_;
  std::optional<StrokeRate> lastStroke_;
  MeanRate mean_;
  std::unique_ptr<Timer> timer_;
  std::unique_ptr<Timer> pollTimer_;
};

}  // namespace touch
