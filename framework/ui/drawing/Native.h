// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

// Between the framework's values and the toolkit's; for the sources of framework/ui and for tests of it.

#include <QColor>
#include <QString>
#include <QTextDocument>

#include "framework/core/objects/Color.h"
#include "framework/core/text/String.h"

namespace framework::native {

/// A text for the screen; bytes that are no valid text show as replacement characters.
inline QString ToQt(const String& text) {
    const std::string_view bytes = text.Bytes();
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

inline String FromQt(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    return String(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

/// A text for a place where the toolkit would read `&` as the mark of a mnemonic.
inline QString ToQtLiteral(const String& text) {
    return ToQt(text).replace(QLatin1Char('&'), QLatin1String("&&"));
}

/// A help tag; never read as markup.
inline QString ToToolTip(const QString& plain) {
    return Qt::mightBeRichText(plain) ? QLatin1String("<qt>") + plain.toHtmlEscaped() : plain;
}

inline QColor ToQt(Color color) {
    return QColor(color.Red, color.Green, color.Blue);
}

inline Color FromQt(const QColor& color) {
    return RGB(color.red(), color.green(), color.blue());
}

}  // namespace framework::native
