// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/Confinement.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

#include "base/Descriptor.h"

namespace marrowbeck::tools {

namespace {

// The system's libraries with what they load, fonts, and colour profiles.
constexpr const char* systemData[] = {
    "/usr/lib",         "/usr/lib64",       "/usr/local/lib",         "/lib",
    "/lib64",           "/etc/ld.so.cache", "/usr/share/fonts",       "/usr/local/share/fonts",
    "/usr/share/color", "/etc/fonts",       "/usr/local/share/color",
};

/// What tells languages and data folders; nothing else of the user's environment is any business of a parser.
constexpr std::string_view variablesKept[] = {
    "HOME",        "LANG",          "LANGUAGE",      "LC_ALL",   "LC_CTYPE",
    "LC_MESSAGES", "XDG_DATA_HOME", "XDG_DATA_DIRS", "VIPSHOME", "MAGICK_CONFIGURE_PATH"};

void forgetEnvironment() {
    std::vector<std::pair<std::string, std::string>> kept;
    for (const std::string_view name : variablesKept) {
        if (const char* const value = std::getenv(name.data())) kept.emplace_back(name, value);
    }
    clearenv();
    for (const auto& [name, value] : kept) setenv(name.c_str(), value.c_str(), 1);
}

void limit(__rlimit_resource resource, rlim_t value) {
    const rlimit both{value, value};
    setrlimit(resource, &both);
}

/// The attributes of a ruleset as the newest kernels know them; the header of Debian 12 ends with the first.
struct RulesetAttributes {
    std::uint64_t files = 0;
    std::uint64_t network = 0;
    std::uint64_t scopes = 0;
};

/// Everything that a version of Landlock can forbid, as far as this program has heard of it.
RulesetAttributes everything(long version, std::size_t& size) {
    constexpr std::array<unsigned, 7> fileRights = {13, 14, 15, 15, 16, 16, 16};  // bits by version
    RulesetAttributes all;
    const auto last = static_cast<long>(fileRights.size());
    all.files = (1ULL << fileRights[static_cast<std::size_t>(std::min(version, last) - 1)]) - 1;
    size = sizeof all.files;
    if (version >= 4) {
        all.network = 3;  // bind and connect
        size += sizeof all.network;
    }
    if (version >= 6) {
        all.scopes = 3;  // abstract sockets and signals of others
        size += sizeof all.scopes;
    }
    return all;
}

void allowReading(int ruleset, const char* path) {
    const base::Descriptor place = base::Descriptor::Open(path, O_PATH);
    if (!place.IsOpen()) return;
    landlock_path_beneath_attr rule{};
    rule.allowed_access = LANDLOCK_ACCESS_FS_READ_FILE;
    rule.parent_fd = place.Number();
    // A file has no entries to be listed, and a rule that says so is refused.
    auto folderRule = rule;
    folderRule.allowed_access |= LANDLOCK_ACCESS_FS_READ_DIR;
    if (syscall(SYS_landlock_add_rule, ruleset, LANDLOCK_RULE_PATH_BENEATH, &folderRule, 0) != 0)
        syscall(SYS_landlock_add_rule, ruleset, LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
}

/// Best effort: without Landlock the calls are filtered all the same, and what can be opened, can be read only.
void forbidPaths(const std::vector<std::string>& folders) {
    const long version = syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    if (version < 1) return;
    std::size_t size = 0;
    const RulesetAttributes all = everything(version, size);
    const base::Descriptor ruleset(static_cast<int>(syscall(SYS_landlock_create_ruleset, &all, size, 0)));
    if (!ruleset.IsOpen()) return;
    for (const char* const path : systemData) allowReading(ruleset.Number(), path);
    for (const std::string& folder : folders) allowReading(ruleset.Number(), folder.c_str());
    syscall(SYS_landlock_restrict_self, ruleset.Number(), 0);
}

// What memory, threads, clocks and the reading of files take.
constexpr int allowedCalls[] = {
    SCMP_SYS(access),
    SCMP_SYS(brk),
    SCMP_SYS(clock_getres),
    SCMP_SYS(clock_gettime),
    SCMP_SYS(clock_nanosleep),
    SCMP_SYS(close),
    SCMP_SYS(exit),
    SCMP_SYS(exit_group),
    SCMP_SYS(faccessat),
    SCMP_SYS(faccessat2),
    SCMP_SYS(fadvise64),
    SCMP_SYS(fstat),
    SCMP_SYS(fstatfs),
    SCMP_SYS(futex),
    SCMP_SYS(getcwd),
    SCMP_SYS(getdents64),
    SCMP_SYS(getpid),
    SCMP_SYS(getrandom),
    SCMP_SYS(getrlimit),
    SCMP_SYS(getrusage),
    SCMP_SYS(gettid),
    SCMP_SYS(gettimeofday),
    SCMP_SYS(lseek),
    SCMP_SYS(lstat),
    SCMP_SYS(madvise),
    SCMP_SYS(membarrier),
    SCMP_SYS(mmap),
    SCMP_SYS(mprotect),
    SCMP_SYS(mremap),
    SCMP_SYS(munmap),
    SCMP_SYS(nanosleep),
    SCMP_SYS(newfstatat),
    SCMP_SYS(poll),
    SCMP_SYS(ppoll),
    SCMP_SYS(pread64),
    SCMP_SYS(read),
    SCMP_SYS(readlink),
    SCMP_SYS(readlinkat),
    SCMP_SYS(readv),
    SCMP_SYS(recvmsg),
    SCMP_SYS(restart_syscall),
    SCMP_SYS(rseq),
    SCMP_SYS(rt_sigaction),
    SCMP_SYS(rt_sigprocmask),
    SCMP_SYS(rt_sigreturn),
    SCMP_SYS(sched_getaffinity),
    SCMP_SYS(sched_yield),
    SCMP_SYS(sendmsg),
    SCMP_SYS(set_robust_list),
    SCMP_SYS(sigaltstack),
    SCMP_SYS(stat),
    SCMP_SYS(statfs),
    SCMP_SYS(statx),
    SCMP_SYS(sysinfo),
    SCMP_SYS(uname),
    SCMP_SYS(write),
    SCMP_SYS(writev),
};

// The same by the names that they have on other processors: with numbers and times of 64 bits where a word has 32, and
// what makes changed code be seen as such. A number below zero stands for a call that this processor does not have.
constexpr int allowedCallsElsewhere[] = {
    SCMP_SYS(_llseek),
    SCMP_SYS(arm_fadvise64_64),
    SCMP_SYS(cacheflush),
    SCMP_SYS(clock_getres_time64),
    SCMP_SYS(clock_gettime64),
    SCMP_SYS(clock_nanosleep_time64),
    SCMP_SYS(fadvise64_64),
    SCMP_SYS(fstat64),
    SCMP_SYS(fstatat64),
    SCMP_SYS(fstatfs64),
    SCMP_SYS(futex_time64),
    SCMP_SYS(lstat64),
    SCMP_SYS(mmap2),
    SCMP_SYS(ppoll_time64),
    SCMP_SYS(riscv_flush_icache),
    SCMP_SYS(sigreturn),
    SCMP_SYS(stat64),
    SCMP_SYS(statfs64),
    SCMP_SYS(ugetrlimit),
};

// Where the flags of clone() stand among its arguments.
#ifdef __s390__
constexpr unsigned cloneFlags = 1;
#else
constexpr unsigned cloneFlags = 0;
#endif

/// Argument number `index` of a call, without the bits outside `mask`, has this value.
scmp_arg_cmp argument(unsigned index, scmp_datum_t mask, scmp_datum_t value) {
    return {index, SCMP_CMP_MASKED_EQ, mask, value};
}

/// Every call that is not allowed fails as for want of a right: libraries try things that they can do without.
bool filterCalls() {
    using Filter = std::unique_ptr<void, decltype(&seccomp_release)>;
    const Filter filter(seccomp_init(SCMP_ACT_ERRNO(EPERM)), &seccomp_release);
    if (!filter) return false;
    bool complete = true;
    const auto allow = [&](int call) {
        complete = complete && seccomp_rule_add(filter.get(), SCMP_ACT_ALLOW, call, 0) == 0;
    };
    const auto allowIf = [&](int call, const scmp_arg_cmp& condition) {
        complete = complete && seccomp_rule_add_array(filter.get(), SCMP_ACT_ALLOW, call, 1, &condition) == 0;
    };
    for (const int call : allowedCalls) allow(call);
    for (const int call : allowedCallsElsewhere) {
        if (call >= 0) allow(call);
    }
    constexpr scmp_datum_t writing = O_ACCMODE | O_CREAT | O_TRUNC | O_APPEND;
    constexpr scmp_datum_t all = ~scmp_datum_t{0};
    allowIf(SCMP_SYS(open), argument(1, writing, O_RDONLY));
    allowIf(SCMP_SYS(openat), argument(2, writing, O_RDONLY));
    // Threads, but no processes. The newer call hides its flags in memory, where no filter can see them; told that
    // there is none such, the C library takes the older one.
    allowIf(SCMP_SYS(clone), argument(cloneFlags, CLONE_THREAD, CLONE_THREAD));
    complete = complete && seccomp_rule_add(filter.get(), SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3), 0) == 0;
    allowIf(SCMP_SYS(prctl), argument(0, all, PR_SET_NAME));
    allowIf(SCMP_SYS(prlimit64), argument(2, all, 0));  // asking is free
    constexpr int control = SCMP_SYS(fcntl64) < 0 ? SCMP_SYS(fcntl) : SCMP_SYS(fcntl64);
    for (const int command : {F_GETFD, F_SETFD, F_GETFL})
        allowIf(control, argument(1, all, static_cast<scmp_datum_t>(command)));
#ifdef __SANITIZE_ADDRESS__  // how the sanitizer finds out whether memory may be read
    allow(SCMP_SYS(pipe2));
#endif
    // The end by abort().
    allowIf(SCMP_SYS(tgkill), argument(0, all, static_cast<scmp_datum_t>(getpid())));
    return complete && seccomp_load(filter.get()) == 0;
}

}  // namespace

bool confine(unsigned long long memoryBytes, const std::vector<std::string>& folders) {
    forgetEnvironment();
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_FSIZE, 0);
#ifndef __SANITIZE_ADDRESS__  // the sanitizer's own bookkeeping counts as data, and is larger than any limit
    limit(RLIMIT_DATA, memoryBytes);
#else
    static_cast<void>(memoryBytes);
#endif
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) return false;
    forbidPaths(folders);
    return filterCalls();
}

}  // namespace marrowbeck::tools
