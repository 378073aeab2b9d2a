// SPDX-License-Identifier: GPL-2.0-or-later
#include <cstdint>
#include <utility>
#include <vector>

#include "framework/core/threads/StackCheck.h"
#include "plist/plist.h"

namespace marrowbeck {
namespace {

/// Nodes on their way out. A tree may be nested far deeper than the stack reaches, so a node hands those below it to
/// whoever is already at it instead of destroying them from within.
void destroyLater(Array<Ref<plistDict>> nodes) {
    static std::vector<Ref<plistDict>>* atWork = nullptr;
    std::vector<Ref<plistDict>> own;
    const bool first = !atWork;
    if (first) atWork = &own;
    for (const Ref<plistDict>& node : nodes) {
        if (node) atWork->push_back(node);
    }
    nodes = {};
    if (!first) return;
    while (!own.empty()) {
        const Ref<plistDict> node = std::move(own.back());
        own.pop_back();
    }
    atWork = nullptr;
}

}  // namespace

bool IsContainer(const String& word) {
    static const String kDict = "dict";
    static const String kArray = "array";
    return word == kDict || word == kArray;
}

plistDict::plistDict() : values(New<Dictionary>()), types(New<Dictionary>()), searched(New<Dictionary>()) {}

plistDict::~plistDict() {
    if (children.Ubound() > 0) destroyLater(std::move(children));
}

Ref<plistDict> plistDict::child(const String& key) {
    CheckStack();
    // Something to let go of at the end also keeps the call below a real one: under a key that holds a leaf there is no
    // way to make a node, and it is the stack check that ends the search for one.
    const Ref<plistDict> self(this);
    const int position = childIndex_.First(childrenNames, key);
    if (position > 0) return children(position);
    AddChild(key);
    return child(key);
}

Ref<plistDict> plistDict::index(std::int32_t i) {
    const int position = childIndex_.First(childrenNames, Str(i));
    return position > 0 ? children(position) : Ref<plistDict>();
}

Ref<plistDict> plistDict::addNode(const String& key, bool asArray) {
    const auto node = New<plistDict>();
    node->isArray = asArray;
    node->parent = this;
    node->rootClass = rootClass;
    childrenNames.Append(key);
    children.Append(node);
    return node;
}

void plistDict::AddChild(const String& key) {
    SetError(false, "");
    if (types->HasKey(key)) {
        SetError(true, "Child exists: " + key + " already exists");
        return;
    }
    types->Value(key, "dict");
    addNode(key, false)->name = key;
    searched->Value(key, false);
}

bool plistDict::AddArray(const String& key) {
    SetError(false, "");
    if (types->HasKey(key)) {
        SetError(true, "Array exists: " + key + " already exists");
        return false;
    }
    types->Value(key, "array");
    addNode(key, true)->name = key;
    searched->Value(key, false);
    return true;
}

bool plistDict::CheckArray() {
    SetError(false, "");
    if (!isArray) SetError(true, name + " is not an array");
    return isArray;
}

bool plistDict::Exists(const String& key) {
    return types->HasKey(key);
}

String plistDict::GetType(const String& key) {
    return types->Value(key).StringValue();
}

std::int32_t plistDict::count() {
    return types->Count();
}

void plistDict::MoveFirst() {
    currentIndex = 0;
    eof = false;
}

void plistDict::MoveNext() {
    ++currentIndex;
    if (currentIndex <= types->Count() - 1) return;
    currentIndex = 0;
    eof = true;
}

void plistDict::MoveLast() {
    currentIndex = types->Count() - 1;
}

String plistDict::CurrentKey() {
    if (currentIndex <= types->Count() - 1) return types->Key(currentIndex).StringValue();
    eof = true;
    currentIndex = 0;
    return {};
}

bool plistDict::TypeOK(const String& key) {
    const String word = types->Value(key).StringValue();
    if (!IsContainer(word)) return true;
    if (rootClass) SetError(true, "Illegal Type: " + key + " is a " + word);
    return false;
}

std::int32_t plistDict::CheckType(const String& key, const String& word) {
    SetError(false, "");
    if (!types->HasKey(key)) return 2;
    const String present = types->Value(key).StringValue();
    if (present == word) return 1;
    SetError(true, "Type Mismatch: " + key + " is a " + present);
    return 0;
}

void plistDict::SetError(bool isError, const String& message) {
    plist* const document = rootClass.Get();
    if (!document) return;
    document->error = isError;
    document->errorMessage = message;
    if (isError && document->debug) MsgBox(message);
}

String plistDict::AbsolutePath() {
    path = ":" + name;
    BuildPath(parent, path);
    return path;
}

/// Puts the names from `node` up to the one called "root" in front of `path`. A loop, and one joining at the end, since
/// a tree may be deeper than the stack.
void plistDict::BuildPath(const BackReference<plistDict>& node, const String& /*text*/) {
    std::vector<String> names;
    for (BackReference<plistDict> at = node;; at = at->parent) {
        names.push_back(at->name);
        if (at->name == "root") break;
        LoopYield();
    }
    String joined;
    while (!names.empty()) {
        // The walk ends at whatever is called so, but the path begins with the name as it is written here.
        joined += joined.IsEmpty() ? String(":root") : ":" + names.back();
        names.pop_back();
    }
    path = joined + path;
}

String plistDict::MakeTwo(std::int32_t n) {
    return n > 9 ? Str(n) : "0" + Str(n);
}

}  // namespace marrowbeck
