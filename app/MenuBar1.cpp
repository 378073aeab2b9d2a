// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/MenuBar1.h"

namespace marrowbeck {
namespace {

template <class Item = MenuItem>
Ref<Item> itemOf(const char* name, const char* text, const char* shortcut = "") {
    const Ref<Item> item = New<Item>();
    item->Name(name);
    item->Text(text);
    item->KeyboardShortcut(shortcut);
    return item;
}

}  // namespace

MenuBar1::MenuBar1() {
    Untitled0();
    Untitled1();
    Untitled2();
}

void MenuBar1::Untitled0() {
    const Ref<MenuItem> file = itemOf("FileMenu", "&File");
    file->Append(itemOf<QuitMenuItem>("FileQuit", "&Quit", "Cmd+Q"));
    const Ref<MenuItem> save = itemOf("FileSave", "Save", "S");
    // Nothing is saved by hand, and so the command is never enabled.
    save->AutoEnable(false);
    file->Append(save);
    Append(file);
}

void MenuBar1::Untitled1() {
    const Ref<MenuItem> edit = itemOf("EditMenu", "&Edit");
    edit->Append(itemOf("EditUndo", "&Undo", "Cmd+Z"));
    edit->Append(itemOf("UntitledMenu1", "-"));
    edit->Append(itemOf("EditCut", "Cu&t", "Cmd+X"));
    edit->Append(itemOf("EditCopy", "&Copy", "Cmd+C"));
    edit->Append(itemOf("EditPaste", "&Paste", "Cmd+V"));
    edit->Append(itemOf("EditClear", "&Delete"));
    edit->Append(itemOf("UntitledMenu0", "-"));
    edit->Append(itemOf("EditSelectAll", "Select &All", "Cmd+A"));
    Append(edit);
}

void MenuBar1::Untitled2() {
    const Ref<MenuItem> help = itemOf("HelpMenu", "Help");
    help->Append(itemOf<AppleMenuItem>("HelpAboutMarrowbeck", "About Marrowbeck"));
    help->Append(itemOf("OnlineHelp", "Marrowbeck Online Help"));
    help->Append(itemOf("HelpMarrowbeckWebsite", "Marrowbeck Website"));
    Append(help);
}

}  // namespace marrowbeck
