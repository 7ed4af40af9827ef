#include "console/panels/frmTestsPage.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "console/main/frmWindows.h"
#include "console/panels/simulated_panels.h"
#include "ui/controls/finger_style.h"
#include "ui/guide/help.h"
#include "ui/style/signs.h"
#include "ui/text.h"

namespace touch {

frmTestsPage::frmTestsPage(frmWindows& windows, SimulatedPanels* panels) {
  setHelpChapter(*this, "Prove a panel is good");
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(makeTests(windows));
  if (panels != nullptr) layout->addWidget(makeFaults(*panels));
  layout->addStretch();
}

QWidget* frmTestsPage::makeTests(frmWindows& windows) {
  auto* const box = new QWidget;
  auto* const grid = new QGridLayout(box);
  grid->setContentsMargins(0, 0, 0, 0);
  const struct {
    const char* name;
    QString caption;
    QString purpose;
    void (frmWindows::*open)();
    Sign sign;
  } tests[] = {
      {"cmdDraw", tr("&Draw"),
       tr("Draw freely or along guide lines, and see where the ink leaves them."),
       &frmWindows::draw, Sign::tests},
      {"cmdMeasure", tr("&Measure"),
       tr("Draw lines along guides and prove in millimetres how good the panel is. Calibrate it "
          "first."),
       &frmWindows::measurePanel, Sign::measure},
  };
  int row = 0;
  for (const auto& test : tests) {
    auto* const button = new QPushButton(test.caption);
    button->setObjectName(test.name);
    giveSign(*button, test.sign);
    button->setMinimumWidth(3 * fingerSize());
    button->setAccessibleDescription(test.purpose);
    auto* const purpose = new QLabel(test.purpose);
    purpose->setWordWrap(true);
    grid->addWidget(button, row, 0);
    grid->addWidget(purpose, row, 1);
    ++row;
    connect(button, &QPushButton::clicked, this,
            [&windows, open = test.open] { (windows.*open)(); });
  }
  grid->setColumnStretch(1, 1);
  return box;
}

QWidget* frmTestsPage::makeFaults(SimulatedPanels& panels) {
  auto* const group = new QGroupBox(tr("Faults of the simulated panels"));
  auto* const grid = new QGridLayout(group);
  grid->setVerticalSpacing(0);
  int row = 0;
  for (const SimulatedFault& fault : simulatedFaults) {
    auto* const box = new QCheckBox(spokenText("main", fault.caption));
    box->setObjectName("fault_" + shownText(fault.trait));
    box->setAccessibleDescription(spokenText("main", fault.effect));
    auto* const effect = new QLabel(spokenText("main", fault.effect));
    effect->setWordWrap(true);
    grid->addWidget(box, row, 0);
    grid->addWidget(effect, row, 1);
    ++row;
    connect(box, &QCheckBox::toggled, this,
            [&panels, &fault](bool on) { panels.switchFault(fault, on); });
  }
  grid->setColumnStretch(1, 1);
  return group;
}

}  // namespace touch
