// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/control/ProgressBar.h"

#include <QBasicTimer>
#include <QPainter>
#include <QProgressBar>
#include <QStyleOptionProgressBar>
#include <QTimerEvent>
#include <algorithm>
#include <cstdlib>

namespace framework {
namespace {

constexpr int kMillisecondsPerStep = 40;
/// Steps from one end of the bar to the other.
constexpr int kSteps = 30;
/// The travelling piece is one of so many parts of the bar.
constexpr int kParts = 4;

/// Without a maximum, a piece travels to and fro. Many a style fills the whole bar with stripes instead, and that looks
/// like work that is done.
class BarWidget : public QProgressBar {
  public:
    BarWidget() { setTextVisible(false); }

  protected:
    void showEvent(QShowEvent*) override { timer_.start(kMillisecondsPerStep, this); }
    void hideEvent(QHideEvent*) override { timer_.stop(); }

    void timerEvent(QTimerEvent*) override {
        if (maximum() > 0) return;
        step_ = (step_ + 1) % (2 * kSteps);
        update();
    }

    void paintEvent(QPaintEvent* event) override {
        if (maximum() > 0) {
            QProgressBar::paintEvent(event);
            return;
        }
        QPainter painter(this);
        QStyleOptionProgressBar bar;
        initStyleOption(&bar);
        bar.maximum = 1;
        bar.progress = 1;
        QStyleOptionProgressBar part = bar;
        bar.rect = style()->subElementRect(QStyle::SE_ProgressBarGroove, &part, this);
        style()->drawControl(QStyle::CE_ProgressBarGroove, &bar, &painter, this);
        part.rect = travelling(style()->subElementRect(QStyle::SE_ProgressBarContents, &part, this));
        style()->drawControl(QStyle::CE_ProgressBarContents, &part, &painter, this);
    }

  private:
    QRect travelling(const QRect& contents) const {
        const int width = contents.width() / kParts;
        const int way = contents.width() - width;
        return {contents.left() + way * (kSteps - std::abs(kSteps - step_)) / kSteps, contents.top(), width,
                contents.height()};
    }

    QBasicTimer timer_;
    int step_ = kSteps / 2;
};

}  // namespace

ProgressBar::ProgressBar() : RectControl(new BarWidget) {
    show();
}

void ProgressBar::Maximum(int maximum) {
    maximum_ = std::max(0, maximum);
    show();
}

void ProgressBar::Value(int value) {
    value_ = value;
    show();
}

void ProgressBar::show() {
    auto& bar = *static_cast<QProgressBar*>(Native());
    bar.setRange(0, maximum_);
    bar.setValue(std::clamp(value_, 0, maximum_));
}

}  // namespace framework
