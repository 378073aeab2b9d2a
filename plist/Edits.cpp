// SPDX-License-Identifier: GPL-2.0-or-later
#include <cstdint>

#include "framework/core/threads/StackCheck.h"
#include "plist/plist.h"

namespace marrowbeck {

void plistDict::Remove(const Variant& key) {
    if (IsNumeric(key)) {
        removeElement(key.IntegerValue());
    } else {
        removeKey(key.StringValue());
    }
}

void plistDict::removeKey(const String& key) {
    values->Remove(key);
    types->Remove(key);
    // From the end, since the last one of the name counts; and without a yield, behind which others may stand there.
    int position = childrenNames.Ubound();
    while (position > 0 && childrenNames(position) != key) --position;
    if (position <= 0) return;
    childrenNames.Remove(position);
    children.Remove(position);
    childIndex_.Drop();
}

void plistDict::removeElement(std::int32_t n) {
    if (!CheckArray()) return;
    const int last = types->Count() - 1;
    // The message stands when the exception of the absent key below arrives.
    if (n > last || n < 0) SetError(true, "Subscript out of range");
    const String removed = Str(n);
    if (IsContainer(types->Value(removed).StringValue())) {
        // Goes by the number alone, as though all elements in front were nodes too.
        childrenNames.Remove(n + 1);
        children.Remove(n + 1);
        childIndex_.Drop();
    }
    values->Remove(removed);
    // Where the next element moves in, the key keeps its place in the order, in which arrays are written.
    if (n >= last || !types->HasKey(Str(n + 1))) types->Remove(removed);
    for (int i = n + 1; i <= last; ++i) {
        const String from = Str(i);
        if (types->HasKey(from)) {
            const String to = Str(i - 1);
            const String word = types->Value(from).StringValue();
            types->Value(to, word);
            if (!IsContainer(word) && values->HasKey(from)) values->Value(to, values->Value(from));
        }
        LoopYield();
    }
    if (!types->HasKey(Str(last))) return;
    types->Remove(Str(last));
    values->Remove(Str(last));
}

void plistDict::Move(const String& key, const Ref<plistDict>& dest, bool remove, const String& newName) {
    CheckStack();
    SetError(false, "");
    if (!dest) {
        SetError(true, "Destination is nil");
        return;
    }
    if (!Exists(key)) {
        SetError(true, "Source does not exist.");
        return;
    }
    const String word = GetType(key);
    const String target = newName.IsEmpty() ? key : newName;
    const bool toArray = dest->isArray;
    if (word == "string") {
        toArray ? dest->AppendString(GetString(key)) : dest->SetString(target, GetString(key));
    } else if (word == "boolean") {
        toArray ? dest->AppendBoolean(GetBoolean(key)) : dest->SetBoolean(target, GetBoolean(key));
    } else if (word == "real") {
        toArray ? dest->AppendDouble(GetDouble(key)) : dest->SetDouble(target, GetDouble(key));
    } else if (word == "integer") {
        toArray ? dest->AppendInteger(GetInteger(key)) : dest->SetInteger(target, GetInteger(key));
    } else if (word == "data") {
        toArray ? dest->AppendData(GetString(key)) : dest->SetData(target, GetString(key));
    } else if (word == "date") {
        toArray ? dest->AppendDate(GetDate(key)) : dest->SetDate(target, GetDate(key));
    } else if (IsContainer(word)) {
        moveNode(key, dest, target);
    }
    if (remove) Remove(key);
}

/// Copies the entries of a node into a new one. Arrays become dictionaries on the way.
void plistDict::moveNode(const String& key, const Ref<plistDict>& dest, const String& target) {
    Ref<plistDict> copy;
    if (dest->isArray) {
        dest->AppendDict();
        // One past the element just added: that one stays empty, and the copy goes into one more.
        copy = dest->child(Str(dest->count()));
    } else {
        dest->AddChild(target);
        copy = dest->child(target);
    }
    child(key)->MoveFirst();
    while (!child(key)->eof) {
        child(key)->Move(child(key)->CurrentKey(), copy, false, "");
        child(key)->MoveNext();
        LoopYield();
    }
}

void plistDict::Move(const String& key, const Ref<plistDict>& dest) {
    Move(key, dest, true, "");
}

void plistDict::Copy(const String& key, const Ref<plistDict>& dest) {
    Move(key, dest, false, "");
}

void plistDict::Rename(const String& oldKey, const String& newKey) {
    SetError(false, "");
    if (Exists(newKey)) {
        SetError(true, "Key " + newKey + " already exists.");
        return;
    }
    Move(oldKey, Ref<plistDict>(this), true, newKey);
}

}  // namespace marrowbeck
