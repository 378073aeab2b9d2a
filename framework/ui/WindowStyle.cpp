#include "framework/ui/WindowStyle.h"

#include <QPainter>
#include <QStyleOption>

#include "framework/ui/Contrast.h"
#include "framework/ui/Native.h"

namespace framework::native {

WindowStyle::WindowStyle() : QProxyStyle(QStringLiteral("Fusion")) {}

void WindowStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                const QWidget* widget) const {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool outlined = element == PE_IndicatorCheckBox || element == PE_IndicatorRadioButton ||
                          element == PE_FrameGroupBox || element == PE_FrameLineEdit;
    if (!outlined || !internal::IsDark(FromQt(option->palette.color(QPalette::Window)))) return;

    QColor line = option->palette.color(QPalette::WindowText);
    line.setAlphaF(element == PE_FrameGroupBox ? 0.25F : option->state & State_Enabled ? 0.6F : 0.3F);
    if (option->state & State_HasFocus) line = option->palette.color(QPalette::Highlight);
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(line, 1));
    painter->setBrush(Qt::NoBrush);
    QRectF box = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    // The frame of a group begins below its title, where the style itself has drawn it.
    if (element == PE_FrameGroupBox) {
        constexpr int kGapBelowTitle = 3;
        box.setTop(box.top() + qMax(pixelMetric(PM_IndicatorHeight, option, widget), option->fontMetrics.height()) +
                   kGapBelowTitle);
    }
    if (element == PE_IndicatorRadioButton) {
        painter->drawEllipse(box);
    } else {
        painter->drawRoundedRect(box, 2, 2);
    }
    painter->restore();
}

}  // namespace framework::native
