// SPDX-License-Identifier: GPL-2.0-or-later
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <random>

#include "tests/tools/TestFiles.h"

namespace marrowbeck::tools {
namespace {

struct Outcome {
    std::string output;
    int status;
};

/// Runs a command line with the tools' folder first on its path.
Outcome run(const std::string& command) {
    const std::string line = "PATH=" MARROWBECK_TOOLS ":$PATH; " + command;
    FILE* const pipe = popen(line.c_str(), "r");
    if (pipe == nullptr) return {{}, -1};
    Outcome outcome;
    char buffer[4096];
    for (size_t got = 0; (got = fread(buffer, 1, sizeof buffer, pipe)) > 0;) outcome.output.append(buffer, got);
    const int status = pclose(pipe);
    outcome.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return outcome;
}

TEST(ToolProcess, FailuresSpeakOnStandardErrorAlone) {
    EXPECT_EQ(run("mdls -name kMDItemKind -raw /none/such.jpg 2>&-").output, "");
    EXPECT_EQ(run("mdls -name kMDItemKind -raw /none/such.jpg 2>&1").output,
              "mdls: /none/such.jpg: No such file or directory\n");
    EXPECT_EQ(run("mdls -name kMDItemKind -raw /none/such.jpg 2>/dev/null").status, 1);
    EXPECT_EQ(run("mdfind -0 -onlyin /none kMDItemContentTypeTree == *image 2>/dev/null").status, 1);
    EXPECT_EQ(run("mdfind -x 2>/dev/null").status, 2);
}

TEST(ToolProcess, EachTellsHowItIsCalledAndItsVersion) {
    for (const std::string tool : {"look", "mdfind", "mdls", "plutil", "sips"}) {
        const Outcome help = run(tool + " --help");
        EXPECT_TRUE(help.output.starts_with("Usage: " + tool + " ")) << help.output;
        EXPECT_EQ(help.status, 0);
        EXPECT_TRUE(run(tool + " --version").output.starts_with(tool + " (Marrowbeck) ")) << tool;
    }
}

TEST(ToolProcess, ANewPreviewIsForWhomTheUmaskSaysOrGoesToTheOutput) {
    const TemporaryFolder folder;
    const std::string words = "sips -s format png " + picture("rgb.jpg") + " --out ";
    EXPECT_EQ(run("umask 027; " + words + folder.Path("new") + "; stat -c %a " + folder.Path("new")).output, "640\n");
    EXPECT_TRUE(run(words + "-").output.starts_with("\x89PNG"));
}

TEST(ToolProcess, AClosedPipeEndsTheToolQuietly) {
    const TemporaryFolder folder;
    const std::string longName(200, 'x');
    for (int i = 0; i < 1000; ++i) folder.Put(longName + std::to_string(i) + ".png");
    const Outcome status = run("{ { mdfind -onlyin " + folder.Path() +
                               " kMDItemContentTypeTree == *image; echo $? >&3; } | head -c 1 >/dev/null; } 3>&1 2>&1");
    EXPECT_EQ(status.output, "1\n");
}

TEST(ToolProcess, AFullDiskLeavesEveryFileAsItWas) {
    const TemporaryFolder folder;
    std::string noise = readFile(picture("rgb.bmp"));
    std::mt19937 random(5);
    for (size_t i = 54; i < noise.size(); ++i) noise[i] = static_cast<char>(random());
    const std::string words = "sips -s format png " + folder.Put("noise.bmp", noise) + " --out ";
    const std::string target = folder.Put("cache/preview", "old");
    const Outcome refused = run("trap '' XFSZ; ulimit -f 1; " + words + target + " 2>&1");
    EXPECT_EQ(refused.output, "sips: " + target + ": File too large\n");
    EXPECT_EQ(refused.status, 1);
    const std::string list = folder.Put("list", "<plist><true/></plist>");
    EXPECT_EQ(run("trap '' XFSZ; ulimit -f 0; plutil -convert binary1 " + list + " 2>&1").output,
              "plutil: " + list + ": File too large\n");
    EXPECT_EQ(readFile(list), "<plist><true/></plist>");
    EXPECT_EQ(entriesIn(folder.Path("cache")), 1U);
    // Ended in the middle of writing.
    EXPECT_GT(run("ulimit -c 0; ulimit -f 1; " + words + target + " 2>/dev/null").status, 128);
    EXPECT_TRUE(readFile(target) == "old");
    EXPECT_EQ(run(words + target).status, 0);
    EXPECT_TRUE(readFile(target).starts_with("\x89PNG"));
}

TEST(ToolProcess, WhatIsNoPictureIsNeverRun) {
    const std::string contents[] = {
        "<?xml version=\"1.0\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"40\" height=\"30\">"
        "<rect width=\"40\" height=\"30\"/></svg>\n",
        "%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj 2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj "
        "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 40 30]>>endobj\ntrailer<</Root 1 0 R>>\n%%EOF\n",
        "%!PS-Adobe-3.0 EPSF-3.0\n%%BoundingBox: 0 0 40 30\n0 0 40 30 rectfill\nshowpage\n",
        "id=ImageMagick  class=DirectClass\ncolumns=4  rows=3  depth=8\n\f\n:\x1a" + std::string(36, 'x'),
        "<?xml version=\"1.0\"?>\n<image size=\"40x30\"><read filename=\"xc:red\"/></image>\n",
        "push graphic-context\nviewbox 0 0 40 30\nrectangle 0,0 40,30\npop graphic-context\n",
        "Dear aunt,\nhere is a picture.\n",
    };
    const TemporaryFolder folder;
    for (const std::string& content : contents) {
        const std::string path = folder.Put("picture.jpg", content);
        EXPECT_EQ(run("mdls -name kMDItemPixelWidth -name kMDItemPixelHeight -raw " + path).output,
                  std::string("(null)\0(null)", 13))
            << content;
        EXPECT_EQ(run("sips -s format png " + path + " --out " + folder.Path("out") + " 2>/dev/null").status, 1)
            << content;
        EXPECT_EQ(entriesIn(folder.Path()), 1U) << content;
    }
}

TEST(ToolProcess, AFileThatMayNotBeReadIsNoFailure) {
    const TemporaryFolder folder;
    const std::string path = folder.Put("private.jpg", readFile(picture("rgb.png")));
    std::filesystem::permissions(path, std::filesystem::perms::none);
    // Even the administrator may not, without that privilege.
    const std::string limited = geteuid() == 0 ? "setpriv --bounding-set=-all " : "";
    const Outcome outcome = run(limited + "mdls -name kMDItemKind -name kMDItemPixelWidth -raw " + path);
    EXPECT_EQ(outcome.output, std::string("JPEG image\0(null)", 17));
    EXPECT_EQ(outcome.status, 0);
}

}  // namespace
}  // namespace marrowbeck::tools
