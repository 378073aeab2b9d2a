// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/Service.h"

#include <algorithm>
#include <cerrno>
#include <utility>
#include <variant>

namespace marrowbeck::tools {

namespace {

using namespace std::chrono_literals;

/// Readers that nobody has asked for so long give back their memory.
constexpr std::chrono::milliseconds unusedTime = 60s;

/// How often readers at work are looked at. Their limits are seconds.
constexpr std::chrono::milliseconds lookPeriod = 500ms;

int millisecondsUntil(Reader::Clock::time_point time) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(time - Reader::Clock::now());
    return static_cast<int>(std::max<std::int64_t>(left.count(), 0));
}

}  // namespace

Service::Service(Tool& tool, std::size_t mostReaders, Reply reply)
    : tool_(tool), mostReaders_(mostReaders), reply_(std::move(reply)) {}

void Service::take(const base::Request& request) {
    if (request.arguments.empty()) {
        cancel(request.id);
        return;
    }
    std::variant<Job, ToolResult> begun = tool_.begin(request.arguments);
    if (Job* const job = std::get_if<Job>(&begun)) {
        ask(request.id, std::move(*job));
    } else {
        reply_({request.id, std::get<ToolResult>(std::move(begun)), std::nullopt});
    }
    dispatch();
}

void Service::ask(std::uint32_t id, Job job) {
    if (tool_.keepsAnswers()) {
        const auto* const kept = kept_.find(job.path, job.question);
        if (kept != nullptr && look_.at(job.path) == kept->file) {
            reply({id, std::move(job)}, kept->file, kept->answer);
            return;
        }
        // Whoever asks one thing of a file likes to ask another directly after it.
        if (!queue_.empty() && queue_.back().path == job.path && queue_.back().question == job.question) {
            queue_.back().waiting.push_back({id, std::move(job)});
            return;
        }
        for (Slot& slot : slots_) {
            if (!slot.work || slot.work->path != job.path || slot.work->question != job.question) continue;
            if (!slot.work->file || slot.work->file != look_.at(job.path)) continue;
            slot.work->waiting.push_back({id, std::move(job)});
            return;
        }
    }
    Work work{job.path, job.question, {}, {}, false};
    work.waiting.push_back({id, std::move(job)});
    queue_.push_back(std::move(work));
}

void Service::cancel(std::uint32_t id) {
    const auto forget = [id](Work& work) {
        std::erase_if(work.waiting, [id](const Waiting& waiting) { return waiting.id == id; });
        return work.waiting.empty();
    };
    std::erase_if(queue_, forget);
    for (Slot& slot : slots_) {
        if (slot.work && forget(*slot.work)) slot = {};
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
        const int left =
            slot.work ? static_cast<int>(lookPeriod.count()) : millisecondsUntil(slot.reader->since() + unusedTime);
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
    while (!queue_.empty()) {
        if (freeSlot() == nullptr) {
            if (someoneWorks()) return;
            // There is no process to be had, and none whose end to wait for.
            for (Work& work : queue_) finish(work, std::nullopt, false);
            queue_.clear();
            return;
        }
        Work work = std::move(queue_.front());
        queue_.pop_front();
        hand(std::move(work));
    }
}

void Service::hand(Work work) {
    look_.forget();
    const InputFile file(work.path);
    if (file.isOpen()) {
        work.file = base::FileIdentity(file.status());
    } else if (const std::optional<ToolResult> result = tool_.unopened(file)) {
        for (const Waiting& waiting : work.waiting) reply_({waiting.id, *result, std::nullopt});
        return;
    }
    Slot* const slot = freeSlot();
    if (slot != nullptr && slot->reader->ask(work.question, file.isOpen() ? &file : nullptr)) {
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
    } else {
        queue_.push_front(std::move(work));
    }
}

void Service::finish(Work& work, std::optional<std::string_view> answer, bool worthKeeping) {
    for (const Waiting& waiting : work.waiting) reply(waiting, work.file, answer);
    if (!worthKeeping || !work.file || !tool_.keepsAnswers()) return;
    kept_.keep(work.path, work.question, {*work.file, answer ? std::optional<std::string>(*answer) : std::nullopt});
}

void Service::reply(const Waiting& waiting, const std::optional<base::FileIdentity>& file,
                    std::optional<std::string_view> answer) {
    base::Answer whole{waiting.id, waiting.job.finish(answer), std::nullopt};
    // What was written somewhere else does not hold any longer than it stays there.
    if (file && tool_.keepsAnswers()) whole.about = base::AboutFile{*file, waiting.job.path};
    reply_(std::move(whole));
}

}  // namespace marrowbeck::tools
