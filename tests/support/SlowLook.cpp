// SPDX-License-Identifier: GPL-2.0-or-later
// The tool look before a disk that answers when a test likes: what names a path with HANG in it is answered when a path
// with RELEASE in it is asked about, all else at once. Each question becomes a line of the file `asked` in the home.

#include <unistd.h>

#include <algorithm>
#include <array>
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
    base::FrameStream requests(base::largestRequest);
    std::vector<base::Request> held;
    std::array<char, 65536> buffer;
    for (ssize_t count = 0; (count = ::read(STDIN_FILENO, buffer.data(), buffer.size())) > 0;) {
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
            if (!names(request, "RELEASE")) continue;
            for (const base::Request& late : held) answer(late);
            held.clear();
        }
    }
}
