// SPDX-License-Identifier: GPL-2.0-or-later
// The tool look before a disk that answers when a test likes: what names a path with HANG in it is answered when a path
// with RELEASE in it is asked about, or by itself at SIGUSR1, all else at once. Each question becomes a line of the
// file `asked` in the home.

#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

#include "base/Frames.h"
#include "base/WriteAll.h"
#include "tools/look/look.h"

namespace {

bool names(const base::Request& request, const char* what) {
    return std::any_of(request.arguments.begin(), request.arguments.end(),
                       [what](const std::string& word) { return word.find(what) != std::string::npos; });
}

void answer(const base::Request& request) {
    const base::Answer answer{request.id, marrowbeck::tools::look(request.arguments), std::nullopt};
    base::writeAll(STDOUT_FILENO, base::answerFrame(answer));
}

}  // namespace

int main() {
    std::ofstream log(std::string(std::getenv("HOME")) + "/asked", std::ios::app);
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGUSR1);
    sigprocmask(SIG_BLOCK, &signals, nullptr);
    std::array<pollfd, 2> awaited{{{STDIN_FILENO, POLLIN, 0}, {signalfd(-1, &signals, SFD_CLOEXEC), POLLIN, 0}}};
    base::FrameStream requests(base::largestRequest);
    std::vector<base::Request> held;
    const auto release = [&held] {
        for (const base::Request& late : held) answer(late);
        held.clear();
    };
    std::array<char, 65536> buffer;
    while (poll(awaited.data(), awaited.size(), -1) >= 0) {
        if (awaited[1].revents != 0) {
            [[maybe_unused]] const ssize_t taken = read(awaited[1].fd, buffer.data(), buffer.size());
            release();
        }
        if (awaited[0].revents == 0) continue;
        const ssize_t count = read(STDIN_FILENO, buffer.data(), buffer.size());
        if (count <= 0) return 0;
        requests.append({buffer.data(), static_cast<std::size_t>(count)});
        while (const auto body = requests.next()) {
            const base::Request request = base::requestFrom(*body).value();
            if (request.arguments.empty()) {
                std::erase_if(held, [&request](const base::Request& other) { return other.id == request.id; });
                continue;
            }
            for (const std::string& word : request.arguments) log << word << ' ';
            log << std::endl;
            if (names(request, "HANG")) {
                held.push_back(request);
                continue;
            }
            answer(request);
            if (names(request, "RELEASE")) release();
        }
    }
}
