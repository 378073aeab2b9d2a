// SPDX-License-Identifier: GPL-2.0-or-later
#include <QApplication>
#include <QContextMenuEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QHeaderView>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPointer>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <filesystem>
#include <fstream>
#include <functional>

#include "app/Preferences.h"
#include "framework/ui/window/WindowFrame.h"
#include "tests/catalogue/CatalogueTest.h"
#include "tests/support/FileManager.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/RecordingOpener.h"

namespace marrowbeck::test {
namespace {

namespace fs = std::filesystem;
using Hand = std::function<void()>;

/// The window under a person's hand, on a desktop with a file manager and a viewer.
class Wires : public CatalogueTest {
  protected:
    Wires() {
        pictures = root + "/pic:tures";
        // The size of b.jpg is shown as -5.03, that of d.jpg as -1521.08: as texts they stand the other way round.
        addPicture("a.jpg", "4000", Qt::red);
        addPicture("b.jpg", "37814", Qt::green);
        addPicture("c.png", "900", Qt::blue);
        addPicture("d.jpg", "30000", {});
        replaceTool("sips",
                    "for last; do :; done\nfor word; do if test -e \"$word.image\"; then printf 'makes %s; ' "
                    "\"${word##*/}\" >> " +
                        root + "/made\ncp \"$word.thumbnail\" \"$last\"; fi; done\n");
        window->Subfoldercheckbox->Value(false);
    }

    void addPicture(const std::string& name, const std::string& side, const QColor& color) {
        const std::string path = addImage(name, side, side);
        if (!color.isValid()) return;
        QImage thumbnail(100, 100, QImage::Format_RGB32);
        thumbnail.fill(color);
        thumbnail.save(QString::fromStdString(path + ".thumbnail"), "png");
    }

    QTableView& view() const { return *static_cast<QTableView*>(window->Listbox1->Native()); }
    QPoint placeOf(int row) const { return view().visualRect(view().model()->index(row, 0)).center(); }

    // What a hand does.
    static Hand click(QWidget* widget) {
        return [widget] { QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(8, widget->height() / 2)); };
    }
    static Hand doubleClick(QWidget* widget) {
        return [widget] { QTest::mouseDClick(widget, Qt::LeftButton); };
    }
    Hand key(Qt::Key code, Qt::KeyboardModifiers modifiers = {}) const {
        return [code, modifiers] { QTest::keyClick(QApplication::focusWidget(), code, modifiers); };
    }
    Hand tool(const char* caption) const {
        for (auto* const button : window->MyToolbar->Native()->findChildren<QToolButton*>()) {
            if (button->text() == QLatin1String(caption)) return click(button);
        }
        return {};
    }
    Hand segment(int item) const {
        return click(window->SegmentedControl1->Native()->findChildren<QAbstractButton*>().at(item));
    }
    Hand row(int row) const {
        return [this, row] { QTest::mouseClick(view().viewport(), Qt::LeftButton, {}, placeOf(row)); };
    }
    Hand rowTwice(int row) const {
        return [this, row] {
            this->row(row)();
            QTest::mouseDClick(view().viewport(), Qt::LeftButton, {}, placeOf(row));
        };
    }
    Hand heading(int column) const {
        return [this, column] {
            const QHeaderView& header = *view().horizontalHeader();
            const int middle = header.sectionViewportPosition(column) + header.sectionSize(column) / 2;
            QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, QPoint(middle, header.height() / 2));
        };
    }
    static Hand twice(const Hand& hand) {
        return [hand] {
            hand();
            hand();
        };
    }
    /// Chooses from the menu that opens by the right button.
    Hand menuOfRow(int row, const char* entry) const {
        return [this, row, entry] {
            QTimer::singleShot(0, view().viewport(), [entry] { choose(entry); });
            QTest::mousePress(view().viewport(), Qt::RightButton, {}, placeOf(row));
            QContextMenuEvent event(QContextMenuEvent::Mouse, placeOf(row), QPoint());
            QApplication::sendEvent(view().viewport(), &event);
            QTest::mouseRelease(view().viewport(), Qt::RightButton, {}, placeOf(row));
        };
    }
    Hand menuBar(const char* menu, const char* entry) const {
        return [this, menu, entry] {
            auto* const bar = window->Native()->findChild<QMenuBar*>();
            for (QAction* const action : bar->actions()) {
                if (action->text() != QLatin1String(menu)) continue;
                QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(action).center());
                choose(entry);
            }
        };
    }
    static void choose(const char* entry) {
        auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu) return;
        for (QAction* const action : menu->actions()) {
            if (action->text() != QLatin1String(entry)) continue;
            QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(action).center());
            return;
        }
        menu->close();
    }
    Hand drop(const std::string& path) const {
        return [this, path] {
            QMimeData data;
            data.setData("text/uri-list", QByteArray::fromStdString("file://" + path + "\r\n"));
            QDragEnterEvent enter(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(window->Native(), &enter);
            QDropEvent release(QPoint(5, 5), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            QApplication::sendEvent(window->Native(), &release);
        };
    }

    // What becomes of it.
    std::string previewColor() const {
        const QImage image = window->Canvas1->Native()->grab().toImage();
        const QColor color = image.pixelColor(image.width() / 2, image.height() / 2);
        if (color == Qt::red) return "red";
        if (color == Qt::green) return "green";
        return color == Qt::blue ? "blue" : "none";
    }
    std::string rows() const {
        std::string text;
        const QImage image = view().viewport()->grab().toImage();
        for (int i = 0; i < window->Listbox1->ListCount(); ++i) {
            text += " " + cell(i, 0);
            const QColor stripe = i % 2 == 0 ? QColor(236, 243, 254) : QColor(Qt::white);
            const bool striped = image.pixelColor(image.width() - 3, placeOf(i).y()) == stripe;
            if (!striped && !window->Listbox1->Selected(i)) text += " without its stripe";
        }
        return text;
    }
    std::string otherWindow() const {
        const QWidget* const active = QApplication::activeWindow();
        return active && active != window->Native() ? active->windowTitle().toStdString() : std::string();
    }
    void begin() {
        if (otherWindow().empty()) {
            window->Native()->activateWindow();
            RunUntil([this] { return window->Native()->isActiveWindow(); });
        }
        rowsBefore = rows();
        colorBefore = previewColor();
        emptyBefore = window->DataLabel->Text().IsEmpty();
        done.clear();
        fs::remove_all(thumbnails);
        std::ofstream((fs::create_directories(thumbnails), thumbnails + "/old")) << "x";
    }
    void collect() {
        for (const QString& url : std::exchange(manager.shown, {})) done += "shows " + url.toStdString() + "; ";
        if (opener.WasCalled()) done += "opens " + opener.Call() + "; ";
        for (const std::string& text : std::exchange(messages, {})) done += "says " + text + "; ";
        const std::string all = readFile(root + "/made");
        done += all.substr(std::exchange(made, all.size()));
        if (auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
            done += "asks in " + dialog->directory().absolutePath().toStdString() + "; ";
            asked = dialog;
            QTest::keyClick(dialog, Qt::Key_Escape);
        }
    }
    std::string news() {
        collect();
        std::string text = done;
        const auto add = [&text](bool so, const std::string& what) { text += so ? what + "; " : ""; };
        add(!fs::exists(thumbnails + "/old"), "empties");
        add(rows() != rowsBefore, "rows" + rows());
        add(previewColor() != colorBefore, previewColor());
        add(window->DataLabel->Text().IsEmpty() && !emptyBefore, "tells nothing");
        add(window->Native()->findChild<QMenuBar*>()->activeAction(), "menus");
        const int signs = int(window->SizeThread1->State() != Thread::NotRunning) + window->ProgressWheel1->Visible() +
                          window->MyToolbar->StopTB->Enabled() + !window->SegmentedControl1->Enabled();
        add(signs > 0, signs == 4 ? "searches" : "is about to");
        add(window->gDropFolderpath != Nil, "waits");
        add(!otherWindow().empty(), otherWindow());
        for (std::size_t at = 0; (at = text.find(home)) != std::string::npos;) text.replace(at, home.size(), "~");
        return text;
    }
    bool rests() const {
        return window->PreviewTimer->Mode() == Timer::ModeOff && window->selectRowTimer->Mode() == Timer::ModeOff &&
               window->PicturescaleThread1->State() == Thread::NotRunning && !asked;
    }

    const PrivateBus bus;
    FileManager manager;
    const RecordingOpener opener;
    const std::string home = std::getenv("HOME");
    const std::string thumbnails = Preferences::ThumbnailsFolder()->AbsolutePath().ToStd();
    /// The dialog that was answered last, until it has gone.
    QPointer<QFileDialog> asked;
    std::string rowsBefore;
    std::string colorBefore;
    bool emptyBefore = true;
    std::string done;
    /// So much is known of the log of what was made.
    std::size_t made = 0;
};

TEST_F(Wires, EachLeadsFromTheHandToWhatThePersonWants) {
    ASSERT_TRUE(bus.IsRunning() && manager.IsRunning());
    constexpr const char* reveal = "Highlight file in Finder";
    constexpr const char* open = "Open image in viewer";
    const auto hangingSearch = [this](const Hand& start) {
        return [this, start] {
            replaceTool("mdfind", "sleep 100\n");
            start();
        };
    };
    const auto gone = [this](const char* name) {
        return [this, name] {
            fs::remove(pictures + "/" + name);
            tool("Open Image")();
            tool("Show File")();
        };
    };
    const struct {
        const char* what;
        Hand act;
        const char* news;
    } steps[] = {
        {"the button", click(window->ChooseBtn->Native()), "asks in ~/Pictures; "},
        {"the button's key", key(Qt::Key_Return), "asks in ~/Pictures; "},
        {"the key to open", key(Qt::Key_O, Qt::ControlModifier), "asks in ~/Pictures; "},
        {"the tool to open", tool("Open Folder"), "asks in ~; "},
        {"a dropped file", drop(pictures + "/a.jpg"),
         "says Please drop a folder of photos, not individual files onto Marrowbeck; "},
        {"a dropped folder", drop(pictures), "makes a.jpg; empties; rows a.jpg b.jpg c.png d.jpg; red; "},
        {"the tool for the viewer", tool("Open Image"), "opens file://~/test/pic%3Atures/a.jpg\n; "},
        {"the tool for the file manager", tool("Show File"), "shows file://~/test/pic:tures/a.jpg; "},
        {"the preview", doubleClick(window->Canvas1->Native()), "opens file://~/test/pic%3Atures/a.jpg\n; "},
        {"a row", row(1), "makes b.jpg; green; "},
        {"a row, twice", rowTwice(1), "opens file://~/test/pic%3Atures/b.jpg\n; "},
        {"a row without a preview", row(3), "makes d.jpg; none; "},
        {"that, twice: nothing is opened", rowTwice(3), ""},
        {"the menu of a row", menuOfRow(0, reveal), "shows file://~/test/pic:tures/a.jpg; "},
        {"a key in the list", key(Qt::Key_Down), "makes b.jpg; green; "},
        {"two keys at once", twice(key(Qt::Key_Down)), "makes d.jpg; none; "},
        {"a key back", key(Qt::Key_Up), "makes c.png; blue; "},
        {"the menu of another row", menuOfRow(1, open), "opens file://~/test/pic%3Atures/b.jpg\n; "},
        {"all rows", key(Qt::Key_A, Qt::ControlModifier), "none; tells nothing; "},
        {"the tool for the viewer of all rows", tool("Open Image"), ""},
        {"the tool for the file manager of all rows", tool("Show File"), ""},
        {"the menu of all rows", menuOfRow(2, reveal), ""},
        {"a row again", row(0), "makes a.jpg; red; "},
        {"a heading", heading(1), "rows d.jpg b.jpg c.png a.jpg; "},
        {"the heading again", heading(1), "rows a.jpg c.png b.jpg d.jpg; "},
        {"the last row", row(3), "makes d.jpg; none; "},
        {"a heading that leaves it there", heading(0), "rows a.jpg b.jpg c.png d.jpg; "},
        {"a row after a sort", row(0), "makes a.jpg; red; "},
        {"a filter", segment(Window1::kPngItem), "makes c.png; rows c.png; blue; "},
        {"no filter", segment(Window1::kAllItem), "makes a.jpg; rows a.jpg b.jpg c.png d.jpg; red; "},
        {"a file that has gone", gone("a.jpg"), ""},
        {"the tool to reload", tool("Reload"), "makes b.jpg; empties; rows b.jpg c.png d.jpg; green; "},
        {"with subfolders", click(window->Subfoldercheckbox->Native()), ""},
        {"the key to reload", hangingSearch(key(Qt::Key_F5)), "empties; rows; none; tells nothing; searches; "},
        {"the key to stop", key(Qt::Key_Escape), ""},
        {"a search", tool("Reload"), "empties; searches; "},
        {"another meanwhile", tool("Reload"), "searches; "},
        {"a filter meanwhile", segment(Window1::kPngItem), "searches; "},
        {"a folder that has to wait", drop(root + "/tools"), "searches; waits; "},
        {"the key to stop again", key(Qt::Key_Escape), "waits; "},
        {"the button for what waits", click(window->ChooseBtn->Native()), "empties; searches; "},
        {"the tool to stop", tool("Stop"), ""},
        {"the key of the menus", key(Qt::Key_F10), "menus; "},
        {"the key out of them", key(Qt::Key_Escape), ""},
        {"the Help menu", menuBar("Help", "About Marrowbeck"), "About Marrowbeck; "},
        {"the key to close", key(Qt::Key_Escape), ""},
        {"the box for updates", click(window->UpdateCheckbox->Native()), ""},
    };
    QTimer look;  // what other processes do wakes nobody here
    look.start(10);
    for (const auto& [what, act, expected] : steps) {
        begin();
        ASSERT_TRUE(act) << what;
        act();
        RunUntil([&] { return news() == expected && rests(); });
        ASSERT_EQ(news(), expected) << what;
    }
    window->Close();
    EXPECT_NE(readFile(Preferences::PreferenceFile()->AbsolutePath().ToStd()).find("<key>autoupdate</key>\n\t<true/>"),
              std::string::npos);
}

}  // namespace
}  // namespace marrowbeck::test
