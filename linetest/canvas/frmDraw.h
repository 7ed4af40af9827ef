#pragma once

#include <memory>
#include <optional>
#include <string>

#include "core/driver/simulation.h"
#include "linetest/canvas/canvas.h"
#include "ui/screens/full_screen_window.h"

class QCheckBox;
class QFrame;
class QLabel;
class QListWidget;
class QPushButton;
class QScrollBar;
class QTableWidget;

namespace touch {

class FingerList;
class TouchCanvas;

/// The full-screen drawing canvas with its panels. Keys reach the canvas whatever has the focus;
/// every key has a line in the help panel or a button for whoever has only a finger.
class frmDraw final : public FullScreenWindow, public CanvasView {
  Q_OBJECT

 public:
  /// In a simulated run the ink is drawn where `controller` reports the pointer.
  frmDraw(CanvasParts parts, const Simulation& simulation, std::string controller,
          const QScreen& screen, const std::optional<QSize>& size, std::function<void()> onLeft);
  ~frmDraw() override;

  void askToLeave() override;

 protected:
  void started() override;
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  Surface& surface() override;
  TwipsSize sizeOf(CanvasPanel panel) const override;
  void place(CanvasPanel panel, TwipsPoint corner) override;
  std::vector<TwipsRect> tools() const override;
  void show(CanvasPanel panel, bool shown) override;
  void setHelp(std::span<const std::string> lines) override;
  void setBanner(std::string_view text) override;
  void setCaption(std::string_view caption) override;
  void setEscape(std::string_view hint) override;
  void setResultsList(std::span<const std::string> lines) override;
  void setResultsTable(const ResultsSheet& sheet) override;
  void showTolerance(Percent tolerance) override;
  std::filesystem::path askSaveName(const std::filesystem::path& folder,
                                    std::string_view filter) override;
  std::filesystem::path askOpenName(const std::filesystem::path& folder,
                                    std::string_view filter) override;
  void leave() override;

  QWidget* widgetOf(CanvasPanel panel) const;
  void makePanels();
  void makeTools();
  void placePanels();
  void placeTools();
  void placeWays(const GuideLines& guides, bool roomy);
  void fitEscape();
  void fitBanner();
  void fitResultsList();
  void fitTableFont(float squeeze);
  bool hasRoomForTools() const;

  MessageTable messages_;
  TouchCanvas* canvasWidget_;
  FingerList* helpPanel_;
  FingerList* menuPanel_;
  QLabel* banner_;
  QLabel* caption_;
  QListWidget* resultsList_;
  QFrame* resultsFrame_;
  QTableWidget* resultsTable_;
  QFrame* tools_;
  QWidget* lessUsedTools_;
  QPushButton* help_;
  QPushButton* undo_;
  QPushButton* menu_;
  QPushButton* escape_;
  QString escapeHint_;
  QCheckBox* toleranceView_;
  QScrollBar* toleranceBar_;
  QLabel* toleranceLabel_;  // lblTolerance
  std::unique_ptr<Canvas> canvas_;
};

}  // namespace touch
