// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QProxyStyle>

namespace framework::native {

/// How controls are drawn: the one stock style that takes all its colours from the palette, and so can be dark in one
/// window and light in the next. It draws outlines darker than the window; on a dark one, where nobody could see them,
/// they are drawn lighter here.
class WindowStyle : public QProxyStyle {
  public:
    WindowStyle();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;
    /// The arrow of a sorted column is small enough for the margin beside the heading, and so covers none of it. A
    /// button that has the focus shows it by a frame.
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    /// The boxes beside texts grow with the layout.
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* data) const override;

  private:
    static void drawFocusFrame(const QStyleOption& option, QPainter& painter);
};

}  // namespace framework::native
