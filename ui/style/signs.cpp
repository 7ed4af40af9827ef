#include "ui/style/signs.h"

#include <QAbstractButton>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <span>

#include "ui/controls/finger_style.h"
#include "ui/style/colours.h"

namespace touch {

namespace {

/// Places are in a square of this side.
constexpr qreal grid = 24;
constexpr qreal penWidth = 2;

/// What a stroke of the pen does.
enum class Move : std::uint8_t {
  to,     ///< x y: lifts the pen
  line,   ///< x y
  curve,  ///< two points that it bends towards, and where it ends
  arc,    ///< x y and radius of a circle, the angle where it begins, the angle that it covers
  box,    ///< x y width height, and the radius of its corners
  ring,   ///< x y radius
  dot,    ///< x y radius: filled
};
struct PenStroke {
  Move move{};
  qreal a = 0;
  qreal b = 0;
  qreal c = 0;
  qreal d = 0;
  qreal e = 0;
  qreal f = 0;
};
using enum Move;

constexpr PenStroke controllerSign[] = {{box, 6, 6, 12, 12, 2},
                                        {dot, 12, 12, 2},
                                        {to, 9, 6},
                                        {line, 9, 3},
                                        {to, 15, 6},
                                        {line, 15, 3},
                                        {to, 9, 18},
                                        {line, 9, 21},
                                        {to, 15, 18},
                                        {line, 15, 21},
                                        {to, 6, 9},
                                        {line, 3, 9},
                                        {to, 6, 15},
                                        {line, 3, 15},
                                        {to, 18, 9},
                                        {line, 21, 9},
                                        {to, 18, 15},
                                        {line, 21, 15}};
constexpr PenStroke settingsSign[] = {
    {to, 3, 7},  {line, 6, 7},   {ring, 9, 7, 3},   {to, 12, 7},  {line, 21, 7},
    {to, 3, 17}, {line, 12, 17}, {ring, 15, 17, 3}, {to, 18, 17}, {line, 21, 17}};
constexpr PenStroke calibrationSign[] = {
    {ring, 12, 12, 6.5}, {dot, 12, 12, 1.8}, {to, 12, 2},   {line, 12, 8}, {to, 12, 16},
    {line, 12, 22},      {to, 2, 12},        {line, 8, 12}, {to, 16, 12},  {line, 22, 12}};
constexpr PenStroke maintenanceSign[] = {{to, 16.8, 3.6},   {arc, 16, 8, 4.5, 80, 290},
                                         {line, 16.6, 7.4}, {line, 16.8, 3.6},
                                         {to, 12.6, 11.4},  {line, 4, 20}};
constexpr PenStroke parametersSign[] = {{box, 3, 4, 18, 16, 2}, {to, 3, 9.3},     {line, 21, 9.3},
                                        {to, 3, 14.7},          {line, 21, 14.7}, {to, 9, 4},
                                        {line, 9, 20}};
constexpr PenStroke testsSign[] = {{to, 4, 20},   {line, 5, 15}, {line, 16, 4}, {line, 20, 8},
                                   {line, 9, 19}, {line, 4, 20}, {to, 13, 7},   {line, 17, 11}};
constexpr PenStroke doctorSign[] = {{to, 2, 12},    {line, 7.5, 12},  {line, 10, 5},
                                    {line, 14, 19}, {line, 16.5, 12}, {line, 22, 12}};
constexpr PenStroke commissionSign[] = {
    {to, 8, 4},    {line, 5, 4},         {line, 5, 21},   {line, 19, 21}, {line, 19, 4},
    {line, 16, 4}, {box, 8, 2, 8, 4, 1}, {to, 8.5, 13.5}, {line, 11, 16}, {line, 15.5, 10.5}};
constexpr PenStroke refreshSign[] = {{to, 18.1, 6.9},
                                     {arc, 12, 13, 8, 40, 290},
                                     {to, 18.6, 2},
                                     {line, 18.6, 7.4},
                                     {line, 13.2, 7.4}};
constexpr PenStroke informationSign[] = {
    {ring, 12, 12, 9}, {dot, 12, 7.6, 1.4}, {to, 12, 11.5}, {line, 12, 17}};
constexpr PenStroke searchSign[] = {{ring, 10.5, 10.5, 6.5}, {to, 15.5, 15.5}, {line, 21, 21}};
constexpr PenStroke helpSign[] = {
    {ring, 12, 12, 9}, {to, 9.2, 9.4},   {arc, 12, 9.4, 2.8, 180, -225},
    {line, 12, 12.6},  {line, 12, 13.4}, {dot, 12, 17, 1.4}};
constexpr PenStroke exitSign[] = {{to, 14, 4},    {line, 5, 4},   {line, 5, 20},
                                  {line, 14, 20}, {to, 11, 12},   {line, 21, 12},
                                  {to, 17, 8},    {line, 21, 12}, {line, 17, 16}};
constexpr PenStroke saveSign[] = {{to, 12, 3},    {line, 12, 15},     {to, 7.5, 10.5},
                                  {line, 12, 15}, {line, 16.5, 10.5}, {to, 4, 16},
                                  {line, 4, 20},  {line, 20, 20},     {line, 20, 16}};
constexpr PenStroke loadSign[] = {{to, 12, 15},  {line, 12, 3},     {to, 7.5, 7.5},
                                  {line, 12, 3}, {line, 16.5, 7.5}, {to, 4, 16},
                                  {line, 4, 20}, {line, 20, 20},    {line, 20, 16}};
constexpr PenStroke undoSign[] = {{to, 9, 4},   {line, 4, 9},    {line, 9, 14},
                                  {to, 4, 9},   {line, 14.5, 9}, {curve, 22, 9, 22, 20, 14.5, 20},
                                  {line, 9, 20}};
constexpr PenStroke measureSign[] = {{box, 2, 7.5, 20, 9, 1.5},
                                     {to, 6, 8},
                                     {line, 6, 11.5},
                                     {to, 10, 8},
                                     {line, 10, 13},
                                     {to, 14, 8},
                                     {line, 14, 11.5},
                                     {to, 18, 8},
                                     {line, 18, 13}};
constexpr PenStroke talkSign[] = {{box, 3, 4, 18, 16, 2}, {to, 7, 9},       {line, 10, 12},
                                  {line, 7, 15},          {to, 12.5, 15.5}, {line, 16.5, 15.5}};
constexpr PenStroke tickSign[] = {{to, 5, 12.5}, {line, 10, 17.5}, {line, 19.5, 7}};
constexpr PenStroke crossSign[] = {{to, 6, 6}, {line, 18, 18}, {to, 18, 6}, {line, 6, 18}};
constexpr PenStroke waitingSign[] = {{dot, 5, 12, 2.2}, {dot, 12, 12, 2.2}, {dot, 19, 12, 2.2}};
constexpr PenStroke serialSign[] = {
    {to, 3, 7},           {line, 21, 7},       {line, 18.5, 17},     {line, 5.5, 17},
    {line, 3, 7},         {dot, 8, 10.5, 1.2}, {dot, 12, 10.5, 1.2}, {dot, 16, 10.5, 1.2},
    {dot, 10, 13.8, 1.2}, {dot, 14, 13.8, 1.2}};
constexpr PenStroke usbSign[] = {
    {dot, 12, 20, 2.4}, {to, 12, 20},     {line, 12, 3},   {to, 9, 6},       {line, 12, 3},
    {line, 15, 6},      {to, 12, 17},     {line, 6, 13},   {line, 6, 11},    {dot, 6, 9.6, 2},
    {to, 12, 14},       {line, 18, 10.5}, {line, 18, 8.5}, {dot, 18, 7.5, 2}};

std::span<const PenStroke> strokesOf(Sign sign) {
  switch (sign) {
    case Sign::controller:
      return controllerSign;
    case Sign::settings:
      return settingsSign;
    case Sign::calibration:
      return calibrationSign;
    case Sign::maintenance:
      return maintenanceSign;
    case Sign::parameters:
      return parametersSign;
    case Sign::tests:
      return testsSign;
    case Sign::doctor:
      return doctorSign;
    case Sign::commission:
      return commissionSign;
    case Sign::refresh:
      return refreshSign;
    case Sign::information:
      return informationSign;
    case Sign::search:
      return searchSign;
    case Sign::help:
      return helpSign;
    case Sign::exit:
      return exitSign;
    case Sign::save:
      return saveSign;
    case Sign::load:
      return loadSign;
    case Sign::undo:
      return undoSign;
    case Sign::measure:
      return measureSign;
    case Sign::talk:
      return talkSign;
    case Sign::tick:
      return tickSign;
    case Sign::cross:
      return crossSign;
    case Sign::waiting:
      return waitingSign;
    case Sign::serial:
      return serialSign;
    case Sign::usb:
      return usbSign;
  }
  return {};
}

struct Outline {
  QPainterPath lines;
  QPainterPath dots;
};

Outline outlineOf(Sign sign) {
  Outline outline;
  for (const PenStroke& stroke : strokesOf(sign)) {
    const auto& [move, a, b, c, d, e, f] = stroke;
    switch (move) {
      case to:
        outline.lines.moveTo(a, b);
        break;
      case line:
        outline.lines.lineTo(a, b);
        break;
      case curve:
        outline.lines.cubicTo(a, b, c, d, e, f);
        break;
      case arc:
        outline.lines.arcTo(QRectF(a - c, b - c, 2 * c, 2 * c), d, e);
        break;
      case box:
        outline.lines.addRoundedRect(a, b, c, d, e, e);
        break;
      case ring:
        outline.lines.addEllipse({a, b}, c, c);
        break;
      case dot:
        outline.dots.addEllipse({a, b}, c, c);
        break;
    }
  }
  return outline;
}

/// Draws when it is asked for, so that nothing is made ahead for sizes that no screen has.
class SignEngine final : public QIconEngine {
 public:
  explicit SignEngine(Sign sign) : sign_(sign) {}
  QIconEngine* clone() const override { return new SignEngine(*this); }

  void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State state) override {
    const Colours& colours = coloursOf(QGuiApplication::palette());
    const QColor& usual = state == QIcon::On ? colours.accent : colours.text;
    drawSign(*painter, place, sign_,
             mode == QIcon::Selected   ? colours.onAccent
             : mode == QIcon::Disabled ? colours.quiet
                                       : usual);
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap pixmap(size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    paint(&painter, QRect({}, size), mode, state);
    return pixmap;
  }

 private:
  Sign sign_;
};

}  // namespace

void drawSign(QPainter& painter, const QRectF& place, Sign sign, const QColor& colour) {
  const qreal side = std::min(place.width(), place.height());
  const Outline outline = outlineOf(sign);
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(place.center() - QPointF(side, side) / 2);
  painter.scale(side / grid, side / grid);
  painter.strokePath(outline.lines,
                     QPen(colour, penWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter.fillPath(outline.dots, colour);
  painter.restore();
}

QIcon signIcon(Sign sign) {
  return QIcon(new SignEngine(sign));  // the icon owns it
}

void giveSign(QAbstractButton& button, Sign sign) {
  // Where every line counts, so does every column.
  if (!isSmallScreen()) button.setIcon(signIcon(sign));
}

}  // namespace touch
