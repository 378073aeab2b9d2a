// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/ForkedProcess.h"
#include "tests/tools/RunTools.h"
#include "tools/plutil/plutil.h"

namespace marrowbeck::tools {
namespace {

ToolResult convert(const std::string& source, const std::string& target) {
    return sips({"-s", "format", "png", "-Z", "240", "--", source, "--out", target});
}

TEST(Sips, RefusesWhatItDoesNotKnow) {
    const TemporaryFolder folder;
    const std::string source = picture("rgb.png");
    const std::string target = folder.Path("target");
    for (const Arguments& arguments : {Arguments{},
                                       {source, "--out", target},
                                       {"-s", "format", "png", source},
                                       {"-s", "format", "png", "--out", target},
                                       {"-s", "format", "png", source, "--out"},
                                       {"-s", "format", "jpeg", source, "--out", target},
                                       {"-s", "dpiWidth", "72", source, "--out", target},
                                       {"-s", "format", "png", "-Z", source, "--out", target},
                                       {"-s", "format", "png", "-Z", "0", source, "--out", target},
                                       {"-s", "format", "png", "-Z", "24x", source, "--out", target},
                                       {"-s", "format", "png", "-r", "90", source, "--out", target},
                                       {"-s", "format", "png", source, source, "--out", target},
                                       {"-s", "format", "png", source, "--out", target, "--"}}) {
        const ToolResult result = sips(arguments);
        EXPECT_EQ(result.status, exitUsage) << ::testing::PrintToString(arguments);
        EXPECT_TRUE(result.error.starts_with("Usage: sips -s format png "));
    }
    EXPECT_EQ(entriesIn(folder.Path()), 0U);
}

TEST(Sips, NamesAreBytes) {
    const TemporaryFolder folder;
    const std::string content = readFile(picture("rgb.png"));
    const std::string names[] = {"two words.png",   "line\nend.png", "-Z",         "--out",
                                 "latin1 \xfc.png", "a%20b[page=2]", "http:x.png", "'\"$(x)`.png"};
    for (const std::string& name : names) {
        const std::string source = folder.Put("from/" + name, content);
        const std::string target = folder.Path("to " + name);
        EXPECT_EQ(convert(source, target).error, "") << name;
        EXPECT_TRUE(readFile(target).starts_with("\x89PNG")) << name;
    }
    EXPECT_EQ(entriesIn(folder.Path()), std::size(names) + 1);

    ASSERT_EQ(::chdir(folder.Path("from").c_str()), 0);
    EXPECT_EQ(convert("-Z", "-made here").error, "");
    EXPECT_EQ(convert("-made here", "./-again").error, "");
    EXPECT_TRUE(readFile("-made here").starts_with("\x89PNG"));
    ASSERT_EQ(::chdir("/"), 0);
}

TEST(Sips, ReplacesAPreviewInOneStepAndKeepsItsLink) {
    const TemporaryFolder folder;
    const std::string old = folder.Put("old.png", "old");
    const std::string link = folder.Path("link.png");
    std::filesystem::create_symlink(old, link);
    std::filesystem::create_hard_link(old, folder.Path("still open"));
    EXPECT_EQ(convert(picture("rgb.png"), link).status, exitSuccess);
    EXPECT_TRUE(std::filesystem::is_symlink(link));
    EXPECT_TRUE(readFile(old).starts_with("\x89PNG"));
    EXPECT_EQ(readFile(folder.Path("still open")), "old");
    EXPECT_EQ(entriesIn(folder.Path()), 3U);
}

TEST(Sips, AnotherPersonsLinkIsNotFollowed) {
    const TemporaryFolder folder;
    const std::string list = "<plist><dict/></plist>";
    const std::string mine = folder.Put("home/mine", list);
    std::filesystem::create_directory(folder.Path("all"));
    std::filesystem::create_symlink(mine, folder.Path("all/link"));
    std::filesystem::create_symlink(folder.Path("home"), folder.Path("all/way"));
    ::chmod(folder.Path("all").c_str(), 01777);
    for (const std::string& path : {folder.Path("all/link"), folder.Path("all/way/mine")}) {
        EXPECT_TRUE(test::InForkedProcess([&] {
            // Who laid the links is somebody else, or the person is, which comes to the same.
            const bool root = ::geteuid() == 0;
            for (const char* const link : {"all/link", "all/way"}) {
                if (root && ::lchown(folder.Path(link).c_str(), 12345, 12345) != 0) return false;
            }
            if (!root && !test::RefuseCall(SYS_geteuid, 0)) return false;
            return convert(picture("rgb.png"), path).error ==
                       "sips: " + path + ": Leads over another person's link\n" &&
                   plutil({"-convert", "binary1", path}).status == exitFailure;
        })) << path;
        EXPECT_EQ(readFile(mine), list);
    }
    EXPECT_EQ(entriesIn(folder.Path("all")) + entriesIn(folder.Path("home")), 3U);

    // Links that the system has laid are no trap: here the one in a folder of root's.
    for (const char* const name : {"", "home", "home/mine"}) ::lchown(folder.Path(name).c_str(), 65534, 65534);
    EXPECT_TRUE(test::InForkedProcess([&] {
        return test::BecomeNobody() && ::chdir(folder.Path("home").c_str()) == 0 &&
               plutil({"-convert", "binary1", "/proc/self/cwd/mine"}).status == exitSuccess;
    }));
}

TEST(Sips, APictureIsNotWrittenOverByItsOwnCopy) {
    const TemporaryFolder folder;
    const std::string content = readFile(picture("rgb.jpg"));
    const std::string source = folder.Put("picture.jpg", content);
    std::filesystem::create_symlink(source, folder.Path("link.jpg"));
    std::filesystem::create_hard_link(source, folder.Path("other name.jpg"));
    for (const char* const name : {"picture.jpg", "./picture.jpg", "link.jpg", "other name.jpg"}) {
        const std::string target = folder.Path(name);
        EXPECT_EQ(convert(source, target).error, "sips: " + target + ": Is the picture itself\n");
        EXPECT_EQ(convert(target, source).status, exitFailure) << name;
    }
    EXPECT_EQ(readFile(source), content);
    EXPECT_EQ(entriesIn(folder.Path()), 3U);
}

TEST(Sips, WhereNothingCanBeWrittenNothingIsLeft) {
    const TemporaryFolder folder;
    const std::string taken = folder.Path("taken");
    const std::string pipe = folder.Path("pipe");
    std::filesystem::create_directory(taken);
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const std::pair<std::string, const char*> cases[] = {
        {taken, "Is a directory"},
        {pipe, "Not a regular file"},
        {folder.Path("none/such.png"), "No such file or directory"},
        {folder.Put("file") + "/such.png", "Not a directory"},
        {folder.Path(std::string(300, 'x')), "File name too long"},
    };
    for (const auto& [target, reason] : cases) {
        const ToolResult result = convert(picture("rgb.png"), target);
        EXPECT_EQ(result.status, exitFailure);
        EXPECT_EQ(result.error, "sips: " + target + ": " + reason + "\n");
    }
    EXPECT_TRUE(std::filesystem::is_directory(taken));
    EXPECT_TRUE(std::filesystem::is_fifo(pipe));
    EXPECT_EQ(entriesIn(folder.Path()), 3U);
    EXPECT_EQ(entriesIn(taken), 0U);
}

TEST(Sips, AFileThatIsNoPictureLeavesThePreviewAsItWas) {
    const TemporaryFolder folder;
    const std::string whole = readFile(picture("rgb.png"));
    const std::string pipe = folder.Path("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const std::pair<std::string, const char*> cases[] = {
        {folder.Path("none"), "No such file or directory"},
        {folder.Path(), "Is a directory"},
        {pipe, "Not a regular file"},
        {"/dev/zero", "Not a regular file"},
        {folder.Put("empty.jpg"), "Cannot be read as a picture"},
        {folder.Put("text.jpg", "Dear aunt,\n"), "Cannot be read as a picture"},
        {folder.Put("signature.png", whole.substr(0, 8)), "Cannot be read as a picture"},
        {folder.Put("header.png", whole.substr(0, 33)), "Cannot be read as a picture"},
        {folder.Put("start.jpg", readFile(picture("rgb.jpg")).substr(0, 30)), "Cannot be read as a picture"},
    };
    const std::string target = folder.Put("preview/old.png", "old");
    for (const auto& [source, reason] : cases) {
        for (const std::string& to : {target, folder.Path("preview/new.png")}) {
            const ToolResult result = convert(source, to);
            EXPECT_EQ(result.status, exitFailure) << source;
            EXPECT_EQ(result.error, "sips: " + source + ": " + reason + "\n");
        }
    }
    EXPECT_EQ(readFile(target), "old");
    EXPECT_EQ(entriesIn(folder.Path("preview")), 1U);
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
        const std::string source = folder.Put("bomb", content);
        EXPECT_EQ(convert(source, folder.Path("preview")).status, exitFailure);
    }
    EXPECT_EQ(entriesIn(folder.Path()), 1U);
}

}  // namespace
}  // namespace marrowbeck::tools
