#pragma once

#include <QPointer>
#include <QWidget>
#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "measure/measurement.h"
#include "reports/touch_stream.h"
#include "support/clock.h"

namespace touch::measure {

/// Where samples come from in place of the pointer; nothing while they are the pointer's.
using ReportSource = std::function<std::optional<Source>()>;

/// The finger as the controller's own reports tell it, for a window that fills the panel: a canvas
/// is touched as by the pointer, in raw counts, and everything else can be pressed.
class ReportedTouch {
 public:
  /// All of them outlive this. `onLost` hears why the port has gone; it is no longer read then.
  ReportedTouch(QWidget& window, Clock& clock, TouchStream& stream,
                std::function<void(const std::string&)> onLost);
  ~ReportedTouch();

  /// The error says why the port cannot be read.
  Result<void, std::string> begin(int port);
  void end();
  /// Nothing while the port is not read.
  std::optional<Source> source() const;

 private:
  void expectReports(bool expected) const;
  void read();
  void deliver();
  void follow(const ArrivedReport& arrived);
  void lift(std::chrono::milliseconds time);

  QWidget& window_;
  Clock& clock_;
  TouchStream& stream_;
  std::function<void(const std::string&)> onLost_;
  std::unique_ptr<Timer> timer_;
  std::deque<ArrivedReport> waiting_;
  Clock::TimePoint heard_;
  QPointer<QWidget> touched_;  ///< since the finger is down
  QPointF at_;                 ///< on the window, in logical pixels
  int port_ = 0;               ///< 0: none is read
  RawCounts greatest_{16383};  ///< coordinate of the reports that came last; most have this
};

}  // namespace touch::measure
