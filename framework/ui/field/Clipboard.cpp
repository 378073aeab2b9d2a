// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/field/Clipboard.h"

#include <QClipboard>
#include <QGuiApplication>

#include "framework/core/threads/Waiting.h"
#include "framework/ui/drawing/Native.h"

namespace framework {

// Another program may have to be asked, and the toolkit serves events while it waits for the answer.
String Clipboard::Text() const {
    QString text;
    RunOnMainStack([&text] { text = QGuiApplication::clipboard()->text(); });
    return native::FromQt(text);
}

void Clipboard::Text(const String& text) {
    RunOnMainStack([&text] { QGuiApplication::clipboard()->setText(native::ToQt(text)); });
}

}  // namespace framework
