#include "ui/style/face_style.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QApplication>
#include <QIcon>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QStyleOption>
#include <QTabBar>
#include <QToolButton>
#include <algorithm>
#include <optional>
#include <tuple>

#include "ui/style/colours.h"

namespace touch {

namespace {

constexpr const char* kindProperty = "buttonKind";
constexpr qreal controlRadius = 6;
constexpr qreal cardRadius = 8;
constexpr int switchWidth = 36;
constexpr int narrowSwitchWidth = 32;
constexpr int switchHeight = 22;
constexpr int tabSignSide = 18;

ButtonKind kindOf(const QWidget* widget) {
  return widget == nullptr ? ButtonKind::plain
                           : static_cast<ButtonKind>(widget->property(kindProperty).toInt());
}

/// Paints smoothly, and leaves the painter as it was.
class Brushwork {
 public:
  explicit Brushwork(QPainter& painter) : painter_(painter) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
  }
  Brushwork(const Brushwork&) = delete;
  Brushwork& operator=(const Brushwork&) = delete;
  ~Brushwork() { painter_.restore(); }

  void box(const QRectF& rect, const QColor& fill, const QColor& line, qreal radius) {
    painter_.setBrush(fill);
    painter_.setPen(line.isValid() ? QPen(line, 1) : QPen(Qt::NoPen));
    const qreal half = line.isValid() ? 0.5 : 0;
    painter_.drawRoundedRect(rect.adjusted(half, half, -half, -half), radius, radius);
  }
  void ring(const QRectF& rect, const QColor& colour, qreal radius) {
    painter_.setBrush(Qt::NoBrush);
    painter_.setPen(QPen(colour, 2));
    painter_.drawRoundedRect(rect.adjusted(1, 1, -1, -1), radius, radius);
  }
  void disc(const QPointF& centre, qreal radius, const QColor& fill, const QColor& line) {
    painter_.setBrush(fill);
    painter_.setPen(line.isValid() ? QPen(line, 2) : QPen(Qt::NoPen));
    painter_.drawEllipse(centre, radius, radius);
  }
  /// An angle that points at `degrees`, 0 to the right and 90 down.
  void chevron(const QPointF& centre, qreal size, qreal degrees, const QColor& colour) {
    painter_.translate(centre);
    painter_.rotate(degrees);
    painter_.setPen(QPen(colour, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter_.setBrush(Qt::NoBrush);
    painter_.drawPolyline(QPolygonF({{-size / 2, -size}, {size / 2, 0}, {-size / 2, size}}));
    painter_.rotate(-degrees);
    painter_.translate(-centre);
  }

 private:
  QPainter& painter_;
};

/// Of a number's minus and plus, which stand side by side: a finger hits them.
int stepWidth() {
  return isSmallScreen() ? 20 : 32;
}

bool hasSteps(const QStyleOptionSpinBox* box) {
  return box != nullptr && box->buttonSymbols != QAbstractSpinBox::NoButtons;
}

/// Between the frame of a field and its text.
int fieldInset() {
  return isSmallScreen() ? 2 : 5;
}

bool isOn(const QStyleOption& option, QStyle::StateFlag flag) {
  return option.state.testFlag(flag);
}

/// Of a spin box, a tab bar and the like: not to be hit by a finger as it is.
bool isPartOfControl(const QWidget* widget) {
  const auto* const button = qobject_cast<const QToolButton*>(widget);
  return button == nullptr || button->autoRaise() || button->focusPolicy() == Qt::NoFocus;
}

/// The ring is for whoever uses the keyboard.
bool showsFocus(const QStyleOption& option) {
  return isOn(option, QStyle::State_HasFocus) && isOn(option, QStyle::State_KeyboardFocusChange);
}

void drawButton(const QStyleOption& option, QPainter& painter, const QWidget* widget) {
  const Colours& colours = coloursOf(option.palette);
  const bool isChecked = isOn(option, QStyle::State_On);
  const bool isPressed = isOn(option, QStyle::State_Sunken) || isChecked;
  const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(&option);
  const bool isDefault =
      button != nullptr && button->features.testFlag(QStyleOptionButton::DefaultButton);
  const bool isHovered = isOn(option, QStyle::State_MouseOver);
  QColor fill = isPressed ? colours.shade : colours.card;
  QColor line = isHovered ? colours.accent : colours.edge;
  if (!isOn(option, QStyle::State_Enabled)) {
    fill = colours.ground;
    line = colours.line;
  } else if (kindOf(widget) == ButtonKind::primary) {
    fill = isPressed ? colours.accent.darker(120)
                     : (isHovered ? colours.accent.lighter(110) : colours.accent);
    line = fill;
  } else if (kindOf(widget) == ButtonKind::dangerous) {
    if (isHovered && !isPressed) fill = colours.problemSoft;
    line = colours.problem;
  } else if (isChecked) {
    fill = colours.accentSoft;
  }
  Brushwork work(painter);
  work.box(option.rect, fill, line, controlRadius);
  // What stays pressed, and what Enter does in a box, is seen without the keyboard, too.
  if (isOn(option, QStyle::State_Enabled) && kindOf(widget) == ButtonKind::plain &&
      (isChecked || isDefault))
    work.ring(option.rect, colours.accent, controlRadius);
}

void drawSwitch(const QStyleOption& option, QPainter& painter) {
  const Colours& colours = coloursOf(option.palette);
  const bool isSet = isOn(option, QStyle::State_On);
  const bool isEnabled = isOn(option, QStyle::State_Enabled);
  const QRectF track(option.rect);
  const qreal radius = track.height() / 2;
  const QColor fill = !isEnabled ? colours.line : isSet ? colours.accent : colours.shade;
  Brushwork work(painter);
  work.box(track, fill, isSet || !isEnabled ? fill : colours.edge, radius);
  const QColor knob = !isEnabled ? colours.quiet : isSet ? colours.onAccent : colours.quiet;
  work.disc({isSet ? track.right() - radius : track.left() + radius, track.center().y()},
            radius - 4, knob, {});
}

void drawOption(const QStyleOption& option, QPainter& painter) {
  const Colours& colours = coloursOf(option.palette);
  const bool isSet = isOn(option, QStyle::State_On);
  const bool isEnabled = isOn(option, QStyle::State_Enabled);
  const QRectF place(option.rect);
  const QColor line = !isEnabled ? colours.line : isSet ? colours.accent : colours.edge;
  Brushwork work(painter);
  const qreal radius = std::min(place.width(), place.height()) / 2 - 1;
  work.disc(place.center(), radius, colours.card, line);
  if (isSet) work.disc(place.center(), radius / 2, line, {});
}

void drawField(const QStyleOption& option, QPainter& painter) {
  const Colours& colours = coloursOf(option.palette);
  const bool isEnabled = isOn(option, QStyle::State_Enabled);
  Brushwork work(painter);
  work.box(option.rect, isEnabled ? colours.card : colours.ground,
           isEnabled ? colours.edge : colours.line, controlRadius);
  if (isOn(option, QStyle::State_HasFocus)) work.ring(option.rect, colours.accent, controlRadius);
}

void drawTab(const QStyleOption& option, QPainter& painter) {
  const Colours& colours = coloursOf(option.palette);
  constexpr int thickness = 3;
  if (isOn(option, QStyle::State_MouseOver) && !isOn(option, QStyle::State_Selected))
    painter.fillRect(option.rect, colours.shade);
  QRect line = option.rect;
  line.setTop(line.bottom() - (isOn(option, QStyle::State_Selected) ? thickness - 1 : 0));
  painter.fillRect(line, isOn(option, QStyle::State_Selected) ? colours.accent : colours.line);
  if (showsFocus(option))
    Brushwork(painter).ring(option.rect.adjusted(1, 1, -1, -1), colours.accent, controlRadius);
}

void drawHeaderSection(const QStyleOption& option, QPainter& painter) {
  const Colours& colours = coloursOf(option.palette);
  painter.fillRect(option.rect, colours.shade);
  painter.setPen(colours.line);
  painter.drawLine(option.rect.bottomLeft(), option.rect.bottomRight());
  painter.drawLine(option.rect.topRight(), option.rect.bottomRight());
}

/// A scroll bar that is no part of a scrolled area sets a value.
bool setsValue(const QWidget* widget) {
  return widget != nullptr && qobject_cast<const QScrollBar*>(widget) != nullptr &&
         (widget->parentWidget() == nullptr ||
          qobject_cast<const QAbstractScrollArea*>(widget->parentWidget()->parentWidget()) ==
              nullptr);
}

struct BarParts {
  QRectF handle;
  QRectF groove;
  QRectF less;
  QRectF more;
};

void drawBar(const QStyleOptionSlider& option, QPainter& painter, const BarParts& parts,
             bool asSlider) {
  const Colours& colours = coloursOf(option.palette);
  const bool isLevel = option.orientation == Qt::Horizontal;
  const bool isEnabled = isOn(option, QStyle::State_Enabled);
  const QColor mark = isEnabled ? colours.text : colours.quiet;
  Brushwork work(painter);
  constexpr qreal arrow = 5;
  if (asSlider) {
    constexpr qreal thickness = 6;
    constexpr qreal knob = 11;
    const QPointF middle = parts.handle.center();
    QRectF groove = parts.groove;
    const qreal half = thickness / 2;
    if (isLevel) groove = {groove.left(), middle.y() - half, groove.width(), thickness};
    if (!isLevel) groove = {middle.x() - half, groove.top(), thickness, groove.height()};
    work.box(groove, colours.edge, {}, half);
    const QColor set = isEnabled ? colours.accent : colours.quiet;
    isLevel ? groove.setRight(middle.x()) : groove.setBottom(middle.y());
    work.box(groove, set, {}, half);
    work.disc(middle, knob, colours.card, set);
  } else {
    painter.fillRect(option.rect, colours.ground);
    constexpr qreal room = 8;
    const QRectF handle = isLevel ? parts.handle.adjusted(2, room, -2, -room)
                                  : parts.handle.adjusted(room, 2, -room, -2);
    work.box(handle, isOn(option, QStyle::State_MouseOver) ? colours.quiet : colours.edge, {},
             std::min(handle.width(), handle.height()) / 2);
  }
  if (asSlider) {
    constexpr qreal apart = 2;
    for (const auto& [place, part] : {std::pair(parts.less, QStyle::SC_ScrollBarSubLine),
                                      std::pair(parts.more, QStyle::SC_ScrollBarAddLine)}) {
      const bool isPressed =
          isOn(option, QStyle::State_Sunken) && option.activeSubControls.testFlag(part);
      work.box(isLevel ? place.adjusted(0, apart, 0, -apart) : place.adjusted(apart, 0, -apart, 0),
               isPressed ? colours.shade : colours.card, isEnabled ? colours.edge : colours.line,
               controlRadius);
    }
  }
  work.chevron(parts.less.center(), arrow, isLevel ? 180 : 270, mark);
  work.chevron(parts.more.center(), arrow, isLevel ? 0 : 90, mark);
  if (showsFocus(option)) work.ring(option.rect, colours.accent, controlRadius);
}

void drawSteps(const QStyleOptionSpinBox& box, QPainter& painter, const QRectF& less,
               const QRectF& more) {
  const Colours& colours = coloursOf(box.palette);
  Brushwork work(painter);
  constexpr qreal arm = 6;
  for (const auto& [place, part, flag] :
       {std::tuple(less, QStyle::SC_SpinBoxDown, QAbstractSpinBox::StepDownEnabled),
        std::tuple(more, QStyle::SC_SpinBoxUp, QAbstractSpinBox::StepUpEnabled)}) {
    const bool isEnabled = isOn(box, QStyle::State_Enabled) && box.stepEnabled.testFlag(flag);
    if (isOn(box, QStyle::State_Sunken) && box.activeSubControls.testFlag(part))
      work.box(place.adjusted(2, 2, -2, -2), colours.shade, {}, controlRadius);
    painter.setPen(QPen(isEnabled ? colours.edge : colours.line, 1));
    painter.drawLine(place.topLeft() + QPointF(0, 1), place.bottomLeft() - QPointF(0, 1));
    painter.setPen(QPen(isEnabled ? colours.text : colours.quiet, 2, Qt::SolidLine, Qt::RoundCap));
    const QPointF middle = place.center();
    painter.drawLine(middle - QPointF(arm, 0), middle + QPointF(arm, 0));
    if (part == QStyle::SC_SpinBoxUp)
      painter.drawLine(middle - QPointF(0, arm), middle + QPointF(0, arm));
  }
}

/// A shape of its own for each: nobody has to tell red from amber.
struct StateSign {
  enum class Shape : std::uint8_t { tick, cross, letter };
  QColor colour;
  Shape shape = Shape::tick;
  QChar letter{};
};

QPixmap drawState(const StateSign& sign, const QColor& on, int side) {
  QPixmap pixmap(side, side);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  Brushwork work(painter);
  const qreal length = side;
  work.disc({length / 2, length / 2}, length / 2, sign.colour, {});
  const QPen stroke(on, length / 8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
  if (sign.shape == StateSign::Shape::tick) {
    painter.setPen(stroke);
    painter.drawPolyline(QPolygonF({{length * 0.28, length * 0.53},
                                    {length * 0.44, length * 0.68},
                                    {length * 0.73, length * 0.36}}));
  } else if (sign.shape == StateSign::Shape::cross) {
    painter.setPen(stroke);
    const qreal from = length * 0.33;
    const qreal to = length * 0.67;
    painter.drawLine(QPointF(from, from), QPointF(to, to));
    painter.drawLine(QPointF(from, to), QPointF(to, from));
  } else {
    QFont font;
    font.setPixelSize(side * 3 / 4);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(on);
    painter.drawText(pixmap.rect(), Qt::AlignCenter, sign.letter);
  }
  return pixmap;
}

/// A sign above its word, which takes no more room than the word alone.
void drawTabLabel(const QStyleOptionTab& tab, QPainter& painter, const QWidget* widget) {
  const Colours& colours = coloursOf(tab.palette);
  const bool isSelected = isOn(tab, QStyle::State_Selected);
  const bool isEnabled = isOn(tab, QStyle::State_Enabled);
  const int height = tab.iconSize.height() + tab.fontMetrics.height();
  const QRect both(tab.rect.left(), tab.rect.center().y() - height / 2, tab.rect.width(), height);
  tab.icon.paint(&painter, both.adjusted(0, 0, 0, -tab.fontMetrics.height()), Qt::AlignCenter,
                 isEnabled ? QIcon::Normal : QIcon::Disabled, isSelected ? QIcon::On : QIcon::Off);
  painter.setPen(isEnabled && isSelected ? colours.text : colours.quiet);
  const bool showsKeys =
      QApplication::style()->styleHint(QStyle::SH_UnderlineShortcut, &tab, widget) != 0;
  const int place = Qt::AlignHCenter | Qt::AlignBottom;
  painter.drawText(both, place | (showsKeys ? Qt::TextShowMnemonic : Qt::TextHideMnemonic),
                   tab.text);
}

}  // namespace

void setKind(QAbstractButton& button, ButtonKind kind) {
  button.setProperty(kindProperty, static_cast<int>(kind));
  button.update();
}

int FaceStyle::pixelMetric(PixelMetric metric, const QStyleOption* option,
                           const QWidget* widget) const {
  switch (metric) {
    case PM_IndicatorWidth:
      return isSmallScreen() ? narrowSwitchWidth : switchWidth;
    case PM_IndicatorHeight:
      return switchHeight;
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
      return isSmallScreen() ? 4 : 8;
    case PM_TabBarIconSize:
      return tabSignSide;
    case PM_TabBarTabShiftVertical:
    case PM_TabBarTabOverlap:
      return 0;
    default:
      return FingerStyle::pixelMetric(metric, option, widget);
  }
}

QSize FaceStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const {
  QSize needed = FingerStyle::sizeFromContents(type, option, size, widget);
  const auto* const tab = qstyleoption_cast<const QStyleOptionTab*>(option);
  constexpr int besideSign = 4;
  if (type == CT_TabBarTab && tab != nullptr && !tab->icon.isNull()) {
    needed.rwidth() -= tab->iconSize.width() + besideSign;
    needed.setHeight(std::max(needed.height(),
                              tab->iconSize.height() + tab->fontMetrics.height() + 2 * besideSign));
  }
  if (type == CT_SpinBox && hasSteps(qstyleoption_cast<const QStyleOptionSpinBox*>(option)))
    needed.rwidth() += stepWidth();
  if (type == CT_ComboBox || type == CT_LineEdit) needed.rwidth() += 2 * fieldInset();
  if (type == CT_ToolButton && !isPartOfControl(widget))
    needed = {needed.width() + 3 * besideSign, std::max(needed.height(), fingerSize())};
  return needed;
}

QRect FaceStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                SubControl part, const QWidget* widget) const {
  QRect place = FingerStyle::subControlRect(control, option, part, widget);
  if (control == CC_SpinBox && hasSteps(qstyleoption_cast<const QStyleOptionSpinBox*>(option))) {
    const int width = stepWidth();
    const QRect all = option->rect;
    if (part == SC_SpinBoxUp) return {all.right() - width + 1, all.top(), width, all.height()};
    if (part == SC_SpinBoxDown)
      return {all.right() - 2 * width + 1, all.top(), width, all.height()};
    if (part == SC_SpinBoxEditField) return all.adjusted(fieldInset(), 3, -2 * width - 2, -3);
  }
  if (control == CC_ComboBox && part == SC_ComboBoxEditField)
    return place.adjusted(fieldInset(), 0, 0, 0);
  const auto* const box = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
  if (control != CC_GroupBox || box == nullptr || box->text.isEmpty()) return place;
  // The title is within the card.
  const int inwards = isSmallScreen() ? 4 : 10;
  const int downwards = isSmallScreen() ? 2 : 7;
  if (part == SC_GroupBoxLabel) place.translate(inwards, downwards);
  if (part == SC_GroupBoxContents) place.setTop(place.top() + downwards);
  return place;
}

QRect FaceStyle::subElementRect(SubElement element, const QStyleOption* option,
                                const QWidget* widget) const {
  const QRect place = FingerStyle::subElementRect(element, option, widget);
  const auto* const frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
  const bool isField = element == SE_LineEditContents && frame != nullptr && frame->lineWidth > 0;
  return isField ? place.adjusted(fieldInset(), 0, -fieldInset(), 0) : place;
}

QIcon FaceStyle::standardIcon(StandardPixmap icon, const QStyleOption* option,
                              const QWidget* widget) const {
  const QPalette palette = widget == nullptr ? QGuiApplication::palette() : widget->palette();
  const Colours& colours = coloursOf(palette);
  const auto sign = [&]() -> std::optional<StateSign> {
    switch (icon) {
      case SP_DialogApplyButton:
        return StateSign{colours.good};
      case SP_MessageBoxInformation:
        return StateSign{colours.accent, StateSign::Shape::letter, 'i'};
      case SP_MessageBoxQuestion:
        return StateSign{colours.accent, StateSign::Shape::letter, '?'};
      case SP_MessageBoxWarning:
        return StateSign{colours.remark, StateSign::Shape::letter, '!'};
      case SP_MessageBoxCritical:
        return StateSign{colours.problem, StateSign::Shape::cross};
      default:
        return std::nullopt;
    }
  }();
  if (!sign) return FingerStyle::standardIcon(icon, option, widget);
  QIcon drawn;
  for (const int side : {16, 20, 24, 32, 40, 48, 64, 96})
    drawn.addPixmap(drawState(*sign, colours.card, side));
  return drawn;
}

void FaceStyle::polish(QWidget* widget) {
  FingerStyle::polish(widget);
  if (qobject_cast<QAbstractButton*>(widget) != nullptr ||
      qobject_cast<QTabBar*>(widget) != nullptr || qobject_cast<QScrollBar*>(widget) != nullptr)
    widget->setAttribute(Qt::WA_Hover);
}

void FaceStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option,
                              QPainter* painter, const QWidget* widget) const {
  const Colours& colours = coloursOf(option->palette);
  switch (element) {
    case PE_PanelButtonCommand:
      return drawButton(*option, *painter, widget);
    case PE_PanelButtonTool:
      if (isPartOfControl(widget)) break;
      drawButton(*option, *painter, widget);
      if (showsFocus(*option))
        Brushwork(*painter).ring(option->rect, colours.accent, controlRadius);
      return;
    case PE_IndicatorCheckBox:
      return drawSwitch(*option, *painter);
    case PE_IndicatorRadioButton:
      return drawOption(*option, *painter);
    case PE_FrameGroupBox:
      return Brushwork(*painter).box(option->rect, colours.card, colours.line, cardRadius);
    case PE_PanelLineEdit:
    case PE_FrameLineEdit:
      // Those within another control have their frame from it.
      if (const auto* const frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
          frame != nullptr && frame->lineWidth > 0)
        drawField(*option, *painter);
      return;
    case PE_FrameTabWidget:
      painter->fillRect(QRect(option->rect.topLeft(), QSize(option->rect.width(), 1)),
                        colours.line);
      return;
    case PE_FrameTabBarBase:
      painter->setPen(colours.line);
      return painter->drawLine(option->rect.bottomLeft(), option->rect.bottomRight());
    case PE_FrameDefaultButton:
      return;
    case PE_FrameFocusRect:
      // Its ring is around the whole button.
      if (qobject_cast<const QPushButton*>(widget) != nullptr || !isPartOfControl(widget)) return;
      if (isOn(*option, State_KeyboardFocusChange) || widget == nullptr ||
          !widget->inherits("QAbstractButton"))
        FingerStyle::drawPrimitive(element, option, painter, widget);
      return;
    default:
      break;
  }
  FingerStyle::drawPrimitive(element, option, painter, widget);
}

void FaceStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
  const Colours& colours = coloursOf(option->palette);
  switch (element) {
    case CE_PushButton: {
      FingerStyle::drawControl(element, option, painter, widget);
      if (showsFocus(*option)) {
        const bool isFilled = kindOf(widget) == ButtonKind::primary;
        Brushwork(*painter).ring(
            isFilled ? QRectF(option->rect).adjusted(3, 3, -3, -3) : QRectF(option->rect),
            isFilled ? colours.onAccent : colours.accent, controlRadius);
      }
      return;
    }
    case CE_PushButtonLabel: {
      const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(option);
      if (button == nullptr) break;
      const ButtonKind kind = kindOf(widget);
      QStyleOptionButton coloured(*button);
      // Else text stands as close to its sign as letters do to each other.
      if (!button->icon.isNull() && !button->text.isEmpty()) coloured.text.prepend(' ');
      if (kind == ButtonKind::plain || !isOn(*option, State_Enabled))
        return FingerStyle::drawControl(element, &coloured, painter, widget);
      coloured.palette.setColor(QPalette::ButtonText,
                                kind == ButtonKind::primary ? colours.onAccent : colours.problem);
      if (kind == ButtonKind::primary && !button->icon.isNull()) {
        coloured.icon = QIcon(button->icon.pixmap(
            button->iconSize, painter->device()->devicePixelRatioF(), QIcon::Selected));
      }
      return FingerStyle::drawControl(element, &coloured, painter, widget);
    }
    case CE_TabBarTabShape:
      return drawTab(*option, *painter);
    case CE_TabBarTabLabel: {
      const auto* const tab = qstyleoption_cast<const QStyleOptionTab*>(option);
      if (tab == nullptr) break;
      if (!tab->icon.isNull()) return drawTabLabel(*tab, *painter, widget);
      QStyleOptionTab label(*tab);
      label.state &= ~State_HasFocus;  // its ring is around the whole tab
      if (!isOn(*option, State_Selected))
        label.palette.setColor(QPalette::WindowText, colours.quiet);
      return FingerStyle::drawControl(element, &label, painter, widget);
    }
    case CE_HeaderSection:
      return drawHeaderSection(*option, *painter);
    default:
      break;
  }
  FingerStyle::drawControl(element, option, painter, widget);
}

void FaceStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                   QPainter* painter, const QWidget* widget) const {
  if (control == CC_ScrollBar) {
    const auto* const bar = qstyleoption_cast<const QStyleOptionSlider*>(option);
    const auto place = [&](SubControl part) {
      return QRectF(proxy()->subControlRect(control, option, part, widget));
    };
    return drawBar(*bar, *painter,
                   {place(SC_ScrollBarSlider), place(SC_ScrollBarGroove),
                    place(SC_ScrollBarSubLine), place(SC_ScrollBarAddLine)},
                   setsValue(widget));
  }
  if (control == CC_SpinBox) {
    const auto* const box = qstyleoption_cast<const QStyleOptionSpinBox*>(option);
    drawField(*option, *painter);
    if (hasSteps(box)) {
      drawSteps(*box, *painter, proxy()->subControlRect(control, option, SC_SpinBoxDown, widget),
                proxy()->subControlRect(control, option, SC_SpinBoxUp, widget));
    }
    return;
  }
  if (control == CC_ComboBox) {
    const auto* const box = qstyleoption_cast<const QStyleOptionComboBox*>(option);
    if (box->editable) drawField(*option, *painter);
    if (!box->editable) drawButton(*option, *painter, nullptr);
    const QRectF arrow(proxy()->subControlRect(control, option, SC_ComboBoxArrow, widget));
    const Colours& colours = coloursOf(option->palette);
    constexpr qreal size = 5;
    Brushwork work(*painter);
    work.chevron(arrow.center(), size, 90,
                 isOn(*option, State_Enabled) ? colours.text : colours.quiet);
    if (showsFocus(*option)) work.ring(option->rect, colours.accent, controlRadius);
    return;
  }
  FingerStyle::drawComplexControl(control, option, painter, widget);
}

}  // namespace touch
