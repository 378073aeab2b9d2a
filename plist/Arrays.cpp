// SPDX-License-Identifier: GPL-2.0-or-later
#include <cstdint>

#include "plist/plist.h"

namespace marrowbeck {

void plistDict::append(const String& word, const String& text) {
    if (!CheckArray()) return;
    indexOf = types->Count();
    const String key = Str(indexOf);
    types->Value(key, word);
    values->Value(key, text);
}

void plistDict::AppendString(const String& value) {
    append("string", value);
}

void plistDict::AppendInteger(std::int32_t value) {
    append("integer", Str(value));
}

void plistDict::AppendDouble(double value) {
    append("double", Str(value));
}

void plistDict::AppendBoolean(bool value) {
    append("boolean", value ? "true" : "false");
}

void plistDict::AppendDate(const Ref<Date>& value) {
    // The fields as they are, local time or not: the "Z" converts nothing, here and on reading.
    append("date", Str(value->Year()) + "-" + MakeTwo(value->Month()) + "-" + MakeTwo(value->Day()) + "T" +
                       MakeTwo(value->Hour()) + ":" + MakeTwo(value->Minute()) + ":" + MakeTwo(value->Second()) + "Z");
}

void plistDict::AppendData(const String& value) {
    append("data", value);
}

void plistDict::AppendColor(Color value) {
    append("string", Hex(value.Red) + Hex(value.Green) + Hex(value.Blue));
}

void plistDict::appendNode(const String& word) {
    indexOf = types->Count();
    const String key = Str(indexOf);
    types->Value(key, word);
    addNode(key, word == "array");
}

void plistDict::AppendDict() {
    if (CheckArray()) appendNode("dict");
}

void plistDict::AppendArray() {
    if (!CheckArray()) return;
    appendNode("array");
    // Dictionaries in arrays stay without a name.
    children(children.Ubound())->name = Str(indexOf);
}

void plistDict::SetList(const String& key, const Array<String>& list, std::int32_t first, std::int32_t last) {
    if (Exists(key)) Remove(key);
    const int start = list.Ubound() < first ? 0 : first;
    const int end = list.Ubound() < last ? list.Ubound() : last;
    if (!AddArray(key)) return;
    searched->Value(key, false);
    for (int i = start; i <= end; ++i) {
        child(key)->AppendString(list(i));
        LoopYield();
    }
}

void plistDict::GetList(const String& key, Array<String>& list, std::int32_t append) {
    if (append == 0) list.Redim(-1);
    // Reckoned once: asking for an element that is missing makes it.
    const int last = child(key)->count() - 1;
    for (int i = 0; i <= last; ++i) {
        list.Append(child(key)->GetString(Str(i)));
        LoopYield();
    }
}

void plistDict::AppendList(const Array<String>& list, std::int32_t first, std::int32_t last) {
    if (!CheckArray()) return;
    const int start = list.Ubound() < first ? 0 : first;
    const int end = list.Ubound() < last ? list.Ubound() : last;
    AppendArray();
    // Reckoned once, before the loop runs: the strings never reach the array that was just added.
    int i = 0;
    const String key = Str(i - 1);
    for (i = start; i <= end; ++i) {
        child(key)->AppendString(list(i));
        LoopYield();
    }
}

}  // namespace marrowbeck
