// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>

namespace marrowbeck::test {

/// Starts a copy of this process that runs `work` and ends, with status 0 if that says True.
template <class Work>
pid_t Fork(Work work) {
    std::fflush(nullptr);
    const pid_t child = ::fork();
    if (child == 0) {
        bool good = false;
        try {
            good = work();
        } catch (...) {
            std::fputs("An exception left the work of a forked process.\n", stderr);
        }
        ::_exit(good ? 0 : 1);
    }
    return child;
}

/// Runs `work` in a copy of this process, which it may then limit as it likes. Whether it said True.
template <class Work>
bool InForkedProcess(Work work) {
    int status = -1;
    return ::waitpid(Fork(work), &status, 0) > 0 && WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/// Makes the kernel answer every swap of two files in this process as a volume does that cannot do it.
inline bool RefuseExchange() {
    constexpr unsigned kFlags = offsetof(seccomp_data, args) + 4 * sizeof(__u64);
    sock_filter filter[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_renameat2, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, kFlags),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, RENAME_EXCHANGE, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EINVAL),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program{sizeof filter / sizeof *filter, filter};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

/// Gives up the rights of root, which no folder is closed to.
inline bool BecomeNobody() {
    constexpr unsigned kNobody = 65534;
    return ::geteuid() != 0 || (::setgid(kNobody) == 0 && ::setuid(kNobody) == 0);
}

}  // namespace marrowbeck::test
