#include "ui/controls/graphic.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace touch {

namespace {

constexpr const char* marker = "isGraphic";

QAccessibleInterface* graphicOf(const QString&, QObject* object) {
  auto* const widget = qobject_cast<QWidget*>(object);
  if (widget == nullptr || !widget->property(marker).toBool()) return nullptr;
  return new QAccessibleWidget(widget, QAccessible::Graphic);  // Qt owns it
}

}  // namespace

void presentAsGraphic(QWidget& widget, const QString& name, const QString& description) {
  QAccessible::installFactory(graphicOf);  // of twice the same, Qt keeps one
  widget.setProperty(marker, true);
  widget.setAccessibleName(name);
  widget.setAccessibleDescription(description);
}

}  // namespace touch
