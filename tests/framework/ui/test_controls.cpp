// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <QAccessible>
#include <QAccessibleWidget>
#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTest>

#include "framework/core/objects/Exceptions.h"
#include "framework/ui/control/CheckBox.h"
#include "framework/ui/control/ContextualClick.h"
#include "framework/ui/control/EditField.h"
#include "framework/ui/control/GroupBox.h"
#include "framework/ui/control/Label.h"
#include "framework/ui/control/PopupMenu.h"
#include "framework/ui/control/ProgressBar.h"
#include "framework/ui/control/ProgressWheel.h"
#include "framework/ui/control/PushButton.h"
#include "framework/ui/control/RadioButton.h"
#include "framework/ui/control/TextArea.h"
#include "framework/ui/drawing/Native.h"
#include "framework/ui/window/Window.h"
#include "framework/ui/window/WindowFrame.h"

namespace framework::testing {
namespace {

class Controls : public ::testing::Test {
  protected:
    void Show() {
        window->Show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window->Native()));
    }
    void Press(Qt::Key key) {
        QWidget* const focus = window->Native()->focusWidget();
        QTest::keyClick(focus ? focus : window->Native(), key);
    }
    static std::string Spoken(const RectControl& control) {
        return QAccessible::queryAccessibleInterface(control.Native())->text(QAccessible::Name).toStdString();
    }
    /// How many dots of the label have a colour near `color`.
    static int DotsOf(const Label& label, Color color) {
        const QImage image = label.Native()->grab().toImage();
        int dots = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QColor dot = image.pixelColor(x, y);
                if (std::abs(dot.red() - color.Red) + std::abs(dot.green() - color.Green) < 60) ++dots;
            }
        }
        return dots;
    }

    Ref<Window> window = New<Window>();
};

TEST_F(Controls, SayToAScreenReaderWhatTheyShow) {
    const Ref<Label> label = window->Add<Label>("total", 0, 0, 100, 20);
    EXPECT_EQ(Spoken(*label), "");
    label->HelpTag("Number of <b>images</b>");
    EXPECT_EQ(Spoken(*label), "Number of <b>images</b>");
    EXPECT_EQ(label->HelpTag(), "Number of <b>images</b>");
    EXPECT_EQ(label->Native()->toolTip().toStdString(), "<qt>Number of &lt;b&gt;images&lt;/b&gt;");
    label->Text("Image Files: 3");
    EXPECT_EQ(Spoken(*label), "Image Files: 3");
    label->Caption("Image Files: 4");
    EXPECT_EQ(Spoken(*label), "Image Files: 4");
    label->AccessibleName("Count");
    label->Text("");
    EXPECT_EQ(Spoken(*label), "Count");

    const Ref<GroupBox> group = window->Add<GroupBox>("group", 0, 0, 100, 20);
    group->Caption("Cut & paste");
    EXPECT_EQ(Spoken(*group), "Cut & paste");
}

TEST_F(Controls, LabelsOfDarkTextAreReadableOnADarkWindow) {
    window->Frame(Window::FrameMetal);
    const Ref<Label> label = window->Add<Label>("label", 0, 0, 140, 24);
    label->Text("Label");
    label->TextColor(RGB(255, 255, 255));
    Show();
    constexpr Color kPlate{222, 226, 231};
    EXPECT_LT(DotsOf(*label, kPlate), 140);
    label->TextColor(RGB(0, 0, 0));
    EXPECT_GT(DotsOf(*label, kPlate), 200);
    EXPECT_GT(DotsOf(*label, RGB(0, 0, 0)), 10);
}

TEST_F(Controls, BoxesTellOfAPersonsChangesOnly) {
    const Ref<CheckBox> box = window->Add<CheckBox>("box", 0, 0, 100, 20);
    box->Caption("Sub & folders");
    int actions = 0;
    box->OnAction = [&](CheckBox& sender) {
        ++actions;
        EXPECT_EQ(&sender, box.Get());
    };
    box->Value(true);
    EXPECT_EQ(actions, 0);
    Show();
    QTest::mouseClick(box->Native(), Qt::LeftButton, {}, QPoint(8, 10));
    EXPECT_EQ(actions, 1);
    EXPECT_FALSE(box->Value());
    box->State(CheckBox::Indeterminate);
    EXPECT_EQ(box->State(), CheckBox::Indeterminate);
    EXPECT_FALSE(box->Value());
    QTest::mouseClick(box->Native(), Qt::LeftButton, {}, QPoint(8, 10));
    EXPECT_EQ(box->State(), CheckBox::Checked);
}

TEST_F(Controls, OneRadioButtonHoldsAtATime) {
    const Ref<RadioButton> one = window->Add<RadioButton>("one", 0, 0, 100, 20);
    const Ref<RadioButton> two = window->Add<RadioButton>("two", 0, 30, 100, 20);
    Show();
    one->Value(true);
    two->Value(true);
    EXPECT_FALSE(one->Value());
    two->Value(false);
    EXPECT_FALSE(two->Value());
    QTest::mouseClick(one->Native(), Qt::LeftButton, {}, QPoint(8, 10));
    EXPECT_TRUE(one->Value());
}

TEST_F(Controls, ReturnAndEscapePressTheirButtonsFromAnywhere) {
    std::string pressed;
    const auto add = [&](const char* name, int top) {
        const Ref<PushButton> button = window->Add<PushButton>(name, 0, top, 80, 20);
        button->OnAction = [&](PushButton& sender) { pressed += sender.Name().ToStd() + " "; };
        return button;
    };
    const Ref<TextArea> text = window->Add<TextArea>("text", 100, 0, 100, 100);
    text->ReadOnly(true);
    const Ref<TextArea> editor = window->Add<TextArea>("editor", 100, 100, 100, 100);
    const Ref<PushButton> other = add("other", 0);
    const Ref<PushButton> ok = add("ok", 30);
    const Ref<PushButton> cancel = add("cancel", 60);
    ok->Default(true);
    cancel->Cancel(true);
    Show();
    for (const RectControl* focus : {static_cast<RectControl*>(text.Get()), static_cast<RectControl*>(other.Get())}) {
        focus->Native()->setFocus();
        Press(Qt::Key_Return);
        Press(Qt::Key_Escape);
    }
    EXPECT_EQ(pressed, "ok cancel ok cancel ");

    pressed.clear();
    editor->Native()->setFocus();
    Press(Qt::Key_Return);
    EXPECT_EQ(editor->Text(), "\n");
    ok->Enabled(false);
    cancel->Visible(false);
    other->Native()->setFocus();
    Press(Qt::Key_Enter);
    Press(Qt::Key_Escape);
    EXPECT_EQ(pressed, "");
}

TEST_F(Controls, AReadOnlyTextCanBeReadToItsEndAndCopied) {
    const Ref<TextArea> area = window->Add<TextArea>("area", 0, 0, 120, 40);
    area->ReadOnly(true);
    area->ScrollbarVertical(false);
    String text = "first";
    for (int i = 0; i < 30; ++i) text += "\nline";
    area->Text(text);
    Show();
    area->Native()->setFocus();
    Press(Qt::Key_X);
    EXPECT_TRUE(area->Text().SameBytes(text));
    EXPECT_FALSE(area->CanEdit(EditTarget::Command::Paste));
    EXPECT_FALSE(area->CanEdit(EditTarget::Command::Cut));
    area->Edit(EditTarget::Command::SelectAll);
    ASSERT_TRUE(area->CanEdit(EditTarget::Command::Copy));
    area->Edit(EditTarget::Command::Copy);
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), text.ToStd());
}

TEST_F(Controls, WhatIsTypedStaysWithinLimitAndLine) {
    const Ref<TextArea> area = window->Add<TextArea>("area", 0, 0, 120, 40);
    area->Multiline(false);
    area->LimitText(4);
    EXPECT_FALSE(area->CanEdit(EditTarget::Command::Undo));
    Show();
    area->Native()->setFocus();
    QTest::keyClicks(area->Native(), "abc");
    Press(Qt::Key_Return);
    QGuiApplication::clipboard()->setText("xyz\nsecond");
    area->Edit(EditTarget::Command::Paste);
    EXPECT_EQ(area->Text(), "abcx");
}

TEST_F(Controls, AFieldIsEdited) {
    const Ref<EditField> field = window->Add<EditField>("field", 0, 0, 120, 20);
    int changes = 0;
    field->OnTextChange = [&](TextField&) { ++changes; };
    field->Text("old");
    Show();
    field->Native()->setFocus();
    field->Edit(EditTarget::Command::SelectAll);
    QTest::keyClicks(field->Native(), "n");
    EXPECT_EQ(field->Text(), "n");
    EXPECT_EQ(changes, 2);
    ASSERT_TRUE(field->CanEdit(EditTarget::Command::Undo));
    field->Edit(EditTarget::Command::Undo);
    EXPECT_EQ(field->Text(), "old");
}

TEST_F(Controls, APopupMenuSelectsWhatItIsTold) {
    const Ref<PopupMenu> menu = window->Add<PopupMenu>("menu", 0, 0, 100, 20);
    int changes = 0;
    menu->OnChange = [&](PopupMenu&) { ++changes; };
    menu->AddRow("one");
    menu->AddRow("two");
    EXPECT_EQ(menu->ListIndex(), -1);
    EXPECT_EQ(menu->Text(), "");
    menu->ListIndex(1);
    EXPECT_EQ(menu->Text(), "two");
    EXPECT_EQ(changes, 1);
    menu->AddRow("three");
    EXPECT_EQ(menu->ListIndex(), 1);
    EXPECT_EQ(menu->List(2), "three");
    EXPECT_THROW(menu->List(3), OutOfBoundsException);
    EXPECT_THROW(menu->ListIndex(3), OutOfBoundsException);
    Show();
    menu->Native()->setFocus();
    Press(Qt::Key_Up);
    EXPECT_EQ(menu->Text(), "one");
    EXPECT_EQ(changes, 2);
}

TEST_F(Controls, AProgressBarTakesValuesFromBeyondItsEnds) {
    const Ref<ProgressBar> bar = window->Add<ProgressBar>("bar", 0, 0, 100, 12);
    auto& widget = *static_cast<QProgressBar*>(bar->Native());
    bar->Value(70);
    EXPECT_EQ(widget.value(), 70);
    bar->Maximum(50);
    EXPECT_EQ(widget.value(), 50);
    EXPECT_EQ(bar->Value(), 70);
    bar->Maximum(0);
    EXPECT_EQ(widget.maximum(), 0) << "an indefinite bar";
    bar->Maximum(100);
    EXPECT_EQ(widget.value(), 70);
    bar->Value(-5);
    EXPECT_EQ(widget.value(), 0);

    // Without a maximum it looks neither empty nor full, whatever its value.
    const QImage empty = widget.grab().toImage();
    bar->Value(70);
    bar->Maximum(0);
    const QImage indefinite = widget.grab().toImage();
    int left = 0;
    for (int x = 0; x < 100; ++x) left += indefinite.pixel(x, 6) == empty.pixel(x, 6) ? 1 : 0;
    EXPECT_GT(left, 60);
    EXPECT_LT(left, 90);
}

TEST_F(Controls, AWheelTurnsWhileItIsToBeSeen) {
    class Paints : public QObject {
      public:
        int Count = 0;

      protected:
        bool eventFilter(QObject*, QEvent* event) override {
            Count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    };
    Paints paints;
    const Ref<ProgressWheel> wheel = window->Add<ProgressWheel>("wheel", 0, 0, 16, 16);
    wheel->Native()->installEventFilter(&paints);
    wheel->Visible(false);
    Show();
    QTest::qWait(250);
    EXPECT_EQ(paints.Count, 0);
    wheel->Visible(true);
    EXPECT_TRUE(QTest::qWaitFor([&] { return paints.Count >= 3; }));
}

TEST_F(Controls, OutliveTheirWindowForWhoeverHoldsThem) {
    const Ref<Label> label = window->Add<Label>("label", 0, 0, 100, 20);
    window = Nil;
    QTest::qWait(1);
    label->Text("still here");
    EXPECT_EQ(label->Text(), "still here");
}

TEST_F(Controls, MayGoInTheirOwnEvent) {
    Ref<PushButton> button = New<PushButton>();
    QWidget* const widget = button->Native();
    bool pressed = false;
    button->OnAction = [&](PushButton& sender) {
        button = Nil;
        pressed = sender.Enabled();
    };
    widget->show();
    QTest::mouseClick(widget, Qt::LeftButton);
    QTest::qWait(1);
    EXPECT_TRUE(pressed);
}

TEST(ContextualClick, IsAskedForInsideItsScopeOnly) {
    EXPECT_FALSE(IsContextualClick());
    {
        const internal::ContextualClick asked(true);
        EXPECT_TRUE(IsContextualClick());
        {
            const internal::ContextualClick plain(false);
            EXPECT_FALSE(IsContextualClick());
        }
        EXPECT_TRUE(IsContextualClick());
    }
    EXPECT_FALSE(IsContextualClick());
}

}  // namespace
}  // namespace framework::testing
