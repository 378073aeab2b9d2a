#include "framework/core/ResidentTool.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

#include "framework/core/Scheduler.h"
#include "framework/core/Waiting.h"

namespace framework::internal {

using marrowbeck::tools::answerFrom;
using marrowbeck::tools::FrameStream;
using marrowbeck::tools::noAnswer;
using marrowbeck::tools::requestFrame;

namespace {

/// More than any tool has to say; a length above it is no length.
constexpr std::size_t kLargestAnswer = std::size_t{1} << 28;

/// Most answers come sooner than a turn of the event loop does. What takes longer lets the window live meanwhile.
constexpr int kPromptMilliseconds = 2;

/// While the tool has not taken a question whole, it is offered the rest so often.
constexpr int kOfferMilliseconds = 10;

/// One start again is for the accident that happens to any process; more are a fault of its own.
constexpr int kMostDeaths = 2;

}  // namespace

/// A question on its way. Dropped when who asked has gone, which for a killed thread is at once.
struct ResidentTool::Pending {
    Pending(ResidentTool& owner, const Arguments& arguments)
        : tool(owner), id(++owner.lastId_), thread(Scheduler::Instance().Current()) {
        if (id == noAnswer) id = ++owner.lastId_;
        tool.pending_.emplace(id, this);
        tool.send(requestFrame(id, arguments));
    }
    ~Pending() {
        if (tool.pending_.erase(id) > 0) tool.send(requestFrame(id, {}));
    }
    Pending(const Pending&) = delete;
    Pending& operator=(const Pending&) = delete;

    /// Nobody waits for it any more, as it was answered or cannot be.
    void Settle() {
        settled = true;
        tool.pending_.erase(id);
        if (thread) Scheduler::Instance().Wake(*thread);
    }

    ResidentTool& tool;
    std::uint32_t id;
    Thread* thread;
    bool settled = false;
    std::optional<Result> result;
};

ResidentTool::ResidentTool(Start start) : start_(std::move(start)), answers_(kLargestAnswer) {}

ResidentTool::~ResidentTool() = default;

std::optional<ResidentTool::Result> ResidentTool::Ask(const Arguments& arguments) {
    while (isRunning()) {
        Pending question(*this, arguments);
        bool prompt = true;
        while (!question.settled) {
            const int output = process_->Output();
            if (std::exchange(prompt, false)) {
                pollfd awaited{output, POLLIN, 0};
                poll(&awaited, 1, kPromptMilliseconds);
            } else {
                WaitReadable(output, unsent_.empty() ? -1 : kOfferMilliseconds);
            }
            if (!question.settled) receive();
        }
        if (question.result) return std::move(question.result);
    }
    return std::nullopt;
}

void ResidentTool::Expect(const Arguments& arguments) {
    // Sent with the next question: the hint is for what comes after that.
    if (isRunning()) unsent_ += requestFrame(noAnswer, arguments);
}

void ResidentTool::ExpectNothing() {
    if (process_) send(requestFrame(noAnswer, {}));
}

bool ResidentTool::isRunning() {
    if (process_) return true;
    if (deaths_ >= kMostDeaths) return false;
    if (auto process = start_()) {
        process_.emplace(std::move(*process));
    } else {
        deaths_ = kMostDeaths;
    }
    return process_.has_value();
}

void ResidentTool::send(const std::string& frame) {
    unsent_ += frame;
    flush();
}

void ResidentTool::flush() {
    std::size_t sent = 0;
    while (process_ && sent < unsent_.size()) {
        const ssize_t count = ::send(process_->Input(), unsent_.data() + sent, unsent_.size() - sent, MSG_NOSIGNAL);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) break;  // later; or it has died, which shows where answers are awaited
        sent += static_cast<std::size_t>(count);
    }
    unsent_.erase(0, sent);
}

void ResidentTool::receive() {
    if (!process_) return;
    flush();
    std::array<char, 65536> buffer;
    while (true) {
        const ssize_t count = read(process_->Output(), buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0 && errno == EAGAIN) return;
        if (count <= 0) break;
        answers_.append({buffer.data(), static_cast<std::size_t>(count)});
        while (const auto body = answers_.next()) {
            auto answer = answerFrom(*body);
            if (!answer) break;
            deaths_ = 0;
            const auto place = pending_.find(answer->id);
            if (place == pending_.end()) continue;
            place->second->result = std::move(answer->result);
            place->second->Settle();
        }
        if (answers_.isBroken()) break;
        if (static_cast<std::size_t>(count) < buffer.size()) return;
    }
    die();
}

void ResidentTool::die() {
    process_.reset();
    answers_ = FrameStream(kLargestAnswer);
    unsent_.clear();
    ++deaths_;
    while (!pending_.empty()) pending_.begin()->second->Settle();
}

}  // namespace framework::internal
