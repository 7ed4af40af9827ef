#pragma once

#include <QWidget>

#include "serial/receiving/receive_mode.h"

class QLabel;

namespace touch {

class RateHistogram;

/// What lies behind the measured report rate: the intervals in words and as a histogram.
class frmRatePanel final : public QWidget {
  Q_OBJECT

 public:
  explicit frmRatePanel(QWidget* parent = nullptr);

  /// What `mode` measured last. `withRate`: also what the console says of it.
  void show(const ReceiveMode& mode, bool withRate);

 private:
  QLabel* evidence_;
  RateHistogram* histogram_;
};

}  // namespace touch
