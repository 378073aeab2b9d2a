// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/process/ShowURL.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <thread>

#include "framework/core/files/TextInputStream.h"
#include "tests/support/TemporaryFolder.h"

using namespace framework;

namespace {

std::string commandPath() {
    const char* path = std::getenv("PATH");
    return path ? path : "";
}

/// Puts a desktop's opener first on the path that writes down how it was called.
class RecordingOpener {
  public:
    RecordingOpener() : path_(commandPath()) {
        const std::string part = folder_.Path("part");
        folder_.Put("xdg-open", "#!/bin/sh\nprintf '%s\\n' \"$#\" \"$@\" >" + part + "\nmv " + part + " " +
                                    folder_.Path("call") + "\n");
        std::filesystem::permissions(folder_.Path("xdg-open"), std::filesystem::perms::owner_all);
        ::setenv("PATH", (folder_.Path() + ":" + path_).c_str(), 1);
    }
    ~RecordingOpener() { ::setenv("PATH", path_.c_str(), 1); }

    /// The call, its argument count first; waits for it for some seconds.
    std::string Call() {
        const Ref<FolderItem> call = folder_.Item()->Child("call");
        for (int i = 0; i < 500 && !call->Exists(); ++i) std::this_thread::sleep_for(std::chrono::milliseconds(10));
        return call->Exists() ? call->OpenAsTextFile()->ReadAll().ToStd() : "";
    }
    const TemporaryFolder& Folder() const { return folder_; }

  private:
    TemporaryFolder folder_;
    std::string path_;
};

}  // namespace

TEST(ShowURL, HandsTheUrlToTheDesktopAsOneWord) {
    RecordingOpener opener;
    EXPECT_TRUE(ShowURL("http://host/a?b=c&d=$(id);'x y'"));
    EXPECT_EQ(opener.Call(), "1\nhttp://host/a?b=c&d=$(id);'x y'\n");
}

TEST(ShowURL, LaunchesAnExistingFileByItsUrl) {
    RecordingOpener opener;
    opener.Folder().Put("-f\xFF #1.jpg");
    EXPECT_FALSE(opener.Folder().Item()->Child("missing")->Launch(true));
    EXPECT_TRUE(opener.Folder().Item()->Child("-f\xFF #1.jpg")->Launch(true));
    EXPECT_EQ(opener.Call(), "1\nfile://" + opener.Folder().Path("-f%FF%20%231.jpg") + "\n");
}

TEST(ShowURL, IsFalseWhenNothingCanBeStarted) {
    EXPECT_FALSE(ShowURL(""));
    EXPECT_FALSE(ShowURL("--version"));
    const TemporaryFolder empty;
    const std::string path = commandPath();
    ::setenv("PATH", empty.Path().c_str(), 1);
    EXPECT_FALSE(ShowURL("http://host/"));
    ::setenv("PATH", path.c_str(), 1);
}
