// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/drawing/LayoutScale.h"

#include <QApplication>
#include <QFontInfo>
#include <QScreen>
#include <algorithm>
#include <cmath>

namespace framework {

double native::LayoutScale() {
    constexpr double kDesignPoints = 10;
    constexpr double kDesignDotsPerInch = 96;
    static const double scale = [] {
        const QScreen* const screen = QApplication::primaryScreen();
        const double density = screen ? screen->logicalDotsPerInchY() / kDesignDotsPerInch : 1.0;
        return std::max(1.0, QFontInfo(QApplication::font()).pointSizeF() * density / kDesignPoints);
    }();
    return scale;
}

int native::ToToolkit(int pixels) {
    return static_cast<int>(std::lround(pixels * LayoutScale()));
}

int native::FromToolkit(int pixels) {
    return static_cast<int>(std::lround(pixels / LayoutScale()));
}

}  // namespace framework
