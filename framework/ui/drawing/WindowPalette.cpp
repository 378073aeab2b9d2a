// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/drawing/WindowPalette.h"

#include <algorithm>

#include "framework/ui/drawing/Contrast.h"
#include "framework/ui/drawing/Native.h"

namespace framework::native {
namespace {

constexpr QColor kAccent(62, 124, 196);

/// `color` with `share` of `other` mixed in, from 0 to 1.
QColor mix(const QColor& color, const QColor& other, double share) {
    const auto part = [share](int one, int two) { return static_cast<int>(one + (two - one) * share); };
    return QColor(part(color.red(), other.red()), part(color.green(), other.green()), part(color.blue(), other.blue()));
}

}  // namespace

QPalette PaletteOn(Color background) {
    const bool dark = internal::IsDark(background);
    const QColor window = ToQt(background);
    const QColor text = dark ? QColor(233, 236, 240) : QColor(20, 22, 25);
    const QColor raised = dark ? mix(window, Qt::white, 0.14) : mix(window, Qt::white, 0.4);

    QPalette palette(raised, window);
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, text);
    palette.setColor(QPalette::Button, raised);
    palette.setColor(QPalette::ButtonText, text);
    palette.setColor(QPalette::Base, dark ? mix(window, Qt::black, 0.25) : QColor(Qt::white));
    palette.setColor(QPalette::AlternateBase, dark ? mix(window, Qt::black, 0.1) : mix(window, Qt::white, 0.6));
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::BrightText, Qt::white);
    palette.setColor(QPalette::PlaceholderText, mix(text, window, 0.4));
    palette.setColor(QPalette::Light, mix(raised, Qt::white, 0.2));
    palette.setColor(QPalette::Midlight, mix(raised, Qt::white, 0.08));
    palette.setColor(QPalette::Mid, mix(window, Qt::black, 0.2));
    palette.setColor(QPalette::Dark, mix(window, Qt::black, 0.45));
    palette.setColor(QPalette::Shadow, Qt::black);
    palette.setColor(QPalette::Highlight, kAccent);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, dark ? QColor(120, 175, 240) : kAccent);

    for (const auto role : {QPalette::WindowText, QPalette::ButtonText, QPalette::Text}) {
        palette.setColor(QPalette::Disabled, role, mix(text, window, 0.55));
    }
    palette.setColor(QPalette::Disabled, QPalette::Highlight, mix(window, text, 0.2));
    return palette;
}

}  // namespace framework::native
