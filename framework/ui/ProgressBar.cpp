#include "framework/ui/ProgressBar.h"

#include <QProgressBar>
#include <algorithm>

namespace framework {

ProgressBar::ProgressBar() : RectControl(new QProgressBar) {
    static_cast<QProgressBar*>(Native())->setTextVisible(false);
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
