// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/Confinement.h"

#include <fcntl.h>
#include <linux/capability.h>
#include <linux/landlock.h>
#include <sched.h>
#include <seccomp.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <initializer_list>
#include <memory>
#include <span>
#include <string_view>
#include <utility>

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

/// Where the system has put the environment of this process, whatever has become of it since.
const std::span<char> environmentBlock = [] {
    char* const first = environ == nullptr ? nullptr : *environ;
    if (first == nullptr) return std::span<char>();
    char** last = environ;
    while (last[1] != nullptr) ++last;
    return std::span(first, *last + std::strlen(*last));
}();

/// Not even the bytes stay, in this fork's own copy: names of sockets and tokens are in there.
void forgetEnvironment() {
    std::vector<std::pair<std::string, std::string>> kept;
    for (const std::string_view name : variablesKept) {
        if (const char* const value = std::getenv(name.data())) kept.emplace_back(name, value);
    }
    clearenv();
    explicit_bzero(environmentBlock.data(), environmentBlock.size());
    for (const auto& [name, value] : kept) setenv(name.c_str(), value.c_str(), 1);
}

/// As much as the system usually gives. What grows there by itself counts against no other limit.
constexpr rlim_t mostStack = rlim_t{8} << 20;

/// Many times the largest picture, which is mapped as a whole. It bounds the tables that the system keeps of addresses,
/// which count against no limit: half a gigabyte of them at the most.
constexpr rlim_t mostAddresses = sizeof(rlim_t) < 8 ? RLIM_INFINITY : rlim_t{256} << 30;

void limit(__rlimit_resource resource, rlim_t value) {
    const rlimit both{value, value};
    setrlimit(resource, &both);
}

/// What root can do beyond others, or who else was given it.
bool dropCapabilities() {
    __user_cap_header_struct head{_LINUX_CAPABILITY_VERSION_3, 0};
    const std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> none{};
    return syscall(SYS_capset, &head, none.data()) == 0;
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

/// Whether no file but those in the folders can be opened now.
bool forbidPaths(const std::vector<std::string>& folders) {
    const long version = syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    if (version < 1) return false;
    std::size_t size = 0;
    const RulesetAttributes all = everything(version, size);
    const base::Descriptor ruleset(static_cast<int>(syscall(SYS_landlock_create_ruleset, &all, size, 0)));
    if (!ruleset.IsOpen()) return false;
    for (const std::string& folder : folders) allowReading(ruleset.Number(), folder.c_str());
    return syscall(SYS_landlock_restrict_self, ruleset.Number(), 0) == 0;
}

// What memory, threads, clocks and open files take.
constexpr int allowedCalls[] = {
    SCMP_SYS(brk),
    SCMP_SYS(clock_getres),
    SCMP_SYS(clock_gettime),
    SCMP_SYS(clock_nanosleep),
    SCMP_SYS(close),
    SCMP_SYS(exit),
    SCMP_SYS(exit_group),
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
    SCMP_SYS(madvise),
    SCMP_SYS(membarrier),
    SCMP_SYS(mprotect),
    SCMP_SYS(mremap),
    SCMP_SYS(munmap),
    SCMP_SYS(nanosleep),
    SCMP_SYS(poll),
    SCMP_SYS(ppoll),
    SCMP_SYS(pread64),
    SCMP_SYS(read),
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
    SCMP_SYS(sysinfo),
    SCMP_SYS(uname),
    SCMP_SYS(write),
    SCMP_SYS(writev),
};

// The same by the names that they have on other processors: with numbers and times of 64 bits where a word has 32, and
// what makes changed code be seen as such. A number below zero stands for a call that this processor does not have.
constexpr int allowedCallsElsewhere[] = {
    SCMP_SYS(_llseek),         SCMP_SYS(arm_fadvise64_64),
    SCMP_SYS(cacheflush),      SCMP_SYS(clock_getres_time64),
    SCMP_SYS(clock_gettime64), SCMP_SYS(clock_nanosleep_time64),
    SCMP_SYS(fadvise64_64),    SCMP_SYS(fstat64),
    SCMP_SYS(fstatfs64),       SCMP_SYS(futex_time64),
    SCMP_SYS(ppoll_time64),    SCMP_SYS(riscv_flush_icache),
    SCMP_SYS(sigreturn),       SCMP_SYS(ugetrlimit),
};

// What asks about a path, or looks at it. Others that do, by rarer names, are for no library that we know.
constexpr int pathCalls[] = {
    SCMP_SYS(access),     SCMP_SYS(faccessat), SCMP_SYS(faccessat2), SCMP_SYS(lstat),
    SCMP_SYS(newfstatat), SCMP_SYS(stat),      SCMP_SYS(statx),
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

/// Who decides about a call that is not harmless on every path.
enum class PathsBy { supervisor, system, nobody };

/// The supervisor can decide where it may look into our memory, and where the system lets it hand out files.
bool canBeDecidedFor() {
    constexpr int restrictedToRoot = 2;
    std::ifstream file("/proc/sys/kernel/yama/ptrace_scope");
    int scope = 0;
    if (file >> scope && scope >= restrictedToRoot) return false;
    utsname system{};
    int version = 0;
    int revision = 0;
    return uname(&system) == 0 && std::sscanf(system.release, "%d.%d", &version, &revision) == 2 &&
           std::pair(version, revision) >= std::pair(5, 14);
}

/// Every call that is not allowed fails as for want of a right: libraries try things that they can do without. Gives
/// where the supervisor is asked, if it is the one to decide.
std::optional<base::Descriptor> filterCalls(PathsBy by) {
    using Filter = std::unique_ptr<void, decltype(&seccomp_release)>;
    const Filter filter(seccomp_init(SCMP_ACT_ERRNO(EPERM)), &seccomp_release);
    if (!filter) return std::nullopt;
    bool complete = true;
    const auto add = [&](std::uint32_t action, int call, std::initializer_list<scmp_arg_cmp> conditions = {}) {
        const auto count = static_cast<unsigned>(conditions.size());
        complete = complete && seccomp_rule_add_array(filter.get(), action, call, count, conditions.begin()) == 0;
    };
    for (const int call : allowedCalls) add(SCMP_ACT_ALLOW, call);
    for (const int call : allowedCallsElsewhere) {
        if (call >= 0) add(SCMP_ACT_ALLOW, call);
    }
    constexpr scmp_datum_t all = ~scmp_datum_t{0};

    if (by != PathsBy::nobody) {
        const std::uint32_t decided = by == PathsBy::supervisor ? SCMP_ACT_NOTIFY : SCMP_ACT_ALLOW;
        for (const int call : pathCalls) add(decided, call);
        constexpr scmp_datum_t writing = O_ACCMODE | O_CREAT | O_TRUNC | O_APPEND;
        add(decided, SCMP_SYS(open), {argument(1, writing, O_RDONLY)});
        add(decided, SCMP_SYS(openat), {argument(2, writing, O_RDONLY)});
    }
    // Whoever makes a path whole finds no links.
    for (const int call : {SCMP_SYS(readlink), SCMP_SYS(readlinkat)}) add(SCMP_ACT_ERRNO(EINVAL), call);

    // Memory of one's own, which counts against the limit. What is shared, or grows by itself, does not: of the former
    // only files are mapped, and not for writing, as the types of files are.
    constexpr scmp_datum_t kind = MAP_TYPE | MAP_GROWSDOWN;
    constexpr unsigned protection = 2;
    constexpr unsigned mapFlags = 3;
#ifdef __s390__  // where all arguments of the call stand in memory, which no filter sees
    add(SCMP_ACT_ALLOW, SCMP_SYS(mmap));
#else
    constexpr int map = SCMP_SYS(mmap2) < 0 ? SCMP_SYS(mmap) : SCMP_SYS(mmap2);
    add(SCMP_ACT_ALLOW, map, {argument(mapFlags, kind, MAP_PRIVATE)});
    add(SCMP_ACT_ALLOW, map,
        {argument(protection, PROT_WRITE, 0), argument(mapFlags, kind | MAP_ANONYMOUS, MAP_SHARED)});
#endif

    // Threads, but no processes. The newer call hides its flags in memory, where no filter can see them; told that
    // there is none such, the C library takes the older one.
    add(by == PathsBy::supervisor ? SCMP_ACT_NOTIFY : SCMP_ACT_ALLOW, SCMP_SYS(clone),
        {argument(cloneFlags, CLONE_THREAD, CLONE_THREAD)});
    add(SCMP_ACT_ERRNO(ENOSYS), SCMP_SYS(clone3));
    add(SCMP_ACT_ALLOW, SCMP_SYS(prctl), {argument(0, all, PR_SET_NAME)});
    add(SCMP_ACT_ALLOW, SCMP_SYS(prlimit64), {argument(2, all, 0)});  // asking is free
    constexpr int control = SCMP_SYS(fcntl64) < 0 ? SCMP_SYS(fcntl) : SCMP_SYS(fcntl64);
    for (const int command : {F_GETFD, F_SETFD, F_GETFL})
        add(SCMP_ACT_ALLOW, control, {argument(1, all, static_cast<scmp_datum_t>(command))});
#ifdef __SANITIZE_ADDRESS__  // how the sanitizer finds out whether memory may be read
    add(SCMP_ACT_ALLOW, SCMP_SYS(pipe2));
    add(SCMP_ACT_ALLOW, control, {argument(1, all, F_SETFL)});
#endif
    // The end by abort().
    add(SCMP_ACT_ALLOW, SCMP_SYS(tgkill), {argument(0, all, static_cast<scmp_datum_t>(getpid()))});
    if (!complete || seccomp_load(filter.get()) != 0) return std::nullopt;
    return base::Descriptor(by == PathsBy::supervisor ? seccomp_notify_fd(filter.get()) : -1);
}

}  // namespace

std::vector<std::string> readableFolders(std::vector<std::string> own) {
    own.insert(own.end(), std::begin(systemData), std::end(systemData));
    return own;
}

std::optional<base::Descriptor> confine(unsigned long long memoryBytes, const std::vector<std::string>& folders) {
    const bool isAsking = canBeDecidedFor();
    forgetEnvironment();
    limit(RLIMIT_CORE, 0);
    limit(RLIMIT_FSIZE, 0);
    limit(RLIMIT_STACK, mostStack);
#ifndef __SANITIZE_ADDRESS__  // the sanitizer's own bookkeeping counts as data, and is larger than any limit
    limit(RLIMIT_DATA, memoryBytes);
    limit(RLIMIT_AS, mostAddresses);
#else
    static_cast<void>(memoryBytes);
#endif
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || !dropCapabilities()) return std::nullopt;
    const bool hasRules = forbidPaths(folders);
    if (isAsking) {
        if (auto questions = filterCalls(PathsBy::supervisor)) return questions;
    }
    return filterCalls(hasRules ? PathsBy::system : PathsBy::nobody);
}

}  // namespace marrowbeck::tools
