// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstddef>
#include <cstdio>
#include <cstring>
#include <thread>
#include <utility>
#include <vector>

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

/// Installs a filter for the system calls of this process and of those that it starts.
inline bool FilterCalls(std::vector<sock_filter> filter) {
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    return ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

/// Makes the kernel refuse every call of this number in this process.
inline bool RefuseCall(int call, unsigned error) {
    return FilterCalls({BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
                        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(call), 0, 1),
                        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | error),
                        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)});
}

/// Makes the kernel answer those of these calls in which `word` stands in the path, their second argument, never. For a
/// process whose threads all begin after this.
inline bool HoldCalls(const std::vector<int>& calls, const char* word) {
    std::vector<sock_filter> filter{BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr))};
    for (const int call : calls) {
        filter.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned>(call), 0, 1));
        filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_USER_NOTIF));
    }
    filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) return false;
    const auto listener =
        static_cast<int>(::syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_NEW_LISTENER, &program));
    if (listener < 0) return false;
    std::thread([listener, word] {
        while (true) {
            seccomp_notif told{};
            if (::ioctl(listener, SECCOMP_IOCTL_NOTIF_RECV, &told) != 0) continue;
            const auto* const path = reinterpret_cast<const char*>(told.data.args[1]);
            if (std::strstr(path, word) != nullptr) continue;
            seccomp_notif_resp answer{told.id, 0, 0, SECCOMP_USER_NOTIF_FLAG_CONTINUE};
            ::ioctl(listener, SECCOMP_IOCTL_NOTIF_SEND, &answer);
        }
    }).detach();
    return true;
}

/// Makes the kernel answer every swap of two files in this process as a volume does that cannot do it.
inline bool RefuseExchange() {
    constexpr unsigned kFlags = offsetof(seccomp_data, args) + 4 * sizeof(__u64);
    return FilterCalls({
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_renameat2, 0, 3),
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, kFlags),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, RENAME_EXCHANGE, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EINVAL),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    });
}

/// Makes the kernel answer as on a volume that keeps bytes and names and nothing else: neither swaps nor modes, owners,
/// attributes and times, and no waiting for the disk.
inline bool RefuseAllButContent() {
    bool refused = RefuseExchange() && RefuseCall(SYS_fsync, EINVAL);
    for (const int call : {SYS_fchmod, SYS_fchmodat, SYS_fchown, SYS_fchownat, SYS_utimensat}) {
        refused = refused && RefuseCall(call, EPERM);
    }
#ifdef SYS_lchown
    refused = refused && RefuseCall(SYS_lchown, EPERM);
#endif
    for (const int call : {SYS_lsetxattr, SYS_lremovexattr}) refused = refused && RefuseCall(call, EOPNOTSUPP);
    return refused;
}

/// Gives up the rights of root, which no folder is closed to.
inline bool BecomeNobody() {
    constexpr unsigned kNobody = 65534;
    return ::geteuid() != 0 || (::setgid(kNobody) == 0 && ::setuid(kNobody) == 0);
}

}  // namespace marrowbeck::test
