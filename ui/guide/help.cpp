#include "ui/guide/help.h"

#include <QGuiApplication>
#include <QShortcut>
#include <QVariant>
#include <QWidget>

#include "ui/guide/guide_window.h"

namespace touch {

namespace {

constexpr auto chapterProperty = "helpChapter";

}  // namespace

void setHelpChapter(QWidget& widget, const char* heading) {
  widget.setProperty(chapterProperty, QString::fromUtf8(heading));
}

QString helpChapter(const QWidget& window) {
  for (const QWidget* const part : window.findChildren<QWidget*>()) {
    QString chapter = part->property(chapterProperty).toString();
    // A dialog of this window is a window of its own.
    if (!chapter.isEmpty() && part->isVisible() && part->window() == &window) return chapter;
  }
  return window.property(chapterProperty).toString();
}

void showHelp(QWidget& window) {
  const QString chapter = helpChapter(window);
  auto* guideWindow = window.findChild<GuideWindow*>(QString(), Qt::FindDirectChildrenOnly);
  // Its child, so that it stays in front of a full-screen window, and is no victim of a box that
  // lets nothing else be used.
  if (guideWindow == nullptr) guideWindow = new GuideWindow(&window);
  guideWindow->show();
  guideWindow->raise();
  guideWindow->activateWindow();
  guideWindow->showChapter(chapter);
}

void addHelpKey(QWidget& window, const QKeySequence& key) {
  auto* const shortcut = new QShortcut(key, &window);
  QObject::connect(shortcut, &QShortcut::activated, &window, [&window] {
    if (QGuiApplication::mouseButtons() == Qt::NoButton) showHelp(window);
  });
}

}  // namespace touch
