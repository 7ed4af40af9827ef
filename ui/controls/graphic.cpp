#include "ui/controls/graphic.h"

#include <QAccessibleWidget>
#include <QLabel>
#include <QPixmap>
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

void showDrawing(QLabel& label, const QString& file, const QString& name,
                 const QString& description) {
  QPixmap drawing(":/guide/images/" + file + ".png");
  drawing.setDevicePixelRatio(2);  // crisp on dense screens as well
  label.setPixmap(drawing);
  label.setAlignment(Qt::AlignCenter);
  presentAsGraphic(label, name, description);
}

}  // namespace touch
