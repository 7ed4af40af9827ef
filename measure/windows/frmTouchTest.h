#pragma once

#include <QWidget>
#include <memory>
#include <optional>
#include <string>

#include "core/driver/simulation.h"
#include "drawing/surface.h"
#include "measure/procedure/procedure.h"
#include "measure/windows/reported_touch.h"
#include "support/clock.h"

class QPushButton;

namespace touch {
class TouchCanvas;
}

namespace touch::measure {

class frmGuideBox;

/// The page that leads through a resting finger, taps, the coverage of the panel, or diagonals and
/// directions. What the pointer reports goes into the measurement.
class frmTouchTest final : public QWidget {
  Q_OBJECT

 public:
  /// In a simulated run the panel reports where `controller` says that the pointer is.
  /// `measurement` outlives the page.
  frmTouchTest(Clock& clock, const Simulation& simulation, std::string controller,
               Measurement& measurement, ReportSource reports, QWidget* parent = nullptr);
  ~frmTouchTest() override;

  /// Takes the test up where it was left.
  void begin(TouchTest test);

 signals:
  /// Something was added to the measurement, or taken away.
  void changed();
  /// All of the test has been gone through.
  void done();
  void leaveRequested();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void addButtons();
  Source source() const;
  Sample sampleAt(TwipsPoint at) const;

  void penDown(TwipsPoint at);
  void penMoved(TwipsPoint at);
  void penUp();
  void readAgain();
  void act(void (Procedure::*command)());
  void nothingCame();
  void decide(Blame blame);
  void showTask(const QString& note = {});
  QString title() const;
  QString instruction() const;
  void placeBox();
  std::size_t untouchedBelow(const QRect& place) const;

  Clock& clock_;
  Measurement& measurement_;
  std::optional<Procedure> procedure_;
  ReportSource reports_;
  std::unique_ptr<Timer> reading_;  ///< while a finger rests
  /// The pointer's last event, and when it came.
  struct Pointer {
    QPointF place;
    Qt::MouseButtons buttons;
    std::chrono::milliseconds stamp{};
    Clock::TimePoint arrived;
  } pointer_;
  TwipsPoint pen_;

  TouchCanvas* canvas_;
  frmGuideBox* box_;
  QPushButton* back_ = nullptr;
  QPushButton* next_ = nullptr;
  QPushButton* repeat_ = nullptr;
  QPushButton* missed_ = nullptr;
  QPushButton* byPanel_ = nullptr;
  QPushButton* byHand_ = nullptr;
  QPushButton* leave_ = nullptr;
};

}  // namespace touch::measure
