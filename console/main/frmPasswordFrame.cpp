#include "console/main/frmPasswordFrame.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>

#include "console/main/frmWindows.h"
#include "console/main/main_console.h"
#include "ui/text.h"

namespace touch {

frmPasswordFrame::frmPasswordFrame(MainModel& model, MainConsole& console, frmWindows& windows,
                                   bool simulated, GiveFocusBack giveFocusBack)
    : console_(console), giveFocusBack_(std::move(giveFocusBack)), box_(new QLineEdit) {
  setObjectName("passwordFrame");
  setFrameShape(QFrame::StyledPanel);
  box_->setObjectName("passwordBox");
  box_->setEchoMode(QLineEdit::Password);
  box_->setAccessibleName(tr("Password"));
  auto* const label = new QLabel(tr("Password:"));
  label->setBuddy(box_);
  auto* const row = new QHBoxLayout(this);
  row->addWidget(label);
  row->addWidget(box_, 1);
  hide();
  if (simulated) {
    // Who tries the program out has nobody to ask.
    box_->setPlaceholderText(tr("Simulation: the password is %1").arg(shownText(servicePassword)));
  }
  connect(box_, &QLineEdit::textEdited, this, [this](const QString& text) {
    const std::string& kept = console_.passwordEdited(text.toStdString());
    if (kept.size() != static_cast<std::size_t>(text.toUtf8().size()))
      box_->setText(shownText(kept));
  });
  connect(box_, &QLineEdit::returnPressed, this, [this, &windows] {
    if (console_.passwordEntered(box_->text().toStdString())) windows.openDebugger();
  });
  model.watch([this, &model](Part part) {
    if (part == Part::password) showWanted(model.passwordWanted);
  });
}

void frmPasswordFrame::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape)
    console_.passwordDismissed();
  else
    QFrame::keyPressEvent(event);
}

void frmPasswordFrame::showWanted(bool wanted) {
  if (wanted) {
    if (!box_->hasFocus()) focusBefore_ = window()->focusWidget();
    show();
    box_->selectAll();
    box_->setFocus();
    return;
  }
  const bool hadFocus = window()->focusWidget() == box_;
  hide();
  if (hadFocus) giveFocusBack_(focusBefore_);
}

}  // namespace touch
