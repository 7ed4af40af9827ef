#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "core/clock.h"
#include "core/surface.h"
#include "linetest/pen.h"
#include "serial/hex_monitor.h"
#include "serial/receiving_port.h"
#include "serial/report_decoder.h"

namespace touch {

/// A place on the screen in whole pixels.
struct PixelPoint {
  int x = 0;
  int y = 0;
  friend bool operator==(const PixelPoint&, const PixelPoint&) = default;
};

/// A part of the coordinates' range, which is from 0 to 1.
struct CoordinateRange {
  float least = 0;
  float greatest = 1;
};
struct CoordinateRanges {
  CoordinateRange x;
  CoordinateRange y;
};

/// The raw drawing screen's logic: reads what a controller streams, finds the touch reports in it, draws their path,
/// and shows every byte in the monitor. A touched dot and its bytes can be found from each other for as long as the
/// monitor shows them.
class RawDrawing {
 public:
  struct Options {
    bool paused = false;        ///< nothing is read
    bool monitorOnly = false;   ///< bytes are shown but not decoded
    bool followCursor = false;  ///< the mouse cursor goes where the reports say
  };
  /// What it draws with.
  struct Canvas {
    Surface& surface;
    TwipsSize area;                              ///< also the screen's
    std::function<void(PixelPoint)> moveCursor;  ///< may be empty
  };

  /// Ticks from `start` on. `clock`, the port and the surface outlive it.
  RawDrawing(Clock& clock, ReceivingPort port, Canvas canvas, const ReportDecoder& decoder);

  void start();
  void stop();

  Options options;
  Pen pen;
  const HexMonitor& monitor() const { return monitor_; }
  const ReportDecoder& decoder() const { return decoder_; }
  /// Reports drawn so far.
  std::uint64_t reports() const { return reportCount_; }
  /// The notice "F1 for Hot Key Help" is up; it goes after seven ticks.
  bool noticeIsUp() const { return noticeTicks_ < noticeLimit; }

  /// The whole coordinate range covers the drawing area; with `on`, the range that was observed so far does.
  void fit(bool on);
  /// Wipes the drawing; the monitor stays.
  void clearDrawing();
  void clearMonitor();

  /// Where the monitor shows the bytes of the dot nearest to `place`, when one is within a finger's width.
  std::optional<TextRange> bytesOfDotAt(TwipsPoint place) const;
  /// The dot whose bytes the monitor shows at `position` of its text.
  std::optional<TwipsPoint> dotOfTextAt(std::size_t position) const;
  /// Where the monitor shows bytes that belong to no packet.
  std::vector<TextRange> strayText() const;

 private:
  static constexpr int noticeLimit = 7;

  struct Dot {
    TouchReport report;
    TwipsPoint place;
  };
  /// A part of the stream, by offsets.
  struct Stretch {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;  ///< behind its last byte
  };

  void tick();
  void rsbreport();
  void breakStroke();
  void draw(const TouchReport& report);
  void moveCursorTo(TwipsPoint place) const;
  TwipsPoint placeOf(const TouchReport& report) const;
  /// The bytes from `offset` on are not stray.
  void account(std::uint64_t offset, std::size_t count);
  /// Drops what is known of bytes that the monitor does not show.
  void keepShown();

  ReceivingPort port_;
  Canvas canvas_;
  ReportDecoder decoder_;
  std::unique_ptr<Timer> timer_;
  HexMonitor monitor_;
  int noticeTicks_ = 0;
  bool ticking_ = false;
  std::uint64_t reportCount_ = 0;
  std::optional<TwipsPoint> previous_;  ///< of the stroke under way
  std::vector<TouchReport> found_;
  std::vector<Dot> dots_;           ///< of the drawing as it stands
  std::vector<Stretch> accounted_;  ///< packets and what was not decoded; those that touch are one
  std::optional<CoordinateRanges> observed_;  ///< of all reports
  CoordinateRanges shown_;                    ///< what covers the drawing area
};

}  // namespace touch
