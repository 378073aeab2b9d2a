// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/mdfind/mdfind.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>

#include "tests/support/ForkedProcess.h"
#include "tests/tools/TestFiles.h"
#include "tools/mdfind/FolderSearch.h"

namespace marrowbeck::tools {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const Arguments allImages{"kMDItemContentTypeTree", "==", "*image"};

std::vector<std::string> split(const std::string& output) {
    std::vector<std::string> paths;
    for (size_t start = 0; start < output.size();) {
        const size_t end = output.find('\0', start);
        EXPECT_NE(end, std::string::npos) << "The last path has no NUL behind it";
        paths.push_back(output.substr(start, end - start));
        start = end + 1;
    }
    return paths;
}

/// The paths that a query finds, without the folder in front of them.
std::vector<std::string> find(const std::string& folder, const Arguments& query) {
    Arguments arguments{"-0", "-onlyin", folder};
    arguments.insert(arguments.end(), query.begin(), query.end());
    const ToolResult result = mdfind(arguments);
    EXPECT_EQ(result.status, exitSuccess) << result.error;
    EXPECT_EQ(result.error, "");
    std::vector<std::string> paths = split(result.output);
    for (std::string& path : paths) {
        EXPECT_TRUE(path.starts_with(folder + "/")) << path;
        path.erase(0, folder.size() + 1);
    }
    return paths;
}

TEST(Mdfind, EachQueryFindsItsTypes) {
    const TemporaryFolder folder;
    for (const char* const name : {"a.jpg", "b.JPEG", "c.tif", "d.png", "e.gif", "f.cr2", "g.svg", "h.txt", "i.dng"})
        folder.Put(name);
    folder.Put("png without a suffix", readFile(picture("rgb.png")));
    folder.Put("jpeg named so.tiff", readFile(picture("rgb.jpg")));
    EXPECT_THAT(find(folder.Path(), {"kMDItemContentType", "==", "public.jpeg"}), ElementsAre("a.jpg", "b.JPEG"));
    EXPECT_THAT(find(folder.Path(), {"kMDItemContentType == public.tiff"}), ElementsAre("c.tif", "jpeg named so.tiff"));
    EXPECT_THAT(find(folder.Path(), {"kMDItemContentType", "==", "public.png"}),
                ElementsAre("d.png", "png without a suffix"));
    const auto all = ElementsAre("a.jpg", "b.JPEG", "c.tif", "d.png", "e.gif", "f.cr2", "g.svg", "i.dng",
                                 "jpeg named so.tiff", "png without a suffix");
    EXPECT_THAT(find(folder.Path(), allImages), all);
    EXPECT_THAT(find(folder.Path(), {"kMDItemContentTypeTree == public.image"}), all);
}

TEST(Mdfind, PathsStandInByteOrderAcrossFolders) {
    const TemporaryFolder folder;
    for (const char* const name :
         {"a/x.jpg", "a-b.jpg", "a.jpg", "a0.jpg", "B.jpg", "a/b/c.jpg", "\xc3\xa9.jpg", "z/y.jpg"})
        folder.Put(name);
    EXPECT_THAT(find(folder.Path(), allImages),
                ElementsAre("B.jpg", "a-b.jpg", "a.jpg", "a/b/c.jpg", "a/x.jpg", "a0.jpg", "z/y.jpg", "\xc3\xa9.jpg"));
}

TEST(Mdfind, NamesAreBytes) {
    const TemporaryFolder folder;
    const std::vector<std::string> names{"\n.jpg", " .jpg", "$(x)'\".jpg", "%41#:.jpg", "-0.jpg", "latin \xe9.jpg"};
    for (const std::string& name : names) folder.Put("-dash\n/" + name);
    std::vector<std::string> expected;
    expected.reserve(names.size());
    for (const std::string& name : names) expected.push_back("-dash\n/" + name);
    EXPECT_EQ(find(folder.Path(), allImages), expected);
    EXPECT_EQ(find(folder.Path("-dash\n"), allImages), names);
}

TEST(Mdfind, HiddenThingsLinksAndSpecialFilesAreLeftOut) {
    const TemporaryFolder folder;
    folder.Put(".hidden.jpg");
    folder.Put(".folder/a.jpg");
    folder.Put("seen/b.jpg");
    std::filesystem::create_symlink("seen/b.jpg", folder.Path("link.jpg"));
    std::filesystem::create_directory_symlink(folder.Path(), folder.Path("circle"));
    std::filesystem::create_directory(folder.Path("folder.jpg"));
    ASSERT_EQ(mkfifo(folder.Path("pipe.jpg").c_str(), 0600), 0);
    ASSERT_EQ(mkfifo(folder.Path("pipe").c_str(), 0600), 0);
    EXPECT_THAT(find(folder.Path(), allImages), ElementsAre("seen/b.jpg"));
    EXPECT_THAT(find(folder.Path("circle"), allImages), ElementsAre("seen/b.jpg"));
    EXPECT_THAT(find(folder.Path(".folder"), allImages), ElementsAre("a.jpg"));
}

TEST(Mdfind, TheFolderIsMadeAbsoluteAndOtherwiseLeftAsItIs) {
    const TemporaryFolder folder;
    folder.Put("sub/a.jpg");
    std::filesystem::current_path(folder.Path());
    const std::string here = std::filesystem::current_path();
    const auto output = [](const std::string& place) {
        return mdfind({"-0", "-onlyin", place, "kMDItemContentType == public.jpeg"}).output;
    };
    EXPECT_THAT(split(output("sub//")), ElementsAre(here + "/sub/a.jpg"));
    EXPECT_THAT(split(output("sub/../sub")), ElementsAre(here + "/sub/../sub/a.jpg"));
    EXPECT_THAT(split(output(".")), ElementsAre(here + "/sub/a.jpg"));
    EXPECT_EQ(mdfind({"-onlyin", here, "kMDItemContentType", "==", "public.jpeg"}).output, here + "/sub/a.jpg\n");
}

TEST(Mdfind, WhatMayNotBeReadIsLeftOutOrToldAsItIsWanted) {
    const TemporaryFolder folder;
    folder.Put("closed/a.jpg");
    folder.Put("open/b.jpg");
    folder.Put("open/no.jpg");
    folder.Put("open/unknown", readFile(picture("rgb.png")));
    chmod(folder.Path().c_str(), 0755);
    for (const char* const name : {"closed", "open/no.jpg", "open/unknown"}) chmod(folder.Path(name).c_str(), 0);
    // Root reads every folder, so that it has to be somebody else for a while.
    constexpr uid_t nobody = 65534;
    const bool root = geteuid() == 0;
    ASSERT_TRUE(!root || seteuid(nobody) == 0);
    const std::string told = "mdfind: " + folder.Path("closed") + ": Permission denied\n";
    const ToolResult found = mdfind({"-onlyin", folder.Path(), "kMDItemContentTypeTree == *image"});
    EXPECT_EQ(found.output, folder.Path("open/b.jpg") + "\n");
    EXPECT_EQ(found.error, told);
    EXPECT_EQ(found.status, exitSuccess);
    const ToolResult strict = mdfind({"-strict", "-onlyin", folder.Path(), "kMDItemContentTypeTree == *image"});
    EXPECT_EQ(strict.output, folder.Path("open/b.jpg") + "\n" + folder.Path("open/no.jpg") + "\n");
    EXPECT_EQ(strict.error, told + "mdfind: " + folder.Path("open/unknown") + ": Permission denied\n");
    EXPECT_EQ(strict.status, exitFailure);
    EXPECT_EQ(mdfind({"-onlyin", folder.Path("closed"), "kMDItemContentTypeTree == *image"}).status, exitFailure);
    ASSERT_TRUE(!root || seteuid(0) == 0);
    chmod(folder.Path("closed").c_str(), 0700);
}

TEST(Mdfind, WhatHangsCostsOnlyItself) {
    const TemporaryFolder folder;
    for (const char* const name : {"a HANG/lost.jpg", "a/b/c.jpg", "b/HANG.jpg", "b/HANG.txt", "b/x.jpg", "b/z.jpg"})
        folder.Put(name);
    for (const char* const name : {"b/HANG", "b/y"}) folder.Put(name, readFile(picture("rgb.png")));
    EXPECT_TRUE(test::InForkedProcess([&folder] {
        if (!test::HoldCalls({SYS_openat, SYS_statx, SYS_faccessat2}, "HANG")) return false;
        auto* const search = new FolderSearch("", false, ' ', std::chrono::milliseconds(1500));
        std::string found;
        std::string told;
        search->begin(folder.Path());
        const int failure = search->run([&](std::string_view paths, std::string_view lines) {
            found += paths;
            told += lines;
        });
        std::string expected;
        for (const char* const name : {"a/b/c.jpg", "b/HANG.jpg", "b/x.jpg", "b/y", "b/z.jpg"})
            expected += folder.Path(name) + " ";
        EXPECT_EQ(failure, 0);
        EXPECT_EQ(found, expected);
        EXPECT_EQ(told, "mdfind: " + folder.Path("a HANG") + ": Connection timed out\n");
        return !testing::Test::HasFailure();
    }));
}

TEST(Mdfind, ASearchThatDiesIsAFailure) {
    const TemporaryFolder folder;
    folder.Put("a.jpg");
    EXPECT_TRUE(test::InForkedProcess([&folder] {
        const bool isFiltered = test::FilterCalls({
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_getdents64, 0, 1),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        });
        const ToolResult result = mdfind({"-0", "-onlyin", folder.Path(), "kMDItemContentTypeTree == *image"});
        return isFiltered && result.status == exitFailure && result.output.empty() && !result.error.empty();
    }));
}

TEST(Mdfind, DeepNestingEndsWhereNoPathReaches) {
    const TemporaryFolder folder;
    std::filesystem::current_path(folder.Path());
    for (int depth = 0; depth < 3000; ++depth) {
        std::ofstream("p.png") << "p";
        ASSERT_EQ(mkdir("d", 0700), 0);
        ASSERT_EQ(chdir("d"), 0);
    }
    ASSERT_EQ(chdir("/"), 0);
    const ToolResult found = mdfind({"-0", "-onlyin", folder.Path(), "kMDItemContentTypeTree == *image"});
    EXPECT_EQ(found.status, exitSuccess);
    EXPECT_THAT(found.error, HasSubstr("File name too long"));
    const std::vector<std::string> paths = split(found.output);
    EXPECT_GT(paths.size(), 1900U);
    for (const std::string& path : paths) EXPECT_EQ(access(path.c_str(), R_OK), 0);
    // No recursive function of the library gets out of a tree like this one by its paths.
    EXPECT_EQ(std::system(("rm -rf '" + folder.Path("d") + "'").c_str()), 0);
}

TEST(Mdfind, WhatItDoesNotKnowIsRefused) {
    for (const Arguments& arguments : std::vector<Arguments>{
             {},
             {"-0", "kMDItemContentTypeTree == *image"},
             {"-0", "-onlyin"},
             {"-0", "-onlyin", "/tmp"},
             {"-live", "-onlyin", "/tmp", "kMDItemContentTypeTree == *image"},
             {"-onlyin", "/tmp", "kMDItemContentType", "==", "public.gif"},
             {"-onlyin", "/tmp", "kMDItemContentType", "==", "public.png", "x"},
         }) {
        const ToolResult result = mdfind(arguments);
        EXPECT_EQ(result.status, exitUsage);
        EXPECT_THAT(result.error, HasSubstr("Usage"));
        EXPECT_THAT(result.output, IsEmpty());
    }
}

}  // namespace
}  // namespace marrowbeck::tools
