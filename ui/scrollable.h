#pragma once

#include <QScrollArea>

#include "ui/finger_style.h"

namespace touch {

/// `page` in an area of its own: small screens scroll it instead of clipping it. The area takes the page over.
inline QScrollArea* scrollable(QWidget* page) {
  auto* const area = new QScrollArea;
  area->setWidget(page);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  area->setFocusPolicy(Qt::NoFocus);  // it follows the control that has the focus
  area->setMinimumHeight(fingerSize());
  return area;
}

}  // namespace touch
