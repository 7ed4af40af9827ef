#include "ui/language.h"

#include <set>

#include "app/options.h"
#include "core/result.h"
#include "tests/windows/every_window.h"

namespace touch::test {
namespace {

/// What a window and its controls say, visible or not.
QStringList textsOf(const QWidget& window) {
  QStringList texts{window.windowTitle()};
  for (const QWidget* const widget : window.findChildren<QWidget*>()) {
    for (const char* const property :
         {"text", "title", "placeholderText", "toolTip", "accessibleName", "accessibleDescription"})
      texts << widget->property(property).toString();
    const auto* const tabs = qobject_cast<const QTabBar*>(widget);
    for (int tab = 0; tabs != nullptr && tab < tabs->count(); ++tab)
      texts << tabs->tabText(tab);
  }
  return texts;
}

/// Whether a word of a text stands outside the marks, without what no translator is asked for.
bool isLeftOut(QString text) {
  static const QRegularExpression marked("«[^«»]*»");
  while (text.contains(marked))
    text.remove(marked);
  // Names, paths and units.
  static const QRegularExpression same(
      "TouchUtility|Test Program|Version :  3.1.0|M0130100|QRMV0301|[A-Z0-9]+ DEVICE \\d|"
      "\\bCOM\\d|/\\S*|mm|ms|Ctrl|UL|UR|LL|LR");
  static const QRegularExpression word("[^\\W\\d_]{2}");
  return text.remove(same).contains(word);
}

class Languages : public EveryWindow {};

TEST_F(Languages, EveryTextOfEveryWindowPassesTheTranslator) {
  const Speaking speaking(new LongTexts(qApp));
  visitAll([&](const std::string& where, QWidget& window) {
    for (const QString& text : textsOf(window))
      if (isLeftOut(text)) blame(where, window, '"' + text.toStdString() + "\" is not translated");
  });
}

/// Why a widget shows less than it wants to; empty when all of it is there.
std::string clipping(const QWidget& widget) {
  const auto* const label = qobject_cast<const QLabel*>(&widget);
  const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
  if ((label == nullptr || label->text().isEmpty()) && button == nullptr) return {};
  if (widget.parentWidget()->inherits("QTabBar")) return {};
  const int height = widget.hasHeightForWidth() ? widget.heightForWidth(widget.width())
                                                : widget.sizeHint().height();
  // A label that wraps may be as narrow as its longest word, a button as its caption.
  const int besideCaption = isSmallScreen() ? 4 : 16;
  const int width =
      label != nullptr && label->wordWrap() ? label->minimumSizeHint().width()
      : widget.inherits("QPushButton")
          ? widget.fontMetrics().size(Qt::TextShowMnemonic, button->text()).width() + besideCaption
          : widget.sizeHint().width();
  if (widget.width() < width) return "too narrow";
  if (widget.height() < height) return "too low";
  if (!widget.parentWidget()->rect().contains(widget.geometry())) return "beyond its frame";
  return {};
}

TEST_F(Languages, LayoutsHold) {
  // Where every line counts there is room for the texts as they are, and no more.
  const Speaking speaking =
      isSmallScreen() ? Speaking(QString("en")) : Speaking(new LongTexts(qApp));
  for (const QSize& size : sizesHere()) {
    visitAll(size, [&](const std::string& where, QWidget& window) {
      const std::string place = where + " at " + std::to_string(size.width());
      if (!QRect({}, size).contains(QRect({}, window.size())))
        blame(place, window, "larger than its screen");
      for (const QWidget* const widget : window.findChildren<QWidget*>()) {
        if (!widget->isVisible()) continue;
        if (widget->parentWidget() == &window && !widget->isWindow() &&
            !window.rect().contains(widget->geometry()))
          blame(place, *widget, "beyond its window");
        if (widget->inherits("QPushButton") && widget->height() < fingerSize())
          blame(place, *widget, "too low for a finger");
        if (const std::string why = clipping(*widget); !why.empty()) blame(place, *widget, why);
      }
    });
  }
}

TEST_F(Languages, EachHasAKeyOfItsOwnForEachControl) {
  for (const std::string_view language : languages) {
    const Speaking speaking(QString::fromStdString(std::string(language)));
    visitAll([&](const std::string& where, QWidget& window) {
      std::set<QString> taken;
      for (const auto* const button : window.findChildren<QAbstractButton*>()) {
        const bool keyIsEscape = button->objectName() == "Label1";
        if (!button->isVisible() || keyIsEscape) continue;
        const QString key = button->shortcut().toString();
        if (key.isEmpty() ? button->inherits("QPushButton") : !taken.insert(key).second)
          blame(where, *button, "has no key of its own");
      }
    });
  }
}

TEST(Language, GermanIsSpokenByWindowsAndLogicAlike) {
  const Speaking speaking(QString("de"));
  EXPECT_EQ(frmMain::tr("Settings"), "Einstellungen");
  EXPECT_EQ((FileError{"a.vrq", 3, "x", "y"}.describe()),
            "a.vrq, Zeile 3: erwartet: x, gefunden: y");
  EXPECT_FALSE(speak("xx"));
  EXPECT_EQ(systemLanguage({"xx"}), "xx");
}

}  // namespace
}  // namespace touch::test
