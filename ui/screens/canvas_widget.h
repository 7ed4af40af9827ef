#pragma once

#include <QImage>
#include <QPainter>
#include <QWidget>

#include "drawing/surface.h"

namespace touch {

/// A drawing area as large as its window. What is drawn goes into an image; painting copies the
/// part that is asked for, so it costs the same however much has been drawn.
class CanvasWidget : public QWidget, public Surface {
  Q_OBJECT

 public:
  explicit CanvasWidget(QWidget* parent = nullptr);

  void clear() override;
  void line(TwipsPoint from, TwipsPoint to, Colour colour, int width) override;
  void circle(TwipsPoint centre, float radius, Colour colour, int width) override;
  void point(TwipsPoint at, Colour colour, int width) override;

  TwipsSize sizeInTwips() const;
  /// What there is where nothing is drawn; black unless said. To be said before anything is drawn.
  void setPaper(Colour paper) { paper_ = paper; }

 protected:
  /// Whether what is drawn is seen at once, and not when the event loop comes to it. That is right
  /// for ink under a finger: to wake the loop for every piece of it costs more than to paint the
  /// piece.
  void showAtOnce(bool atOnce) { atOnce_ = atOnce; }

  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void usePen(Colour colour, int width);
  void showPart(const QRect& part);

  QImage image_;
  QPainter painter_;  ///< stays on the image: to begin anew costs as much as a stroke's next piece
  Colour paper_;
  QRect changed_;  ///< since it was painted last
  // Of its pen; no pen is 0 wide.
  Colour colour_;
  int width_ = 0;
  bool atOnce_ = false;
  bool focusIsShown_ = false;  ///< only to those who came by key: a frame is no part of a drawing
};

}  // namespace touch
