#pragma once

#include <QImage>
#include <QWidget>

#include "core/surface.h"

namespace touch {

/// A drawing area as large as its window. What is drawn goes into an image; painting copies the part that is asked for,
/// so it costs the same however much has been drawn.
class CanvasWidget : public QWidget, public Surface {
  Q_OBJECT

 public:
  explicit CanvasWidget(QWidget* parent = nullptr);

  void clear() override;
  void line(TwipsPoint from, TwipsPoint to, Colour colour, int width) override;
  void circle(TwipsPoint centre, float radius, Colour colour, int width) override;
  void point(TwipsPoint at, Colour colour, int width) override;

  TwipsSize sizeInTwips() const;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QImage image_;
};

}  // namespace touch
