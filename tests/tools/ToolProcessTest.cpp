#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>

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

}  // namespace
}  // namespace marrowbeck::tools
