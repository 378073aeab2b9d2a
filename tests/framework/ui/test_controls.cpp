// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTest>
#include <QToolButton>

#include "framework/core/objects/Exceptions.h"
#include "framework/ui/control/CheckBox.h"
#include "framework/ui/control/GroupBox.h"
#include "framework/ui/control/Label.h"
#include "framework/ui/control/ProgressBar.h"
#include "framework/ui/control/PushButton.h"
#include "framework/ui/control/SegmentedControl.h"
#include "framework/ui/drawing/Native.h"
#include "framework/ui/field/TextArea.h"
#include "framework/ui/field/TextField.h"
#include "framework/ui/menu/Toolbar.h"
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

TEST_F(Controls, TheFrameOfAGroupLiesAboveWhatTheGroupHolds) {
    window->Frame(Window::FrameMetal);
    const Ref<GroupBox> group = window->Add<GroupBox>("group", 0, 0, 250, 100);
    Show();
    QFont tall = group->Native()->font();
    tall.setPixelSize(30);
    group->Native()->setFont(tall);
    const QImage image = group->Native()->grab().toImage();
    const int middle = image.width() / 2;
    const int content = image.height() / 5;  // 20 of 100, whatever the scale
    EXPECT_NE(image.pixel(middle, content - 2), image.pixel(middle, 0));
    for (int y = content; y < 4 * content; ++y) EXPECT_EQ(image.pixel(middle, y), image.pixel(middle, 3 * content));
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
    Show();
    area->Native()->setFocus();
    const auto repeated = [](int times, const char* part) {
        std::string text;
        for (int i = 0; i < times; ++i) text += part;
        return text;
    };
    const auto copied = [&] {
        area->Edit(EditTarget::Command::Copy);
        return QGuiApplication::clipboard()->text().toStdString();
    };
    for (const std::string& text :
         {repeated(30, "line\n"), repeated(3, "a\u00a0b\r\n"), repeated(20'000, "\U0001f5bc") + "\r\n",
          " " + repeated(20'000, "\U0001f5bc") + "\n" + repeated(66'000, "x") + "\n", repeated(30'000, "x\r\n")}) {
        area->Text(String(text + "end"));
        Press(Qt::Key_X);
        EXPECT_TRUE(area->Text().SameBytes(String(text + "end")));
        EXPECT_FALSE(area->CanEdit(EditTarget::Command::Paste));
        EXPECT_FALSE(area->CanEdit(EditTarget::Command::Cut));
        area->Edit(EditTarget::Command::SelectAll);
        ASSERT_TRUE(area->CanEdit(EditTarget::Command::Copy));
        EXPECT_TRUE(copied() == text + "end") << text.size();
        QTest::keyClick(area->Native(), Qt::Key_End, Qt::ControlModifier);
        QTest::keyClick(area->Native(), Qt::Key_Home, Qt::ShiftModifier);
        EXPECT_EQ(copied(), "end") << text.size();
        const QString shown = static_cast<QPlainTextEdit*>(area->Native())->toPlainText();
        EXPECT_TRUE(shown.isValidUtf16()) << "cut between characters";
        EXPECT_LT(shown.size(), 4'000) << "all that is laid out";
    }
    area->Text("photo\u202egpj.exe\tx\x1b\u009b\ny");
    EXPECT_EQ(static_cast<QPlainTextEdit*>(area->Native())->toPlainText().toStdString(),
              "photo\ufffdgpj.exe\tx\ufffd\ufffd\ny");
    area->Edit(EditTarget::Command::SelectAll);
    EXPECT_EQ(copied(), "photo\u202egpj.exe\tx\x1b\u009b\ny");
    area->Text(String(repeated(30'000, "x\r\n") + "end"));
    area->ReadOnly(false);
    EXPECT_EQ(static_cast<QPlainTextEdit*>(area->Native())->toPlainText().size(), 60'003);
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
}

TEST_F(Controls, ToolsAreFoundByTheirPlaceAndTellTheirToolbar) {
    const Ref<Toolbar> tools = window->Add<Toolbar>("tools", 0, 520, 600, 59);
    std::string pressed;
    tools->OnAction = [&](Toolbar&, Ref<ToolItem> item) { pressed += item->Name().ToStd() + " "; };
    for (const int style : {0, 0, int{ToolItem::StyleSeparator}, int{ToolItem::StyleFlexibleSpace}, 0}) {
        const Ref<ToolButton> item = New<ToolButton>();
        item->Name(String("Tool" + std::to_string(tools->Count())));
        item->Style(style);
        tools->Append(item);
    }
    window->Width(700);
    Show();
    const auto button = [&](const char* name) { return tools->Native()->findChild<QToolButton*>(QLatin1String(name)); };
    EXPECT_THROW(tools->Item(5), OutOfBoundsException);
    EXPECT_EQ(button("Tool2"), nullptr);
    // The space pushes what follows it to the far end.
    EXPECT_GT(button("Tool4")->mapTo(window->Native(), button("Tool4")->rect().topRight()).x(), 650);
    QTest::mouseClick(button("Tool0"), Qt::LeftButton);
    tools->Item(1)->Enabled(false);
    QTest::mouseClick(button("Tool1"), Qt::LeftButton);
    button("Tool4")->setFocus();
    QTest::keyClick(button("Tool4"), Qt::Key_Space);
    EXPECT_EQ(pressed, "Tool0 Tool4 ");
}

class Segments : public ::testing::Test {
  protected:
    void SetUp() override {
        for (const char* title : {"JPG", "TIFF", "PNG", "ALL"}) control->Append(New<SegmentedControlItem>(title, 30));
        control->SizeToFit();
        control->OnAction = [this](SegmentedControl&, int index) { actions += std::to_string(index) + " "; };
        window->Show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window->Native()));
    }
    QAbstractButton* Segment(int index) {
        return control->Native()->findChild<QAbstractButton*>(QStringLiteral("Segment%1").arg(index));
    }
    void Click(int index) { QTest::mouseClick(Segment(index), Qt::LeftButton); }
    std::string Selection() {
        std::string selected;
        for (int i = 0; i < control->Count(); ++i) {
            EXPECT_EQ(control->Items(i)->Selected(), Segment(i)->isChecked());
            selected += control->Items(i)->Selected() ? '1' : '0';
        }
        return selected;
    }

    Ref<Window> window = New<Window>();
    Ref<SegmentedControl> control = window->Add<SegmentedControl>("segments", 5, 39, 152, 24);
    Ref<TextField> after = window->Add<TextField>("after", 5, 80, 50, 20);
    std::string actions;
};

TEST_F(Segments, OneAtATimeIsSelectedByHandAndByCode) {
    EXPECT_EQ(Selection(), "0000");
    control->Items(0)->Selected(true);
    control->Items(3)->Selected(true);
    control->Items(1)->Selected(false);
    EXPECT_EQ(Selection(), "0001");
    control->Items(3)->Selected(false);
    EXPECT_EQ(Selection(), "0000");
    EXPECT_EQ(actions, "");

    Click(2);
    Click(1);
    Click(1);
    EXPECT_EQ(Selection(), "0100");
    EXPECT_EQ(actions, "2 1 1 ");
    const QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(Segment(1));
    EXPECT_EQ(told->role(), QAccessible::RadioButton);
    EXPECT_TRUE(told->state().checked);

    control->Enabled(false);
    Click(3);
    EXPECT_EQ(Selection(), "0100");
    EXPECT_EQ(actions, "2 1 1 ");
    EXPECT_THROW(control->Items(4), OutOfBoundsException);
}

TEST_F(Segments, AreReachedByKeys) {
    after->Native()->setFocus();
    const auto press = [this](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(window->Native()->focusWidget(), key, modifiers);
    };
    press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(Segment(0)->hasFocus());
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    press(Qt::Key_Left);
    EXPECT_EQ(actions, "") << "arrows press nothing";
    press(Qt::Key_Space);
    EXPECT_EQ(actions, "1 ");
    EXPECT_EQ(Selection(), "0100");
    press(Qt::Key_Left);
    press(Qt::Key_Left);
    EXPECT_TRUE(Segment(3)->hasFocus());
    press(Qt::Key_Tab);
    EXPECT_TRUE(after->Native()->hasFocus()) << "one stop for the whole row";
}

}  // namespace
}  // namespace framework::testing
