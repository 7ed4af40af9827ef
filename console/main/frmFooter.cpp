#include "console/main/frmFooter.h"

#include <QHBoxLayout>
#include <QPushButton>

#include "console/main/main_console.h"
#include "ui/controls/finger_style.h"
#include "ui/guide/help.h"
#include "ui/style/signs.h"

namespace touch {

frmFooter::frmFooter(MainModel& model, MainConsole& console)
    : model_(model),
      cancelSearch_(new QPushButton(tr("&Stop searching"))),
      release_(new QPushButton(tr("Re&lease comport and Exit"))) {
  auto* const row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(3);
  cancelSearch_->setObjectName("cmdCancelSearch");
  cancelSearch_->hide();
  release_->setObjectName("cmdRelease");
  release_->setEnabled(false);  // until it is known whose port is to be released
  auto* const exit = new QPushButton(tr("E&xit"));
  exit->setObjectName("cmdExit");
  giveSign(*exit, Sign::exit);
  auto* const help = new QPushButton(tr("&Help"));
  help->setObjectName("cmdHelp");
  giveSign(*help, Sign::help);
  help->setToolTip(tr("The user guide, at what is shown here (F1)"));
  row->addWidget(help);
  row->addStretch(1);
  row->addWidget(cancelSearch_);
  row->addWidget(release_);
  row->addWidget(exit);
  connect(cancelSearch_, &QPushButton::clicked, this, [&console] { console.cancelSearch(); });
  connect(help, &QPushButton::clicked, this, [this] { showHelp(*window()); });
  connect(release_, &QPushButton::clicked, this, [&console] { console.releaseAndExit(); });
  connect(exit, &QPushButton::clicked, this, [&console] { console.exit(); });
  model.watch([this](Part part) {
    if (part == Part::work) showWork();
  });
}

void frmFooter::showWork() {
  const bool canBeStopped = model_.work && model_.work->canBeStopped;
  if (canBeStopped == cancelSearch_->isHidden()) showSearch(canBeStopped);
  release_->setEnabled(!model_.work);
}

void frmFooter::showSearch(bool canBeStopped) {
  // The way out is of no use meanwhile, and a small screen has no room for both.
  release_->setVisible(!canBeStopped || !isSmallScreen());
  // Afterwards nobody is to come upon the ways out, or another search, by a Space that was meant to
  // stop this one.
  if (!canBeStopped) window()->setFocus();
  cancelSearch_->setVisible(canBeStopped);
  if (canBeStopped) cancelSearch_->setFocus();
}

}  // namespace touch
