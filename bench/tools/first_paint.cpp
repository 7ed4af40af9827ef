#include <unistd.h>

#include <QCoreApplication>
#include <QEvent>
#include <QGenericPlugin>
#include <QWidget>
#include <cstdio>

namespace {

/// Stops the program as soon as its first window is painted, after a line on the standard output.
/// Whoever has started it then takes its measure and ends it.
class FirstPaint final : public QObject {
 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && watched->isWidgetType() &&
        static_cast<QWidget*>(watched)->isWindow()) {
      // Queued events come when all controls are painted and the window has reached the screen.
      QMetaObject::invokeMethod(this, &FirstPaint::stop, Qt::QueuedConnection);
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  [[noreturn]] static void stop() {
    std::puts("painted");
    std::fflush(stdout);
    while (true)
      pause();
  }
};

}  // namespace

class FirstPaintPlugin final : public QGenericPlugin {
  Q_OBJECT
  Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "first_paint.json")

 public:
  QObject* create(const QString&, const QString&) override {
    auto* const filter = new FirstPaint;
    QCoreApplication::instance()->installEventFilter(filter);
    return filter;
  }
};

#include "first_paint.moc"
