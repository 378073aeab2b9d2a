// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/Gatekeeper.h"

#include <fcntl.h>
#include <limits.h>
#include <poll.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/ioctl.h>
#include <sys/sysmacros.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>

namespace marrowbeck::tools {

namespace {

constexpr unsigned none = 6;

/// Questions that are answered before others have their turn.
constexpr int mostAnswers = 64;

/// Open files of a reader that are remembered: a library asks directly after it has opened one.
constexpr std::size_t mostOpened = 16;

/// Whether a path could lead out of the folder in which it begins.
bool leadsUp(std::string_view path) {
    return path.find("/../") != std::string_view::npos || path.ends_with("/..");
}

iovec at(std::uint64_t address, std::size_t count) {
    return {reinterpret_cast<void*>(address), count};  // NOLINT(performance-no-int-to-ptr): of another process
}

bool writeTo(pid_t process, std::uint64_t address, const void* bytes, std::size_t count) {
    const iovec here{const_cast<void*>(bytes), count};
    const iovec there = at(address, count);
    return process_vm_writev(process, &here, 1, &there, 1, 0) == static_cast<ssize_t>(count);
}

struct stat olderForm(const struct statx& file) {
    struct stat status {};
    status.st_dev = makedev(file.stx_dev_major, file.stx_dev_minor);
    status.st_rdev = makedev(file.stx_rdev_major, file.stx_rdev_minor);
    status.st_ino = file.stx_ino;
    status.st_mode = file.stx_mode;
    status.st_nlink = file.stx_nlink;
    status.st_uid = file.stx_uid;
    status.st_gid = file.stx_gid;
    status.st_size = static_cast<off_t>(file.stx_size);
    status.st_blksize = static_cast<blksize_t>(file.stx_blksize);
    status.st_blocks = static_cast<blkcnt_t>(file.stx_blocks);
    status.st_atim = {static_cast<time_t>(file.stx_atime.tv_sec), static_cast<long>(file.stx_atime.tv_nsec)};
    status.st_mtim = {static_cast<time_t>(file.stx_mtime.tv_sec), static_cast<long>(file.stx_mtime.tv_nsec)};
    status.st_ctim = {static_cast<time_t>(file.stx_ctime.tv_sec), static_cast<long>(file.stx_ctime.tv_nsec)};
    return status;
}

}  // namespace

std::size_t Gatekeeper::mostThreads() {
    constexpr std::size_t enough = 64;
    constexpr std::size_t eachProcessor = 4;
    cpu_set_t processors;
    const bool isKnown = sched_getaffinity(0, sizeof processors, &processors) == 0;
    return enough + (isKnown ? eachProcessor * static_cast<std::size_t>(CPU_COUNT(&processors)) : 0);
}

Gatekeeper::Gatekeeper(base::Descriptor questions, pid_t reader, const std::vector<std::string>& folders)
    : questions_(std::move(questions)), reader_(reader), folders_(folders) {}

void Gatekeeper::answer() {
    for (int count = 0; count < mostAnswers; ++count) {
        pollfd question{descriptor(), POLLIN, 0};
        if (poll(&question, 1, 0) != 1 || (question.revents & POLLIN) == 0) return;
        seccomp_notif asked{};
        // Who has died meanwhile asks no more.
        if (ioctl(descriptor(), SECCOMP_IOCTL_NOTIF_RECV, &asked) != 0) return;
        answer(asked);
    }
}

void Gatekeeper::answer(const seccomp_notif& asked) {
    // Calls that a processor does not have bear numbers below zero here.
    constexpr PathCall opening[] = {{SCMP_SYS(open), 0, 1, none}, {SCMP_SYS(openat), 1, 2, none}};
    constexpr PathCall looking[] = {
        {SCMP_SYS(stat), 0, none, 1},       {SCMP_SYS(lstat), 0, none, 1},     {SCMP_SYS(newfstatat), 1, 3, 2},
        {SCMP_SYS(statx), 1, 2, 4},         {SCMP_SYS(access), 0, none, none}, {SCMP_SYS(faccessat), 1, none, none},
        {SCMP_SYS(faccessat2), 1, 3, none},
    };
    seccomp_notif_resp reply{asked.id, 0, -EACCES, 0};
    const auto isAsked = [&asked](const PathCall& call) { return call.number == asked.data.nr; };
    if (asked.data.nr == SCMP_SYS(clone)) {
        reply.error = mayHaveThread() ? 0 : -EAGAIN;
        if (reply.error == 0) reply.flags = SECCOMP_USER_NOTIF_FLAG_CONTINUE;
    } else if (const auto* const call = std::ranges::find_if(opening, isAsked); call != std::end(opening)) {
        const std::optional<int> failure = open(asked, *call);
        if (!failure) return;  // the reader has its file, and has been told
        reply.error = *failure;
    } else if (const auto* const other = std::ranges::find_if(looking, isAsked); other != std::end(looking)) {
        reply.error = look(asked, *other);
    }
    ioctl(descriptor(), SECCOMP_IOCTL_NOTIF_SEND, &reply);
}

/// An errno below zero; nothing when the file is open.
std::optional<int> Gatekeeper::open(const seccomp_notif& asked, const PathCall& call) {
    const std::string path = pathAt(asked.data.args[call.path]);
    if (!isIn(path)) return -EACCES;
    const auto flags = static_cast<int>(asked.data.args[call.flags]) & (O_DIRECTORY | O_NOFOLLOW);
    const base::Descriptor file = base::Descriptor::Open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | flags);
    if (!file.IsOpen()) return -errno;
    seccomp_notif_addfd given{};
    given.id = asked.id;
    given.flags = SECCOMP_ADDFD_FLAG_SEND;
    given.srcfd = static_cast<__u32>(file.Number());
    given.newfd_flags = O_CLOEXEC;
    const int number = ioctl(descriptor(), SECCOMP_IOCTL_NOTIF_ADDFD, &given);
    if (number < 0) return -errno;
    struct statx status {};
    std::erase_if(opened_, [number](const auto& opened) { return opened.first == number; });
    if (statx(file.Number(), "", AT_EMPTY_PATH, STATX_BASIC_STATS, &status) == 0) opened_.emplace_back(number, status);
    if (opened_.size() > mostOpened) opened_.pop_front();
    return std::nullopt;
}

/// 0, or an errno below zero.
int Gatekeeper::look(const seccomp_notif& asked, const PathCall& call) const {
    int failure = -EACCES;
    const std::optional<struct statx> status = statusOf(asked, call, failure);
    if (!status) return failure;
    if (call.status == none) return 0;
    const std::uint64_t target = asked.data.args[call.status];
    const struct stat older = olderForm(*status);
    const bool isExtended = call.number == SCMP_SYS(statx);
    const bool isTold = isExtended ? writeTo(reader_, target, &*status, sizeof *status)
                                   : writeTo(reader_, target, &older, sizeof older);
    return isTold ? 0 : -EFAULT;
}

std::optional<struct statx> Gatekeeper::statusOf(const seccomp_notif& asked, const PathCall& call, int& failure) const {
    const int flags = call.flags == none ? 0 : static_cast<int>(asked.data.args[call.flags]);
    const std::string path = pathAt(asked.data.args[call.path]);
    if (path.empty() && (flags & AT_EMPTY_PATH) != 0) {
        const auto number = static_cast<int>(asked.data.args[0]);
        const auto opened = std::ranges::find(opened_, number, &decltype(opened_)::value_type::first);
        return opened == opened_.end() ? std::nullopt : std::optional(opened->second);
    }
    if (!isIn(path)) return std::nullopt;
    struct statx status {};
    const bool isLink = call.number == SCMP_SYS(lstat) || (flags & AT_SYMLINK_NOFOLLOW) != 0;
    if (statx(AT_FDCWD, path.c_str(), isLink ? AT_SYMLINK_NOFOLLOW : 0, STATX_BASIC_STATS, &status) == 0) return status;
    failure = -errno;
    return std::nullopt;
}

bool Gatekeeper::mayHaveThread() const {
    // A folder for each thread: a link to it from there, and the two that every folder has.
    struct stat threads {};
    return stat(("/proc/" + std::to_string(reader_) + "/task").c_str(), &threads) == 0 &&
           threads.st_nlink < 2 + mostThreads();
}

/// A text of the reader's memory; empty where there is none. It may change it at any moment: it is read once.
std::string Gatekeeper::pathAt(std::uint64_t address) const {
    // Up to the end of a page and then one more, which need not be there.
    constexpr std::size_t page = 4096;
    static_assert(PATH_MAX <= page);
    std::array<char, 2 * page> text;
    const std::size_t first = page - address % page;
    const iovec here{text.data(), first + page};
    const std::array<iovec, 2> there{at(address, first), at(address + first, page)};
    const ssize_t count = process_vm_readv(reader_, &here, 1, there.data(), there.size(), 0);
    const std::string_view got(text.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    const std::size_t end = got.find('\0');
    return std::string(end == std::string_view::npos ? std::string_view() : got.substr(0, end));
}

bool Gatekeeper::isIn(std::string_view path) const {
    if (leadsUp(path)) return false;
    return std::ranges::any_of(folders_, [path](const std::string& folder) {
        return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
    });
}

}  // namespace marrowbeck::tools
