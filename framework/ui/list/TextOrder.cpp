// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/list/TextOrder.h"

#include <QLocale>
#include <algorithm>

#include "framework/ui/drawing/Native.h"

namespace framework {
namespace {

/// The computer's own language has no rules.
QLocale language() {
    const QLocale own = QCollator().locale();
    return own.language() == QLocale::C ? QLocale(QLocale::English) : own;
}

}  // namespace

TextOrder::TextOrder(int count) : collator_(language()), keys_(static_cast<std::size_t>(std::max(count, 0))) {
    collator_.setNumericMode(true);
}

bool TextOrder::IsBehind(int one, int other, const TextOf& textOf) {
    return key(other, textOf).compare(key(one, textOf)) < 0;
}

const QCollatorSortKey& TextOrder::key(int number, const TextOf& textOf) {
    // Beyond that, texts of one beginning count as equal.
    constexpr std::size_t kLongest = 1000;
    auto& known = keys_[static_cast<std::size_t>(number)];
    if (!known) {
        const String text = textOf(number);
        known.emplace(collator_.sortKey(native::ToQt(text.ByteCount() > kLongest ? text.Slice(0, kLongest) : text)));
    }
    return *known;
}

}  // namespace framework
