// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <sys/types.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/Frames.h"
#include "tools/service/InputFile.h"
#include "tools/service/Tool.h"

namespace marrowbeck::tools {

/// The supervisor's end of one reader: a fork of this process, confined before it sees its first file, that answers
/// one question after the other. It gets an open descriptor and a few words with each, and nothing else; what comes
/// back is as little to be trusted as the file. Ended when this object goes, and by the system when the supervisor
/// ends in whatever way.
class Reader {
  public:
    using Clock = std::chrono::steady_clock;

    /// Null when there can be no further process. Not with other threads running.
    static std::unique_ptr<Reader> start(Tool& tool);
    ~Reader();
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    /// Hands over a file, or only the words where `file` is null. False when the reader has died.
    bool ask(const std::string& question, const InputFile* file);

    /// Since when it is as it is, busy or idle.
    Clock::time_point since() const { return since_; }
    /// Readable when an answer, or part of it, has come, or when the reader has died.
    int descriptor() const { return socket_; }

    enum class Outcome {
        unfinished,  ///< more is to come
        answered,    ///< `answer()` is there; the reader waits for the next question
        died,        ///< or breaks its limits; to be thrown away
    };
    /// Takes in what has come, without waiting.
    Outcome receive();
    /// The last answer: nothing where the file makes no sense. Valid until the next question.
    std::optional<std::string_view> answer() const { return answer_; }

    /// Whether the question in hand has used up the time that its file gets.
    bool isOverdue() const;

    /// Ends the process, and tells whether it had ended of itself by a fault that the file in hand brought about, and
    /// would bring about again.
    bool endAndBlame();

  private:
    Reader(pid_t process, int socket, const Limits& limits);

    std::chrono::nanoseconds processorTime() const;

    pid_t process_;
    int socket_;
    Limits limits_;
    base::FrameStream stream_;
    std::optional<std::string_view> answer_;
    bool busy_ = false;
    Clock::time_point since_ = Clock::now();
    std::chrono::nanoseconds usedBefore_{};
};

}  // namespace marrowbeck::tools
