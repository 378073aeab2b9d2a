// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/window/Window.h"
#include "plist/plistDict.h"

namespace marrowbeck {
namespace {

void setBounds(const Ref<plistDict>& position, const Ref<Window>& window) {
    position->SetInteger("left", window->Left());
    position->SetInteger("top", window->Top());
    position->SetInteger("width", window->Width());
    position->SetInteger("height", window->Height());
}

}  // namespace

void plistDict::SetWindow(const String& key, const Ref<Window>& window) {
    if (!Exists(key)) AddChild(key);
    searched->Value(key, false);
    child(key)->SetString("windowName", window->Title());
    if (!child(key)->Exists("WindowPos")) child(key)->AddChild("WindowPos");
    setBounds(child(key)->child("WindowPos"), window);
}

void plistDict::GetWindow(const String& key, const Ref<Window>& window) {
    if (!Exists(key)) SetWindow(key, window);
    window->Title(child(key)->GetString("windowName"));
    const Ref<plistDict> position = child(key)->child("WindowPos");
    window->Left(position->GetInteger("left"));
    window->Top(position->GetInteger("top"));
    window->Width(position->GetInteger("width"));
    window->Height(position->GetInteger("height"));
}

void plistDict::AppendWindow(const Ref<Window>& window) {
    if (!CheckArray()) return;
    AppendDict();
    const String key = Str(count() - 1);
    child(key)->SetString("windowName", window->Title());
    child(key)->AddChild("WindowPos");
    setBounds(child(key)->child("WindowPos"), window);
}

}  // namespace marrowbeck
