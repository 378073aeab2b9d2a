// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/Service.h"

#include <algorithm>
#include <tuple>
#include <utility>
#include <variant>

#include "tools/service/Confinement.h"

namespace marrowbeck::tools {

namespace {

using namespace std::chrono_literals;

/// Readers that nobody has asked for so long give back their memory.
constexpr std::chrono::milliseconds unusedTime = 60s;

/// A reader without a question is stopped so soon: whoever may have taken it over gets no processor time for himself.
/// To stop it and to let it go on costs some microseconds, which are nothing at most so often.
constexpr std::chrono::milliseconds idleAfter = 20ms;

/// After `mostAnswers` files, or so long, a reader makes way for a new one: whoever has taken it over with a file is
/// rid of then. A new one costs a few milliseconds, of which a search notices nothing at that many files, and a preview
/// that takes as long itself nothing at such a time.
constexpr std::chrono::milliseconds mostAge = 60s;

/// How often readers at work are looked at. Their limits are seconds.
constexpr std::chrono::milliseconds lookPeriod = 500ms;

/// A reader that keeps others waiting with one file is looked at so soon: whether the disk holds it; and loses them to
/// other readers after so long in any case.
constexpr std::chrono::milliseconds heldUpAfter = 5ms;
constexpr std::chrono::milliseconds stuckAfter = 50ms;

/// A file that is not open by then keeps its reader from no other.
constexpr std::chrono::milliseconds slowAfter = 1s;

/// Questions that a reader gets ahead. It takes less than a millisecond for one, as a rule.
constexpr std::size_t mostLoad = 32;

/// Readers that a disk may hold.
constexpr std::size_t mostHeldUp = 256;

int millisecondsUntil(Reader::Clock::time_point time) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(time - Reader::Clock::now());
    return static_cast<int>(std::max<std::int64_t>(left.count(), 0));
}

}  // namespace

Service::Service(Tool& tool, std::size_t mostReaders, Reply reply, std::chrono::milliseconds patienceWithFile)
    : tool_(tool),
      folders_(readableFolders(tool.dataFolders())),
      mostReaders_(mostReaders),
      reply_(std::move(reply)),
      patienceWithFile_(patienceWithFile) {}

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
}

void Service::ask(std::uint32_t id, Job job) {
    const auto last = works_.find(lastWork_);
    // Whoever asks one thing of a file likes to ask another directly after it. What was seen of it already may be old.
    if (tool_.keepsAnswers() && last != works_.end() && last->second.stage != Work::Stage::handed &&
        last->second.path == job.path && last->second.question == job.question) {
        last->second.waiting.push_back({id, std::move(job)});
        return;
    }
    Work work;
    work.path = job.path;
    work.question = job.question;
    work.isKnown = tool_.keepsAnswers() && kept_.find(job.path, job.question) != nullptr;
    work.waiting.push_back({id, std::move(job)});
    works_.emplace(++lastWork_, std::move(work));
    queue_.push_back(lastWork_);
}

void Service::cancel(std::uint32_t id) {
    for (auto place = works_.begin(); place != works_.end();) {
        const auto [number, work] = std::tie(place->first, place->second);
        const std::size_t found =
            std::erase_if(work.waiting, [id](const Waiting& waiting) { return waiting.id == id; });
        if (found == 0 || !work.waiting.empty()) {
            ++place;
            continue;
        }
        const auto slot = slots_.find(work.reader);
        const bool isInHand = slot != slots_.end() && !slot->second.reader->questions().empty() &&
                              slot->second.reader->questions().front() == number;
        const std::uint32_t reader = work.reader;
        if (fetcher_ && work.stage == Work::Stage::opened) fetcher_->cancel(number);
        unload(work);
        place = works_.erase(place);
        // Only its end gets a reader off what nobody waits for.
        if (isInHand && slot->second.load == 0) removeSlot(reader);
    }
}

std::size_t Service::unanswered() const {
    std::size_t count = 0;
    for (const auto& [id, work] : works_) count += work.waiting.size();
    return count;
}

void Service::awaited(std::vector<pollfd>& descriptors) const {
    if (fetcher_) {
        const auto events = static_cast<short>(fetcher_->isBehind() ? POLLIN | POLLOUT : POLLIN);
        descriptors.push_back({fetcher_->descriptor(), events, 0});
    }
    for (const auto& [number, slot] : slots_) slot.reader->awaited(descriptors);
}

int Service::patience() const {
    int least = works_.empty() ? -1 : static_cast<int>(lookPeriod.count());
    const auto atMost = [&least](int milliseconds) {
        least = least < 0 ? milliseconds : std::min(least, milliseconds);
    };
    for (const auto& [number, slot] : slots_) {
        if (slot.load == 0) {
            const bool isIdle = slot.reader->questions().empty() && !slot.reader->isPaused();
            const auto end = slot.reader->since() + (isIdle ? idleAfter : unusedTime);
            atMost(std::max(millisecondsUntil(end), 1));
        } else if (!slot.isStuck && slot.load > 1 && !slot.reader->questions().empty()) {
            const auto age = Clock::now() - slot.reader->since();
            atMost(static_cast<int>((age < heldUpAfter ? heldUpAfter : stuckAfter / 2).count()));
        }
    }
    return least;
}

void Service::work() {
    takeNotes();
    std::vector<std::uint32_t> readers;
    for (const auto& [number, slot] : slots_) readers.push_back(number);
    for (const std::uint32_t number : readers) takeAnswers(number);
    look();
    dispatch();
}

void Service::takeNotes() {
    if (!fetcher_) return;
    const std::optional<std::vector<FileNote>> notes = fetcher_->receive();
    if (!notes) return loseFetcher();
    for (const FileNote& note : *notes) takeNote(note);
}

void Service::takeNote(const FileNote& note) {
    const auto slot = slots_.find(note.reader);
    // Whether or not anybody still waits for it, the reader has it.
    if (slot != slots_.end()) slot->second.reader->handed(note.id);
    const auto place = works_.find(note.id);
    if (place == works_.end()) return;
    Work& work = place->second;
    if (work.stage == Work::Stage::lookedAt) {
        const KeptAnswers::Kept* const kept = kept_.find(work.path, work.question);
        if (kept != nullptr && note.file == kept->file) {
            work.file = note.file;
            const std::optional<std::string> answer = kept->answer;
            return finish(note.id, answer, false);
        }
        work.isKnown = false;
        return again(note.id, work);
    }
    if (work.stage != Work::Stage::opened) return;
    // Only the question is handed over for a file that was seen to be closed to us.
    if (note.file) work.file = note.file;
    if (slot != slots_.end()) {
        if (std::exchange(work.isSlow, false)) ++slot->second.load;
        work.stage = Work::Stage::handed;
    } else if (note.error.empty()) {
        again(note.id, work);  // its reader has died meanwhile
    } else if (const std::optional<ToolResult> result = tool_.unopened(work.path, note)) {
        for (const Waiting& waiting : work.waiting) reply_({waiting.id, *result, std::nullopt});
        unload(work);
        works_.erase(place);
    } else if (fetcher_) {
        fetcher_->open(note.id, work.reader, {}, work.question);
    }
}

void Service::takeAnswers(std::uint32_t number) {
    while (true) {
        const auto place = slots_.find(number);
        if (place == slots_.end()) return;
        Slot& slot = place->second;
        const Reader::Outcome outcome = slot.reader->receive();
        if (outcome == Reader::Outcome::unfinished) return;
        if (outcome == Reader::Outcome::died) return bury(number, false);
        if (outcome == Reader::Outcome::unasked) {
            // The question may have been handed to it an instant ago, which is told before it is done. One that speaks
            // without having been asked is no longer ours.
            takeNotes();
            if (slot.reader->questions().empty()) return bury(number, false);
            continue;
        }
        const std::uint32_t id = slot.reader->questions().front();
        const std::optional<std::string_view> answer = slot.reader->answer();
        const auto work = works_.find(id);
        if (answer && work != works_.end() && !tool_.isSound(work->second.question, *answer))
            return bury(number, false);
        slot.isStuck = slot.isHeldUp = false;
        slot.reader->accept();
        finish(id, answer, true);
    }
}

/// What becomes of a reader and of what it had. An end that came from outside is not the fault of the file in hand,
/// once.
void Service::bury(std::uint32_t number, bool isOverdue) {
    // What was told before its end holds.
    takeNotes();
    const std::unique_ptr<Reader> reader = std::move(slots_.at(number).reader);
    removeSlot(number);
    const bool isFaulty = !isOverdue && reader->endAndBlame();
    // What an earlier file has done to a reader is not the fault of the one in hand, either.
    const bool isGuilty = isOverdue || (isFaulty && reader->answers() == 0);
    const std::deque<std::uint32_t>& questions = reader->questions();
    for (auto id = questions.rbegin(); id != questions.rend(); ++id) {
        const auto place = works_.find(*id);
        if (place == works_.end() || place->second.reader != number) continue;
        const bool isInHand = id == questions.rend() - 1;
        if (isInHand && (isGuilty || std::exchange(place->second.retried, true))) {
            finish(*id, std::nullopt, isGuilty && !isOverdue);
        } else {
            again(*id, place->second);
        }
    }
}

/// Looks after whoever takes long.
void Service::look() {
    const Clock::time_point now = Clock::now();
    std::vector<std::uint32_t> ended;
    for (auto& [number, slot] : slots_) {
        const auto age = now - slot.reader->since();
        const std::deque<std::uint32_t>& questions = slot.reader->questions();
        if (questions.empty()) {
            if (slot.load > 0) continue;
            if (age >= unusedTime || isWornOut(slot)) {
                ended.push_back(number);
            } else if (age >= idleAfter) {
                slot.reader->pause();
            }
            continue;
        }
        if (age >= lookPeriod && slot.reader->isOverdue(patienceWithFile_)) {
            ended.push_back(number);
            continue;
        }
        if (age < heldUpAfter) continue;
        slot.isHeldUp = slot.reader->isHeldUp();
        slot.isStuck = slot.isHeldUp || age >= stuckAfter;
        // Those behind the question in hand go to others.
        if (!slot.isStuck) continue;
        for (auto id = questions.rbegin(); id != questions.rend() - 1; ++id) {
            const auto place = works_.find(*id);
            if (place != works_.end() && place->second.reader == number) again(*id, place->second);
        }
    }
    for (const std::uint32_t number : ended) bury(number, true);

    std::vector<std::uint32_t> late;
    for (auto& [id, work] : works_) {
        if (work.stage != Work::Stage::lookedAt && work.stage != Work::Stage::opened) continue;
        const auto age = now - work.begun;
        if (age > patienceWithFile_) late.push_back(id);
        if (age > slowAfter && !work.isSlow) {
            unload(work);
            work.isSlow = true;
        }
    }
    for (const std::uint32_t id : late) giveUp(id);
}

void Service::removeSlot(std::uint32_t number) {
    slots_.erase(number);
    if (fetcher_) fetcher_->forget(number);
}

/// Whether it gets no further question.
bool Service::isWornOut(const Slot& slot) {
    return slot.reader->answers() + slot.load >= mostAnswers || Clock::now() - slot.reader->birth() >= mostAge;
}

/// The reader that has least to do. More are started up to their number while those there are at work; those that the
/// disk holds do not count. 0 for none.
std::uint32_t Service::chosenReader() {
    std::uint32_t least = 0;
    std::size_t able = 0;
    for (const auto& [number, slot] : slots_) {
        if (isWornOut(slot)) continue;
        if (!slot.isHeldUp) ++able;
        if (!slot.isStuck && (least == 0 || slot.load < slots_.at(least).load)) least = number;
    }
    const bool mayGrow = able < mostReaders_ && slots_.size() < mostReaders_ + mostHeldUp;
    if (least != 0 && (slots_.at(least).load == 0 || !mayGrow)) return least;
    if (!mayGrow) return 0;
    std::unique_ptr<Reader> reader = Reader::start(tool_, folders_);
    if (!reader) return least;
    slots_[++lastReader_].reader = std::move(reader);
    fetcher_->introduce(lastReader_, slots_[lastReader_].reader->descriptor());
    return lastReader_;
}

bool Service::hasFetcher() {
    if (fetcher_) return true;
    fetcher_ = Fetcher::start();
    if (!fetcher_) return false;
    for (const auto& [number, slot] : slots_) fetcher_->introduce(number, slot.reader->descriptor());
    return true;
}

/// What was being opened is opened anew. That too is somebody else's doing, once.
void Service::loseFetcher() {
    fetcher_.reset();
    std::vector<std::uint32_t> lost;
    for (const auto& [id, work] : works_) {
        if (work.stage == Work::Stage::lookedAt || work.stage == Work::Stage::opened) lost.push_back(id);
    }
    for (auto id = lost.rbegin(); id != lost.rend(); ++id) {
        Work& work = works_.at(*id);
        std::exchange(work.retried, true) ? giveUp(*id) : again(*id, work);
    }
}

/// False when it has to wait.
bool Service::send(std::uint32_t id, Work& work) {
    if (work.isKnown) {
        fetcher_->look(id, work.path);
        work.stage = Work::Stage::lookedAt;
    } else {
        const std::uint32_t reader = chosenReader();
        if (reader == 0 || slots_.at(reader).load >= mostLoad) return false;
        fetcher_->open(id, reader, work.path, work.question);
        work.stage = Work::Stage::opened;
        work.reader = reader;
        ++slots_.at(reader).load;
        slots_.at(reader).reader->resume();
    }
    work.begun = Clock::now();
    return true;
}

void Service::dispatch() {
    while (!queue_.empty()) {
        const auto place = works_.find(queue_.front());
        if (place != works_.end() && place->second.stage == Work::Stage::queued) {
            if (!hasFetcher() || (!send(place->first, place->second) && slots_.empty())) {
                // There is no process to be had, and none whose end to wait for.
                giveUp(place->first);
            } else if (place->second.stage == Work::Stage::queued) {
                break;
            }
        }
        queue_.pop_front();
    }
    if (fetcher_ && !fetcher_->flush()) loseFetcher();
}

/// Has the work begun anew, before all others: of several, the last comes first here.
void Service::again(std::uint32_t id, Work& work) {
    unload(work);
    work.stage = Work::Stage::queued;
    work.reader = 0;
    work.isSlow = false;
    queue_.push_front(id);
}

void Service::giveUp(std::uint32_t id) {
    if (fetcher_) fetcher_->cancel(id);
    finish(id, std::nullopt, false);
}

/// The reader may be chosen for another one in its place.
void Service::unload(Work& work) {
    const bool isLoaded = work.stage == Work::Stage::opened || work.stage == Work::Stage::handed;
    const auto slot = slots_.find(work.reader);
    if (isLoaded && !work.isSlow && slot != slots_.end()) --slot->second.load;
}

void Service::finish(std::uint32_t id, std::optional<std::string_view> answer, bool worthKeeping) {
    const auto place = works_.find(id);
    if (place == works_.end()) return;
    Work& work = place->second;
    reply(work, answer);
    if (worthKeeping && work.file && tool_.keepsAnswers()) {
        kept_.keep(work.path, work.question, {*work.file, answer ? std::optional<std::string>(*answer) : std::nullopt});
    }
    unload(work);
    works_.erase(place);
}

void Service::reply(const Work& work, std::optional<std::string_view> answer) {
    for (const Waiting& waiting : work.waiting) {
        base::Answer whole{waiting.id, waiting.job.finish(answer, work.file), std::nullopt};
        // Of a file that did not let itself be looked at there is nothing to know for who asks next, either.
        whole.about = base::AboutFile{work.file.value_or(base::FileIdentity()), work.path};
        reply_(std::move(whole));
    }
}

}  // namespace marrowbeck::tools
