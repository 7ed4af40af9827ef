#include "console/main/frmGreeting.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <utility>

#include "ui/controls/finger_style.h"
#include "ui/guide/help.h"
#include "ui/style/signs.h"

namespace touch {

frmGreeting::frmGreeting(const std::function<void(Choice)>& choose)
    : QGroupBox(tr("What do you want to do first?")) {
  setObjectName("frmGreeting");
  setHelpChapter(*this, "Starting");
  const struct {
    Choice choice;
    const char* name;
    QString caption;
    QString purpose;
    Sign sign;
  } choices[] = {
      {Choice::calibrate, "cmdGreetCalibrate", tr("Cali&brate a panel"),
       tr("Goes to the page \"Calibration\"."), Sign::calibration},
      {Choice::prove, "cmdGreetProve", tr("&Prove a panel"), tr("Goes to the page \"Tests\"."),
       Sign::measure},
      {Choice::talk, "cmdGreetTalk", tr("Tal&k to a controller"),
       tr("Opens the serial debugger, which asks for the service password."), Sign::talk},
      {Choice::notNow, "cmdGreetNotNow", tr("N&ot now"),
       tr("All of it is on the pages, too. This is not asked again."), Sign::cross},
  };
  auto* const grid = new QGridLayout(this);
  const int columns = isSmallScreen() ? 2 : 4;
  int place = 0;
  for (const auto& offered : choices) {
    auto* const button = new QPushButton(offered.caption);
    button->setObjectName(offered.name);
    button->setToolTip(offered.purpose);
    button->setAccessibleDescription(offered.purpose);
    giveSign(*button, offered.sign);
    grid->addWidget(button, place / columns, place % columns);
    ++place;
    connect(
        button, &QPushButton::clicked, this, [choose, choice = offered.choice] { choose(choice); },
        Qt::QueuedConnection);
  }
}

}  // namespace touch
