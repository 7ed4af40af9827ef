#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "drawing/pen.h"
#include "drawing/surface.h"
#include "reports/report_decoder.h"
#include "serial/debugger/hex_monitor.h"
#include "serial/receiving/receiving_port.h"
#include "support/clock.h"

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
  friend bool operator==(const CoordinateRange&, const CoordinateRange&) = default;
};
struct CoordinateRanges {
  CoordinateRange x;
  CoordinateRange y;
  friend bool operator==(const CoordinateRanges&, const CoordinateRanges&) = default;
};

/// The raw drawing screen's logic: reads what a controller streams, finds the touch reports in it,
/// draws their path, and shows every byte in the monitor. A touched dot and its bytes can be found
/// from each other for as long as the monitor shows them.
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
    TwipsSize area;
    std::function<void(PixelPoint)> moveCursor;  ///< to a place in the area; may be empty
  };
  /// What can be drawn anew: two minutes of an endless stroke.
  static constexpr std::size_t mostDots = 20'000;

  /// Ticks from `start` on. `clock`, the port and the surface outlive it.
  RawDrawing(Clock& clock, ReceivingPort port, Canvas canvas, const ReportDecoder& decoder);

  void start();
  void stop();

  Options options;
  Pen pen;
  /// Run when the surface has been cleared: draws what lies under the strokes. May be empty.
  std::function<void()> onCleared;
  const HexMonitor& monitor() const { return monitor_; }
  const ReportDecoder& decoder() const { return decoder_; }
  /// Reports drawn so far.
  std::uint64_t reports() const { return reportCount_; }
  /// The notice "F1 for Hot Key Help" is up; it goes after seven ticks. Until something is drawn
  /// they are slow enough for it to be read.
  bool noticeIsUp() const { return noticeTicks_ < noticeLimit; }

  TwipsSize area() const { return canvas_.area; }
  /// The drawing area has another size: what was drawn is drawn anew.
  void resize(TwipsSize area);
  /// The whole coordinate range covers the drawing area; with `on`, that of what is drawn does, and
  /// grows with it.
  void fit(bool on);
  /// Wipes the drawing; the monitor stays.
  void clearDrawing();
  void clearMonitor();
  /// With `on` the monitor always shows the newest bytes, in place of filling up.
  void rollMonitor(bool on) { monitor_.roll(on); }
  /// What comes from now on continues no stroke.
  void breakStroke();

  /// Where the monitor shows the bytes of the dot nearest to `place`, when one is within a finger's
  /// width.
  std::optional<TextRange> bytesOfDotAt(TwipsPoint place) const;
  /// The dot whose bytes the monitor shows at `position` of its text.
  std::optional<TwipsPoint> dotOfTextAt(std::size_t position) const;
  /// What the byte at `position` of the monitor's text is of its packet, as a sentence; empty where
  /// it is of none.
  std::string fieldOfTextAt(std::size_t position) const;
  /// Where the monitor shows bytes that belong to no packet.
  std::vector<TextRange> strayText() const;

 private:
  static constexpr int noticeLimit = 7;

  /// What is needed to draw a report anew.
  struct Dot {
    TouchReport report;
    bool joined = false;  ///< by a line with the one before
    std::uint8_t width = 1;
    std::uint8_t colour = 0;
  };
  /// A part of the stream, by offsets.
  struct Stretch {
    std::uint64_t begin = 0;
    std::uint64_t end = 0;  ///< behind its last byte
  };

  void tick();
  void read();
  void rsbreport();
  void add(const TouchReport& report);
  void draw(std::size_t dot);
  void drawAll();
  CoordinateRanges fittingRanges() const;
  /// Draws all anew where what is drawn has outgrown the drawing area.
  void follow();
  void moveCursorTo(TwipsPoint place) const;
  TwipsPoint placeOf(const TouchReport& report) const;
  bool isShown(const Dot& dot) const;
  /// The report whose packet has the byte; null when none has.
  const TouchReport* reportAt(std::uint64_t offset) const;
  /// The bytes from `offset` on are not stray.
  void account(std::uint64_t offset, std::size_t count);
  /// Drops what is known of stray bytes that the monitor does not show.
  void keepShown();

  const Clock& clock_;
  ReceivingPort port_;
  Canvas canvas_;
  ReportDecoder decoder_;
  std::unique_ptr<Timer> timer_;
  HexMonitor monitor_;
  int noticeTicks_ = 0;
  std::uint64_t reportCount_ = 0;
  bool inStroke_ = false;  ///< the next dot is joined with the last one
  std::vector<TouchReport> found_;
  std::deque<Dot> dots_;            ///< of the drawing as it stands; the oldest are dropped
  std::vector<Stretch> accounted_;  ///< packets and what was not decoded; those that touch are one
  std::optional<CoordinateRanges> observed_;  ///< of the drawing
  CoordinateRanges shown_;                    ///< what covers the drawing area
  bool fits_ = false;
  Clock::TimePoint fitted_{};
};

}  // namespace touch
