// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include "framework/core/objects/Exceptions.h"
#include "framework/ui/menu/Toolbar.h"
#include "framework/ui/window/Window.h"
#include "framework/ui/window/WindowFrame.h"

namespace framework::testing {
namespace {

class Tools : public ::testing::Test {
  protected:
    void SetUp() override {
        const int styles[] = {0, 0, 0, ToolItem::StyleSeparator, ToolItem::StyleFlexibleSpace, 0, 0};
        for (int i = 0; i < 7; ++i) {
            const Ref<ToolButton> item = New<ToolButton>();
            item->Name(String("Tool" + std::to_string(i)));
            item->Caption(String("Caption & " + std::to_string(i)));
            item->HelpTag("<help>");
            item->Style(styles[i]);
            tools->Append(item);
        }
        tools->OnAction = [this](Toolbar&, Ref<ToolItem> item) { pressed += item->Name().ToStd() + " "; };
        window->Width(700);
        window->Show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window->Native()));
    }
    QToolButton* Button(int index) {
        return tools->Native()->findChild<QToolButton*>(QStringLiteral("Tool%1").arg(index));
    }

    Ref<Window> window = New<Window>();
    Ref<Toolbar> tools = window->Add<Toolbar>("tools", 0, 520, 600, 59);
    std::string pressed;
};

TEST_F(Tools, ItemsAreFoundByTheirPlaceLinesAndSpacesAmongThem) {
    EXPECT_EQ(tools->Count(), 7);
    EXPECT_EQ(tools->Item(6)->Name(), "Tool6");
    EXPECT_THROW(tools->Item(7), OutOfBoundsException);
    EXPECT_EQ(Button(3), nullptr);
    EXPECT_EQ(Button(4), nullptr);
    // The space pushes what follows it to the far end.
    EXPECT_GT(Button(6)->mapTo(window->Native(), Button(6)->rect().topRight()).x(), 650);
    EXPECT_LT(Button(2)->mapTo(window->Native(), Button(2)->rect().topRight()).x(), 400);
}

TEST_F(Tools, ButtonsTellTheirToolbar) {
    QTest::mouseClick(Button(0), Qt::LeftButton);
    tools->Item(5)->Enabled(false);
    QTest::mouseClick(Button(5), Qt::LeftButton);
    Button(6)->setFocus();
    QTest::keyClick(Button(6), Qt::Key_Space);
    EXPECT_EQ(pressed, "Tool0 Tool6 ");
    EXPECT_FALSE(tools->Item(5)->Enabled());
}

TEST_F(Tools, CaptionsAndHelpAreShownAsTheyAre) {
    EXPECT_EQ(Button(1)->text().toStdString(), "Caption && 1");  // the toolkit's way of writing one
    EXPECT_EQ(Button(1)->toolTip().toStdString(), "<help>");     // what is no markup needs no care
    EXPECT_EQ(tools->Item(1)->HelpTag(), "<help>");
    tools->Item(1)->Caption("Other");
    EXPECT_EQ(Button(1)->text().toStdString(), "Other");
}

}  // namespace
}  // namespace framework::testing
