// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <QDropEvent>
#include <QMimeData>
#include <QTest>

#include "framework/core/files/FolderItem.h"
#include "framework/ui/field/TextArea.h"
#include "framework/ui/field/TextField.h"
#include "framework/ui/window/DragItem.h"
#include "framework/ui/window/Window.h"
#include "framework/ui/window/WindowFrame.h"

namespace framework::testing {
namespace {

TEST(DragItem, IsTheFirstFileOfAListByteByByte) {
    const auto path = [](std::string_view list) {
        const Ref<DragItem> item = New<DragItem>(list);
        return item->FolderItemAvailable() ? item->FolderItem()->AbsolutePath().ToStd() : "none";
    };
    EXPECT_EQ(path("# from a file manager\r\nfile:///tmp/a%20b%25\r\nfile:///tmp/c\r\n"), "/tmp/a b%");
    EXPECT_EQ(path("https://example.org/\nfile:///tmp/x"), "none");
    EXPECT_EQ(path("#\n\n"), "none");
    EXPECT_TRUE(New<DragItem>("")->FolderItem() == Nil);
}

class Target : public Window {
  public:
    void Event_DropObject(const Ref<DragItem>& obj, int) override {
        Log += "drop:" + obj->FolderItem()->Name().ToStd() + " ";
    }
    bool Event_DragEnter(const Ref<DragItem>&, int) override {
        Log += "enter ";
        return Answer;
    }
    void Event_MouseExit() override { Log += "exit "; }

    std::string Log;
    bool Answer = true;
};

/// A drag over windows, as the toolkit tells of it.
class Drop : public ::testing::Test {
  protected:
    void SetUp() override {
        data.setData("text/uri-list", "file:///tmp/folder%E9\r\n");
        window->Width(200);
        window->Height(100);
        field->Text("text");
        area->Multiline(true);
        window->Show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window->Native()));
    }
    bool Enter(QWidget& over) {
        QDragEnterEvent event(QPoint(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QApplication::sendEvent(&over, &event);
        return event.isAccepted();
    }
    Qt::DropAction Release(QWidget& over) {
        QDropEvent event(QPoint(5, 5), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&over, &event);
        return event.isAccepted() ? event.dropAction() : Qt::IgnoreAction;
    }

    QMimeData data;
    Ref<Target> window = New<Target>();
    Ref<TextField> field = window->Add<TextField>("field", 0, 0, 100, 20);
    Ref<TextArea> area = window->Add<TextArea>("area", 0, 30, 100, 50);
};

TEST_F(Drop, ReachesTheWindowFromAnywhereOnItWhateverDragEnterAnswers) {
    window->AcceptFileDrop("special/any");
    QWidget& frame = *window->Native();
    for (const bool answer : {true, false}) {
        window->Answer = answer;
        for (QWidget* over : {&frame, field->Native(), area->Native()}) {
            window->Log.clear();
            EXPECT_TRUE(Enter(*over));
            EXPECT_EQ(Release(frame), Qt::CopyAction);
            EXPECT_EQ(window->Log, "enter ") << "the program that the item comes from must not wait";
            QTest::qWait(1);
            EXPECT_EQ(window->Log, "enter drop:folder\xE9 ");
        }
    }
    EXPECT_EQ(field->Text(), "text");

    window->Log.clear();
    Enter(frame);
    QDragLeaveEvent leave;
    QApplication::sendEvent(&frame, &leave);
    EXPECT_EQ(window->Log, "enter exit ");
}

TEST_F(Drop, IsRefusedByAWindowThatAcceptsNoneAndForWhatIsNoFile) {
    EXPECT_FALSE(Enter(*window->Native()));
    window->AcceptFileDrop("special/any");
    data.setData("text/uri-list", "https://example.org/");
    EXPECT_FALSE(Enter(*window->Native()));
    EXPECT_EQ(window->Log, "");
}

}  // namespace
}  // namespace framework::testing
