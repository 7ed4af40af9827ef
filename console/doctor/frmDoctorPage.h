#pragma once

#include <QWidget>
#include <filesystem>

#include "console/doctor/doctor.h"

class QLabel;
class QListWidget;

namespace touch {

/// The page "Doctor": what stands between the user and his controller, why it matters, and what to
/// do.
class frmDoctorPage final : public QWidget {
  Q_OBJECT

 public:
  explicit frmDoctorPage(const std::filesystem::path& workFolder, QWidget* parent = nullptr);

  void showDiagnosis(const Diagnosis& diagnosis);

 signals:
  /// The page is shown with nothing on it: what can be seen without asking a controller is wanted.
  void seen();
  void refreshRequested();
  void saveRequested(const QString& file);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QWidget* makeHead();
  void chooseFile();

  std::filesystem::path workFolder_;
  QLabel* summary_;
  QListWidget* findings_;
};

}  // namespace touch
