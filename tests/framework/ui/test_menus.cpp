// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QTest>
#include <QTimer>

#include "framework/core/desktop/Application.h"
#include "framework/core/objects/Exceptions.h"
#include "framework/ui/field/TextArea.h"
#include "framework/ui/field/TextField.h"
#include "framework/ui/menu/MenuBar.h"
#include "framework/ui/window/Window.h"
#include "framework/ui/window/WindowFrame.h"

namespace framework::testing {
namespace {

/// An application with a menu bar as programs have it.
class Menus : public ::testing::Test {
  protected:
    void SetUp() override {
        const auto quit = New<QuitMenuItem>("&Quit");
        quit->Name("FileQuit");
        quit->KeyboardShortcut("Cmd+Q");
        const auto save = Item("FileSave", "Save", "S");
        save->AutoEnable(false);
        bar->Append(Menu("&File", {quit, save}));
        bar->Append(
            Menu("&Edit", {Item("EditUndo", "&Undo", "Cmd+Z"), Item("Line", "-"), Item("EditCut", "Cu&t", "Cmd+X"),
                           Item("EditCopy", "&Copy", "Cmd+C"), Item("EditPaste", "&Paste", "Cmd+V"),
                           Item("EditClear", "&Delete"), Item("EditSelectAll", "Select &All", "Cmd+A")}));
        bar->Append(Menu(
            "Help", {Item("Known", "Known"), Item("Unknown", "Unknown"), Item("Special", "Special", "Shift+Cmd+K")}));
        application->MenuBar(bar);
        application->_AddMenuHandler("Known", [this] { return Note("known"); });
        application->_AddMenuHandler("Special", [this] { return Note("special"); });
        field->Text("some text");
        window->Show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window->Native()));
        field->Native()->setFocus();
    }
    static Ref<MenuItem> Item(const char* name, const char* text, const char* keys = "") {
        const Ref<MenuItem> item = New<MenuItem>(text);
        item->Name(name);
        item->KeyboardShortcut(keys);
        return item;
    }
    static Ref<MenuItem> Menu(const char* text, std::initializer_list<Ref<MenuItem>> items) {
        const Ref<MenuItem> menu = New<MenuItem>(text);
        for (const Ref<MenuItem>& item : items) menu->Append(item);
        return menu;
    }
    bool Note(const char* what) {
        ran += std::string(what) + " ";
        return true;
    }
    /// Opens a menu and says which of its items a person could choose.
    std::string Choosable(int menu) {
        QMenu* const native = bar->Item(menu)->Native();
        native->popup(QPoint(10, 10));
        std::string texts;
        for (const QAction* action : native->actions()) {
            // A line has no text, which would be drawn as a title.
            const bool counts = action->isSeparator() ? !action->text().isEmpty() : action->isEnabled();
            if (counts) texts += action->text().remove('&').toStdString() + " ";
        }
        native->hide();
        return texts;
    }
    void Choose(int menu, int item) { bar->Item(menu)->Native()->actions().at(item)->trigger(); }
    void Press(Window& in, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
        QWidget* const focus = in.Native()->focusWidget();
        QTest::keyClick(focus ? focus : in.Native(), key, modifiers);
    }

    Ref<Application> application = New<Application>();
    Ref<MenuBar> bar = New<MenuBar>();
    Ref<Window> window = New<Window>();
    Ref<TextField> field = window->Add<TextField>("field", 0, 0, 100, 20);
    Ref<TextArea> area = window->Add<TextArea>("area", 0, 30, 100, 50);
    std::string ran;
};

TEST_F(Menus, ItemsAreEnabledWhenTheyWouldDoSomething) {
    EXPECT_EQ(Choosable(0), "Quit ");
    QGuiApplication::clipboard()->clear();
    EXPECT_EQ(Choosable(1), "Select All ");
    field->Edit(EditTarget::Command::SelectAll);
    EXPECT_EQ(Choosable(1), "Cut Copy Delete Select All ");
    field->Edit(EditTarget::Command::Cut);
    EXPECT_EQ(Choosable(1), "Undo Paste ");
    EXPECT_EQ(Choosable(2), "Known Special ");
    EXPECT_THROW(bar->Item(3), OutOfBoundsException);
    EXPECT_THROW(bar->Item(0)->Item(-1), OutOfBoundsException);
}

TEST_F(Menus, EditCommandsWorkOnTheFocusedText) {
    Choose(1, 6);
    Choose(1, 3);
    EXPECT_EQ(QGuiApplication::clipboard()->text().toStdString(), "some text");
    Choose(1, 5);
    EXPECT_EQ(field->Text(), "");
    Choose(1, 0);
    EXPECT_EQ(field->Text(), "some text");
    area->Native()->setFocus();
    Choose(1, 4);
    EXPECT_EQ(area->Text(), "some text");
    area->Native()->clearFocus();
}

TEST_F(Menus, EditCommandsKeepTheirTargetWhileTheMenuBarHasTheFocus) {
    Press(*window, Qt::Key_E, Qt::AltModifier);
    ASSERT_TRUE(bar->Item(1)->Native()->isVisible());
    EXPECT_TRUE(bar->Item(1)->Item(6)->IsApplicable());
    QTest::keyClick(bar->Item(1)->Native(), Qt::Key_A);
    EXPECT_TRUE(field->CanEdit(EditTarget::Command::Copy));
}

TEST_F(Menus, KeysWorkInEveryWindow) {
    Press(*window, Qt::Key_K, Qt::ControlModifier | Qt::ShiftModifier);
    const Ref<Window> other = New<Window>();
    other->Show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(other->Native()));
    Press(*other, Qt::Key_K, Qt::ControlModifier | Qt::ShiftModifier);
    Press(*other, Qt::Key_S);
    EXPECT_EQ(ran, "special special ");

    // A handler makes an item that does not enable itself available.
    application->_AddMenuHandler("FileSave", [this] { return Note("save"); });
    bar->Item(0)->EnableAtRest();
    Press(*other, Qt::Key_S);
    EXPECT_EQ(ran, "special special save ");
    other->Close();
}

TEST_F(Menus, QuitItemEndsTheProgramInOrder) {
    class Leaving : public Window {
      public:
        void Event_Close() override { Closed = true; }
        bool Closed = false;
    };
    const Ref<Leaving> leaving = New<Leaving>();
    leaving->Show();
    QTimer::singleShot(0, [&] { Press(*window, Qt::Key_Q); });
    window->Native()->activateWindow();
    EXPECT_EQ(QGuiApplication::exec(), 0);
    EXPECT_TRUE(leaving->Closed);
}

TEST_F(Menus, AContextualMenuAnswersWithTheChosenItemAndRunsNothing) {
    const Ref<MenuItem> base = Menu("", {Item("Unknown", "First"), Item("Known", "Second")});
    QTimer::singleShot(0, [&] {
        QTest::keyClick(base->Native(), Qt::Key_Down);
        QTest::keyClick(base->Native(), Qt::Key_Down);
        QTest::keyClick(base->Native(), Qt::Key_Return);
    });
    EXPECT_EQ(base->PopUp(20, 20), base->Item(1));
    EXPECT_EQ(ran, "");
    QTimer::singleShot(0, [&] { QTest::keyClick(base->Native(), Qt::Key_Escape); });
    EXPECT_TRUE(base->PopUp(20, 20) == Nil);
}

}  // namespace
}  // namespace framework::testing
