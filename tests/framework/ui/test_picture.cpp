// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <fstream>
#include <string>

#include "framework/core/files/FolderItem.h"
#include "framework/core/objects/Exceptions.h"
#include "framework/ui/control/Canvas.h"
#include "framework/ui/drawing/Graphics.h"
#include "framework/ui/drawing/NativePicture.h"
#include "framework/ui/drawing/Picture.h"

namespace framework::testing {
namespace {

class PictureTest : public ::testing::Test {
  protected:
    std::string Path(const std::string& name) { return folder.path().toStdString() + "/" + name; }
    void Save(const std::string& name, const char* format, int width, int height, QColor color = Qt::red) {
        QImage image(width, height, QImage::Format_RGB32);
        image.fill(color);
        const std::string plain = Path("plain");
        ASSERT_TRUE(image.save(QString::fromStdString(plain), format));
        ASSERT_EQ(std::rename(plain.c_str(), Path(name).c_str()), 0);
    }
    Ref<Picture> Open(const std::string& name) { return Picture::Open(New<FolderItem>(String(Path(name)))); }

    QTemporaryDir folder;
};

QColor colorAt(const Ref<Picture>& picture, int x, int y) {
    return native::ToQImage(picture).pixelColor(x, y);
}

TEST_F(PictureTest, OpensItsOwnFormatsWhateverTheNameSays) {
    Save("really-png.jpg", "png", 30, 20);
    Save("no-ending", "tiff", 10, 40);
    Save("caf\xE9 \xFF", "png", 5, 6);
    const Ref<Picture> png = Open("really-png.jpg");
    ASSERT_TRUE(png);
    EXPECT_EQ(png->Width(), 30);
    EXPECT_EQ(png->Height(), 20);
    ASSERT_TRUE(Open("no-ending"));
    EXPECT_EQ(Open("no-ending")->Height(), 40);
    EXPECT_TRUE(Open("caf\xE9 \xFF")) << "a name that is no valid text";
    // The folder does not know how to remove it.
    std::remove(Path("caf\xE9 \xFF").c_str());
}

TEST_F(PictureTest, AnythingElseIsNil) {
    EXPECT_FALSE(Open("missing.png"));
    EXPECT_FALSE(Picture::Open(New<FolderItem>(String(folder.path().toStdString()))));
    Save("foreign.png", "jpg", 30, 20);
    EXPECT_FALSE(Open("foreign.png"));
    std::ofstream(Path("text.png")) << "no picture";
    EXPECT_FALSE(Open("text.png"));
    std::ofstream(Path("empty.png")).close();
    EXPECT_FALSE(Open("empty.png"));
    Save("whole.png", "png", 300, 200);
    QFile file(QString::fromStdString(Path("whole.png")));
    ASSERT_TRUE(file.resize(40));
    EXPECT_FALSE(Open("whole.png"));
    EXPECT_THROW(Picture::Open(Nil), NilObjectException);
}

TEST_F(PictureTest, ACanvasShowsItsBackdropThenWhatIsPainted) {
    const auto canvas = New<Canvas>();
    canvas->Place(0, 0, 50, 50);
    Ref<Picture> picture = NewPicture(20, 20, 32);
    canvas->Backdrop(picture);
    bool withPicture = true;
    canvas->OnPaint = [&](framework::Graphics& g) {
        g.ForeColor(RGB(255, 0, 0));
        if (withPicture) g.FillRect(10, 10, 20, 20);
    };
    const QPalette palette(Qt::gray);
    canvas->Native()->setPalette(palette);
    const auto shown = [&](int x, int y) { return canvas->Native()->grab().toImage().pixelColor(x, y); };
    EXPECT_EQ(shown(5, 5), QColor(Qt::white));
    EXPECT_EQ(shown(15, 15), QColor(Qt::red));
    const QColor background = shown(40, 40);

    int paints = 0;
    canvas->Native()->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(canvas->Native()));
    withPicture = false;
    canvas->Backdrop(Nil);
    QCoreApplication::processEvents();
    canvas->OnPaint = [&paints](framework::Graphics&) { ++paints; };
    canvas->Graphics().ClearRect(0, 0, 800, 600);
    EXPECT_TRUE(QTest::qWaitFor([&paints] { return paints == 1; }, 60'000));
    EXPECT_EQ(shown(15, 15), background);
}

/// Begins on an ordinary screen, and goes on in a process of its own that has one of high resolution.
TEST_F(PictureTest, TakesTheFinerFileOnAScreenOfHighResolution) {
    Save("icon.png", "png", 16, 16);
    Save("icon@2x.png", "png", 32, 32, Qt::blue);
    if (qApp->devicePixelRatio() == 2.0) {
        const Ref<Picture> icon = Open("icon.png");
        EXPECT_EQ(icon->Width(), 16);
        EXPECT_EQ(colorAt(icon, 31, 31), QColor(Qt::blue));
        Save("single.png", "png", 16, 16);
        EXPECT_EQ(Open("single.png")->Width(), 16);
        return;
    }
    EXPECT_EQ(colorAt(Open("icon.png"), 15, 15), QColor(Qt::red)) << "but not on another";
    QProcess other;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    ASSERT_FALSE(environment.contains("QT_SCALE_FACTOR"));
    environment.insert("QT_SCALE_FACTOR", "2");
    other.setProcessEnvironment(environment);
    other.setProcessChannelMode(QProcess::MergedChannels);
    other.start(QCoreApplication::applicationFilePath(),
                {"--gtest_filter=PictureTest.TakesTheFinerFileOnAScreenOfHighResolution"});
    ASSERT_TRUE(other.waitForFinished());
    const std::string output = other.readAll().toStdString();
    EXPECT_EQ(other.exitCode(), 0) << output;
    EXPECT_NE(output.find("1 test from"), std::string::npos) << output;
}

}  // namespace
}  // namespace framework::testing
