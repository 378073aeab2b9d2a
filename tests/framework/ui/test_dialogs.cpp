// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

#include "framework/core/desktop/Alert.h"
#include "framework/core/threads/Thread.h"
#include "framework/ui/dialog/MessageDialog.h"
#include "framework/ui/dialog/SelectFolderDialog.h"
#include "framework/ui/window/Window.h"
#include "framework/ui/window/WindowFrame.h"

namespace framework::testing {
namespace {

QMessageBox* openBox() {
    return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
}

QString textOf(const QMessageBox& box, const char* label) {
    return box.findChild<QLabel*>(QLatin1String(label))->text();
}

/// Does something to the dialog that a test is about to open.
void answer(const std::function<void()>& act) {
    QTimer::singleShot(0, act);
}

TEST(MsgBox, WaitsUntilItIsDismissedByReturnOrEscape) {
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
        bool shown = false;
        answer([&] {
            ASSERT_TRUE(openBox());
            shown = openBox()->text() == QLatin1String("<b>Drop</b> a folder") &&
                    openBox()->textFormat() == Qt::PlainText && openBox()->buttons().size() == 1;
            EXPECT_GT(openBox()->width(), 250) << "the title has room beside a desktop's buttons";
            QTest::keyClick(openBox(), key);
        });
        MsgBox("<b>Drop</b> a folder");
        EXPECT_TRUE(shown);
        EXPECT_FALSE(openBox());
    }
}

TEST(MsgBox, OfAThreadLetsTheThreadWaitAndTheWindowsLive) {
    const Ref<Thread> thread = New<Thread>();
    bool over = false;
    thread->OnRun = [&] {
        MsgBox("from a thread");
        over = true;
    };
    thread->Run();
    ASSERT_TRUE(QTest::qWaitFor([] { return openBox() != nullptr; }, 60'000));
    QTest::qWait(20);
    EXPECT_FALSE(over);
    EXPECT_EQ(thread->State(), Thread::Waiting);
    openBox()->accept();
    EXPECT_TRUE(QTest::qWaitFor([&] { return thread->State() == Thread::NotRunning; }, 60'000));
    EXPECT_TRUE(over);

    over = false;
    thread->Run();
    ASSERT_TRUE(QTest::qWaitFor([] { return openBox() != nullptr; }, 60'000));
    thread->Kill();
    EXPECT_FALSE(openBox());
    EXPECT_FALSE(over);
}

TEST(MessageDialog, ReturnsTheButtonThatWasPressed) {
    const Ref<MessageDialog> dialog = New<MessageDialog>();
    dialog->Message("Version 2 is now available.");
    dialog->Explanation("<img src='x'> & more");
    dialog->Icon(MessageDialog::IconQuestion);
    dialog->ActionButton()->Caption("Download");
    dialog->AlternateActionButton()->Caption("Go to Website");
    dialog->AlternateActionButton()->Visible(true);
    dialog->CancelButton()->Visible(true);

    const auto press = [](const char* caption) {
        answer([caption] {
            for (QAbstractButton* button : openBox()->buttons()) {
                if (button->text() == QLatin1String(caption)) button->click();
            }
        });
    };
    for (const auto& button : {dialog->AlternateActionButton(), dialog->ActionButton(), dialog->CancelButton()}) {
        press(button->Caption().CString());
        EXPECT_EQ(dialog->ShowModal(), button);
    }
    answer([] {
        EXPECT_EQ(textOf(*openBox(), "qt_msgbox_informativelabel").toStdString(), "<img src='x'> & more");
        QTest::keyClick(openBox(), Qt::Key_Escape);
    });
    EXPECT_EQ(dialog->ShowModal(), dialog->CancelButton());
    answer([] { QTest::keyClick(openBox(), Qt::Key_Return); });
    EXPECT_EQ(dialog->ShowModal(), dialog->ActionButton());
}

class FolderDialog : public ::testing::Test {
  protected:
    void SetUp() override {
        QDir home = QDir::home();
        ASSERT_TRUE(home.mkpath(QStringLiteral("pictures/caf\u00e9 & co")));
        dialog->Title("Marrowbeck");
        dialog->ActionButtonCaption("Choose");
        dialog->PromptText("Choose a Folder of Images");
        window->Show();
    }
    static QFileDialog* Open() { return qobject_cast<QFileDialog*>(QApplication::activeModalWidget()); }
    static std::string Home() { return QDir::homePath().toStdString(); }

    Ref<SelectFolderDialog> dialog = New<SelectFolderDialog>();
    Ref<Window> window = New<Window>();
};

TEST_F(FolderDialog, GivesTheChosenFolder) {
    dialog->InitialDirectory(New<FolderItem>(String(Home() + "/pictures")));
    answer([] {
        ASSERT_TRUE(Open());
        EXPECT_EQ(Open()->directory().absolutePath().toStdString(), Home() + "/pictures");
        EXPECT_EQ(Open()->findChild<QLabel*>(QStringLiteral("PromptText"))->text().toStdString(),
                  "Choose a Folder of Images");
        EXPECT_EQ(Open()->labelText(QFileDialog::Accept).toStdString(), "Choose");
        Open()->findChild<QLineEdit*>()->setText(QStringLiteral("caf\u00e9 & co"));
        QTest::keyClick(Open()->findChild<QLineEdit*>(), Qt::Key_Return);
    });
    const Ref<FolderItem> chosen = dialog->ShowModalWithin(window);
    ASSERT_TRUE(chosen);
    EXPECT_EQ(chosen->AbsolutePath().ToStd(), Home() + "/pictures/caf\u00e9 & co");
    EXPECT_TRUE(chosen->Directory());
}

TEST_F(FolderDialog, GivesNilWhenCancelledAndOpensAtHomeWithoutAFolder) {
    dialog->InitialDirectory(New<FolderItem>(String(Home() + "/missing")));
    answer([] {
        EXPECT_EQ(Open()->directory().absolutePath().toStdString(), Home());
        QTest::keyClick(Open(), Qt::Key_Escape);
    });
    EXPECT_TRUE(dialog->ShowModalWithin(window) == Nil);

    // A window that goes takes its dialog with it.
    answer([this] {
        window->Close();
        window = Nil;
    });
    EXPECT_TRUE(dialog->ShowModalWithin(window) == Nil);
}

}  // namespace
}  // namespace framework::testing
