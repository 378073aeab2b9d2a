// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/Reader.h"

#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <ctime>
#include <fstream>
#include <string>
#include <utility>

#include "base/FaultSignals.h"
#include "tools/service/Descriptors.h"
#include "tools/service/ReaderProcess.h"

namespace marrowbeck::tools {

std::unique_ptr<Reader> Reader::start(Tool& tool, const std::vector<std::string>& folders) {
    std::optional<Offspring> process = Offspring::start([&](int socket) { serveQuestions(tool, folders, socket); });
    return process ? std::unique_ptr<Reader>(new Reader(std::move(*process), tool.limits(), folders)) : nullptr;
}

Reader::Reader(Offspring process, const Limits& limits, const std::vector<std::string>& folders)
    : process_(std::move(process)), limits_(limits), folders_(folders), stream_(limits.answerBytes) {}

void Reader::awaited(std::vector<pollfd>& descriptors) const {
    descriptors.push_back({descriptor(), POLLIN, 0});
    if (gatekeeper_) descriptors.push_back({gatekeeper_->descriptor(), POLLIN, 0});
}

void Reader::pause() {
    isPaused_ = isPaused_ || kill(process_.process(), SIGSTOP) == 0;
}

void Reader::resume() {
    if (std::exchange(isPaused_, false)) kill(process_.process(), SIGCONT);
}

void Reader::handed(std::uint32_t id) {
    resume();
    if (questions_.empty()) since_ = Clock::now();
    questions_.push_back(id);
}

Reader::Outcome Reader::receive() {
    std::array<char, 65536> buffer;
    while (true) {
        if (!body_) body_ = stream_.next();
        // Half an answer that nobody has asked for lies in wait for the next question.
        if (questions_.empty() && (body_ || !stream_.isEmpty())) return Outcome::unasked;
        if (body_) {
            std::string_view body = *std::exchange(body_, std::nullopt);
            if (base::takeNumber(body) != questions_.front()) return Outcome::died;
            // Its first byte tells whether the file makes sense.
            answer_ = body.empty() || body.front() == 0 ? std::nullopt : std::optional(body.substr(1));
            return Outcome::answered;
        }
        if (stream_.isBroken()) return Outcome::died;
        const ssize_t count = readSome(buffer);
        if (count < 0 && errno == EAGAIN) return Outcome::unfinished;
        if (count <= 0) return Outcome::died;
        stream_.append({buffer.data(), static_cast<std::size_t>(count)});
    }
}

void Reader::accept() {
    questions_.pop_front();
    ++answers_;
    since_ = Clock::now();
    firstLook_.reset();
}

/// As read(2). The first word, and nothing later, may bring a descriptor.
ssize_t Reader::readSome(std::span<char> bytes) {
    if (!isConfined_) {
        std::vector<base::Descriptor> asked;
        const ssize_t count = receiveWith(descriptor(), bytes.first(1), asked);
        if (count <= 0) return count;
        isConfined_ = true;
        if (!asked.empty()) gatekeeper_.emplace(std::move(asked.front()), process_.process(), folders_);
    }
    if (gatekeeper_) gatekeeper_->answer();
    while (true) {
        const ssize_t count = ::read(descriptor(), bytes.data(), bytes.size());
        if (count >= 0 || errno != EINTR) return count;
    }
}

std::chrono::nanoseconds Reader::processorTime() const {
    clockid_t clock = 0;
    timespec time{};
    if (clock_getcpuclockid(process_.process(), &clock) != 0 || clock_gettime(clock, &time) != 0) return {};
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

bool Reader::isOverdue(Clock::duration patience) {
    if (questions_.empty()) return false;
    const Look now{Clock::now(), processorTime()};
    if (!firstLook_) firstLook_ = now;
    const std::chrono::nanoseconds used = now.used - firstLook_->used;
    return used > std::chrono::seconds(limits_.seconds) || now.time - firstLook_->time - used > patience;
}

bool Reader::isHeldUp() const {
    std::ifstream file("/proc/" + std::to_string(process_.process()) + "/stat");
    std::string line;
    std::getline(file, line);
    // The state stands behind the name, which may hold anything.
    const std::size_t name = line.rfind(')');
    return name != std::string::npos && line.compare(name, 3, ") D") == 0;
}

bool Reader::endAndBlame() {
    const std::optional<int> status = process_.end();
    if (!status) return false;
    return WIFSIGNALED(*status) ? base::isFaultSignal(WTERMSIG(*status)) : !questions_.empty();
}

}  // namespace marrowbeck::tools
