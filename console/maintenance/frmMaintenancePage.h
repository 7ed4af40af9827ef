#pragma once

#include <QWidget>
#include <filesystem>
#include <functional>

#include "console/actions/main_model.h"
#include "console/parameters/parameter_editor.h"
#include "core/driver/trace.h"

class QCheckBox;
class QFrame;
class QPushButton;

namespace touch {

class Actions;

/// What lies behind the page "Maintenance" elsewhere.
struct MaintenanceTools {
  std::function<void()> debug;
  std::function<void()> definePins;
  std::function<void(int monitor)> assignMonitor;  ///< counted from 1
};

/// The page "Maintenance": the controller's defaults and its reset, and the advanced frame that the
/// key I reveals.
class frmMaintenancePage final : public QWidget {
  Q_OBJECT

 public:
  frmMaintenancePage(MainModel& model, Actions& actions, ParameterEditor& editor, Trace& trace,
                     const std::filesystem::path& driver, const std::filesystem::path& workFolder,
                     MaintenanceTools tools);

  void showAdvancedFrame();
  /// What has the focus when nothing else on the page has it: pressing it changes nothing in a
  /// controller.
  QWidget* harmless() const;

 private:
  QWidget* makeFunctions();
  QWidget* makeTools();
  void switchTrace(bool on);
  /// Tells when the trace has ended early, and switches it off.
  void watchTrace();
  void draw(Part part);

  const MainModel& model_;
  Actions& commands_;
  ParameterEditor& editor_;
  Trace& trace_;
  MaintenanceTools tools_;
  std::filesystem::path workFolder_;
  QWidget* functions_;
  QWidget* monitorRow_;
  QPushButton* advanced_;
  QFrame* advancedFrame_;
  QPushButton* undo_;
  QCheckBox* traceSwitch_;
};

}  // namespace touch
