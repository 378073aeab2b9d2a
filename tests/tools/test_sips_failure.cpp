// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <random>
#include <vector>

#include "tests/tools/RunTools.h"
#include "tests/tools/SipsFiles.h"

namespace marrowbeck::tools {
namespace {

ToolResult convert(const std::string& source, const std::string& target) {
    return sips({"-s", "format", "png", "-Z", "240", "--", source, "--out", target});
}

TEST(Sips, RefusesWhatItDoesNotKnow) {
    const TemporaryFolder folder;
    const std::string source = picture("rgb.png");
    const std::string target = folder.path() + "/target";
    for (const Arguments& arguments : {Arguments{},
                                       {source, "--out", target},
                                       {"-s", "format", "png", source},
                                       {"-s", "format", "png", "--out", target},
                                       {"-s", "format", "png", source, "--out"},
                                       {"-s", "format", "png", source, "--out", ""},
                                       {"-s", "format", "png", "", "--out", target},
                                       {"-s", "format", "jpeg", source, "--out", target},
                                       {"-s", "dpiWidth", "72", source, "--out", target},
                                       {"-s", "format", "png", "-Z", source, "--out", target},
                                       {"-s", "format", "png", "-Z", "0", source, "--out", target},
                                       {"-s", "format", "png", "-Z", "-5", source, "--out", target},
                                       {"-s", "format", "png", "-Z", "24x", source, "--out", target},
                                       {"-s", "format", "png", "-Z", "99999999999", source, "--out", target},
                                       {"-s", "format", "png", "-r", "90", source, "--out", target},
                                       {"-s", "format", "png", source, source, "--out", target},
                                       {"-s", "format", "png", "-odd.png", "--out", target},
                                       {"-s", "format", "png", source, "--out", target, "--"},
                                       {"-s", "format", "png", source, "--out", target, "-s", "format"}}) {
        const ToolResult result = sips(arguments);
        EXPECT_EQ(result.status, exitUsage) << ::testing::PrintToString(arguments);
        EXPECT_TRUE(result.error.starts_with("Usage: sips -s format png "));
    }
    EXPECT_EQ(entriesIn(folder.path()), 0U);
}

TEST(Sips, NamesAreBytes) {
    const TemporaryFolder folder;
    const std::string content = readFile(picture("rgb.png"));
    const std::string names[] = {"two words.png",   "line\nend.png", "-Z",         "--out",
                                 "latin1 \xfc.png", "a%20b[page=2]", "http:x.png", "'\"$(x)`.png"};
    for (const std::string& name : names) {
        const std::string source = folder.write("from/" + name, content);
        const std::string target = folder.path() + "/to " + name;
        EXPECT_EQ(convert(source, target).error, "") << name;
        EXPECT_TRUE(readFile(target).starts_with("\x89PNG")) << name;
    }
    EXPECT_EQ(entriesIn(folder.path()), std::size(names) + 1);

    ASSERT_EQ(::chdir((folder.path() + "/from").c_str()), 0);
    EXPECT_EQ(convert("-Z", "-made here").error, "");
    EXPECT_EQ(convert("-made here", "-made here").error, "");
    EXPECT_TRUE(readFile("-made here").starts_with("\x89PNG"));
    ASSERT_EQ(::chdir("/"), 0);
}

TEST(Sips, ReplacesAPreviewInOneStepAndKeepsItsLinkAndMode) {
    const TemporaryFolder folder;
    const std::string old = folder.write("old.png", "old");
    const std::string link = folder.path() + "/link.png";
    std::filesystem::create_symlink(old, link);
    std::filesystem::create_hard_link(old, folder.path() + "/still open");
    ::chmod(old.c_str(), 0640);
    EXPECT_EQ(convert(picture("rgb.png"), link).status, exitSuccess);
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_TRUE(readFile(old).starts_with("\x89PNG"));
    EXPECT_EQ(readFile(folder.path() + "/still open"), "old");
    struct stat status {};
    ::stat(old.c_str(), &status);
    EXPECT_EQ(status.st_mode & 0777, 0640U);
    EXPECT_EQ(entriesIn(folder.path()), 3U);
}

TEST(Sips, WhereNothingCanBeWrittenNothingIsLeft) {
    const TemporaryFolder folder;
    const std::string taken = folder.path() + "/taken";
    const std::string pipe = folder.path() + "/pipe";
    const std::string missing = folder.path() + "/none/such.png";
    const std::string underFile = folder.write("file") + "/such.png";
    const std::string longName = folder.path() + "/" + std::string(300, 'x');
    std::filesystem::create_directory(taken);
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const std::pair<std::string, const char*> cases[] = {
        {taken, "Is a directory"},      {pipe, "Not a regular file"},     {missing, "No such file or directory"},
        {underFile, "Not a directory"}, {longName, "File name too long"},
    };
    for (const auto& [target, reason] : cases) {
        const ToolResult result = convert(picture("rgb.png"), target);
        EXPECT_EQ(result.status, exitFailure);
        EXPECT_EQ(result.error, "sips: " + target + ": " + reason + "\n");
    }
    EXPECT_TRUE(std::filesystem::is_directory(taken));
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
    EXPECT_EQ(entriesIn(folder.path()), 3U);
    EXPECT_EQ(entriesIn(taken), 0U);
}

TEST(Sips, AFileThatIsNoPictureLeavesThePreviewAsItWas) {
    const TemporaryFolder folder;
    const std::string whole = readFile(picture("rgb.png"));
    const std::string pipe = folder.path() + "/pipe";
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const std::pair<std::string, const char*> cases[] = {
        {folder.path() + "/none", "No such file or directory"},
        {folder.path(), "Is a directory"},
        {pipe, "Not a regular file"},
        {"/dev/zero", "Not a regular file"},
        {folder.write("empty.jpg"), "Cannot be read as a picture"},
        {folder.write("text.jpg", "Dear aunt,\n"), "Cannot be read as a picture"},
        {folder.write("signature.png", whole.substr(0, 8)), "Cannot be read as a picture"},
        {folder.write("header.png", whole.substr(0, 33)), "Cannot be read as a picture"},
        {folder.write("start.jpg", readFile(picture("rgb.jpg")).substr(0, 30)), "Cannot be read as a picture"},
    };
    const std::string target = folder.write("preview/old.png", "old");
    for (const auto& [source, reason] : cases) {
        for (const std::string& to : {target, folder.path() + "/preview/new.png"}) {
            const ToolResult result = convert(source, to);
            EXPECT_EQ(result.status, exitFailure) << source;
            EXPECT_EQ(result.error, "sips: " + source + ": " + reason + "\n");
        }
    }
    EXPECT_EQ(readFile(target), "old");
    EXPECT_EQ(entriesIn(folder.path() + "/preview"), 1U);
}

TEST(Sips, ContentCountsAndNotTheName) {
    const TemporaryFolder folder;
    EXPECT_EQ(preview(folder.write("png.jpg", readFile(picture("rgb.png")))).size(), QSize(48, 32));
    EXPECT_EQ(preview(folder.write("jpeg.png", readFile(picture("rgb.jpg")))).size(), QSize(48, 32));
    EXPECT_EQ(preview(folder.write("tiff", readFile(picture("8-bit.tif")))).size(), QSize(48, 32));
}

TEST(Sips, AFewBytesThatPromiseAVastPictureAreRefused) {
    using namespace std::string_literals;
    const TemporaryFolder folder;
    const auto changed = [](const char* name, size_t at, const std::string& bytes) {
        return readFile(picture(name)).replace(at, bytes.size(), bytes);
    };
    const std::string cases[] = {
        changed("rgb.png", 16, "\x7f\xff\xff\xff\x7f\xff\xff\xff"s),
        changed("rgb.bmp", 18, "\x60\xea\0\0\x60\xea\0\0"s),
        changed("rgb.bmp", 18, "\xff\xff\xff\xff\0\0\0\x80"s),
        changed("rgb.psd", 14, "\0\0\x75\x30\0\0\x75\x30"s),
    };
    for (const std::string& content : cases) {
        const std::string source = folder.write("bomb", content);
        EXPECT_EQ(convert(source, folder.path() + "/preview").status, exitFailure);
    }
    EXPECT_EQ(entriesIn(folder.path()), 1U);
}

TEST(Sips, DamageAnywhereEndsInAPreviewOrInNone) {
    std::vector<std::string> samples;
    for (const auto& file : std::filesystem::directory_iterator(MARROWBECK_TEST_PICTURES))
        if (file.file_size() < 8192) samples.push_back(file.path());
    std::sort(samples.begin(), samples.end());
    ASSERT_GT(samples.size(), 50U);
    const TemporaryFolder folder;
    const std::string target = folder.path() + "/preview";
    std::mt19937 random(20240601);
    size_t previews = 0;
    for (const std::string& sample : samples) {
        const std::string whole = readFile(sample);
        for (int round = 0; round < 4; ++round) {
            std::string damaged = whole;
            for (int change = 0; change < 1 + round; ++change)
                damaged[random() % damaged.size()] = static_cast<char>(random());
            if (round % 3 == 0) damaged.resize(random() % damaged.size());
            const std::string source = folder.write("damaged", damaged);
            const bool made = convert(source, target).status == exitSuccess;
            EXPECT_EQ(entriesIn(folder.path()), made ? 2U : 1U) << sample;
            if (!made) continue;
            ++previews;
            const QSize size = QImage(QString::fromStdString(target), "png").size();
            EXPECT_TRUE(size.width() >= 1 && size.height() >= 1 && std::max(size.width(), size.height()) <= 240)
                << sample;
            std::filesystem::remove(target);
        }
    }
    // The damage must be gentle enough to get past the headers.
    EXPECT_GT(previews, samples.size());
}

}  // namespace
}  // namespace marrowbeck::tools
