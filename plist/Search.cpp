// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/threads/StackCheck.h"
#include "plist/plist.h"

namespace marrowbeck {

bool plist::Find(const String& needle) {
    foundDict = Nil;
    foundKey = {};
    foundValue = {};
    foundType = {};
    ClearSearch(root);
    lastSearch = needle;
    return ReadStructure(root, needle, "valueSearch");
}

bool plist::FindNext(const String& needle) {
    if (needle != lastSearch) ClearSearch(root);
    return ReadStructure(root, needle, "valueSearch");
}

bool plist::ReadStructure(const Ref<plistDict>& node, const String& needle, const String& mode) {
    CheckStack();
    for (node->MoveFirst(); !node->eof; node->MoveNext()) {
        const String key = node->CurrentKey();
        const String word = node->GetType(key);
        if (IsContainer(word)) {
            if (ReadStructure(node->child(key), needle, mode)) return true;
        } else {
            const String value = node->GetValue(key);
            const bool matches =
                (InStr(value, needle) > 0 && mode == "valueSearch") || (InStr(key, needle) > 0 && mode == "keySearch");
            if (matches && !node->searched->Lookup(key, false).BooleanValue()) {
                foundDict = node;
                foundKey = key;
                foundType = word;
                foundValue = value;
                node->searched->Value(key, true);
                return true;
            }
        }
        LoopYield();
    }
    return false;
}

void plist::ClearSearch(const Ref<plistDict>& node) {
    CheckStack();
    for (node->MoveFirst(); !node->eof; node->MoveNext()) {
        const String key = node->CurrentKey();
        if (IsContainer(node->GetType(key))) {
            ClearSearch(node->child(key));
        } else {
            node->searched->Value(key, false);
        }
        LoopYield();
    }
}

}  // namespace marrowbeck
