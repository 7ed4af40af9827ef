#pragma once

#include <QWidget>
#include <vector>

#include "commission/run_folder.h"

class QComboBox;
class QVBoxLayout;

namespace touch::commission {

/// The first page of a commissioning: how much is measured and what the panel is for, or which run
/// goes on.
class frmCommissionStart final : public QWidget {
  Q_OBJECT

 public:
  explicit frmCommissionStart(QWidget* parent = nullptr);

  void offer(std::vector<UnfinishedRun> unfinished);
  Profile profile() const;
  std::string use() const;
  void takeFocus();

 signals:
  void beginRequested();
  void goOnRequested(const touch::commission::UnfinishedRun& run);
  void leaveRequested();

 private:
  QWidget* makeChoices();
  QWidget* makeButtons();

  QVBoxLayout* rows_;
  QWidget* unfinished_ = nullptr;
  QComboBox* profile_;
  QComboBox* use_;
};

}  // namespace touch::commission
