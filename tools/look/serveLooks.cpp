// SPDX-License-Identifier: GPL-2.0-or-later
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

#include "base/Frames.h"
#include "base/WriteAll.h"
#include "tools/disk/DiskPool.h"
#include "tools/look/look.h"

namespace marrowbeck::tools {

namespace {

/// What the threads that answer share with the one that reads. Lives to the end of the process.
class Desk {
  public:
    explicit Desk(int output) : output_(output) {}

    void take(base::Request request) {
        if (request.arguments.empty()) return drop(request.id);
        const auto dropped = std::make_shared<std::atomic<bool>>(false);
        {
            const std::lock_guard lock(mutex_);
            asked_[request.id] = dropped;
        }
        requests_.add([this, dropped, request = std::move(request)] {
            if (*dropped) return;
            answer({request.id, look(request.arguments, dropped), std::nullopt});
        });
    }

  private:
    void drop(std::uint32_t id) {
        const std::lock_guard lock(mutex_);
        const auto place = asked_.find(id);
        if (place == asked_.end()) return;
        *place->second = true;
        asked_.erase(place);
    }

    /// Whether somebody still wants to know.
    bool isAsked(std::uint32_t id) {
        const std::lock_guard lock(mutex_);
        return asked_.erase(id) > 0;
    }

    void answer(const base::Answer& answer) {
        if (!isAsked(answer.id)) return;
        const std::string frame = base::answerFrame(answer);
        // Another lock than that of the reading thread: who asks may read answers late.
        const std::lock_guard lock(writing_);
        base::writeAll(output_, frame);
    }

    int output_;
    std::mutex mutex_;
    std::mutex writing_;
    std::map<std::uint32_t, std::shared_ptr<std::atomic<bool>>> asked_;
    DiskPool requests_;
};

/// Ends the process though threads of it may wait for the disk. As long as they do the system keeps it, with all that
/// it has open.
[[noreturn]] void leave(int status) {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) ::close(descriptor);
    ::_exit(status);
}

}  // namespace

void serveLooks(int input, int output) {
    static Desk& desk = *new Desk(output);
    base::FrameStream requests(base::largestRequest);
    std::array<char, 65536> buffer;
    while (true) {
        const ssize_t count = ::read(input, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) leave(exitSuccess);
        requests.append({buffer.data(), static_cast<std::size_t>(count)});
        while (const auto body = requests.next()) {
            std::optional<base::Request> request = base::requestFrom(*body);
            if (!request) leave(exitUsage);
            desk.take(std::move(*request));
        }
        if (requests.isBroken()) leave(exitUsage);
    }
}

}  // namespace marrowbeck::tools
