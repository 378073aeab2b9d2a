// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/Reader.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <ctime>

#include "base/FaultSignals.h"
#include "tools/service/ReaderProcess.h"

namespace marrowbeck::tools {

namespace {

/// A reader may wait for a slow disk, but not for ever: this many times its processor time.
constexpr unsigned patienceFactor = 6;

/// Where the socket stands in the new process.
constexpr int socketPlace = STDERR_FILENO + 1;

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

}  // namespace

std::unique_ptr<Reader> Reader::start(Tool& tool) {
    std::array<int, 2> ends{};
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) return nullptr;
    const pid_t parent = getpid();
    const pid_t process = fork();
    if (process == 0) {
        leaveParent(ends[1], parent);
        serveQuestions(tool, socketPlace);
        _exit(exitSuccess);
    }
    ::close(ends[1]);
    if (process < 0) {
        ::close(ends[0]);
        return nullptr;
    }
    fcntl(ends[0], F_SETFL, O_NONBLOCK);
    return std::unique_ptr<Reader>(new Reader(process, ends[0], tool.limits()));
}

Reader::Reader(pid_t process, int socket, const Limits& limits)
    : process_(process), socket_(socket), limits_(limits), stream_(limits.answerBytes) {}

Reader::~Reader() {
    endAndBlame();
}

bool Reader::ask(const std::string& question, const InputFile* file) {
    const auto size = file == nullptr ? 0 : static_cast<std::uint64_t>(file->status().st_size);
    std::string bytes = base::framed(base::numberBytes(static_cast<std::uint32_t>(size >> 32)) +
                                     base::numberBytes(static_cast<std::uint32_t>(size)) + question);
    iovec part{bytes.data(), bytes.size()};
    alignas(cmsghdr) std::array<char, CMSG_SPACE(sizeof(int))> control{};
    msghdr message{};
    message.msg_iov = &part;
    message.msg_iovlen = 1;
    if (file != nullptr) {
        message.msg_control = control.data();
        message.msg_controllen = control.size();
        cmsghdr* const header = CMSG_FIRSTHDR(&message);
        header->cmsg_level = SOL_SOCKET;
        header->cmsg_type = SCM_RIGHTS;
        header->cmsg_len = CMSG_LEN(sizeof(int));
        const int descriptor = file->descriptor();
        std::copy_n(reinterpret_cast<const char*>(&descriptor), sizeof descriptor,
                    reinterpret_cast<char*>(CMSG_DATA(header)));
    }
    answer_.reset();
    usedBefore_ = processorTime();
    since_ = Clock::now();
    // A question is far shorter than what an idle socket takes at once.
    busy_ = sendmsg(socket_, &message, MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
    return busy_;
}

Reader::Outcome Reader::receive() {
    std::array<char, 65536> buffer;
    while (true) {
        const ssize_t count = ::read(socket_, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0 && errno == EAGAIN) return Outcome::unfinished;
        // One that speaks without having been asked is no longer ours.
        if (count <= 0 || !busy_) return Outcome::died;
        stream_.append({buffer.data(), static_cast<std::size_t>(count)});
        if (const auto body = stream_.next()) {
            // Its first byte tells whether the file makes sense.
            if (!body->empty() && body->front() != 0) answer_ = body->substr(1);
            busy_ = false;
            since_ = Clock::now();
            return Outcome::answered;
        }
        if (stream_.isBroken()) return Outcome::died;
    }
}

std::chrono::nanoseconds Reader::processorTime() const {
    clockid_t clock = 0;
    timespec time{};
    if (clock_getcpuclockid(process_, &clock) != 0 || clock_gettime(clock, &time) != 0) return {};
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

bool Reader::isOverdue() const {
    const std::chrono::seconds limit(limits_.seconds);
    return busy_ && (processorTime() - usedBefore_ > limit || Clock::now() - since_ > limit * patienceFactor);
}

bool Reader::endAndBlame() {
    if (process_ < 0) return false;
    // One that has ended already keeps the status with which it did.
    kill(process_, SIGKILL);
    int status = 0;
    while (waitpid(process_, &status, 0) < 0 && errno == EINTR) continue;
    ::close(socket_);
    process_ = -1;
    return WIFSIGNALED(status) ? base::isFaultSignal(WTERMSIG(status)) : busy_;
}

}  // namespace marrowbeck::tools
