#include "ui/window_manners.h"

#include <QAbstractSpinBox>
#include <QApplication>
#include <QButtonGroup>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QEvent>
#include <QFileDialog>
#include <QFocusEvent>
#include <QLineEdit>
#include <QRadioButton>
#include <QScrollBar>
#include <QSettings>
#include <QSpinBox>
#include <QTimer>
#include <QToolTip>
#include <algorithm>
#include <memory>

#include "ui/text.h"

namespace touch {

namespace {

bool turnsByWheel(const QWidget& widget) {
  if (qobject_cast<const QScrollBar*>(&widget) != nullptr) {
    // Those of a page or a list have none.
    return widget.focusPolicy() != Qt::NoFocus;
  }
  return qobject_cast<const QAbstractSlider*>(&widget) != nullptr ||
         qobject_cast<const QComboBox*>(&widget) != nullptr ||
         qobject_cast<const QAbstractSpinBox*>(&widget) != nullptr;
}

bool takesKeyboard(const QWidget& widget) {
  const bool isAside = widget.windowType() == Qt::ToolTip || widget.windowType() == Qt::Popup ||
                       widget.testAttribute(Qt::WA_ShowWithoutActivating) ||
                       widget.testAttribute(Qt::WA_DontShowOnScreen);
  return widget.isWindow() && !isAside;
}

/// The option that is chosen of those that go with `option`; null when none is.
QAbstractButton* chosenBeside(const QRadioButton& option) {
  QList<QAbstractButton*> options;
  if (option.group() != nullptr) {
    options = option.group()->buttons();
  } else {
    for (auto* const other :
         option.parentWidget()->findChildren<QRadioButton*>(QString(), Qt::FindDirectChildrenOnly))
      options.append(other);
  }
  const auto chosen = std::ranges::find_if(options, &QAbstractButton::isChecked);
  return chosen == options.end() ? nullptr : *chosen;
}

bool cameByTab(const QFocusEvent& event) {
  return event.reason() == Qt::TabFocusReason || event.reason() == Qt::BacktabFocusReason;
}

void sayExpected(QAbstractSpinBox& box) {
  QString text;
  if (const auto* const whole = qobject_cast<QSpinBox*>(&box)) {
    text = WindowManners::tr("A whole number from %1 to %2")
               .arg(QString::number(whole->minimum()), QString::number(whole->maximum()));
  } else if (const auto* const number = qobject_cast<QDoubleSpinBox*>(&box)) {
    text = WindowManners::tr("A number from %1 to %2")
               .arg(shownNumber(number->minimum(), number->decimals()),
                    shownNumber(number->maximum(), number->decimals()));
  }
  QToolTip::showText(box.mapToGlobal(box.rect().bottomLeft()), text, &box);
}

/// What Qt keeps of its file dialogs. It writes that when such a dialog is destroyed.
class DialogSettings {
 public:
  DialogSettings() {
    settings_.beginGroup("FileDialog");
    for (const QString& key : settings_.allKeys())
      before_.insert(key, settings_.value(key));
  }
  void putBack() {
    settings_.remove(QString());
    for (auto kept = before_.cbegin(); kept != before_.cend(); ++kept)
      settings_.setValue(kept.key(), kept.value());
  }

 private:
  QSettings settings_{QSettings::UserScope, "QtProject"};
  QVariantMap before_;
};

}  // namespace

WindowManners::WindowManners() {
  // Where settings are files, none can be made there; and what was never written need not be put
  // back.
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, "/dev/null");
  qApp->installEventFilter(this);
}

bool WindowManners::eventFilter(QObject* watched, QEvent* event) {
  auto* const widget = qobject_cast<QWidget*>(watched);
  if (widget == nullptr) return false;
  switch (event->type()) {
    case QEvent::Polish:
      teach(*widget);
      return false;
    case QEvent::FocusIn: {
      const auto* const option = qobject_cast<QRadioButton*>(widget);
      const auto& focus = *static_cast<QFocusEvent*>(event);
      if (option == nullptr || option->isChecked() || !cameByTab(focus)) return false;
      QAbstractButton* const chosen = chosenBeside(*option);
      if (chosen == nullptr || !chosen->isEnabled()) return false;
      chosen->setFocus(focus.reason());
      return true;
    }
    case QEvent::Wheel:
      if (!turnsByWheel(*widget) || widget->hasFocus()) return false;
      event->ignore();  // it goes on to the page
      return true;
    case QEvent::Show:
      if (!event->spontaneous() && takesKeyboard(*widget)) widget->activateWindow();
      return false;
    case QEvent::Hide:
      if (!event->spontaneous() && hadKeyboard(*widget))
        QTimer::singleShot(0, this, &WindowManners::giveKeyboardBack);
      return false;
    case QEvent::WindowActivate:
      if (takesKeyboard(*widget)) remember(*widget);
      return false;
    case QEvent::MouseButtonPress:
    case QEvent::TouchBegin:
      if (QWidget* const window = widget->window();
          !window->isActiveWindow() && takesKeyboard(*window)) {
        window->activateWindow();
      }
      return false;
    default:
      return false;
  }
}

void WindowManners::teach(QWidget& widget) {
  // A turn of the wheel over it is no choice of it.
  if (widget.focusPolicy() == Qt::WheelFocus && turnsByWheel(widget))
    widget.setFocusPolicy(Qt::StrongFocus);
  if (auto* const box = qobject_cast<QAbstractSpinBox*>(&widget)) {
    auto* const field = box->findChild<QLineEdit*>();
    if (field != nullptr)
      connect(field, &QLineEdit::inputRejected, box, [box] { sayExpected(*box); });
  }
  if (qobject_cast<QFileDialog*>(&widget) != nullptr) {
    auto before = std::make_shared<DialogSettings>();
    connect(&widget, &QObject::destroyed, this, [before] { before->putBack(); });
  }
}

void WindowManners::remember(QWidget& window) {
  std::erase_if(windows_, [&window](const auto& known) { return !known || known == &window; });
  windows_.insert(windows_.begin(), &window);
}

bool WindowManners::hadKeyboard(const QWidget& hidden) const {
  // By now Qt no longer calls it the active window. Whoever works in another program meanwhile is
  // left there.
  return !windows_.empty() && windows_.front().data() == &hidden &&
         QGuiApplication::applicationState() == Qt::ApplicationActive;
}

void WindowManners::giveKeyboardBack() {
  for (const QPointer<QWidget>& window : windows_) {
    if (!window || !window->isVisible() || window->isMinimized()) continue;
    QWidget* const modal = QApplication::activeModalWidget();
    (modal != nullptr ? modal : window.data())->activateWindow();
    return;
  }
}

}  // namespace touch
