// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "tests/support/EventLoop.h"
#include "tests/support/TemporaryFolder.h"

namespace marrowbeck::test {

/// Puts a desktop's opener first on the path, while it lives, that writes down how it was called.
class RecordingOpener {
  public:
    RecordingOpener() : path_(std::getenv("PATH")) {
        const std::string part = folder_.Path("part");
        folder_.Put("xdg-open", "#!/bin/sh\nprintf '%s\\n' \"$@\" $DESKTOP_STARTUP_ID >" + part + "\nmv " + part + " " +
                                    call_ + "\n");
        std::filesystem::permissions(folder_.Path("xdg-open"), std::filesystem::perms::owner_all);
        ::setenv("PATH", (folder_.Path() + ":" + path_).c_str(), 1);
    }
    RecordingOpener(const RecordingOpener&) = delete;
    RecordingOpener& operator=(const RecordingOpener&) = delete;
    ~RecordingOpener() { ::setenv("PATH", path_.c_str(), 1); }

    bool WasCalled() const { return std::filesystem::exists(call_); }
    /// The arguments of the next call and the startup id, if there is one, a line for each; waits for it.
    std::string Call() const {
        if (!RunUntilThere(call_)) return "no call";
        const std::string arguments = readFile(call_);
        std::filesystem::remove(call_);
        return arguments;
    }

  private:
    TemporaryFolder folder_;
    std::string call_ = folder_.Path("call");
    std::string path_;
};

}  // namespace marrowbeck::test
