// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/control/ProgressWheel.h"

#include <QBasicTimer>
#include <QPainter>
#include <QTimerEvent>
#include <QWidget>
#include <algorithm>

#include "framework/ui/control/AccessibleRole.h"

namespace framework {
namespace {

constexpr int kSpokes = 12;
constexpr int kMillisecondsPerSpoke = 80;

class WheelWidget : public QWidget, public native::AccessibleRole {
  public:
    QAccessible::Role Role() const override { return QAccessible::Animation; }

  protected:
    void showEvent(QShowEvent*) override { timer_.start(kMillisecondsPerSpoke, this); }
    void hideEvent(QHideEvent*) override { timer_.stop(); }

    void timerEvent(QTimerEvent*) override {
        first_ = (first_ + 1) % kSpokes;
        update();
    }

    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(rect().center() + QPointF(0.5, 0.5));
        const qreal radius = std::min(width(), height()) / 2.0;
        QColor color = palette().color(QPalette::WindowText);
        for (int spoke = 0; spoke < kSpokes; ++spoke) {
            // The spoke that leads is full; those behind it fade.
            const int age = (first_ - spoke + kSpokes) % kSpokes;
            color.setAlphaF(1.0F - 0.85F * static_cast<float>(age) / (kSpokes - 1));
            painter.setPen(QPen(color, radius / 4.5, Qt::SolidLine, Qt::RoundCap));
            painter.save();
            painter.rotate(360.0 / kSpokes * spoke);
            painter.drawLine(QPointF(0, -radius * 0.5), QPointF(0, -radius * 0.85));
            painter.restore();
        }
    }

  private:
    QBasicTimer timer_;
    int first_ = 0;
};

}  // namespace

ProgressWheel::ProgressWheel() : RectControl(new WheelWidget) {}

}  // namespace framework
