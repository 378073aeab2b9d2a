// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/process/ResidentTool.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstdint>
#include <utility>
#include <vector>

#include "base/FaultSignals.h"
#include "framework/core/process/AnsweredFile.h"
#include "framework/core/process/CommandLine.h"
#include "framework/core/threads/Scheduler.h"
#include "framework/core/threads/Waiting.h"

namespace framework::internal {

using base::Answer;
using base::answerFrom;
using base::Arguments;
using base::FrameStream;
using base::isFaultSignal;
using base::requestFrame;

namespace {

/// More than any tool has to say; a length above it is no length.
constexpr std::size_t kLargestAnswer = std::size_t{1} << 28;

/// Most answers come sooner than a turn of the event loop does. What takes longer lets the window live meanwhile.
constexpr int kPromptMilliseconds = 2;

/// Where a thread waits for ever, it looks so often whether it still does.
constexpr int kLongPause = 60'000;

/// While the tool has not taken a question whole, it is offered the rest so often.
constexpr int kOfferMilliseconds = 10;

/// What is asked ahead is sent in parcels of this many bytes: to wake the tool costs more than to tell it something.
constexpr std::size_t kParcel = 4096;

/// One start again is for the accident that happens to any process; more are a fault of its own.
constexpr int kMostDeaths = 2;

/// A tool that others end is no worse for that: it is started again and again, with a little rest where they are quick
/// to do so, for as long as a person would wait for an answer.
constexpr int kRestMilliseconds = 20;
constexpr std::chrono::seconds kPatience{30};

/// An answer that was asked ahead counts for so long: the wait for a file whose disk does not answer may lie between,
/// but not a message that nobody reads.
constexpr std::chrono::seconds kEarlyAnswerHolds{60};

/// How long a tool that has closed its output may take to be over.
constexpr int kEndMilliseconds = 200;

/// What a shell adds to the number of a signal.
constexpr int kSignalStatus = 128;

/// The time up to `end`, below 0 for ever.
int millisecondsUntil(ResidentTool::Clock::time_point end) {
    if (end == ResidentTool::Clock::time_point::max()) return -1;
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - ResidentTool::Clock::now()).count();
    return static_cast<int>(std::max<std::int64_t>(left, 0));
}

/// The words behind the tool's name. A bare name asks for no more than to be told how to ask, and is no request.
std::optional<Arguments> argumentsOf(const std::string& line) {
    std::optional<std::vector<std::string>> words = PlainWords(line);
    if (!words || words->size() < 2) return std::nullopt;
    words->erase(words->begin());
    return words;
}

}  // namespace

/// A question on its way or answered. Dropped when who asked has gone, which for a killed thread is at once.
class ResidentTool::Question {
  public:
    explicit Question(ResidentTool& tool) : tool_(tool), id_(++tool.lastId_) { tool_.pending_.emplace(id_, this); }
    ~Question() {
        if (tool_.pending_.erase(id_) > 0) tool_.send(requestFrame(id_, {}));
    }
    Question(const Question&) = delete;
    Question& operator=(const Question&) = delete;

    std::uint32_t Id() const { return id_; }
    bool IsSettled() const { return settled_; }
    std::optional<Answer>& GetAnswer() { return answer_; }
    /// Whether the answer still tells how its file is.
    bool Holds() const { return Clock::now() - settledAt_ < kEarlyAnswerHolds; }

    /// Who waits is woken, whether the answer has come or never will.
    void Settle(std::optional<Answer> answer) {
        tool_.pending_.erase(id_);
        answer_ = std::move(answer);
        settled_ = true;
        settledAt_ = Clock::now();
        Wake();
    }

    /// Lets the thread that waits, if one does, see for itself.
    void Wake() {
        if (waiting_) Scheduler::Instance().Wake(*waiting_);
    }

    /// The thread that asks now waits for it.
    void WaitedFor() { waiting_ = Scheduler::Instance().Current(); }

  private:
    ResidentTool& tool_;
    std::uint32_t id_;
    Thread* waiting_ = nullptr;
    bool settled_ = false;
    Clock::time_point settledAt_{};
    std::optional<Answer> answer_;
};

/// As long as a thread watches the output; also when it is killed meanwhile.
class ResidentTool::Watch {
  public:
    explicit Watch(ResidentTool& tool) : tool_(tool) { tool_.isWatched_ = true; }
    ~Watch() {
        tool_.isWatched_ = false;
        tool_.wakeOthers();
    }
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

  private:
    ResidentTool& tool_;
};

ResidentTool::ResidentTool(Start start) : start_(std::move(start)), answers_(kLargestAnswer) {}

ResidentTool::~ResidentTool() {
    die();
}

std::optional<ResidentTool::Result> ResidentTool::Ask(const std::string& line) {
    if (const std::unique_ptr<Question> early = takeExpected(line)) {
        std::optional<Result> result = await(*early);
        if (result && early->Holds()) return result;
    }
    const std::optional<Arguments> arguments = argumentsOf(line);
    return arguments ? Ask(*arguments, Clock::time_point::max()) : std::nullopt;
}

std::optional<ResidentTool::Result> ResidentTool::Ask(const Arguments& words, Clock::time_point end) {
    const auto giveUp = Clock::now() + kPatience;
    for (bool again = false; isRunning(); again = true) {
        if (again && Clock::now() > giveUp) break;
        Question question(*this);
        send(requestFrame(question.Id(), words));
        if (auto result = await(question, end)) return result;
        if (again) Pause(kRestMilliseconds);
    }
    return std::nullopt;
}

/// Returns when the question is settled or it is `end`.
std::optional<ResidentTool::Result> ResidentTool::await(Question& question, Clock::time_point end) {
    question.WaitedFor();
    if (!question.IsSettled()) receive();
    bool prompt = true;
    while (!question.IsSettled()) {
        if (std::exchange(prompt, false)) {
            pollfd awaited{process_->Output(), POLLIN, 0};
            poll(&awaited, 1, kPromptMilliseconds);
        } else {
            const int left = millisecondsUntil(end);
            if (left == 0) return Result{{}, {}, kUnanswered};
            rest(unsent_.empty() ? left : left < 0 ? kOfferMilliseconds : std::min(left, kOfferMilliseconds));
        }
        if (!question.IsSettled()) receive();
    }
    if (!question.GetAnswer()) return std::nullopt;
    if (const auto& about = question.GetAnswer()->about) AnsweredFile::Note(*about);
    return std::move(question.GetAnswer()->result);
}

/// Waits for the tool to say something, at most so long, below 0 for ever. The toolkit watches a descriptor for one at
/// a time: who comes while it is watched is woken by the answer, or takes over.
void ResidentTool::rest(int milliseconds) {
    if (!Scheduler::Instance().Parkable()) {
        WaitReadable(process_->Output(), milliseconds);
    } else if (isWatched_) {
        Pause(milliseconds < 0 ? kLongPause : milliseconds);
    } else {
        const Watch watch(*this);
        WaitReadable(process_->Output(), milliseconds);
    }
}

void ResidentTool::wakeOthers() {
    for (const auto& [id, question] : pending_) question->Wake();
}

void ResidentTool::Expect(const std::string& line) {
    const std::optional<Arguments> arguments = argumentsOf(line);
    if (!arguments || expected_.contains(line) || !isRunning()) return;
    auto question = std::make_unique<Question>(*this);
    unsent_ += requestFrame(question->Id(), *arguments);
    expected_.emplace(line, std::move(question));
    if (unsent_.size() >= kParcel) flush();
}

std::unique_ptr<ResidentTool::Question> ResidentTool::takeExpected(const std::string& line) {
    const auto place = expected_.find(line);
    if (place == expected_.end()) return nullptr;
    std::unique_ptr<Question> question = std::move(place->second);
    expected_.erase(place);
    return question;
}

void ResidentTool::ExpectNothing() {
    expected_.clear();
}

void ResidentTool::ExpectNothing(const std::string& line) {
    expected_.erase(line);
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

/// Takes in all that is there.
void ResidentTool::receive() {
    if (!process_) return;
    flush();
    std::array<char, 65536> buffer;
    while (true) {
        const ssize_t count = read(process_->Output(), buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0 && errno == EAGAIN) return;
        if (count <= 0) break;
        if (!take(buffer.data(), static_cast<std::size_t>(count))) {
            ++deaths_;
            return die();
        }
        if (static_cast<std::size_t>(count) < buffer.size()) return;
    }
    // One that others end may be held by the disk, and then has no status yet.
    const std::optional<int> status = process_->End(kEndMilliseconds);
    if (status && (*status < kSignalStatus || isFaultSignal(*status - kSignalStatus))) ++deaths_;
    die();
}

/// False when what came makes no sense.
bool ResidentTool::take(const char* bytes, std::size_t size) {
    answers_.append({bytes, size});
    while (const auto body = answers_.next()) {
        std::optional<Answer> answer = answerFrom(*body);
        if (!answer) return false;
        deaths_ = 0;
        const auto place = pending_.find(answer->id);
        if (place != pending_.end()) place->second->Settle(std::move(answer));
    }
    return !answers_.isBroken();
}

void ResidentTool::die() {
    process_.reset();
    answers_ = FrameStream(kLargestAnswer);
    unsent_.clear();
    while (!pending_.empty()) pending_.begin()->second->Settle(std::nullopt);
}

}  // namespace framework::internal
