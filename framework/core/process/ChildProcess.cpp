// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/process/ChildProcess.h"

#include <fcntl.h>
#include <poll.h>
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

#include "base/LeftBehind.h"
#include "framework/core/threads/Waiting.h"

namespace framework::internal {
namespace {

using base::Descriptor;

/// So often, in milliseconds, is looked whether a process is over where nothing else tells.
constexpr int kLook = 10;
constexpr int kLookWhileSilent = 200;

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
    base::LeftBehind::Reap();
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) return std::nullopt;
    Descriptor output(ends[0]);
    const Descriptor childOutput(ends[1]);
    const Descriptor nothing = Descriptor::Open("/dev/null", O_RDWR);
    // A socket, since a pipe whose reader has died would end us.
    const bool talks = inputKind == InputKind::open &&
                       socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()) == 0;
    Descriptor input(talks ? ends[0] : -1);
    const Descriptor childInput(talks ? ends[1] : -1);
    if (talks) fcntl(childInput.Number(), F_SETFL, 0);
    const std::vector<char*> argumentPointers = pointersTo(arguments);
    const std::vector<char*> environmentPointers = pointersTo(environment);
    const ChildPlan plan{path.c_str(),
                         argumentPointers.data(),
                         environmentPointers.data(),
                         workingFolder.c_str(),
                         talks ? childInput.Number() : nothing.Number(),
                         childOutput.Number(),
                         passesErrorsOn() || isatty(STDERR_FILENO) == 1 ? -1 : nothing.Number(),
                         newFiles == NewFiles::ownersOnly,
                         getpid()};
    const pid_t process = startChild(plan);
    if (process < 0) return std::nullopt;
    fcntl(output.Number(), F_SETFL, O_NONBLOCK);
    return ChildProcess(process, std::move(input), std::move(output));
}

// The C library of Debian 12 declares no pidfd_open that C++ can link.
ChildProcess::ChildProcess(pid_t process, Descriptor input, Descriptor output)
    : process_(process),
      end_(static_cast<int>(syscall(SYS_pidfd_open, process, 0))),
      input_(std::move(input)),
      output_(std::move(output)) {}

ChildProcess::ChildProcess(ChildProcess&& other) noexcept
    : process_(std::exchange(other.process_, -1)),
      end_(std::move(other.end_)),
      input_(std::move(other.input_)),
      output_(std::move(other.output_)) {}

ChildProcess::~ChildProcess() {
    End();
}

std::string ChildProcess::ReadOutput() {
    std::string output;
    std::array<char, 65536> buffer;
    bool killed = false;
    while (true) {
        const ssize_t count = output_.Read(buffer.data(), buffer.size());
        if (count > 0) {
            output.append(buffer.data(), static_cast<std::size_t>(count));
        } else if (count == 0 || errno != EAGAIN || killed) {
            return output;
        } else if (!WaitReadable(output_.Number(), kLookWhileSilent)) {
            // Children of one that was killed may keep its output open for as long as the disk holds them.
            killed = isKilled();
        }
    }
}

/// Whether a signal has ended the process.
bool ChildProcess::isKilled() const {
    siginfo_t end{};
    return waitid(P_PID, static_cast<id_t>(process_), &end, WEXITED | WNOHANG | WNOWAIT) == 0 &&
           (end.si_code == CLD_KILLED || end.si_code == CLD_DUMPED);
}

/// The status of a process that is over, which is then known no more; nothing while it is not.
std::optional<int> ChildProcess::takeStatus() noexcept {
    int status = 0;
    if (waitpid(process_, &status, WNOHANG) == 0) return std::nullopt;
    process_ = -1;
    return shellStatus(status);
}

int ChildProcess::Wait() {
    while (true) {
        if (const std::optional<int> status = takeStatus()) {
            End();
            return *status;
        }
        if (end_.IsOpen()) {
            WaitReadable(end_.Number());
        } else {
            Pause(kLook);
        }
    }
}

std::optional<int> ChildProcess::End(int patience) noexcept {
    std::optional<int> status;
    if (process_ > 0) {
        // Without a group of its own there is only the process. One that has ended already keeps the status with which
        // it did.
        if (kill(-process_, SIGKILL) != 0) kill(process_, SIGKILL);
        for (status = takeStatus(); !status && patience > 0; status = takeStatus(), patience -= kLook) {
            pollfd over{end_.Number(), POLLIN, 0};
            poll(&over, 1, kLook);
        }
        if (!status) base::LeftBehind::Add(std::exchange(process_, -1));
    }
    input_.Close();
    output_.Close();
    end_.Close();
    base::LeftBehind::Reap();
    return status;
}

}  // namespace framework::internal
