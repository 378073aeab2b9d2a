// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/menu/KeySequence.h"

#include <QStringList>

#include "framework/ui/drawing/Native.h"

namespace framework {

QKeySequence native::KeysOf(const String& shortcut) {
    QStringList parts = ToQt(shortcut).split(QLatin1Char('+'), Qt::SkipEmptyParts);
    for (QString& part : parts) {
        part = part.trimmed();
        if (part.compare(QLatin1String("Cmd"), Qt::CaseInsensitive) == 0) part = QStringLiteral("Ctrl");
        if (part.compare(QLatin1String("Option"), Qt::CaseInsensitive) == 0) part = QStringLiteral("Alt");
    }
    if (parts.size() == 1 && parts.front().size() == 1) parts.prepend(QStringLiteral("Ctrl"));
    parts.removeDuplicates();
    return QKeySequence(parts.join(QLatin1Char('+')), QKeySequence::PortableText);
}

}  // namespace framework
