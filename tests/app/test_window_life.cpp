// SPDX-License-Identifier: GPL-2.0-or-later
#include <gmock/gmock.h>

#include <QAccessible>
#include <QApplication>
#include <QMessageBox>
#include <QScreen>
#include <QTest>

#include "app/Colors.h"
#include "framework/ui/dialog/AlertBox.h"
#include "framework/ui/window/WindowFrame.h"
#include "tests/app/AppTest.h"
#include "tests/support/EventLoop.h"

namespace marrowbeck::test {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

std::string text(const std::string& key, const std::string& value) {
    return "<key>" + key + "</key>\n<string>" + value + "</string>\n";
}

std::string number(const std::string& key, int value) {
    return "<key>" + key + "</key>\n<integer>" + std::to_string(value) + "</integer>\n";
}

std::string truth(const std::string& key, bool value) {
    return "<key>" + key + "</key>\n" + (value ? "<true/>\n" : "<false/>\n");
}

std::string bounds(int left, int top, int width, int height) {
    return "<key>Window Main</key>\n<dict>\n" + text("windowName", "Marrowbeck") + "<key>WindowPos</key>\n<dict>\n" +
           number("left", left) + number("top", top) + number("width", width) + number("height", height) +
           "</dict>\n</dict>\n";
}

class WindowLife : public AppTest {
  protected:
    ~WindowLife() override {
        if (window) window->SizeThread1->Kill();
    }

    void start() {
        App::Current()->Event_Open();
        window = Global<Window1>();
    }
    void start(const std::string& entries) {
        remember(entries);
        start();
    }
    /// Begins a search in which mdfind is this script.
    void searchWith(const std::string& script) const {
        std::filesystem::create_directories(folder + "/tools");
        std::ofstream(folder + "/tools/mdfind") << "#!/bin/sh\n" + script + "\n";
        std::filesystem::permissions(folder + "/tools/mdfind", std::filesystem::perms::owner_all);
        Shell::SetToolsFolder(String(folder + "/tools"));
        App::Current()->Event_OpenDocument(New<FolderItem>(String(folder)));
    }
    std::vector<bool> filter() const {
        std::vector<bool> selected;
        for (int i = 0; i < 4; ++i) selected.push_back(window->SegmentedControl1->Items(i)->Selected());
        return selected;
    }
    void expectSaved(const std::string& entry) const {
        // The writer indents by the depth; entries are compared line by line without that.
        std::string plain;
        for (const char byte : saved()) {
            if (byte != '\t') plain += byte;
        }
        EXPECT_THAT(plain, HasSubstr(entry));
    }

    Ref<Window1> window;
};

TEST_F(WindowLife, BringsBackWhatWasSaved) {
    start(bounds(31, 47, 1111, 777) + truth("Seg0", false) + truth("Seg1", true) + truth("Seg2", false) +
          truth("Seg3", false) + text("filterlabel", "Filtered") + truth("Sub", false) + truth("autoupdate", false) +
          number("sortcolumn", 3) + number("sortdirection", -1) +
          text("columnwidths", "150,51,52,53,54,55,56,57,58,59,60") + text("lastfolder", "/some where"));
    EXPECT_EQ(window->Left(), 31);
    EXPECT_EQ(window->Top(), 47);
    EXPECT_EQ(window->Width(), 1111);
    EXPECT_EQ(window->Height(), 777);
    EXPECT_EQ(window->Title(), String("Marrowbeck"));
    EXPECT_EQ(filter(), (std::vector<bool>{false, true, false, false}));
    EXPECT_EQ(window->filterlabel->Text(), String("Filtered"));
    EXPECT_EQ(window->filterlabel->TextColor(), Colors::kDarkRed);
    EXPECT_FALSE(window->Subfoldercheckbox->Value());
    EXPECT_EQ(window->Listbox1->HeadingIndex(), 3);
    EXPECT_EQ(window->Listbox1->ColumnSortDirection(3), -1);
    EXPECT_EQ(window->Listbox1->ColumnWidths(), String("150,51,52,53,54,55,56,57,58,59,60"));
    EXPECT_EQ(App::Current()->gFolder, String("/some where"));
    EXPECT_EQ(window->Listbox1->ListCount(), 0);
    EXPECT_EQ(window->SizeThread1->State(), Thread::NotRunning);
}

TEST_F(WindowLife, MissingEntriesTakeTheirDefaults) {
    start(truth("autoupdate", false));
    // All four were selected in turn.
    EXPECT_EQ(filter(), (std::vector<bool>{false, false, false, true}));
    EXPECT_EQ(window->filterlabel->Text(), String(""));
    EXPECT_EQ(window->filterlabel->TextColor(), Colors::kBlack);
    EXPECT_TRUE(window->Subfoldercheckbox->Value());
    EXPECT_EQ(window->Listbox1->HeadingIndex(), 0);
    EXPECT_GE(window->Width(), 640);
}

class DamagedWindowEntry : public WindowLife, public testing::WithParamInterface<int> {};

TEST_P(DamagedWindowEntry, GivesWayToTheDesign) {
    const std::string damages[] = {
        "<string>wide</string>\n", "<dict>\n" + number("WindowPos", 5) + "</dict>\n",
        "<dict>\n<key>WindowPos</key>\n<dict>\n" + text("width", "all") + "</dict>\n</dict>\n"};
    start("<key>Window Main</key>\n" + damages[GetParam()]);
    EXPECT_GT(window->Width(), window->MinWidth());
    window->Close();
    EXPECT_THAT(messages, IsEmpty());
    expectSaved(number("width", window->Width()));
}

INSTANTIATE_TEST_SUITE_P(Kinds, DamagedWindowEntry, testing::Range(0, 3));

TEST_F(WindowLife, FromAScreenThatIsGoneItComesToOneThatIsThere) {
    start(bounds(-3000, 5000, 700, 500));
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    EXPECT_TRUE(screen.contains(QRect(window->Left(), window->Top(), 700, 50)))
        << window->Left() << ", " << window->Top();
}

TEST_F(WindowLife, AMaximisedOneComesBackSoAndKeepsItsNormalBounds) {
    start(bounds(31, 47, 1111, 777) + truth("maximized", true));
    EXPECT_TRUE(window->Maximized());
    EXPECT_TRUE(RunUntil([this] { return window->Native()->width() != 1111; }));
    window->Close();
    expectSaved(bounds(31, 47, 1111, 777));
    expectSaved(truth("maximized", true));
}

TEST_F(WindowLife, ClosingSavesWhatIsOnShow) {
    start("");
    window->Left(60);
    window->Top(70);
    window->Width(1000);
    window->Height(800);
    window->Title("Marrowbeck: holidays");
    window->SegmentedControl1->Items(Window1::kPngItem)->Selected(true);
    window->filterlabel->Text("Filtered");
    window->Subfoldercheckbox->Value(false);
    window->Listbox1->ColumnWidths("101,51,52,53,54,55,56,57,58,59,60");
    window->Listbox1->HeadingIndex(2);
    window->Listbox1->ColumnSortDirection(2, -1);
    App::Current()->gFolder = "a<b & c";
    window->Close();
    expectSaved(bounds(60, 70, 1000, 800));
    for (const char* key : {"Seg0", "Seg1", "Seg3", "Sub"}) expectSaved(truth(key, false));
    expectSaved(truth("Seg2", true));
    expectSaved(text("filterlabel", "Filtered"));
    expectSaved(number("sortcolumn", 2));
    expectSaved(number("sortdirection", -1));
    expectSaved(text("columnwidths", "101,51,52,53,54,55,56,57,58,59,60"));
    expectSaved(text("lastfolder", "a&lt;b & c"));
}

void expectNames(QAccessibleInterface* node, int& stops) {
    const bool isStop = node->state().focusable && !node->state().invisible;
    stops += isStop ? 1 : 0;
    EXPECT_FALSE(isStop && node->text(QAccessible::Name).isEmpty()) << node->object()->objectName().toStdString();
    if (node->role() == QAccessible::Table) return;
    for (int i = 0; i < node->childCount(); ++i) expectNames(node->child(i), stops);
}

TEST_F(WindowLife, WhateverTakesTheKeysHasAName) {
    start("");
    int stops = 0;
    expectNames(QAccessible::queryAccessibleInterface(window->Native()), stops);
    EXPECT_GE(stops, 12);
    EXPECT_EQ(window->Native()->focusWidget(), window->Listbox1->Native()) << "the arrows go through the list at once";
}

TEST_F(WindowLife, AFilterByKeyboardLeavesTheFocusWhereItWas) {
    start("");
    searchWith("exit 0");
    ASSERT_TRUE(RunUntil([this] { return window->SizeThread1->State() == Thread::NotRunning; }));
    messages.clear();
    window->Native()->activateWindow();
    QWidget* const segment = window->SegmentedControl1->Native()->focusProxy();
    segment->setFocus(Qt::TabFocusReason);
    QTest::keyClick(segment, Qt::Key_Space);
    ASSERT_TRUE(RunUntil([segment] { return !segment->isEnabled(); }));
    ASSERT_TRUE(RunUntil([segment] { return segment->isEnabled(); }));
    EXPECT_EQ(window->Native()->focusWidget(), segment);
}

TEST_F(WindowLife, ClosingWhileAMessageOfTheSearchIsOpenSavesAndEnds) {
    start("");
    framework::internal::SetAlertPresenter(framework::internal::PresentAlert);
    searchWith("exit 3");
    ASSERT_TRUE(RunUntil([] { return qobject_cast<QMessageBox*>(QApplication::activeModalWidget()); }));
    window->Close();
    EXPECT_EQ(window->SizeThread1->State(), Thread::NotRunning);
    EXPECT_FALSE(QApplication::activeModalWidget());
    expectSaved(text("lastfolder", App::Current()->gFolder.ToStd()));
}

}  // namespace
}  // namespace marrowbeck::test
