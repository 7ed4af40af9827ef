#pragma once

#include <QWidget>

namespace touch {

class frmWindows;
class MainModel;

/// The page "Commission": what a commissioning is, and the way into it.
class frmCommissionPage final : public QWidget {
  Q_OBJECT

 public:
  frmCommissionPage(MainModel& model, frmWindows& windows);
};

}  // namespace touch
