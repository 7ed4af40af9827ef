#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "core/driver/simulation.h"
#include "core/messages/messages.h"
#include "serial/rawdrawing/raw_drawing.h"
#include "serial/rawdrawing/raw_drawing_tools.h"
#include "ui/screens/canvas_widget.h"
#include "ui/screens/full_screen_window.h"

class QCheckBox;
class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace touch {

class DotMarker;
class FingerList;
class frmReplayBar;
class ReplayPort;

/// The full-screen raw drawing: the path that the controller reports, and every byte in the
/// monitor. In a simulated run the mouse is the finger on the simulated panel.
class frmRsDraw final : public FullScreenWindow {
  Q_OBJECT

 public:
  struct Parts {
    Clock& clock;
    Prompt& prompt;
    const MessageTable& messages;
    DrawingSwitches& switches;
    ReportDecoder decoder;
    Simulation simulation;
    std::optional<QSize> size;     ///< logical pixels, in place of the full screen
    ReplayPort* replay = nullptr;  ///< the port, where it is one
  };
  /// `onLeave` is run when the port is no longer used; the window then deletes itself.
  frmRsDraw(const Parts& parts, ReceivingPort port, const QScreen& screen,
            std::function<void()> onLeave);
  ~frmRsDraw() override;

  void askToLeave() override;

 protected:
  void started() override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* makeBar();
  void makeHelp(const MessageTable& messages);
  QCheckBox* makeCheck(const char* name, const QString& caption,
                       const std::function<void(bool)>& switched);
  QPushButton* makeButton(const char* name, const QString& caption,
                          const std::function<void()>& action);
  void placeControls();
  /// Monitor and bars give all of their room to the drawing, or take it back.
  void toggleBars();
  void fitMonitorFont();
  void perform(CanvasAction action);
  /// Whether it is one; it is performed unless the key is held.
  bool takeHotKey(const QKeyEvent& key);
  void touchAt(const QPointF& place);
  void markBytesAt(const QPointF& place);
  void markDotOfText();
  void moveMarker();
  void renew();
  void renewMonitor();
  /// Drops so many characters from the monitor's front.
  void dropShown(int count);
  void showHighlights();

  Parts parts_;

  CanvasWidget* canvas_;
  QPlainTextEdit* monitor_;  // Text1
  QWidget* panel_;
  QLabel* counts_;
  QLabel* notice_;
  FingerList* help_;
  DotMarker* marker_;
  frmReplayBar* replayBar_;
  std::unique_ptr<RawDrawing> drawing_;
  std::unique_ptr<RawDrawingTools> tools_;
  std::unique_ptr<Timer> timer_;

  // Of all characters that the monitor has ever had.
  std::uint64_t shownBegin_ = 0;
  std::uint64_t shownEnd_ = 0;
  std::uint64_t shownDecided_ = 0;
  std::optional<TextRange> marked_;
  QPointF pressed_;
};

}  // namespace touch
