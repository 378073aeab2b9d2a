// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/drawing/WindowStyle.h"

#include <QPainter>
#include <QStyleOption>

#include "framework/ui/drawing/Contrast.h"
#include "framework/ui/drawing/LayoutScale.h"
#include "framework/ui/drawing/Native.h"

namespace framework::native {

WindowStyle::WindowStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

/// The frame of a group lies under the title. Layouts begin what a group holds so far below its top, and of a font with
/// tall lines the frame would lie under that.
QRect WindowStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                  const QWidget* widget) const {
    if (control != CC_GroupBox || part != SC_GroupBoxFrame)
        return QProxyStyle::subControlRect(control, option, part, widget);
    constexpr int kGapBelowTitle = 3;
    constexpr int kContentTop = 20;
    constexpr int kLineAndGap = 2;
    const int title = qMax(pixelMetric(PM_IndicatorHeight, option, widget), option->fontMetrics.height());
    return option->rect.adjusted(0, qMin(title + kGapBelowTitle, ToToolkit(kContentTop) - kLineAndGap), 0, 0);
}

/// The frame of a group is drawn here alone: from release to release the style has another place for it.
void WindowStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
    if (element != PE_FrameGroupBox) QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool outlined =
        element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton || element == PE_FrameLineEdit;
    const bool isDark = internal::IsDark(FromQt(option->palette.color(QPalette::Window)));
    if (element != PE_FrameGroupBox && !(outlined && isDark)) return;

    QColor line = option->palette.color(QPalette::WindowText);
    line.setAlphaF(element == PE_FrameGroupBox ? 0.25F : option->state & State_Enabled ? 0.6F : 0.3F);
    if (option->state & State_HasFocus) line = option->palette.color(QPalette::Highlight);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(line, 1));
    painter->setBrush(Qt::NoBrush);
    const QRectF box = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    if (element == PE_IndicatorRadioButton) {
        painter->drawEllipse(box);
    } else {
        painter->drawRoundedRect(box, 2, 2);
    }
    painter->restore();
}

void WindowStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    if (element == CE_PushButton || element == CE_ToolButtonLabel) {
        QProxyStyle::drawControl(element, option, painter, widget);
        if (option->state & State_HasFocus) drawFocusFrame(*option, *painter);
        return;
    }
    const auto* const header = qstyleoption_cast<const QStyleOptionHeader*>(option);
    if (element != CE_Header || !header) {
        QProxyStyle::drawControl(element, option, painter, widget);
        return;
    }
    constexpr int kHeadingMargin = 5;
    QStyleOptionHeader plain = *header;
    plain.text =
        header->fontMetrics.elidedText(header->text, Qt::ElideRight, header->rect.width() - 2 * kHeadingMargin);
    plain.sortIndicator = QStyleOptionHeader::None;
    // The style leaves the painter clipped.
    painter->save();
    QProxyStyle::drawControl(CE_Header, &plain, painter, widget);
    painter->restore();
    if (header->sortIndicator == QStyleOptionHeader::None) return;
    constexpr qreal kHalfWidth = 3.5;
    constexpr qreal kHeight = 4;
    const qreal up = header->sortIndicator == QStyleOptionHeader::SortDown ? -1 : 1;
    const QPointF middle(header->rect.right() - kHalfWidth - 0.5, header->rect.center().y() + 0.5);
    const QPointF base = middle + QPointF(0, up * kHeight / 2);
    const QPointF tip = middle - QPointF(0, up * kHeight / 2);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(header->palette.color(QPalette::ButtonText));
    painter->drawPolygon(QPolygonF{base - QPointF(kHalfWidth, 0), tip, base + QPointF(kHalfWidth, 0)});
    painter->restore();
}

/// Within the edge of a button. The style itself draws the one that has the focus like the default one.
void WindowStyle::drawFocusFrame(const QStyleOption& option, QPainter& painter) {
    constexpr qreal kInset = 3.5;
    constexpr qreal kRadius = 2;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(option.palette.color(QPalette::ButtonText), 1, Qt::DotLine));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(QRectF(option.rect).adjusted(kInset, kInset, -kInset, -kInset), kRadius, kRadius);
    painter.restore();
}

int WindowStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    const int pixels = QProxyStyle::pixelMetric(metric, option, widget);
    const bool isBox = metric == PM_IndicatorWidth || metric == PM_IndicatorHeight ||
                       metric == PM_ExclusiveIndicatorWidth || metric == PM_ExclusiveIndicatorHeight;
    constexpr int kBox = 13;
    // Not without a widget, since the style is asked while the toolkit is still starting.
    return isBox && widget ? qMax(pixels, ToToolkit(kBox)) : pixels;
}

int WindowStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                           QStyleHintReturn* data) const {
    if (hint == SH_Header_ArrowAlignment) return Qt::AlignTop | Qt::AlignHCenter;
    return QProxyStyle::styleHint(hint, option, widget, data);
}

}  // namespace framework::native
