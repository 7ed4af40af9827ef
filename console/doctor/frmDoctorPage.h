#pragma once

#include <QWidget>
#include <filesystem>

#include "console/doctor/doctor.h"

class QLabel;
class QListWidget;

namespace touch {

class Actions;
class Prompt;
class Trace;

/// The page "Doctor": what stands between the user and his controller, why it matters, and what to
/// do.
class frmDoctorPage final : public QWidget {
  Q_OBJECT

 public:
  /// `patient` lacks its screens only: those are looked for anew each time.
  frmDoctorPage(Actions& actions, Prompt& prompt, const Trace& trace, Patient patient);

  /// With the screens that are connected now.
  static Patient withScreens(Patient patient);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QWidget* makeHead();
  void refresh();
  /// Examines and shows what was found.
  Diagnosis diagnose();
  void tellProgress(const std::string& what);
  void showDiagnosis(const Diagnosis& diagnosis);
  void chooseFile();
  void save(const std::filesystem::path& file);

  Actions& commands_;
  Prompt& prompt_;
  const Trace& trace_;
  Patient patient_;
  QLabel* summary_;
  QListWidget* findings_;
};

}  // namespace touch
