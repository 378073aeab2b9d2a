// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/process/ChildProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

#include "framework/core/threads/Waiting.h"

namespace framework::internal {
namespace {

void closeDescriptor(int& descriptor) noexcept {
    if (descriptor >= 0) close(descriptor);
    descriptor = -1;
}

std::vector<char*> pointersTo(const std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (const std::string& text : texts) pointers.push_back(const_cast<char*>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

/// All that the child needs, made before it exists: between its birth and its program it shares our memory and may
/// only make system calls.
struct ChildPlan {
    const char* path;
    char* const* arguments;
    char* const* environment;
    const char* workingFolder;
    int input;
    int output;
    int errors;
    bool keepsFilesPrivate;
    pid_t parent;
};

[[noreturn]] void becomeProgram(const ChildPlan& plan, volatile int& error) {
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != plan.parent) _exit(127);
    sigset_t none;
    sigemptyset(&none);
    sigprocmask(SIG_SETMASK, &none, nullptr);
    signal(SIGPIPE, SIG_DFL);
    if (plan.keepsFilesPrivate) umask(S_IRWXG | S_IRWXO);
    if (dup2(plan.input, STDIN_FILENO) >= 0 && dup2(plan.output, STDOUT_FILENO) >= 0 &&
        (plan.errors < 0 || dup2(plan.errors, STDERR_FILENO) >= 0) && chdir(plan.workingFolder) == 0) {
        execve(plan.path, plan.arguments, plan.environment);
    }
    error = errno;
    _exit(127);
}

/// Starts the child without copying this process, however large that is. -1 with errno when the program did not start.
/// The usual other way, posix_spawn, can neither have the child die with us nor choose its folder.
[[gnu::noinline]] pid_t startChild(const ChildPlan& plan) {
    volatile int error = 0;
    const pid_t process = vfork();
    if (process == 0) becomeProgram(plan, error);
    if (process > 0 && error != 0) {
        waitpid(process, nullptr, 0);
        errno = error;
        return -1;
    }
    return process;
}

int shellStatus(int status) {
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

bool& passesErrorsOn() {
    static bool passes = false;
    return passes;
}

}  // namespace

void ChildProcess::PassErrorsOn() {
    passesErrorsOn() = true;
}

std::optional<ChildProcess> ChildProcess::Start(const std::string& path, const std::vector<std::string>& arguments,
                                                const std::vector<std::string>& environment,
                                                const std::string& workingFolder, InputKind inputKind,
                                                NewFiles newFiles) {
    // The child's end of the second is its first; a socket, since a pipe whose reader has died would end us.
    std::array<int, 2> output{-1, -1};
    std::array<int, 2> input{-1, -1};
    if (pipe2(output.data(), O_CLOEXEC) != 0) return std::nullopt;
    int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    const bool talks = inputKind == InputKind::open &&
                       socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, input.data()) == 0;
    if (talks) fcntl(input[0], F_SETFL, 0);
    const std::vector<char*> argumentPointers = pointersTo(arguments);
    const std::vector<char*> environmentPointers = pointersTo(environment);
    const ChildPlan plan{path.c_str(),
                         argumentPointers.data(),
                         environmentPointers.data(),
                         workingFolder.c_str(),
                         talks ? input[0] : nothing,
                         output[1],
                         passesErrorsOn() || isatty(STDERR_FILENO) == 1 ? -1 : nothing,
                         newFiles == NewFiles::ownersOnly,
                         getpid()};
    const pid_t process = startChild(plan);
    const int error = errno;
    closeDescriptor(nothing);
    closeDescriptor(output[1]);
    closeDescriptor(input[0]);
    if (process < 0) {
        closeDescriptor(output[0]);
        closeDescriptor(input[1]);
        errno = error;
        return std::nullopt;
    }
    fcntl(output[0], F_SETFL, O_NONBLOCK);
    // The C library of Debian 12 declares no pidfd_open that C++ can link.
    return ChildProcess(process, static_cast<int>(syscall(SYS_pidfd_open, process, 0)), input[1], output[0]);
}

ChildProcess::ChildProcess(pid_t process, int descriptor, int input, int output)
    : process_(process), descriptor_(descriptor), input_(input), output_(output) {}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : process_(std::exchange(other.process_, -1)),
      descriptor_(std::exchange(other.descriptor_, -1)),
      input_(std::exchange(other.input_, -1)),
      output_(std::exchange(other.output_, -1)) {}

ChildProcess::~ChildProcess() {
    End();
}

std::string ChildProcess::ReadOutput() {
    std::string output;
    std::array<char, 65536> buffer;
    while (true) {
        const ssize_t count = read(output_, buffer.data(), buffer.size());
        if (count > 0) {
            output.append(buffer.data(), static_cast<std::size_t>(count));
        } else if (count == 0 || (errno != EAGAIN && errno != EINTR)) {
            return output;
        } else {
            WaitReadable(output_);
        }
    }
}

int ChildProcess::Wait() {
    if (descriptor_ >= 0) {
        while (!WaitReadable(descriptor_)) continue;
    }
    int status = 0;
    while (waitpid(process_, &status, 0) < 0 && errno == EINTR) continue;
    process_ = -1;
    End();
    return shellStatus(status);
}

int ChildProcess::End() noexcept {
    int status = 0;
    if (process_ > 0) {
        // Without a group of its own there is only the process, and it is waited for. One that has ended already keeps
        // the status with which it did.
        if (kill(-process_, SIGKILL) != 0) kill(process_, SIGKILL);
        while (waitpid(process_, &status, 0) < 0 && errno == EINTR) continue;
        process_ = -1;
    }
    closeDescriptor(input_);
    closeDescriptor(output_);
    closeDescriptor(descriptor_);
    return shellStatus(status);
}

}  // namespace framework::internal
