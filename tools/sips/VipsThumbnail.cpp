#include "tools/sips/VipsThumbnail.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdint>
#include <utility>

#include "tools/pictures/ImageHeader.h"

namespace marrowbeck::tools {

namespace {

using Clock = std::chrono::steady_clock;

/// Someone is looking at an empty preview meanwhile.
constexpr std::chrono::seconds patience{20};

/// More than a PNG of the largest side ever takes.
constexpr size_t mostBytes = 128U << 20;

/// Of a Photoshop file that is gray or CMYK, libvips mistakes one plane for another.
bool isMistaken(const InputFile& file) {
    constexpr size_t colourMode = 25;
    constexpr char rgb = 3;
    const std::string head = file.head(colourMode + 1);
    return head.starts_with("8BPS") && head.back() != rgb;
}

/// The square to fit the picture into. The program has a sign for "never enlarge", but holds it against the
/// smallest picture of a file: large TIFF and most JPEG 2000 files, which have small copies inside, come too small.
std::string boxFor(const InputFile& file, int side) {
    ByteSource source(file.descriptor());
    const ImageHeader header = readImageHeader(source);
    const std::uint32_t longer = std::max(header.width, header.height);
    const std::string length = std::to_string(longer == 0 ? side : std::min<std::int64_t>(longer, side));
    return length + "x" + length + (longer == 0 ? ">" : "");
}

/// Starts the program on `source`, with its answer going to `answer`. 0 when it cannot be started.
pid_t start(int source, int answer, std::string box) {
    // Under these names nothing in the path of the file is taken for an option of a loader.
    std::string words[] = {"vipsthumbnail", "/proc/self/fd/0", "--no-rotate", "--size", std::move(box), "-o", ".png"};
    char* arguments[std::size(words) + 1] = {};
    for (size_t i = 0; i < std::size(words); ++i) arguments[i] = words[i].data();

    posix_spawn_file_actions_t files;
    posix_spawn_file_actions_init(&files);
    posix_spawn_file_actions_adddup2(&files, source, STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&files, answer, STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&files, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t process = 0;
    const int failure = posix_spawnp(&process, arguments[0], &files, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&files);
    return failure == 0 ? process : 0;
}

/// All that comes until the pipe is closed; empty when that is too much or comes too late.
std::string drain(int pipe) {
    const Clock::time_point deadline = Clock::now() + patience;
    std::string bytes;
    char buffer[65536];
    while (bytes.size() <= mostBytes) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) return {};
        pollfd wait{pipe, POLLIN, 0};
        if (::poll(&wait, 1, static_cast<int>(left)) <= 0) continue;
        const ssize_t got = ::read(pipe, buffer, sizeof buffer);
        if (got == 0) return bytes;
        if (got > 0) bytes.append(buffer, static_cast<size_t>(got));
        if (got < 0 && errno != EINTR) return {};
    }
    return {};
}

}  // namespace

std::string vipsThumbnail(const InputFile& file, int side) {
    int pipe[2];
    if (isMistaken(file) || ::pipe2(pipe, O_CLOEXEC) != 0) return {};
    const pid_t process = start(file.descriptor(), pipe[1], boxFor(file, side));
    ::close(pipe[1]);
    std::string picture = process == 0 ? std::string() : drain(pipe[0]);
    ::close(pipe[0]);
    if (process == 0) return {};
    if (picture.empty()) ::kill(process, SIGKILL);
    int status = 0;
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR) continue;
    return status == 0 ? picture : std::string();
}

}  // namespace marrowbeck::tools
