#include "ui/driver_notice.h"

#include <QLabel>
#include <QPushButton>

#include "ui/controls/finger_style.h"
#include "ui/controls/graphic.h"
#include "ui/event_loop_clock.h"
#include "ui/guide/help.h"
#include "ui/message_box_prompt.h"
#include "ui/text.h"

namespace touch {

namespace {

/// Whoever has chosen to wait is not asked again at once.
constexpr std::chrono::seconds untilAskedAgain{10};

/// A box beside which everything goes on. Its picture is read out as `meaning`.
QMessageBox* makeBox(QMessageBox::Icon icon, const QString& meaning, const char* name,
                     const QString& text) {
  auto* const box =
      new QMessageBox(icon, "TouchUtility", {}, QMessageBox::NoButton, windowInFront());
  box->setObjectName(name);
  box->setModal(false);  // else no other window could be closed
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setTextFormat(Qt::PlainText);
  box->setText(text);
  setHelpChapter(*box, "The driver hangs or crashes");
  if (auto* const picture = box->findChild<QLabel*>("qt_msgboxex_icon_label"))
    presentAsGraphic(*picture, meaning, meaning);
  return box;
}

}  // namespace

DriverPatience::Next DriverNotice::stillWaiting(const DriverWait& wait) {
  waited_ = wait.waited;
  if (restart_) return Next::giveUp;
  if (wait.waited >= nextLook_ && !box_) show(wait);
  return Next::wait;
}

void DriverNotice::show(const DriverWait& wait) {
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(wait.waited).count();
  // Without a key for the guide: while the driver is waited for, nothing but this box can be used.
  box_ = makeBox(QMessageBox::Warning, QMessageBox::tr("Warning"), "driverHangs",
                 QMessageBox::tr("The touch driver %1 has not returned from %2 for %3 seconds.")
                     .arg(shownText(wait.library), shownText(wait.operation))
                     .arg(seconds));
  box_->setInformativeText(
      QMessageBox::tr("Wait, or restart the driver: then this action ends as if the controller did "
                      "not answer."));
  auto* const keepWaiting = box_->addButton(QMessageBox::tr("&Wait"), QMessageBox::RejectRole);
  auto* const restart =
      box_->addButton(QMessageBox::tr("&Restart the driver"), QMessageBox::AcceptRole);
  keepWaiting->setObjectName("cmdWait");
  restart->setObjectName("cmdRestartDriver");
  for (QAbstractButton* const button : box_->buttons())
    makeFingerSized(*button);
  box_->setDefaultButton(keepWaiting);
  box_->setEscapeButton(keepWaiting);
  QObject::connect(restart, &QPushButton::clicked, box_, [this] { restart_ = true; });
  // However it was closed, waiting was chosen, unless the other was.
  QObject::connect(box_, &QMessageBox::finished, box_, [this] {
    nextLook_ = waited_ + untilAskedAgain;
    box_.clear();
    clock_.letThrough(nullptr);
  });
  box_->show();
  clock_.letThrough(box_);
}

void DriverNotice::waitEnded() {
  clock_.letThrough(nullptr);
  delete box_;
  nextLook_ = unsaid;
  restart_ = false;
}

void DriverNotice::lost(const std::string& text) {
  if (ending_ && onLostInEnding) onLostInEnding();
  // Whoever has restarted it knows, and whoever leaves does not care.
  if (restart_ || ending_) return;
  auto* const box =
      makeBox(QMessageBox::Critical, QMessageBox::tr("Error"), "driverLost", shownText(text));
  QPushButton* const understood = box->addButton(QMessageBox::Ok);
  understood->setText(QMessageBox::tr("&OK"));
  makeFingerSized(*understood);
  box->setDefaultButton(understood);
  addHelpKey(*box);
  box->show();
}

}  // namespace touch
