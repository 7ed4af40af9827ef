#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "simulator/controller/commands.h"
#include "simulator/controller/controller_model.h"
#include "simulator/panel/calibration_run.h"
#include "simulator/port/line_format.h"
#include "simulator/port/timed_bytes.h"

namespace touch::simulator {

/// Who is at the other end of a controller's line.
enum class LineUser : std::uint8_t {
  driver,  ///< it takes touches for itself: its reader gets answers only
  port,    ///< whoever opened the serial port: gets answers and touch reports
};

/// One controller with its panel: carries out commands, answers after a while, feels touches. It
/// has no thread and no clock: whoever uses it tells the time, which must not go backwards.
class SimulatedController {
 public:
  /// As when new. The model must outlive the controller.
  explicit SimulatedController(const ControllerModel& model);

  const ControllerModel& model() const { return *model_; }
  FaultSet& faults() { return faults_; }
  const FaultSet& faults() const { return faults_; }
  PanelTraits& panel() { return panel_; }

  /// The finger is down at `place`, or has moved there.
  void touch(Point place, TimePoint now);
  void lift(TimePoint now);
  /// Whether it feels the finger.
  bool isTouched() const { return finger_.has_value() && !faults_.has(Fault::noAnswer); }
  /// Where it reports a finger at `place`, without noise and drift, inside the screen.
  Point reported(Point place) const;
  /// What a single report says of it, with noise; nothing where the panel feels no touch.
  std::optional<Point> felt(Point place, TimePoint now);

  /// Bytes from the user of the line. What they make it say comes later.
  void receive(std::span<const std::uint8_t> bytes, TimePoint now);
  /// Bytes that the user of the line could read by now.
  std::size_t arrived(TimePoint now);
  std::vector<std::uint8_t> take(std::size_t limit, TimePoint now);
  /// When there will next be something to take, if nobody touches and nothing is received until
  /// then.
  std::optional<TimePoint> nextDue() const;
  /// Changes who is at the other end; what was on the line is lost.
  void connect(LineUser user, TimePoint now);

  /// How it writes and reads bytes from now on; 8N1 when new. "PN81" brings it back to that.
  void speak(LineFormat format);
  LineFormat format() const { return ownFormat_; }
  /// How the user of the line does; with another format each takes the other's bytes for garbage or
  /// for nothing.
  void setUserFormat(LineFormat format) { userFormat_ = format; }
  /// The speed of its line in bits a second; 9600 when new.
  void setSpeed(int baud);
  /// The same for the user of the line; unknown, it is the controller's.
  void setUserSpeed(std::optional<int> baud) { userBaud_ = baud; }
  /// What it hears from now on goes there instead of being carried out.
  using Ear = std::function<void(std::span<const std::uint8_t>)>;
  void handOver(Ear ear) { ear_ = std::move(ear); }
  /// Sends bytes as they are: a recording's.
  bool say(std::span<const std::uint8_t> bytes, TimePoint now);

  bool reportsTouches() const { return mode_ != Mode::inactive; }
  /// Touches are not reported any more, until a mode command comes.
  void stopReports() { mode_ = Mode::inactive; }

  /// Calibration as the driver leads it; see CalibrationRun.
  bool armPoint(int point, int count, int samples) { return run_.arm(point, count, samples); }
  std::optional<Point> takenPoint() const { return run_.current(); }
  /// Works out the calibration from the taken points and keeps it. False, keeping the old one, when
  /// a point is missing or when the points do not span an area.
  bool storeCalibration();
  /// Drops the taken points and leaves the calibration modes.
  void abandonCalibration();

 private:
  void paceLine();
  bool speedsMatch() const { return !userBaud_ || *userBaud_ == baud_; }
  void execute(const Packet& packet, TimePoint now);
  /// What it answers, without start byte and carriage return; nothing when it refuses.
  std::optional<std::string> carryOut(const Command& command);
  std::optional<std::string> carryOutParameter(const Command& command);
  std::string statusText() const;
  void reset();

  void answer(std::span<const std::uint8_t> bytes, TimePoint earliest);
  void takeExtended(Point raw, TimePoint now);
  bool feelsAt(Point place) const;
  /// What the converter would read without noise.
  Point cleanReading(Point place, double seconds) const;
  /// The mean of so many readings.
  Point reading(Point place, int samples, TimePoint now);

  bool streams() const;
  void report(Point place, bool touching, TimePoint when);
  void reportUntil(TimePoint now);

  const ControllerModel* model_;
  FaultSet faults_;
  PanelTraits panel_;
  PanelSampler sampler_;
  ParameterMemory memory_;
  TouchMap sheet_;                       ///< from what a measured panel reports to its readings
  std::optional<TimePoint> firstTouch_;  ///< from when on a measured panel drifts

  Mode mode_ = Mode::stream;
  ReportFormat format_ = ReportFormat::tablet;
  Pointer pointer_ = Pointer::penOrFinger;
  std::uint8_t sensitivity_ = 1;
  bool rawCalibration_ = false;
  CalibrationRun run_;
  std::optional<CalibrationRun> extended_;  ///< the controller's own calibration, while it lasts

  std::optional<Point> finger_;
  TimePoint nextReport_{};

  LineUser user_ = LineUser::driver;
  LineFormat ownFormat_ = LineFormat::eightN1;
  LineFormat userFormat_ = LineFormat::eightN1;
  int baud_ = 9600;
  std::optional<int> userBaud_;
  std::chrono::nanoseconds byteTime_;
  Ear ear_;
  int reportNumber_ = 0;
  PacketReader reader_;
  TimePoint commandLineFree_{};
  TimedBytes output_;
};

}  // namespace touch::simulator
