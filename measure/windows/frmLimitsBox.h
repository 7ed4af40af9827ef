#pragma once

#include <QComboBox>
#include <filesystem>

#include "measure/windows/measure_setup.h"
#include "support/prompt.h"

namespace touch::measure {

/// The choice of limits: the profiles, the file that was read last, and another file.
class frmLimitsBox final : public QComboBox {
  Q_OBJECT

 public:
  frmLimitsBox(Prompt& prompt, MeasureSetup& setup, std::filesystem::path folder);

  /// Shows what the setup says.
  void refresh();
  /// Shows the limits that a measurement was judged by, which need not be the setup's.
  void showLimits(const Limits& limits);

 signals:
  void limitsChanged();

 private:
  void choose(int index);

  Prompt& prompt_;
  MeasureSetup& setup_;
  std::filesystem::path folder_;
};

}  // namespace touch::measure
