#pragma once

#include <QByteArray>
#include <QColor>
#include <QIcon>
#include <QWidget>
#include <array>
#include <optional>
#include <thread>

#include "measure/report/report_pages.h"

class QLabel;
class QTabWidget;
class QTreeWidget;
class QTreeWidgetItem;

namespace touch::measure {

/// Of the outcome's word in such a window.
QColor outcomeColour(Outcome outcome, const QPalette& window);

/// All pages of a report below each other, as the content of a PNG file.
QByteArray measurementPng(const Report& report);
/// As a PDF file.
QByteArray measurementPdf(const Report& report);

/// What a measurement says: the verdict, each figure beside its limit, the map of errors, causes
/// and advice. It is analysed beside the window's thread, which goes on meanwhile.
class frmVerdict final : public QWidget {
  Q_OBJECT

 public:
  explicit frmVerdict(QWidget* parent = nullptr);
  ~frmVerdict() override;

  /// Shows it as soon as it is analysed; of several the last.
  void showMeasurement(Measurement measurement);
  /// What is shown; nothing before the first one is.
  const Report* report() const { return report_ ? &*report_ : nullptr; }
  /// For pages of others beside its own.
  QTabWidget& pages() { return *pages_; }
  /// Puts the keyboard on the choice of pages.
  void takeFocus();

 signals:
  /// `report()` is that of the last measurement.
  void shown();

 private:
  class MapView;

  QTreeWidget* makeFigures();
  void analyseNext();
  void fill();
  void fillFigures();
  QTreeWidgetItem* addSubject(const Subject& subject);
  const QIcon& iconOf(Outcome outcome) const;
  void showOutcome(QTreeWidgetItem& item, Outcome outcome, bool isBold);
  QString causesAndAdvice() const;

  std::optional<Measurement> waiting_;  ///< what is to be analysed next
  bool isAnalysing_ = false;
  std::optional<Report> report_;
  std::array<QIcon, 3> icons_;  ///< of the outcomes: a style takes long to find one

  QLabel* icon_;
  QLabel* verdict_;
  QLabel* panel_;
  QTabWidget* pages_;
  QTreeWidget* figures_;
  MapView* map_;
  QLabel* causes_;
  std::jthread worker_;  ///< last: it ends before what it speaks to goes
};

}  // namespace touch::measure
