// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <poll.h>

#include <chrono>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/Frames.h"
#include "tools/service/Gatekeeper.h"
#include "tools/service/Offspring.h"
#include "tools/service/Tool.h"

namespace marrowbeck::tools {

/// The supervisor's end of one reader: a fork of this process, confined before it sees its first file, that answers
/// one question after the other. It gets open descriptors and a few words with each, from the process that opens files,
/// and nothing else; what comes back is as little to be trusted as the files. Ended when this object goes, and by the
/// system when the supervisor ends in whatever way.
class Reader {
  public:
    using Clock = std::chrono::steady_clock;

    /// Null when there can be no further process. Not with other threads running. `folders`, which must outlive it, are
    /// those of `readableFolders`.
    static std::unique_ptr<Reader> start(Tool& tool, const std::vector<std::string>& folders);

    /// Our end of its socket: it takes questions, and is readable when an answer, or part of it, has come, or when the
    /// reader has died.
    int descriptor() const { return process_.socket(); }

    /// Appends what a poll is to wait for.
    void awaited(std::vector<pollfd>& descriptors) const;

    /// A question was handed to it, behind those that it has.
    void handed(std::uint32_t id);
    /// The questions that it has not answered, the one in hand first.
    const std::deque<std::uint32_t>& questions() const { return questions_; }

    /// Since when it has had the question in hand, or has been idle.
    Clock::time_point since() const { return since_; }

    enum class Outcome {
        unfinished,  ///< more is to come
        answered,    ///< `answer()` is there, for the question in hand
        unasked,     ///< it speaks, but has no question; to be taken in once more when one was handed to it
        died,        ///< or breaks its limits, or answers another question; to be thrown away
    };
    /// Takes in the next answer, and gives it what it asks the system for, without waiting.
    Outcome receive();
    /// The last answer. Nothing where the file makes no sense. Valid until the next `receive`.
    std::optional<std::string_view> answer() const { return answer_; }
    /// The question in hand has its answer: the next one is in hand.
    void accept();

    /// The questions that it has answered.
    std::size_t answers() const { return answers_; }
    /// When it was started.
    Clock::time_point birth() const { return birth_; }

    /// Takes all processor time away from it, until it is handed a question or this is taken back.
    void pause();
    void resume();
    bool isPaused() const { return isPaused_; }

    /// Whether the question in hand, since this was first asked of it, has used up the processor time that its file
    /// gets, or has waited longer than `patience` for the disk, or for others. To be asked now and then while one takes
    /// long.
    bool isOverdue(Clock::duration patience);
    /// Whether the disk holds it at the moment.
    bool isHeldUp() const;

    /// Ends the process, and tells whether it had ended of itself by a fault that the file in hand brought about, and
    /// would bring about again.
    bool endAndBlame();

  private:
    Reader(Offspring process, const Limits& limits, const std::vector<std::string>& folders);

    struct Look {
        Clock::time_point time;
        std::chrono::nanoseconds used;
    };

    std::chrono::nanoseconds processorTime() const;

    ssize_t readSome(std::span<char> bytes);

    Offspring process_;
    Limits limits_;
    const std::vector<std::string>& folders_;
    std::optional<Gatekeeper> gatekeeper_;
    bool isConfined_ = false;
    base::FrameStream stream_;
    std::optional<std::string_view> body_;
    std::deque<std::uint32_t> questions_;
    std::optional<std::string_view> answer_;
    std::size_t answers_ = 0;
    bool isPaused_ = false;
    Clock::time_point birth_ = Clock::now();
    Clock::time_point since_ = Clock::now();
    std::optional<Look> firstLook_;
};

}  // namespace marrowbeck::tools
