#include "ui/language.h"

#include <locale>

#include "app/options.h"
#include "support/result.h"
#include "tests/ui/every_window.h"

namespace touch::test {
namespace {

class Languages : public EveryWindow {
 protected:
  ~Languages() override {
    speakOnly("en");
    std::locale::global(before_);
  }
  static void speakOnly(const QString& language) {
    qDeleteAll(qApp->findChildren<QTranslator*>());
    EXPECT_TRUE(speak(language)) << language.toStdString();
  }

 private:
  std::locale before_;
};

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
  speakOnly(isSmallScreen() ? "en" : "de");
  visitAll([&](const std::string& where, QWidget& window) {
    if (!QRect({}, sizeHere()).contains(QRect({}, window.size())))
      blame(where, window, "larger than its screen");
    for (const QWidget* const widget : window.findChildren<QWidget*>()) {
      if (!widget->isVisible()) continue;
      if (widget->parentWidget() == &window && !widget->isWindow() &&
          !window.rect().contains(widget->geometry()))
        blame(where, *widget, "beyond its window");
      if (widget->inherits("QPushButton") && widget->height() < fingerSize())
        blame(where, *widget, "too low for a finger");
      if (const std::string why = clipping(*widget); !why.empty()) blame(where, *widget, why);
    }
  });
}

TEST_F(Languages, EachHasKeysOfItsOwnAndAMainWindowThatFits) {
  for (const std::string_view language : languages) {
    speakOnly(QString::fromStdString(std::string(language)));
    std::map<std::string, QString> keys;  // of the main window's buttons on all pages
    visitAll([&](const std::string& where, QWidget& window) {
      std::set<QString> taken;
      const bool inMain = where.starts_with("frmMain,");
      if (inMain && window.minimumSizeHint().width() > sizeHere().width())
        blame(where + ", " + std::string(language), window,
              "needs a width of " + std::to_string(window.minimumSizeHint().width()));
      for (const auto* const button : window.findChildren<QAbstractButton*>()) {
        const QString name = button->objectName();
        const bool keyIsEscape = name == "Label1" || name == "cmdEscape";
        // Whoever has keys does not need those on the screen.
        const bool isKey = button->parentWidget()->objectName() == "screenKeyboard";
        if (!button->isVisible() || keyIsEscape || isKey) continue;
        const QString key = button->shortcut().toString();
        if (key.isEmpty() ? button->inherits("QPushButton") : !taken.insert(key).second)
          blame(where, *button, "has no key of its own");
        if (inMain) keys[name.toStdString()] = key;
      }
    });
    // Whoever types a harmless key on the wrong page is not to reset the controller. Both "Undo" do
    // the same.
    keys.erase("cmdUndoParameters");
    for (const char* const dangerous : {"Command2", "Command3", "cmdUndoDefaults"}) {
      for (const auto& [name, key] : keys)
        EXPECT_TRUE(name == dangerous || key != keys.at(dangerous))
            << language << ": " << name << " has the key of " << dangerous;
    }
  }
}

TEST_F(Languages, GermanIsSpokenByWindowsAndLogicAlike) {
  speakOnly("de");
  EXPECT_EQ(frmMain::tr("Settings"), "Einstellungen");
  EXPECT_EQ((FileError{"a.vrq", 3, "x", "y"}.describe()),
            "a.vrq, Zeile 3: erwartet: x, gefunden: y");
  EXPECT_FALSE(speak("xx"));
  EXPECT_EQ(systemLanguage({"xx"}), "xx");
}

}  // namespace
}  // namespace touch::test
