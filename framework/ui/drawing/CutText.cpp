// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/drawing/CutText.h"

#include <QTextBoundaryFinder>
#include <algorithm>

#include "base/Utf8.h"
#include "framework/ui/drawing/Native.h"

namespace framework::native {

qsizetype CutPlace(const QString& text, qsizetype end) {
    // Nobody reads a character that is made of more parts.
    constexpr qsizetype kMostParts = 64;
    if (end >= text.size()) return text.size();
    qsizetype start = std::max<qsizetype>(end - kMostParts, 0);
    if (text[start].isLowSurrogate()) ++start;
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, QStringView(text).mid(start, end - start + 2));
    finder.setPosition(end - start);
    return start + (finder.isAtBoundary() ? finder.position() : finder.toPreviousBoundary());
}

QString Harmless(QString text) {
    constexpr QChar kSign(QChar::ReplacementCharacter);
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar character = text.at(i);
        const bool stays = character == u'\n' || character == u'\r' || character == u'\t';
        if (!stays && base::steers(character.unicode())) text[i] = kSign;
    }
    return text;
}

QString ToQt(const String& text, qsizetype longest) {
    // No character takes more bytes than this for a unit.
    constexpr qsizetype kMostBytes = 4;
    const QString start = ToQt(text.Slice(0, static_cast<std::size_t>(kMostBytes * longest)));
    return Harmless(start.size() <= longest ? start : start.left(CutPlace(start, longest)) + kRest);
}

}  // namespace framework::native
