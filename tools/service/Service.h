// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <poll.h>

#include <chrono>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/FileIdentity.h"
#include "base/Frames.h"
#include "tools/service/KeptAnswers.h"
#include "tools/service/Reader.h"
#include "tools/service/Tool.h"

namespace marrowbeck::tools {

/// The supervisor of a tool: takes requests, opens files, hands them to readers and makes results of what those say.
/// Requests are worked on side by side, as many as there are readers, and answered as they get ready. A reader that
/// dies or takes too long is replaced, and its file makes no sense.
///
/// Never waits: who owns it polls the descriptors and calls `work`. For one thread, the only one of its process.
class Service {
  public:
    using Reply = std::function<void(base::Answer answer)>;

    /// `tool` must outlive it. Readers are started as they are needed, up to `mostReaders`.
    Service(Tool& tool, std::size_t mostReaders, Reply reply);

    /// Takes a request in; its reply may come at once.
    void take(const base::Request& request);

    /// Requests that have no reply yet.
    std::size_t unanswered() const;

    /// Appends what a poll is to wait for.
    void awaited(std::vector<pollfd>& descriptors) const;
    /// Milliseconds after which `work` is to be called at the latest; -1 for never.
    int patience() const;
    /// Takes in answers, ends readers that are overdue or were unused for long, and hands out what waits.
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
        std::optional<base::FileIdentity> file;
        bool retried = false;
    };
    struct Slot {
        std::unique_ptr<Reader> reader;
        std::optional<Work> work;
    };

    void ask(std::uint32_t id, Job job);
    void cancel(std::uint32_t id);
    void dispatch();
    void hand(Work work);
    void bury(Work work, bool guilty);
    void finish(Work& work, std::optional<std::string_view> answer, bool worthKeeping);
    void reply(const Waiting& waiting, const std::optional<base::FileIdentity>& file,
               std::optional<std::string_view> answer);
    Slot* freeSlot();
    void removeEmptySlots();

    Tool& tool_;
    const std::size_t mostReaders_;
    const Reply reply_;
    std::deque<Work> queue_;
    std::vector<Slot> slots_;
    KeptAnswers kept_;
    base::FileLook look_;
};

/// Serves requests in frames (see Frames.h) from `input`, with answers to `output`, until the input ends and all are
/// answered, or nobody reads answers any more. The exit status of the process.
int serve(Tool& tool, int input, int output);

/// One request, in the same way, with a reader of its own.
ToolResult runOnce(Tool& tool, const Arguments& arguments);

}  // namespace marrowbeck::tools
