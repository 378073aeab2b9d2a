#include <gtest/gtest.h>
#include <sys/wait.h>

#include <csignal>
#include <cstdio>
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

TEST(ToolProcess, MdlsAnswersAsTheShellAsksIt) {
    const Outcome outcome = run("mdls -name kMDItemPixelWidth -name kMDItemKind -raw " + picture("orient6.jpg"));
    EXPECT_EQ(outcome.output, std::string("JPEG image\0"
                                          "32",
                                          13));
    EXPECT_EQ(outcome.status, 0);
}

TEST(ToolProcess, MdfindAnswersAsTheShellAsksIt) {
    const TemporaryFolder folder;
    folder.write("it's a/b c.jpg");
    const Outcome outcome =
        run("cd / && mdfind -0 -onlyin " + folder.path() + "/it\\'s\\ a kMDItemContentTypeTree == *image");
    EXPECT_EQ(outcome.output, folder.path() + "/it's a/b c.jpg" + '\0');
    EXPECT_EQ(outcome.status, 0);
}

TEST(ToolProcess, FailuresSpeakOnStandardErrorAlone) {
    EXPECT_EQ(run("mdls -name kMDItemKind -raw /none/such.jpg 2>&-").output, "");
    EXPECT_EQ(run("mdls -name kMDItemKind -raw /none/such.jpg 2>&1").output,
              "mdls: /none/such.jpg: No such file or directory\n");
    EXPECT_EQ(run("mdls -name kMDItemKind -raw /none/such.jpg 2>/dev/null").status, 1);
    EXPECT_EQ(run("mdfind -0 -onlyin /none kMDItemContentTypeTree == *image 2>/dev/null").status, 1);
    EXPECT_EQ(run("mdfind -x 2>/dev/null").status, 2);
}

TEST(ToolProcess, ADamagedPictureSaysNothingOnStandardError) {
    const TemporaryFolder folder;
    const std::string whole = readFile(picture("xmp-before-iptc-before-exif.jpg"));
    const std::string path = folder.write("damaged.jpg", whole.substr(0, 900) + std::string(500, '<'));
    const Outcome outcome = run("mdls -name kMDItemCopyright -raw " + path + " 2>&1 >/dev/null");
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.status, 0);
}

TEST(ToolProcess, AClosedPipeEndsTheToolQuietly) {
    const TemporaryFolder folder;
    const std::string longName(200, 'x');
    for (int i = 0; i < 1000; ++i) folder.write(longName + std::to_string(i) + ".png");
    const Outcome status = run("{ { mdfind -onlyin " + folder.path() +
                               " kMDItemContentTypeTree == *image; echo $? >&3; } | head -c 1 >/dev/null; } 3>&1 2>&1");
    EXPECT_EQ(status.output, "1\n");
}

TEST(ToolProcess, SipsAnswersAsTheShellAsksIt) {
    const TemporaryFolder folder;
    const std::string path = folder.write("it's a/b c.jpg", readFile(picture("orient6.jpg")));
    const std::string cache = folder.path() + "/it\\'s\\ a";
    const Outcome outcome =
        run("cd / && sips -s format png -Z 240 " + cache + "/b\\ c.jpg --out " + cache + "/-5b\\ c.jpg 2>&1");
    EXPECT_EQ(outcome.output, "");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(readFile(folder.path() + "/it's a/-5b c.jpg").starts_with("\x89PNG"));
    EXPECT_EQ(run("sips -s format png " + cache + " --out /none/such 2>/dev/null").status, 1);
    EXPECT_EQ(run("sips --resampleWidth 240 x 2>/dev/null").status, 2);
}

TEST(ToolProcess, AFullDiskLeavesThePreviewAsItWas) {
    const TemporaryFolder folder;
    std::string noise = readFile(picture("rgb.bmp"));
    std::mt19937 random(5);
    for (size_t i = 54; i < noise.size(); ++i) noise[i] = static_cast<char>(random());
    const std::string words = "sips -s format png " + folder.write("noise.bmp", noise) + " --out ";
    const std::string target = folder.write("cache/preview", "old");
    const Outcome refused = run("trap '' XFSZ; ulimit -f 1; " + words + target + " 2>&1");
    EXPECT_EQ(refused.output, "sips: " + target + ": File too large\n");
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(entriesIn(folder.path() + "/cache"), 1U);
    // Ended in the middle of writing.
    EXPECT_GT(run("ulimit -c 0; ulimit -f 1; " + words + target + " 2>/dev/null").status, 128);
    EXPECT_TRUE(readFile(target) == "old");
    EXPECT_EQ(run(words + target).status, 0);
    EXPECT_TRUE(readFile(target).starts_with("\x89PNG"));
}

/// A progressive JPEG of some ten kilobytes that takes half a minute to decode.
std::string slowPicture() {
    std::string jpeg = readFile(picture("progressive.jpg"));
    jpeg.replace(jpeg.find("\xff\xc2") + 5, 4, "\x0f\xa0\x0f\xa0");
    const size_t last = jpeg.rfind("\xff\xda");
    const std::string scan = jpeg.substr(last, jpeg.size() - 2 - last);
    for (int i = 0; i < 20'000; ++i) jpeg.insert(last, scan);
    return jpeg;
}

TEST(ToolProcess, SipsBoundsItselfAndEndedInTheMiddleLeavesNothing) {
    const TemporaryFolder folder;
    const std::string source = folder.write("slow.jpg", slowPicture());
    const Outcome outcome = run("sips -s format png " + source + " --out " + folder.path() +
                                "/preview & tool=$!; while kill -0 $tool && ! grep 'cpu time  *30 ' "
                                "/proc/$tool/limits; do :; done; kill -9 $tool; wait $tool");
    EXPECT_EQ(outcome.output.substr(0, 12), "Max cpu time");
    EXPECT_EQ(outcome.status, 128 + SIGKILL);
    EXPECT_EQ(entriesIn(folder.path()), 1U);
}

}  // namespace
}  // namespace marrowbeck::tools
