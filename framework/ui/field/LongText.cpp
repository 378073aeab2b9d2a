// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/field/LongText.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

#include "framework/ui/drawing/CutText.h"

namespace framework::native {
namespace {

/// More of a line is not laid out. Characters for which a font has to be looked for take long.
constexpr qsizetype kLongestLine = 800;
/// Of more lines than these together, those between are not laid out.
constexpr std::size_t kFirstLines = 900;
constexpr std::size_t kLastLines = 100;

/// A line and its end; the last one has none.
struct Line {
    qsizetype start;
    qsizetype end;
    qsizetype next;
};

std::vector<Line> linesOf(const QString& text) {
    std::vector<Line> lines;
    qsizetype start = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar character = text[i];
        const bool isReturn = character == QLatin1Char('\r');
        if (!isReturn && character != QLatin1Char('\n') && character != QChar::ParagraphSeparator) continue;
        const bool isPair = isReturn && i + 1 < text.size() && text[i + 1] == QLatin1Char('\n');
        lines.push_back({start, i, i + (isPair ? 2 : 1)});
        start = lines.back().next;
        i = start - 1;
    }
    lines.push_back({start, text.size(), text.size()});
    return lines;
}

}  // namespace

LongText::LongText(const QString& whole) : whole_(whole) {
    const std::vector<Line> lines = linesOf(whole_);
    const std::size_t lastLines = lines.size() > kFirstLines + kLastLines ? lines.size() - kLastLines : 0;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lastLines > 0 && i == kFirstLines) {
            i = lastLines - 1;
        } else {
            show(lines[i].start + CutPlace(whole_.mid(lines[i].start, lines[i].end - lines[i].start), kLongestLine));
        }
        if (done_ < lines[i].end) showInstead(lines[i].end, kRest);
        if (done_ < lines[i].next) showInstead(lines[i].next, QLatin1Char('\n'));
    }
}

void LongText::show(qsizetype end) {
    shown_ += Harmless(whole_.mid(done_, end - done_));
    done_ = end;
}

/// One character in the place of what comes up to `end`.
void LongText::showInstead(qsizetype end, QChar character) {
    shown_ += character;
    if (std::exchange(done_, end) + 1 != end) runs_.push_back({shown_.size(), end});
}

qsizetype LongText::placeInWhole(qsizetype shown) const {
    const auto next = std::upper_bound(runs_.begin(), runs_.end(), shown,
                                       [](qsizetype place, const Run& run) { return place < run.shown; });
    if (next == runs_.begin()) return shown;
    const Run& run = *std::prev(next);
    return run.whole + shown - run.shown;
}

QString LongText::Between(qsizetype start, qsizetype end) const {
    const qsizetype from = placeInWhole(start);
    return whole_.mid(from, placeInWhole(end) - from);
}

}  // namespace framework::native
