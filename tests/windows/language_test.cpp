#include "ui/language.h"

#include <set>

#include "app/options.h"
#include "core/result.h"
#include "tests/windows/every_window.h"

namespace touch::test {
namespace {

/// All that a window says, of what is visible and what is not.
QStringList textsOf(const QWidget& window) {
  QStringList texts;
  auto widgets = window.findChildren<QWidget*>();
  widgets.prepend(const_cast<QWidget*>(&window));
  for (const QWidget* const widget : widgets) {
    // The guide is in English.
    bool ofGuide = false;
    for (const QWidget* above = widget; above != nullptr; above = above->parentWidget())
      ofGuide = ofGuide || above->objectName().startsWith("chapter");
    if (ofGuide) continue;
    for (const char* const property : {"text", "title", "windowTitle", "placeholderText", "toolTip",
                                       "accessibleName", "accessibleDescription"})
      texts << widget->property(property).toString();
    if (const auto* const tabs = qobject_cast<const QTabBar*>(widget)) {
      for (int tab = 0; tab < tabs->count(); ++tab)
        texts << tabs->tabText(tab);
    }
    const auto* const view = qobject_cast<const QAbstractItemView*>(widget);
    const auto* const combo = qobject_cast<const QComboBox*>(widget);
    const QAbstractItemModel* const model = view ? view->model() : combo ? combo->model() : nullptr;
    for (int column = 0; model != nullptr && column < model->columnCount(); ++column) {
      if (view != nullptr && !view->inherits("QListView"))
        texts << model->headerData(column, Qt::Horizontal).toString();
      for (int row = 0; row < model->rowCount(); ++row)
        texts << model->index(row, column).data().toString();
    }
  }
  return texts;
}

/// What of a text stands outside the marks, without what no translator is asked for.
QString outsideMarks(QString text) {
  static const QRegularExpression marked("«[^«»]*»");
  while (text.contains(marked))
    text.remove(marked);
  // Names, paths and units, and the system's own wordings: commands, headings and lines that are the same everywhere.
  static const QRegularExpression same(
      "TouchUtility|Version :  3.1.0|M0130100|QRMV0301|[A-Z0-9]+ DEVICE \\d|\\bCOM\\d|/\\S*|mm|ms|"
      "qt_\\w+|=+|RS232|USB|- Baudrate : 9600, N, 8, 1|- Version : 1.1|Output Identity :|"
      "Unit Type :|9600,n,8,1|Ctrl|UL|UR|LL|LR|Line #|AVG|MAX|MIN|Qty|Start|END|offscreen|"
      "N72toN81|\\[ (F1|ESC) +\\] :|\\w+=+[\\w ()]+\\[\\w\\]|- (Keep Power On|Power Saving Mode|"
      "Stream Mode|Untouch Mide)|Power Saving Mode|Operating Mode|cursoroff.txt");
  text.remove(same);
  static const QRegularExpression word("[^\\W\\d_]{2}");
  return text.contains(word) ? text : QString();
}

class Languages : public EveryWindow {};

TEST_F(Languages, EveryTextOfEveryWindowPassesTheTranslator) {
  const Speaking speaking(new LongTexts(qApp));
  std::set<std::string> ofMessageFile;
  for (std::size_t number = 0; number <= 100; ++number)
    ofMessageFile.insert(session.messages.at(number));
  visitAll([&](const std::string& where, QWidget& window) {
    for (QString text : textsOf(window)) {
      for (const std::string& message : ofMessageFile)
        if (message.size() > 1) text.remove(QString::fromStdString(message));
      if (!outsideMarks(text).isEmpty())
        blame(where, window, '"' + text.toStdString() + "\" is not translated");
    }
  });
  for (const std::string& line : journal) {
    if (!line.starts_with("message ")) continue;
    EXPECT_EQ(outsideMarks(QString::fromStdString(line.substr(8))).toStdString(), "");
  }
}

/// Why a widget shows less than it wants to; empty when all of it is there.
std::string clipping(const QWidget& widget) {
  const QRect room = widget.parentWidget()->rect();
  const auto* const label = qobject_cast<const QLabel*>(&widget);
  const auto* const button = qobject_cast<const QAbstractButton*>(&widget);
  const auto* const header = qobject_cast<const QHeaderView*>(&widget);
  if (header != nullptr && !header->isHidden() && header->orientation() == Qt::Horizontal) {
    for (int section = 0; section < header->count(); ++section) {
      const QString text = header->model()->headerData(section, Qt::Horizontal).toString();
      const int needed = header->fontMetrics().horizontalAdvance(text) + 6;
      if (header->sectionSize(section) < needed) return "header " + text.toStdString();
    }
  }
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
  if (!room.contains(widget.geometry())) return "beyond its frame";
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
      for (const auto* const part :
           window.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (part->isVisible() && !part->isWindow() && !window.rect().contains(part->geometry()))
          blame(place, *part, "beyond its window");
      }
      for (const auto* const button : window.findChildren<QPushButton*>()) {
        if (button->isVisible() && button->height() < fingerSize())
          blame(place, *button, "too low for a finger");
      }
      for (const QWidget* const widget : window.findChildren<QWidget*>()) {
        const std::string why = widget->isVisible() ? clipping(*widget) : "";
        if (!why.empty()) blame(place, *widget, why);
      }
    });
  }
}

TEST_F(Languages, EachHasAKeyOfItsOwnForEachControl) {
  for (const char* const language : {"en", "de"}) {
    const Speaking speaking{QString(language)};
    visitAll([&](const std::string& where, QWidget& window) {
      std::set<QString> taken;
      for (const auto* const button : window.findChildren<QAbstractButton*>()) {
        const bool keyIsEscape = button->objectName() == "Label1";
        if (!button->isVisible() || keyIsEscape) continue;
        const QString key = button->shortcut().toString();
        if (key.isEmpty()) {
          if (button->inherits("QPushButton")) blame(where, *button, "has no key");
        } else if (!taken.insert(key).second) {
          blame(where, *button, "has the key of another one");
        }
      }
    });
  }
}

TEST(Language, GermanIsSpokenByWindowsAndLogicAlike) {
  const std::string error = FileError{"a.vrq", 3, "x", "y"}.describe();
  {
    const Speaking speaking(QString("de"));
    EXPECT_EQ(frmMain::tr("Settings"), "Einstellungen");
    EXPECT_EQ((FileError{"a.vrq", 3, "x", "y"}.describe()),
              "a.vrq, Zeile 3: erwartet: x, gefunden: y");
  }
  EXPECT_EQ((FileError{"a.vrq", 3, "x", "y"}.describe()), error);
  EXPECT_FALSE(speak("xx"));
}

TEST(Language, EachThatIsOfferedIsThereAndEachThatIsThereIsOffered) {
  QStringList offered;
  for (const std::string_view language : languages)
    offered << QString::fromUtf8(language.data(), static_cast<qsizetype>(language.size()));
  QStringList there{"en"};
  for (QDirIterator files(":/translations"); files.hasNext();)
    there << files.next().section('_', -1).section('.', 0, 0);
  offered.sort();
  there.sort();
  EXPECT_EQ(offered, there);
  EXPECT_TRUE(offered.contains(systemLanguage(offered)));
}

}  // namespace
}  // namespace touch::test
