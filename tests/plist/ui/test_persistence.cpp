// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include "framework/ui/control/CheckBox.h"
#include "framework/ui/control/Label.h"
#include "framework/ui/control/RadioButton.h"
#include "framework/ui/field/EditField.h"
#include "framework/ui/list/Listbox.h"
#include "framework/ui/window/Window.h"
#include "tests/plist/Documents.h"

using namespace marrowbeck;
using namespace marrowbeck::test;

namespace {

class Persistence : public testing::Test {
  protected:
    template <class Control>
    static Ref<Control> named(const char* name) {
        const auto control = New<Control>();
        control->Name(name);
        return control;
    }
    static Ref<Listbox> listOf(int columns, std::initializer_list<const char*> texts) {
        const auto list = named<Listbox>("list");
        list->Index(3);
        list->ColumnCount(columns);
        for (const char* text : texts) list->AddRow(Array<String>{text, "second"});
        return list;
    }

    Documents documents;
    Ref<plist> document = documents.Open();
    Ref<plistDict> root = document->root;
};

}  // namespace

TEST_F(Persistence, OneColumnComesBackWithItsSelection) {
    const auto list = listOf(1, {"a", "b", "c"});
    list->ListIndex(1);
    root->SetListbox(list);
    root->SetListbox(list);
    EXPECT_EQ(outline(root), "list.3={default=string:b elements=[0=string:a 1=string:b 2=string:c]}");
    const auto other = listOf(1, {});
    root->GetListbox(other, true);
    EXPECT_EQ(other->ListCount(), 3);
    EXPECT_EQ(other->ListIndex(), 1);
    const auto unselected = listOf(1, {});
    root->GetListbox(unselected, false);
    EXPECT_EQ(unselected->ListIndex(), -1);
}

TEST_F(Persistence, SeveralColumnsAreCutToTheControl) {
    root->SetListbox(listOf(3, {"a", "b"}));
    EXPECT_EQ(outline(root),
              "list.3={default=string: elements=[0=[0=string:a 1=string:second 2=string:] "
              "1=[0=string:b 1=string:second 2=string:]]}");
    document->Save();
    const auto again = documents.Open();
    const auto narrow = listOf(2, {});
    again->root->GetListbox(narrow, true);
    EXPECT_EQ(narrow->Cell(1, 0), "b");
    EXPECT_EQ(narrow->Cell(1, 1), "second");
    EXPECT_EQ(narrow->ListIndex(), 1) << "without a selected text every row in turn is selected";

    const auto elements = again->root->child("list.3")->child("elements");
    for (const char* key : {"0", "1"}) elements->child(key)->Remove("1");
    again->root->GetListbox(narrow, false);
    EXPECT_EQ(narrow->ListCount(), 4) << "of rows with a hole too";
}

TEST_F(Persistence, SimpleControlsKeepOneValue) {
    const auto edit = named<EditField>("edit");
    edit->Text("e");
    root->SetEditField(edit);
    const auto label = named<Label>("label");
    label->Text("l");
    root->SetStaticText(label);
    const auto radio = named<RadioButton>("radio");
    radio->Value(true);
    root->SetRadio(radio);
    EXPECT_EQ(outline(root), "edit=string:e label=string:l radio=boolean:true");
    root->SetString("edit", "stored");
    root->GetEditField(edit);
    EXPECT_EQ(edit->Text(), "stored");
    root->SetString("label", "stored");
    root->GetStaticText(label);
    EXPECT_EQ(label->Caption(), "stored");
    const auto box = named<CheckBox>("box");
    root->GetCheckbox(box);
    EXPECT_FALSE(box->Value());
    root->SetBoolean("box", true);
    root->GetCheckbox(box);
    EXPECT_TRUE(box->Value());
}

TEST_F(Persistence, WindowsKeepTitleAndBounds) {
    const auto window = New<Window>();
    window->Title("first");
    window->Width(640);
    window->Height(480);
    root->GetWindow("Window Main", window);
    window->Title("second");
    window->Width(700);
    root->SetWindow("Window Main", window);
    EXPECT_EQ(root->child("Window Main")->count(), 2);
    root->child("window main")->child("WindowPos")->SetInteger("height", 333);
    const auto other = New<Window>();
    root->GetWindow("Window Main", other);
    EXPECT_EQ(other->Title(), "second");
    EXPECT_EQ(other->Width(), 700);
    EXPECT_EQ(other->Height(), 333);
}
