// SPDX-License-Identifier: GPL-2.0-or-later
#include <algorithm>
#include <array>

#include "app/App.h"
#include "app/Colors.h"
#include "app/Preferences.h"
#include "app/VersionLine.h"
#include "app/Window1.h"

namespace marrowbeck {
namespace {

constexpr const char* kWindowKey = "Window Main";
/// Beside the window's entry, which holds the bounds that it has when it is not maximised.
constexpr const char* kMaximizedKey = "maximized";

/// Whether each item of the filter is selected, in the items' order.
constexpr const char* kFilterKeys[] = {"Seg0", "Seg1", "Seg2", "Seg3"};

Ref<plistDict> preferences() {
    return Preferences::prefs()->root;
}

/// Whether the entry of the key is of that type, or there is none.
bool isAtMost(const Ref<plistDict>& node, const char* key, const char* type) {
    return !node->Exists(key) || node->GetType(key) == type;
}

/// Whether the window can be restored from what is saved of it. What somebody put there by hand may be anything, and a
/// leaf has no children to ask.
bool isWindow(const Ref<plistDict>& root) {
    if (!isAtMost(root, kWindowKey, "dict")) return false;
    if (!root->Exists(kWindowKey)) return true;
    const Ref<plistDict> window = root->child(kWindowKey);
    if (!isAtMost(window, "windowName", "string") || !isAtMost(window, "WindowPos", "dict")) return false;
    if (!window->Exists("WindowPos")) return true;
    const Ref<plistDict> position = window->child("WindowPos");
    return std::ranges::all_of(std::array{"left", "top", "width", "height"},
                               [&](const char* field) { return isAtMost(position, field, "integer"); });
}

}  // namespace

void Window1::Event_Open() {
    SegmentedControl1->Items(kAllItem)->Selected(true);
    EXIFTextArea->Text("");
    DataLabel->Text("");
    filterlabel->Text("Filter");
    TotalLabel->Text("");
    ShowColumns();
    if (Preferences::PreferenceFile()->Exists()) RestoreState();
    AcceptFileDrop("special/any");
    VersionText->Text(VersionLine());
    totalnumber->Text("");
}

void Window1::RestoreState() {
    const Ref<plistDict> root = preferences();
    if (!isWindow(root)) root->Remove(kWindowKey);
    root->GetWindow(kWindowKey, Ref<Window>(this));
    Maximized(root->GetBoolean(kMaximizedKey, false));
    for (int item = kJpgItem; item <= kAllItem; ++item) {
        if (root->GetBoolean(kFilterKeys[item])) SegmentedControl1->Items(item)->Selected(true);
    }
    filterlabel->Text(root->GetString("filterlabel"));
    filterlabel->TextColor(filterlabel->Text() == "Filtered" ? Colors::kDarkRed : Colors::kBlack);
    Subfoldercheckbox->Value(root->GetBoolean("Sub", true));
    UpdateCheckbox->Value(root->GetBoolean("autoupdate", true));
    Listbox1->HeadingIndex(root->GetInteger("sortcolumn"));
    Listbox1->ColumnSortDirection(Listbox1->HeadingIndex(), root->GetInteger("sortdirection"));
    Listbox1->ColumnWidths(root->GetString("columnwidths"));
    App::Current()->gFolder = root->GetString("lastfolder");
}

// The program is its window: what closes ends it, and quitting writes the preferences to the disk.
void Window1::Event_Close() {
    Title("Marrowbeck");
    const Ref<plistDict> root = preferences();
    root->SetWindow(kWindowKey, Ref<Window>(this));
    root->SetBoolean(kMaximizedKey, Maximized());
    for (int item = kJpgItem; item <= kAllItem; ++item) {
        root->SetBoolean(kFilterKeys[item], SegmentedControl1->Items(item)->Selected());
    }
    root->SetString("filterlabel", filterlabel->Text());
    root->SetBoolean("Sub", Subfoldercheckbox->Value());
    root->SetString("columnwidths", Listbox1->ColumnWidths());
    root->SetInteger("sortcolumn", Listbox1->HeadingIndex());
    root->SetInteger("sortdirection", Listbox1->ColumnSortDirection(Listbox1->HeadingIndex()));
    root->SetString("lastfolder", App::Current()->gFolder);
    Quit(0);
}

void Window1::UpdateCheckbox_Action(CheckBox& sender) {
    preferences()->SetBoolean("autoupdate", sender.Value());
}

}  // namespace marrowbeck
