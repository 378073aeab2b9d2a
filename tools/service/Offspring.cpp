// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/Offspring.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

#include "base/LeftBehind.h"
#include "tools/service/ToolResult.h"

namespace marrowbeck::tools {

namespace {

/// Where the socket stands in the new process.
constexpr int socketPlace = STDERR_FILENO + 1;

/// How often, a millisecond apart, the status of one that was killed is asked for.
constexpr int mostLooks = 100;

/// In the new process: nothing stays open but the socket, and the end of the parent is its own.
void leaveParent(int socket, pid_t parent) {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(exitFailure);
    // The standard places may have been free, and so be the socket's own.
    const int own = fcntl(socket, F_DUPFD, socketPlace);
    const int nothing = ::open("/dev/null", O_RDWR);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) dup2(nothing, standard);
    if (own != socketPlace) dup2(own, socketPlace);
    syscall(SYS_close_range, socketPlace + 1, ~0U, 0);
    for (const int handled : {SIGPIPE, SIGCHLD, SIGTERM, SIGINT, SIGHUP}) signal(handled, SIG_DFL);
}

/// The status of a child that is over.
std::optional<int> statusOf(pid_t process) {
    int status = 0;
    pid_t over = 0;
    do {
        over = waitpid(process, &status, WNOHANG);
    } while (over < 0 && errno == EINTR);
    return over == process ? std::optional(status) : std::nullopt;
}

}  // namespace

std::optional<Offspring> Offspring::start(const std::function<void(int)>& life) {
    base::LeftBehind::Reap();
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return std::nullopt;
    base::Descriptor ours(ends[0]);
    const base::Descriptor its(ends[1]);
    const pid_t parent = getpid();
    const pid_t process = fork();
    if (process == 0) {
        leaveParent(its.Number(), parent);
        life(socketPlace);
        _exit(exitSuccess);
    }
    if (process < 0) return std::nullopt;
    fcntl(ours.Number(), F_SETFL, O_NONBLOCK);
    return Offspring(process, std::move(ours));
}

Offspring::Offspring(pid_t process, base::Descriptor socket) : process_(process), socket_(std::move(socket)) {}

Offspring::Offspring(Offspring&& other) noexcept
    : process_(std::exchange(other.process_, -1)), socket_(std::move(other.socket_)) {}

Offspring::~Offspring() {
    if (process_ < 0) return;
    kill(process_, SIGKILL);
    base::LeftBehind::Add(process_);
}

std::optional<int> Offspring::end() {
    if (process_ < 0) return std::nullopt;
    // One that has ended already keeps the status with which it did.
    kill(process_, SIGKILL);
    for (int look = 0; look < mostLooks; ++look) {
        const std::optional<int> status = statusOf(process_);
        if (status) {
            process_ = -1;
            return status;
        }
        poll(nullptr, 0, 1);
    }
    return std::nullopt;
}

}  // namespace marrowbeck::tools
