#pragma once

#include <QWidget>
#include <vector>

#include "commission/run/run_folder.h"

class QComboBox;
class QLabel;
class QVBoxLayout;

namespace touch::commission {

/// The first page of a commissioning: how much is measured and what the panel is for, or which run
/// goes on.
class frmCommissionStart final : public QWidget {
  Q_OBJECT

 public:
  explicit frmCommissionStart(QWidget* parent = nullptr);

  /// `folder` is where runs are saved.
  void offer(std::vector<UnfinishedRun> unfinished, const std::filesystem::path& folder);
  Profile profile() const;
  std::string use() const;
  void takeFocus();

 signals:
  void beginRequested();
  void goOnRequested(const touch::commission::UnfinishedRun& run);
  void folderRequested();
  void leaveRequested();

 private:
  QWidget* makeChoices();
  QWidget* makeFolderRow();
  QWidget* makeButtons();

  QVBoxLayout* rows_;
  QWidget* unfinished_ = nullptr;
  QComboBox* profile_;
  QComboBox* use_;
  QLabel* folder_;
};

}  // namespace touch::commission
