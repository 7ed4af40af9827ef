#pragma once

#include <QListWidget>
#include <functional>

#include "console/doctor/doctor.h"

namespace touch {

/// The doctor's findings: problems and notes as coloured cards, what mends one beside it where the
/// program can do that; then what is in order, under a heading for each topic.
class FindingsList final : public QListWidget {
  Q_OBJECT

 public:
  /// Told what the user wants done.
  using Mender = std::function<void(Mend)>;

  explicit FindingsList(Mender mender);

  void showAll(const std::vector<Finding>& findings);

 protected:
  /// A finding may be taller than the list: its keys first scroll to the end of it, then on to the
  /// next one.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  bool scrollWithin(int key);
  void addMend(QListWidgetItem& item, Mend mend);

  Mender mender_;
  QWidget* lastMend_ = nullptr;  ///< of those that are shown
};

}  // namespace touch
