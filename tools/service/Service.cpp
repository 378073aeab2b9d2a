#include "tools/service/Service.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace marrowbeck::tools {

namespace {

using namespace std::chrono_literals;

/// Readers that nobody has asked for so long give back their memory.
constexpr std::chrono::milliseconds unusedTime = 60s;

/// How often readers at work are looked at. Their limits are seconds.
constexpr std::chrono::milliseconds lookPeriod = 500ms;

/// What is worked on ahead is a window that moves on with the questions; more at a time is none.
constexpr std::size_t mostAhead = 128;

/// Two questions about a file within this time, with none about another between them, see it in one state.
constexpr std::chrono::milliseconds oneLook = 100ms;

int millisecondsUntil(Reader::Clock::time_point time) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(time - Reader::Clock::now());
    return static_cast<int>(std::max<std::int64_t>(left.count(), 0));
}

}  // namespace

Service::Service(Tool& tool, std::size_t mostReaders, Reply reply)
    : tool_(tool), mostReaders_(mostReaders), reply_(std::move(reply)) {}

void Service::take(const Request& request) {
    if (request.arguments.empty()) {
        cancel(request.id);
        return;
    }
    std::variant<Job, ToolResult> begun = tool_.begin(request.arguments);
    if (Job* const job = std::get_if<Job>(&begun)) {
        request.id == noAnswer ? expect(std::move(*job)) : ask(request.id, std::move(*job));
    } else if (request.id != noAnswer) {
        reply_(request.id, std::get<ToolResult>(std::move(begun)));
    }
    dispatch();
}

void Service::ask(std::uint32_t id, Job job) {
    if (tool_.keepsAnswers()) {
        const auto isIt = [&](const Job& other) { return other.path == job.path && other.question == job.question; };
        const std::optional<FileIdentity> file = look(job.path);
        if (const auto* kept = file ? kept_.find(*file, job.question) : nullptr) {
            reply_(id, job.finish(kept->answer));
            return;
        }
        for (Slot& slot : slots_) {
            if (!slot.work || !isIt(slot.work->job) || !file || slot.work->file != file) continue;
            slot.work->waiting.push_back({id, std::move(job)});
            return;
        }
        std::erase_if(ahead_, isIt);
    }
    Work work{job, {}, {}, false};
    work.waiting.push_back({id, std::move(job)});
    queue_.push_back(std::move(work));
}

void Service::expect(Job job) {
    if (tool_.keepsAnswers() && ahead_.size() < mostAhead) ahead_.push_back(std::move(job));
}

void Service::cancel(std::uint32_t id) {
    const auto forget = [id](Work& work) {
        std::erase_if(work.waiting, [id](const Waiting& waiting) { return waiting.id == id; });
        return work.waiting.empty();
    };
    if (id == noAnswer) ahead_.clear();
    std::erase_if(queue_, forget);
    for (Slot& slot : slots_) {
        const bool concerned = slot.work && (id == noAnswer || !slot.work->waiting.empty());
        if (concerned && forget(*slot.work)) slot = {};
    }
    removeEmptySlots();
    dispatch();
}

std::size_t Service::unanswered() const {
    std::size_t count = 0;
    for (const Work& work : queue_) count += work.waiting.size();
    for (const Slot& slot : slots_) count += slot.work ? slot.work->waiting.size() : 0;
    return count;
}

void Service::awaited(std::vector<pollfd>& descriptors) const {
    for (const Slot& slot : slots_) descriptors.push_back({slot.reader->descriptor(), POLLIN, 0});
}

int Service::patience() const {
    int least = -1;
    for (const Slot& slot : slots_) {
        const int left = slot.work ? static_cast<int>(lookPeriod.count())
                                   : millisecondsUntil(slot.reader->since() + unusedTime);
        least = least < 0 ? left : std::min(least, left);
    }
    return least;
}

void Service::work() {
    for (Slot& slot : slots_) {
        const Reader::Outcome outcome = slot.reader->receive();
        const bool overdue = outcome == Reader::Outcome::unfinished && slot.reader->isOverdue();
        if (outcome == Reader::Outcome::answered) {
            Work done = *std::exchange(slot.work, std::nullopt);
            finish(done, slot.reader->answer(), true);
        } else if (outcome == Reader::Outcome::died || overdue) {
            const bool guilty = slot.reader->endAndBlame() || overdue;
            Slot dead = std::exchange(slot, {});
            if (dead.work) bury(std::move(*dead.work), guilty);
        } else if (!slot.work && Reader::Clock::now() - slot.reader->since() >= unusedTime) {
            slot = {};
        }
    }
    removeEmptySlots();
    dispatch();
}

void Service::removeEmptySlots() {
    std::erase_if(slots_, [](const Slot& slot) { return !slot.reader; });
}

/// The one that was used last, so that those that are not needed are seen to be so.
Service::Slot* Service::freeSlot() {
    Slot* free = nullptr;
    for (Slot& slot : slots_) {
        if (!slot.work && (free == nullptr || slot.reader->since() > free->reader->since())) free = &slot;
    }
    if (free != nullptr || slots_.size() == mostReaders_) return free;
    std::unique_ptr<Reader> reader = Reader::start(tool_);
    if (!reader) return nullptr;
    slots_.push_back({std::move(reader), std::nullopt});
    return &slots_.back();
}

void Service::dispatch() {
    const auto someoneWorks = [this] {
        return std::any_of(slots_.begin(), slots_.end(), [](const Slot& slot) { return slot.work.has_value(); });
    };
    while (!queue_.empty() || !ahead_.empty()) {
        if (freeSlot() == nullptr) {
            if (someoneWorks()) return;
            // There is no process to be had, and none whose end to wait for.
            for (Work& work : queue_) finish(work, std::nullopt, false);
            queue_.clear();
            ahead_.clear();
            return;
        }
        if (!queue_.empty()) {
            Work work = std::move(queue_.front());
            queue_.pop_front();
            hand(std::move(work));
        } else {
            Work work{std::move(ahead_.front()), {}, {}, false};
            ahead_.pop_front();
            hand(std::move(work));
        }
    }
}

void Service::hand(Work work) {
    const InputFile file(work.job.path);
    if (file.isOpen()) {
        work.file = FileIdentity(file.status());
        if (work.waiting.empty() && kept_.find(*work.file, work.job.question) != nullptr) return;
    } else {
        if (work.waiting.empty()) return;
        if (const std::optional<ToolResult> result = tool_.unopened(file)) {
            for (const Waiting& waiting : work.waiting) reply_(waiting.id, *result);
            return;
        }
    }
    Slot* const slot = freeSlot();
    const bool taken = slot != nullptr && slot->reader->ask(work.job.question, file.isOpen() ? &file : nullptr);
    if (taken) {
        slot->work = std::move(work);
        return;
    }
    if (slot != nullptr) *slot = {};
    removeEmptySlots();
    bury(std::move(work), false);
}

/// What becomes of work whose reader has died. An end that came from outside is not the file's fault, once.
void Service::bury(Work work, bool guilty) {
    if (guilty || std::exchange(work.retried, true)) {
        finish(work, std::nullopt, guilty);
    } else if (!work.waiting.empty()) {
        queue_.push_front(std::move(work));
    }
}

void Service::finish(Work& work, std::optional<std::string_view> answer, bool worthKeeping) {
    if (worthKeeping && work.file && tool_.keepsAnswers()) kept_.keep(*work.file, work.job.question, answer);
    for (const Waiting& waiting : work.waiting) reply_(waiting.id, waiting.job.finish(answer));
}

std::optional<FileIdentity> Service::look(const std::string& path) {
    const auto now = Reader::Clock::now();
    if (lastLook_ && lastLook_->path == path && now - lastLook_->time < oneLook) return lastLook_->file;
    lastLook_.reset();
    const std::optional<FileIdentity> file = FileIdentity::of(path);
    if (file) lastLook_ = Look{path, *file, now};
    return file;
}

}  // namespace marrowbeck::tools
