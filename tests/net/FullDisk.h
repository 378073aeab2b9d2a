// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <sys/resource.h>

#include <csignal>

namespace marrowbeck::test {

/// While one lives, no file of this process grows beyond `bytes`: writing fails there, as it does on a full disk.
class FullDisk {
  public:
    explicit FullDisk(rlim_t bytes) : signal_(std::signal(SIGXFSZ, SIG_IGN)) {
        ::getrlimit(RLIMIT_FSIZE, &limit_);
        const rlimit full{bytes, limit_.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &full);
    }
    ~FullDisk() {
        ::setrlimit(RLIMIT_FSIZE, &limit_);
        std::signal(SIGXFSZ, signal_);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;

  private:
    void (*signal_)(int);
    rlimit limit_{};
};

}  // namespace marrowbeck::test
