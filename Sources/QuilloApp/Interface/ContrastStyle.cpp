#include "QuilloApp/Interface/ContrastStyle.h"

#include <QPainter>
#include <QStyleOption>

namespace quillo {
namespace {

constexpr int darkestShaded = 16;  ///< of 255; what is darker has no shade of its own

void outline(const QStyleOption& option, QPainter& painter) {
  const QPalette& palette = option.palette;
  if (palette.color(QPalette::Active, QPalette::Window).lightness() >= darkestShaded) return;
  const bool hasFocus = option.state.testFlag(QStyle::State_HasFocus) && option.state.testFlag(QStyle::State_Enabled);
  painter.save();
  painter.setPen(palette.color(hasFocus ? QPalette::Highlight : QPalette::WindowText));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(option.rect.adjusted(0, 0, -1, -1));
  painter.restore();
}

}  // namespace

void ContrastStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                  const QWidget* widget) const {
  QProxyStyle::drawPrimitive(element, option, painter, widget);
  switch (element) {
    case PE_FrameLineEdit:
    case PE_Frame:
    case PE_PanelButtonCommand:
    case PE_IndicatorCheckBox: return outline(*option, *painter);
    case PE_PanelButtonTool:
      if (option->state.testFlag(State_On)) outline(*option, *painter);
      return;
    default: return;
  }
}

void ContrastStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
  QProxyStyle::drawControl(element, option, painter, widget);
  if (element == CE_TabBarTabShape && option->state.testFlag(State_Selected)) outline(*option, *painter);
}

void ContrastStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                                       const QWidget* widget) const {
  QProxyStyle::drawComplexControl(control, option, painter, widget);
  if (control == CC_ComboBox) outline(*option, *painter);
}

}  // namespace quillo
