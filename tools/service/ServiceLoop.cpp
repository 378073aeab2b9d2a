// SPDX-License-Identifier: GPL-2.0-or-later
#include <fcntl.h>
#include <sched.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/ByteQueue.h"
#include "tools/service/Service.h"

namespace marrowbeck::tools {

namespace {

/// With so much unread or unanswered, no further requests are read: who asks is to read answers too.
constexpr std::size_t mostUnread = 4U << 20;
constexpr std::size_t mostUnanswered = 1024;

std::size_t processorCount() {
    cpu_set_t processors;
    return sched_getaffinity(0, sizeof processors, &processors) == 0 ? static_cast<std::size_t>(CPU_COUNT(&processors))
                                                                     : 1;
}

/// Answers on their way to someone who reads them when he likes.
class Outlet {
  public:
    explicit Outlet(int descriptor) : descriptor_(descriptor) {
        fcntl(descriptor, F_SETFL, fcntl(descriptor, F_GETFL) | O_NONBLOCK);
    }

    void append(std::string_view bytes) { bytes_.Append(bytes); }
    std::size_t size() const { return bytes_.Size(); }

    /// Writes what can be written without waiting. False when nobody reads any more.
    bool flush() {
        while (size() > 0) {
            const ssize_t count = ::write(descriptor_, bytes_.Bytes().data(), size());
            if (count < 0 && errno == EINTR) continue;
            if (count < 0) return errno == EAGAIN;
            bytes_.Drop(static_cast<std::size_t>(count));
        }
        return true;
    }

  private:
    int descriptor_;
    base::ByteQueue bytes_;
};

/// What can be read now; nothing at the end.
std::optional<std::string_view> readSome(int descriptor, std::array<char, 65536>& buffer) {
    while (true) {
        const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0 && errno == EAGAIN) return std::string_view();
        if (count <= 0) return std::nullopt;
        return std::string_view(buffer.data(), static_cast<std::size_t>(count));
    }
}

void wait(std::vector<pollfd>& descriptors, int milliseconds) {
    if (::poll(descriptors.data(), descriptors.size(), milliseconds) >= 0) return;
    for (pollfd& descriptor : descriptors) descriptor.revents = 0;
}

}  // namespace

int serve(Tool& tool, int input, int output) {
    std::signal(SIGPIPE, SIG_IGN);
    tool.warmUp();
    Outlet outlet(output);
    Service service(tool, processorCount(),
                    [&](const base::Answer& answer) { outlet.append(base::answerFrame(answer)); });
    base::FrameStream requests(base::largestRequest);
    std::array<char, 65536> buffer;
    bool open = true;
    while (open || service.unanswered() > 0 || outlet.size() > 0) {
        const bool reading = open && outlet.size() < mostUnread && service.unanswered() < mostUnanswered;
        std::vector<pollfd> descriptors{{reading ? input : -1, POLLIN, 0},
                                        {output, static_cast<short>(outlet.size() > 0 ? POLLOUT : 0), 0}};
        service.awaited(descriptors);
        wait(descriptors, service.patience());
        if ((descriptors[1].revents & (POLLERR | POLLHUP | POLLNVAL)) != 0) return exitFailure;
        if (descriptors[0].revents != 0) {
            const std::optional<std::string_view> bytes = readSome(input, buffer);
            if (!bytes) open = false;
            requests.append(bytes.value_or(std::string_view()));
            while (const auto body = requests.next()) {
                const std::optional<base::Request> request = base::requestFrom(*body);
                if (!request) return exitUsage;
                service.take(*request);
            }
            if (requests.isBroken()) return exitUsage;
        }
        service.work();
        if (!outlet.flush()) return exitFailure;
    }
    return exitSuccess;
}

ToolResult runOnce(Tool& tool, const Arguments& arguments) {
    constexpr std::uint32_t id = 1;
    std::optional<ToolResult> result;
    Service service(tool, 1, [&](base::Answer answer) { result = std::move(answer.result); });
    if (!arguments.empty()) {
        service.take({id, arguments});
    } else {
        result = std::get<ToolResult>(tool.begin(arguments));  // nothing is never a file
    }
    for (service.work(); !result; service.work()) {
        std::vector<pollfd> descriptors;
        service.awaited(descriptors);
        wait(descriptors, service.patience());
    }
    return std::move(*result);
}

}  // namespace marrowbeck::tools
