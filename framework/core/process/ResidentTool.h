// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "base/Frames.h"
#include "framework/core/process/ChildProcess.h"

namespace framework {

class Thread;

namespace internal {

/// One of the program's own tools, kept running: it is started at the first question and ended with this object, and
/// in between a question costs a message instead of a process. Several threads may ask at a time.
class ResidentTool {
  public:
    using Result = base::ToolResult;
    using Clock = std::chrono::steady_clock;

    /// How its process is started; nothing when it cannot be.
    using Start = std::function<std::optional<ChildProcess>()>;

    explicit ResidentTool(Start start);
    ~ResidentTool();
    ResidentTool(const ResidentTool&) = delete;
    ResidentTool& operator=(const ResidentTool&) = delete;

    /// What the tool says to a command line that begins with its name. A thread parks meanwhile, and drops the question
    /// when it is killed; the main thread blocks. Nothing when the line needs a shell or has no arguments, or when the
    /// tool cannot be had: it has failed twice in a row over a question, or does not start. It is then not tried again.
    /// One that somebody else ends is started anew, for half a minute a question.
    std::optional<Result> Ask(const std::string& line);

    /// The same by the words behind the tool's name. What is not answered by `end` is dropped, and its status is
    /// `kUnanswered`.
    std::optional<Result> Ask(const base::Arguments& words, Clock::time_point end);
    static constexpr int kUnanswered = -1;

    /// Asks ahead what will be asked soon, by the very same line. The answer is taken only if it is then no more
    /// than a minute old.
    void Expect(const std::string& line);
    /// What is expected, all or by that line, will not be asked.
    void ExpectNothing();
    void ExpectNothing(const std::string& line);

    /// Starts the process, so that the first question finds it ready.
    void Prepare() { isRunning(); }

  private:
    class Question;
    class Watch;

    bool isRunning();
    std::optional<Result> await(Question& question, Clock::time_point end = Clock::time_point::max());
    void rest(int milliseconds);
    void wakeOthers();
    std::unique_ptr<Question> takeExpected(const std::string& line);
    void send(const std::string& frame);
    void flush();
    void receive();
    bool take(const char* bytes, std::size_t size);
    void die();

    Start start_;
    std::optional<ChildProcess> process_;
    base::FrameStream answers_;
    std::string unsent_;
    /// Those on their way.
    std::map<std::uint32_t, Question*> pending_;
    std::unordered_map<std::string, std::unique_ptr<Question>> expected_;
    /// One of the threads that wait does so for the output, and wakes the others.
    bool isWatched_ = false;
    std::uint32_t lastId_ = 0;
    /// How often it has failed since it gave an answer.
    int deaths_ = 0;
};

}  // namespace internal
}  // namespace framework
