// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <poll.h>

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/FileIdentity.h"
#include "base/Frames.h"
#include "tools/service/Fetcher.h"
#include "tools/service/KeptAnswers.h"
#include "tools/service/Reader.h"
#include "tools/service/Tool.h"

namespace marrowbeck::tools {

/// The supervisor of a tool: takes requests, has their files opened, chooses the readers that get them, and makes
/// results of what those say. It asks the disk nothing itself. Requests are worked on side by side and answered as they
/// get ready; each reader has further questions before it has answered the one in hand. A reader that dies or takes too
/// long is replaced, and the file in hand makes no sense. So does a file that gives no answer for half a minute; what
/// hangs costs no other file more than a moment.
///
/// Never waits: who owns it polls the descriptors and calls `work`. For one thread, the only one of its process.
class Service {
  public:
    using Reply = std::function<void(base::Answer answer)>;
    using Clock = Reader::Clock;

    /// How long a file's disk may keep us waiting.
    static constexpr std::chrono::seconds patienceWithFiles{30};

    /// Files that a reader is asked about at most; see there.
    static constexpr std::size_t mostAnswers = 2000;

    /// `tool` must outlive it. Readers are started as they are needed, up to `mostReaders` that the disk does not hold.
    Service(Tool& tool, std::size_t mostReaders, Reply reply,
            std::chrono::milliseconds patienceWithFile = patienceWithFiles);

    /// Takes a request in; its reply may come at once. What was taken is begun by `work`.
    void take(const base::Request& request);

    /// Requests that have no reply yet.
    std::size_t unanswered() const;

    /// Appends what a poll is to wait for.
    void awaited(std::vector<pollfd>& descriptors) const;
    /// Milliseconds after which `work` is to be called at the latest; -1 for never.
    int patience() const;
    /// Takes in notes and answers, ends readers that are overdue or were unused for long, and hands out what waits.
    void work();

  private:
    struct Waiting {
        std::uint32_t id;
        Job job;
    };
    /// What one file is asked, for all who asked it.
    struct Work {
        std::string path;
        std::string question;
        std::vector<Waiting> waiting;
        enum class Stage { queued, lookedAt, opened, handed } stage = Stage::queued;
        /// Whether it has its answer, if the file is still the one that the answer is about.
        bool isKnown = false;
        /// The reader that was chosen for it; since when the file is being opened, and whether that takes so long that
        /// the reader may be chosen for another one in its place.
        std::uint32_t reader = 0;
        Clock::time_point begun{};
        bool isSlow = false;
        std::optional<base::FileIdentity> file;
        bool retried = false;
    };
    using Works = std::map<std::uint32_t, Work>;
    struct Slot {
        std::unique_ptr<Reader> reader;
        /// Questions that it was chosen for, on their way to it or in it.
        std::size_t load = 0;
        /// Whether it has kept others waiting for too long, and by waiting for the disk itself.
        bool isStuck = false;
        bool isHeldUp = false;
    };

    void ask(std::uint32_t id, Job job);
    void cancel(std::uint32_t id);
    void takeNotes();
    void takeNote(const FileNote& note);
    void takeAnswers(std::uint32_t number);
    void bury(std::uint32_t number, bool isOverdue);
    void look();
    void dispatch();
    bool send(std::uint32_t id, Work& work);
    void again(std::uint32_t id, Work& work);
    void giveUp(std::uint32_t id);
    void finish(std::uint32_t id, std::optional<std::string_view> answer, bool worthKeeping);
    void reply(const Work& work, std::optional<std::string_view> answer);
    void unload(Work& work);
    static bool isWornOut(const Slot& slot);
    std::uint32_t chosenReader();
    bool hasFetcher();
    void loseFetcher();
    void removeSlot(std::uint32_t number);

    Tool& tool_;
    const std::vector<std::string> folders_;
    const std::size_t mostReaders_;
    const Reply reply_;
    const std::chrono::milliseconds patienceWithFile_;
    Works works_;
    std::deque<std::uint32_t> queue_;
    std::uint32_t lastWork_ = 0;
    std::unique_ptr<Fetcher> fetcher_;
    std::map<std::uint32_t, Slot> slots_;
    std::uint32_t lastReader_ = 0;
    KeptAnswers kept_;
};

/// Serves requests in frames (see Frames.h) from `input`, with answers to `output`, until the input ends and all are
/// answered, or nobody reads answers any more. The exit status of the process.
int serve(Tool& tool, int input, int output);

/// One request, in the same way, with a reader of its own.
ToolResult runOnce(Tool& tool, const Arguments& arguments);

}  // namespace marrowbeck::tools
