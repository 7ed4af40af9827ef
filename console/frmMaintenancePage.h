#pragma once

#include <QWidget>
#include <filesystem>

#include "core/trace.h"

class QCheckBox;
class QFrame;

namespace touch {

/// The page "Maintenance", with the advanced frame that the key I reveals.
class frmMaintenancePage final : public QWidget {
  Q_OBJECT

 public:
  frmMaintenancePage(const std::filesystem::path& driver, const std::filesystem::path& workFolder,
                     Trace& trace, QWidget* parent = nullptr);

  void showAdvancedFrame();

 signals:
  void statusChanged(const QString& text);

 private:
  void switchTrace(bool on);

  Trace& trace_;
  std::filesystem::path traceFile_;
  QFrame* advancedFrame_;
  QCheckBox* traceSwitch_;
};

}  // namespace touch
