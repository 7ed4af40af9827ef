#include "console/panels/frmCommissionPage.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "console/actions/main_model.h"
#include "console/main/frmWindows.h"
#include "ui/controls/finger_style.h"
#include "ui/guide/help.h"
#include "ui/style/face_style.h"
#include "ui/style/signs.h"

namespace touch {

frmCommissionPage::frmCommissionPage(MainModel& model, frmWindows& windows) {
  setHelpChapter(*this, "Commission a panel");
  const QString purpose =
      tr("One guided run: look whether anything is in the way, name the panel, keep its "
         "parameters, compare the settings, calibrate, check the calibration, measure, and write "
         "the sheet that you hand over.");
  auto* const button = new QPushButton(tr("Commission a &panel"));
  button->setObjectName("cmdCommission");
  button->setToolTip(tr("Ctrl+K"));
  button->setAccessibleDescription(purpose);
  button->setMinimumWidth(4 * fingerSize());
  setKind(*button, ButtonKind::primary);
  giveSign(*button, Sign::commission);
  connect(button, &QPushButton::clicked, this, [&windows] { windows.commission(); });
  auto* const layout = new QVBoxLayout(this);
  for (const QString& text :
       {purpose,
        tr("You can stop at any time, and so can the power: the run goes on where it was. "
           "Parameters and calibration of before are kept, and a calibration that does not pass "
           "its check is taken back by itself.")}) {
    auto* const told = new QLabel(text);
    told->setWordWrap(true);
    layout->addWidget(told);
  }
  layout->addWidget(button, 0, Qt::AlignLeft);
  layout->addStretch();
  model.watch([this, &model](Part part) {
    if (part == Part::controllers) setEnabled(model.selected.has_value());
  });
}

}  // namespace touch
