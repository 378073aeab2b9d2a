// SPDX-License-Identifier: GPL-2.0-or-later
// What a hostile file could do with a reader that it has taken over, tried from inside.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <linux/capability.h>
#include <poll.h>
#include <pthread.h>
#include <signal.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <functional>
#include <vector>

#include "tests/tools/TestFiles.h"
#include "tools/service/Gatekeeper.h"
#include "tools/service/Service.h"

namespace marrowbeck::tools {
namespace {

constexpr unsigned long long memoryLimit = 256U << 20;
constexpr std::size_t tooMuch = std::size_t{1} << 30;

bool isDone(long result) {
    return result >= 0;
}

bool isMapped(std::size_t bytes, int protection, int flags) {
    return mmap(nullptr, bytes, protection, flags | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0) != MAP_FAILED;
}

/// Whether the system tells a file that is there from one that is not.
bool isTold(const std::function<long(const char* path)>& question) {
    const auto answerTo = [&](const char* path) {
        errno = 0;
        return std::pair(question(path), errno);
    };
    return answerTo("/etc/passwd") != answerTo("/etc/not-there") || isDone(answerTo("/etc/passwd").first);
}

/// Threads that can be had at a time, up to a thousand.
std::size_t threadsMade() {
    pthread_attr_t small;
    pthread_attr_init(&small);
    pthread_attr_setstacksize(&small, 64U << 10);
    std::size_t count = 0;
    pthread_t thread{};
    while (count < 1000 && pthread_create(
                               &thread, &small,
                               [](void*) -> void* {
                                   for (;;) poll(nullptr, 0, -1);
                               },
                               nullptr) == 0)
        ++count;
    return count;
}

/// The value of a variable as the system has put it on the stack, of a process that was told to forget it.
const char* const secret = getenv("XDG_RUNTIME_DIR");

struct Attempt {
    const char* name;
    std::function<bool()> succeeds;
};

const std::vector<Attempt> attempts = {
    {"a file", [] { return isDone(open("/etc/passwd", O_RDONLY)); }},
    {"a file by a way out of a folder", [] { return isDone(open("/usr/lib/../../etc/passwd", O_RDONLY)); }},
    {"the home", [] { return isDone(open(getenv("HOME"), O_RDONLY)); }},
    {"processes", [] { return isDone(open("/proc/self/status", O_RDONLY)); }},
    {"a library", [] { return isDone(open("/usr/lib", O_RDONLY)); }},
    {"the same by its name",
     [] {
         struct stat status;
         return stat("/usr/lib", &status) == 0 && S_ISDIR(status.st_mode);
     }},
    {"writing", [] { return isDone(open("/usr/lib", O_TMPFILE | O_RDWR, 0600)); }},
    {"creating", [] { return isDone(open("/tmp/made", O_CREAT | O_RDONLY, 0600)); }},
    {"removing", [] { return isDone(unlink("/tmp/made")); }},
    {"what exists, by opening", [] { return isTold([](auto* path) { return open(path, O_RDONLY); }); }},
    {"what exists, by stat",
     [] {
         struct stat at;
         return isTold([&](auto* path) { return stat(path, &at); });
     }},
    {"what exists, by lstat",
     [] {
         struct stat at;
         return isTold([&](auto* path) { return lstat(path, &at); });
     }},
    {"what exists, by a look at an open file",
     [] {
         struct stat at;
         return isTold([&](auto* path) { return fstatat(3, path, &at, AT_EMPTY_PATH); });
     }},
    {"what exists, by statx",
     [] {
         struct statx at;
         return isTold([&](auto* path) { return statx(AT_FDCWD, path, 0, STATX_ALL, &at); });
     }},
    {"what exists, by access", [] { return isTold([](auto* path) { return access(path, F_OK); }); }},
    {"what exists, by faccessat2",
     [] { return isTold([](auto* path) { return faccessat(AT_FDCWD, path, F_OK, AT_EACCESS); }); }},
    {"what exists, by its disk",
     [] {
         struct statfs at;
         return isTold([&](auto* path) { return statfs(path, &at); });
     }},
    {"what exists, by going there", [] { return isTold([](auto* path) { return chdir(path); }); }},
    {"links",
     [] {
         std::array<char, 64> to;
         return isDone(readlink("/proc/self/exe", to.data(), to.size()));
     }},
    {"network", [] { return isDone(socket(AF_INET, SOCK_STREAM, 0)); }},
    {"bus", [] { return isDone(socket(AF_UNIX, SOCK_STREAM, 0)); }},
    {"a program",
     [] {
         char* const words[] = {nullptr};
         return isDone(execve("/bin/true", words, words));
     }},
    {"a process", [] { return isDone(fork()); }},
    {"tracing", [] { return isDone(ptrace(PTRACE_TRACEME, 0, nullptr, nullptr)); }},
    {"signals", [] { return isDone(kill(getppid(), 0)); }},
    {"memory of others",
     [] {
         char byte;
         iovec here{&byte, 1};
         iovec there{const_cast<char*>(secret), 1};
         return isDone(process_vm_readv(getppid(), &here, 1, &there, 1, 0));
     }},
    {"rings", [] { return isDone(syscall(SYS_io_uring_setup, 1, nullptr)) || errno != EPERM; }},
    {"files without a name", [] { return isDone(memfd_create("x", 0)); }},
    {"root's powers",
     [] {
         __user_cap_header_struct head{_LINUX_CAPABILITY_VERSION_3, 0};
         std::array<__user_cap_data_struct, 2> all{};
         return isDone(syscall(SYS_capset, &head, all.data()));
     }},
    {"answering its own questions", [] { return isDone(ioctl(4, 0, 0)) || errno != EPERM; }},
    {"the environment", [] { return *secret != '\0' || getenv("XDG_RUNTIME_DIR") != nullptr; }},
#ifndef __SANITIZE_ADDRESS__  // under the sanitizer there is no limit of memory
    {"much memory", [] { return isMapped(tooMuch, PROT_READ | PROT_WRITE, MAP_PRIVATE); }},
    {"much memory to read", [] { return isMapped(std::size_t{1} << 40, PROT_READ, MAP_PRIVATE); }},
#endif
    {"shared memory", [] { return isMapped(4096, PROT_READ | PROT_WRITE, MAP_SHARED); }},
    {"shared memory to read", [] { return isMapped(4096, PROT_READ, MAP_SHARED); }},
    {"growing memory", [] { return isMapped(4096, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_GROWSDOWN); }},
    {"threads", [] { return threadsMade() > 2 * Gatekeeper::mostThreads(); }},
};

class Taken final : public Tool {
  public:
    Limits limits() const override { return {memoryLimit, 5, 1U << 20}; }
    bool keepsAnswers() const override { return false; }
    std::variant<Job, ToolResult> begin(const Arguments& arguments) const override {
        return Job{arguments.front(), "", [](std::optional<std::string_view> answer, const auto&) {
                       return ToolResult{std::string(answer.value_or("no sense")), {}, exitSuccess};
                   }};
    }
    std::optional<ToolResult> unopened(const std::string&, const FileNote&) const override { return std::nullopt; }
    bool isSound(const std::string&, std::string_view answer) const override { return !answer.empty(); }
    void warmUp() const override {}
    std::vector<std::string> dataFolders() const override { return {}; }
    std::optional<std::string> read(const std::string&, Content) override {
        std::string successes;
        for (const Attempt& attempt : attempts) {
            if (attempt.succeeds()) successes.append(attempt.name).append("\n");
        }
        return successes;
    }
};

TEST(TakenReaderTest, GetsAtItsFileAndAtLibrariesAndAtNothingElse) {
    ASSERT_NE(secret, nullptr);
    TemporaryFolder folder;
    Taken tool;
    EXPECT_EQ(runOnce(tool, {folder.Put("a", "a")}).output, "a library\nthe same by its name\n");
}

}  // namespace
}  // namespace marrowbeck::tools
