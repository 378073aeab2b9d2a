// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/control/TextControl.h"

#include <QApplication>
#include <QWidget>
#include <algorithm>

#include "framework/ui/drawing/LayoutScale.h"
#include "framework/ui/drawing/Native.h"

namespace framework {

void TextControl::TextFont(const String& family) {
    textFont_ = family;
    applyFont();
}

void TextControl::TextSize(int pixels) {
    textSize_ = std::max(0, pixels);
    applyFont();
}

void TextControl::Bold(bool bold) {
    bold_ = bold;
    applyFont();
}

void TextControl::Italic(bool italic) {
    italic_ = italic;
    applyFont();
}

void TextControl::applyFont() {
    QFont font;
    if (textFont_ != "System" && !textFont_.IsEmpty()) font.setFamily(native::ToQt(textFont_));
    if (textSize_ > 0) font.setPixelSize(native::ToToolkit(textSize_));
    // Only what differs is set, so that the rest goes on following the desktop.
    if (bold_) font.setBold(true);
    if (italic_) font.setItalic(true);
    Native()->setFont(font);
}

}  // namespace framework
