// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/process/WorkingFolder.h"

#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>

#include "framework/core/process/EndSignals.h"

namespace framework::internal {
namespace {

/// What a signal handler may read.
std::atomic<const char*> pathForSignals = nullptr;

std::string parent() {
    for (const char* name : {"XDG_RUNTIME_DIR", "TMPDIR"}) {
        const char* folder = std::getenv(name);
        if (folder && access(folder, W_OK) == 0) return folder;
    }
    return "/tmp";
}

class Folder {
  public:
    Folder() : path_(parent() + "/shell.XXXXXX") {
        if (mkdtemp(path_.data())) {
            pathForSignals = path_.c_str();
        } else {
            path_ = "/";
        }
    }
    ~Folder() {
        pathForSignals = nullptr;
        rmdir(path_.c_str());
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    const std::string& Path() const { return path_; }

  private:
    std::string path_;
};

void removeAndEnd(int signal) {
    if (const char* const path = pathForSignals) rmdir(path);
    // Held back until this returns, and handled by nobody then.
    raise(signal);
}

}  // namespace

const std::string& WorkingFolder() {
    static const Folder folder;
    return folder.Path();
}

void RemoveWorkingFolderAtSignals() {
    HandleEndSignals(removeAndEnd);
}

}  // namespace framework::internal
