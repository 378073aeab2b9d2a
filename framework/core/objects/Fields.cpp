// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/objects/Fields.h"

#include <string_view>

#include "framework/core/text/TextSearch.h"

namespace framework {
namespace {

/// Hands the pieces of a text over, one after the other, until `take` says false.
template <class Take>
void forEachField(const String& text, const String& separator, Take take) {
    if (text.IsEmpty()) return;
    if (separator.IsEmpty()) {
        take(0, text.ByteCount());
        return;
    }
    TextSearch search(text, separator);
    std::size_t begin = 0;
    while (const auto match = search.Next(begin)) {
        if (!take(begin, match->offset - begin)) return;
        begin = match->End();
    }
    take(begin, text.ByteCount() - begin);
}

}  // namespace

Array<String> Split(const String& text, const String& separator) {
    Array<String> fields;
    forEachField(text, separator, [&](std::size_t begin, std::size_t size) {
        fields.Append(text.Slice(begin, size));
        return true;
    });
    return fields;
}

String NthField(const String& text, const String& separator, int n) {
    if (n < 1) return {};
    String field;
    forEachField(text, separator, [&](std::size_t begin, std::size_t size) {
        if (--n != 0) return true;
        field = text.Slice(begin, size);
        return false;
    });
    return field;
}

int CountFields(const String& text, const String& separator) {
    if (text.IsEmpty()) return 1;
    int count = 0;
    forEachField(text, separator, [&count](std::size_t, std::size_t) {
        ++count;
        return true;
    });
    return count;
}

}  // namespace framework
