#pragma once

#include <QIcon>
#include <cstdint>

class QAbstractButton;
class QColor;
class QPainter;
class QRectF;

namespace touch {

/// Small drawn pictures that stand beside words, never in their place.
enum class Sign : std::uint8_t {
  controller,
  settings,
  calibration,
  maintenance,
  parameters,
  tests,
  doctor,
  commission,
  refresh,
  information,
  search,
  help,
  exit,
  save,
  load,
  undo,
  measure,
  talk,
  tick,
  cross,
  waiting,  ///< nobody knows yet
  serial,
  usb,
};

/// Fills the largest square in the middle of `place`.
void drawSign(QPainter& painter, const QRectF& place, Sign sign, const QColor& colour);

/// In the colours of the program, also after they have changed, and sharp at every size.
QIcon signIcon(Sign sign);

/// Puts the sign before the button's caption where there is room for it.
void giveSign(QAbstractButton& button, Sign sign);

}  // namespace touch
