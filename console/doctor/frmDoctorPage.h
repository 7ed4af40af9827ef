#pragma once

#include <QWidget>
#include <filesystem>

#include "console/doctor/doctor.h"

class QLabel;

namespace touch {

class Actions;
class FindingsList;
class Prompt;
class Trace;

/// The page "Doctor": what stands between the user and the controller, why it matters, and what to
/// do.
class frmDoctorPage final : public QWidget {
  Q_OBJECT

 public:
  /// `patient` lacks its screens only: those are looked for anew each time.
  frmDoctorPage(Actions& actions, Prompt& prompt, const Trace& trace, Patient patient,
                std::function<void()> searchPorts);

  /// With the screens that are connected now.
  static Patient withScreens(Patient patient);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QWidget* makeHead();
  /// What a finding offers.
  void carryOut(Mend mend);
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
  std::function<void()> searchPorts_;
  QLabel* summary_;
  FindingsList* findings_;
};

}  // namespace touch
