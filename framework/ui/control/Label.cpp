// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/control/Label.h"

#include <QFontMetrics>
#include <QLabel>
#include <QPainter>
#include <QtMath>
#include <algorithm>

#include "framework/ui/drawing/Contrast.h"
#include "framework/ui/drawing/Native.h"

namespace framework {
namespace {

constexpr int kPlateMargin = 6;
constexpr int kLeastPlateMargin = 3;
/// How narrow a line that is a little too long gets before it is cut short.
constexpr qreal kSqueezed = 0.8;
constexpr qreal kPlateRadius = 4;

/// Draws the text itself: Qt's label would neither cut it short nor lay a plate behind it.
class LabelWidget : public QLabel {
  public:
    LabelWidget() {
        setTextFormat(Qt::PlainText);
        setMinimumSize(0, 0);
    }

  protected:
    void paintEvent(QPaintEvent*) override {
        if (text().isEmpty()) return;
        QPainter painter(this);
        const QColor ink = palette().color(foregroundRole());
        const auto plate =
            internal::PlateBehind(native::FromQt(ink), native::FromQt(palette().color(QPalette::Window)));
        const bool oneLine = !wordWrap() && !text().contains(QLatin1Char('\n'));
        const int spare = width() - (oneLine ? fontMetrics().horizontalAdvance(text()) : 0);
        const int margin = plate ? std::clamp(spare / 2, kLeastPlateMargin, kPlateMargin) : 0;
        const QRect area = rect().adjusted(margin, 0, -margin, 0);

        // A line that is a little too long is drawn narrower: not every font has a narrower form.
        const int needed = oneLine ? fontMetrics().horizontalAdvance(text()) : 0;
        const qreal squeeze = needed > area.width() ? std::max(kSqueezed, qreal(area.width()) / needed) : 1.0;
        const int room = std::max(qCeil(area.width() / squeeze), squeeze > kSqueezed ? needed : 0);
        const bool fits = !oneLine || needed <= room;
        const QString shown = fits ? text() : fontMetrics().elidedText(text(), Qt::ElideRight, room);
        const int flags = static_cast<int>(alignment()) | Qt::TextExpandTabs | (wordWrap() ? Qt::TextWordWrap : 0);
        painter.translate(area.left(), 0);
        painter.scale(squeeze, 1);
        const QRect squeezed(0, area.top(), room, area.height());
        if (plate) {
            const int outside = qCeil(margin / squeeze);
            paintPlate(painter, native::ToQt(*plate),
                       painter.boundingRect(squeezed, flags, shown).adjusted(-outside, -1, outside, 1));
        }
        painter.setPen(isEnabled() ? ink : palette().color(QPalette::Disabled, QPalette::WindowText));
        painter.drawText(squeezed, flags, shown);
    }

  private:
    void paintPlate(QPainter& painter, const QColor& color, const QRect& plate) const {
        painter.setRenderHint(QPainter::Antialiasing);
        QLinearGradient shine(plate.topLeft(), plate.bottomLeft());
        shine.setColorAt(0, color.lighter(106));
        shine.setColorAt(1, color.darker(106));
        painter.setPen(Qt::NoPen);
        painter.setBrush(shine);
        painter.drawRoundedRect(plate, kPlateRadius, kPlateRadius);
    }
};

QLabel& labelOf(const RectControl& control) {
    return *static_cast<QLabel*>(control.Native());
}

}  // namespace

Label::Label() : TextControl(new LabelWidget) {
    TextAlign(AlignLeft);
}

void Label::Text(const String& text) {
    text_ = text;
    labelOf(*this).setText(native::ToQt(text));
    UpdateAccessibleName();
}

Color Label::TextColor() const {
    return native::FromQt(Native()->palette().color(Native()->foregroundRole()));
}

void Label::TextColor(Color color) {
    // The toolkit takes long over a palette, and a running count is coloured at each step.
    if (ownColor_ == color) return;
    ownColor_ = color;
    QPalette palette;
    palette.setColor(Native()->foregroundRole(), native::ToQt(color));
    Native()->setPalette(palette);
}

int Label::TextAlign() const {
    const Qt::Alignment align = labelOf(*this).alignment();
    return align & Qt::AlignHCenter ? AlignCenter : align & Qt::AlignRight ? AlignRight : AlignLeft;
}

void Label::TextAlign(int align) {
    const Qt::Alignment across = align == AlignCenter  ? Qt::AlignHCenter
                                 : align == AlignRight ? Qt::AlignRight
                                                       : Qt::AlignLeft;
    labelOf(*this).setAlignment(across | (Multiline() ? Qt::AlignTop : Qt::AlignVCenter));
}

bool Label::Multiline() const {
    return labelOf(*this).wordWrap();
}

void Label::Multiline(bool multiline) {
    const int align = TextAlign();
    labelOf(*this).setWordWrap(multiline);
    TextAlign(align);
}

}  // namespace framework
