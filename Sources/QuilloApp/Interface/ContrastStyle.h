#pragma once

#include <QProxyStyle>

namespace quillo {

/// The desktop's style, which shades its outlines from the window's colour: on black there is none to be seen. There
/// fields, buttons, boxes and tabs get a line in the colour of the text.
class ContrastStyle : public QProxyStyle {
 public:
  using QProxyStyle::QProxyStyle;

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;
  void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                          const QWidget* widget) const override;
};

}  // namespace quillo
