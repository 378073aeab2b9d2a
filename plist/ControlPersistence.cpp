// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/control/CheckBox.h"
#include "framework/ui/control/Label.h"
#include "framework/ui/control/PopupMenu.h"
#include "framework/ui/control/RadioButton.h"
#include "framework/ui/field/EditField.h"
#include "framework/ui/field/TextField.h"
#include "framework/ui/list/Listbox.h"
#include "plist/plistDict.h"

namespace marrowbeck {
namespace {

/// Tells the members of a control array apart. A control of none has the same number in every run.
template <class Control>
String keyOf(const Ref<Control>& control) {
    return control->Name() + "." + Str(control->Index());
}

/// Begins the entry of a list anew, with the selected text; the array for its rows, or Nil.
template <class Control>
Ref<plistDict> beginList(plistDict& node, const Ref<Control>& control) {
    const String key = keyOf(control);
    if (node.Exists(key)) node.Remove(key);
    node.AddChild(key);
    node.searched->Value(key, false);
    node.child(key)->SetString("default", control->Text());
    return node.child(key)->AddArray("elements") ? node.child(key)->child("elements") : Ref<plistDict>();
}

/// One stored row of several cells at the end of the list.
void addRow(const Ref<Listbox>& control, int row, const Ref<plistDict>& cells) {
    control->AddRow(Array<String>{String()});
    // Reckoned once: asking for an element that is missing makes it.
    const int last = cells->count() - 1;
    for (int column = 0; column <= last; ++column) {
        if (column < control->ColumnCount()) control->Cell(row, column, cells->GetString(Str(column)));
        LoopYield();
    }
}

}  // namespace

void plistDict::SetListbox(const Ref<Listbox>& control) {
    const Ref<plistDict> elements = beginList(*this, control);
    if (!elements) return;
    for (int row = 0; row <= control->ListCount() - 1; ++row) {
        if (control->ColumnCount() > 1) {
            elements->AppendArray();
            for (int column = 0; column <= control->ColumnCount() - 1; ++column) {
                elements->index(row)->AppendString(control->Cell(row, column));
                LoopYield();
            }
        } else {
            elements->AppendString(control->List(row));
        }
        LoopYield();
    }
}

void plistDict::SetPopup(const Ref<PopupMenu>& control) {
    const Ref<plistDict> elements = beginList(*this, control);
    if (!elements) return;
    for (int row = 0; row <= control->ListCount() - 1; ++row) {
        elements->AppendString(control->List(row));
        LoopYield();
    }
}

void plistDict::GetListbox(const Ref<Listbox>& control, bool select) {
    const String key = keyOf(control);
    if (!Exists(key)) SetListbox(control);
    const String selected = child(key)->GetString("default");
    const Ref<plistDict> elements = child(key)->child("elements");
    // With several columns it stays empty: only a list without a selection is then found again, in every row.
    String text;
    const int last = elements->count() - 1;
    for (int row = 0; row <= last; ++row) {
        if (control->ColumnCount() < 2) {
            text = elements->GetString(Str(row));
            control->AddRow(Array<String>{text});
        } else {
            addRow(control, row, elements->index(row));
        }
        if (text == selected && select) control->ListIndex(row);
        LoopYield();
    }
}

void plistDict::GetPopup(const Ref<PopupMenu>& control, bool select) {
    const String key = keyOf(control);
    if (!Exists(key)) SetPopup(control);
    const String selected = child(key)->GetString("default");
    const Ref<plistDict> elements = child(key)->child("elements");
    const int last = elements->count() - 1;
    for (int row = 0; row <= last; ++row) {
        const String text = elements->GetString(Str(row));
        control->AddRow(text);
        if (text == selected && select) control->ListIndex(row);
        LoopYield();
    }
}

void plistDict::AppendListbox(const Ref<Listbox>& control) {
    if (CheckArray()) SetListbox(control);
}

void plistDict::AppendPopup(const Ref<PopupMenu>& control) {
    if (CheckArray()) SetPopup(control);
}

void plistDict::SetEditField(const Ref<EditField>& control) {
    SetString(control->Name(), control->Text());
}

void plistDict::GetEditField(const Ref<EditField>& control) {
    control->Text(GetString(control->Name(), control->Text()));
}

void plistDict::SetTextField(const Ref<TextField>& control) {
    SetString(control->Name(), control->Text());
}

void plistDict::GetTextField(const Ref<TextField>& control) {
    control->Text(GetString(control->Name(), control->Text()));
}

void plistDict::SetStaticText(const Ref<Label>& control) {
    SetString(control->Name(), control->Caption());
}

void plistDict::GetStaticText(const Ref<Label>& control) {
    control->Caption(GetString(control->Name(), control->Caption()));
}

void plistDict::SetCheckbox(const Ref<CheckBox>& control) {
    SetBoolean(control->Name(), control->Value());
}

void plistDict::GetCheckbox(const Ref<CheckBox>& control) {
    control->Value(GetBoolean(control->Name(), control->Value()));
}

void plistDict::SetRadio(const Ref<RadioButton>& control) {
    SetBoolean(control->Name(), control->Value());
}

void plistDict::GetRadio(const Ref<RadioButton>& control) {
    control->Value(GetBoolean(control->Name(), control->Value()));
}

}  // namespace marrowbeck
