#pragma once

#include <QWidget>
#include <filesystem>

#include "core/driver/trace.h"
#include "support/notice.h"

class QCheckBox;
class QComboBox;
class QFrame;
class QPushButton;

namespace touch {

/// The page "Maintenance": the controller's defaults and its reset, and the advanced frame that the
/// key I reveals.
class frmMaintenancePage final : public QWidget {
  Q_OBJECT

 public:
  frmMaintenancePage(const std::filesystem::path& driver, const std::filesystem::path& workFolder,
                     Trace& trace, QWidget* parent = nullptr);

  void showAdvancedFrame();
  /// What has the focus when nothing else on the page has it: pressing it changes nothing in a
  /// controller.
  QWidget* harmless() const;
  /// Whether there is a controller to maintain.
  void setPossible(bool possible);
  /// Whether there is something that "Undo" would take back.
  void allowUndo(bool possible);
  /// Tells when the trace has ended early, and switches it off.
  void watchTrace();

 signals:
  void defaultsRequested();
  void resetRequested();
  void undoRequested();
  void monitorRequested(int monitor);  ///< counted from 1
  void debuggerRequested();
  void pinDefinitionRequested();
  void statusChanged(const touch::Notice& status);
  void opened(QWidget* frame);

 private:
  QWidget* makeFunctions();
  QWidget* makeTools();
  QWidget* makeMonitors();
  void fillMonitors();
  void switchTrace(bool on);

  Trace& trace_;
  std::filesystem::path workFolder_;
  QWidget* functions_;
  QWidget* monitorRow_;
  QPushButton* advanced_;
  QFrame* advancedFrame_;
  QPushButton* undo_;
  QComboBox* monitors_;
  QCheckBox* traceSwitch_;
};

}  // namespace touch
