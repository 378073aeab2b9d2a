// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/Fetcher.h"

#include <poll.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <utility>

#include "tools/service/Descriptors.h"
#include "tools/service/FetcherProcess.h"

namespace marrowbeck::tools {

namespace {

/// An identity, some numbers, and a line of text.
constexpr std::size_t largestNote = 4096;

constexpr int mostMillisecondsToTake = 1000;

}  // namespace

std::unique_ptr<Fetcher> Fetcher::start() {
    std::optional<Offspring> process = Offspring::start(serveFiles);
    return process ? std::unique_ptr<Fetcher>(new Fetcher(std::move(*process))) : nullptr;
}

Fetcher::Fetcher(Offspring process) : process_(std::move(process)), notes_(largestNote) {}

void Fetcher::tell(char letter, std::uint32_t number, std::string_view rest) {
    std::string body = letter + base::numberBytes(number);
    unsent_.Append(base::framed(body.append(rest)));
}

void Fetcher::introduce(std::uint32_t reader, int socket) {
    // The descriptor goes with the frame's first byte, so that nothing may stand before it. What takes nothing for so
    // long is no longer alive.
    const auto hasRoom = [this] {
        pollfd room{descriptor(), POLLOUT, 0};
        return poll(&room, 1, mostMillisecondsToTake) > 0;
    };
    while (flush() && isBehind()) isDead_ = !hasRoom();
    isDead_ = isDead_ || !hasRoom();
    if (isDead_) return;
    tell('R', reader);
    const ssize_t count = sendWith(descriptor(), unsent_.Bytes(), std::array{socket});
    isDead_ = count <= 0;
    if (count > 0) unsent_.Drop(static_cast<std::size_t>(count));
}

void Fetcher::forget(std::uint32_t reader) {
    tell('G', reader);
}

void Fetcher::open(std::uint32_t id, std::uint32_t reader, const std::string& path, const std::string& question) {
    tell('O', id,
         base::numberBytes(reader) + base::numberBytes(static_cast<std::uint32_t>(path.size())) + path + question);
}

void Fetcher::look(std::uint32_t id, const std::string& path) {
    tell('L', id, path);
}

void Fetcher::cancel(std::uint32_t id) {
    tell('C', id);
}

bool Fetcher::flush() {
    while (!isDead_ && isBehind()) {
        const ssize_t count = sendWith(descriptor(), unsent_.Bytes(), {});
        if (count < 0 && errno == EAGAIN) break;
        isDead_ = count < 0;
        if (count > 0) unsent_.Drop(static_cast<std::size_t>(count));
    }
    return !isDead_;
}

std::optional<std::vector<FileNote>> Fetcher::receive() {
    std::vector<FileNote> notes;
    std::array<char, 65536> buffer;
    while (!isDead_) {
        const ssize_t count = ::read(descriptor(), buffer.data(), buffer.size());
        if (count < 0 && errno == EINTR) continue;
        if (count < 0 && errno == EAGAIN) return notes;
        isDead_ = count <= 0;
        if (isDead_) break;
        notes_.append({buffer.data(), static_cast<std::size_t>(count)});
        while (const auto body = notes_.next()) {
            std::optional<FileNote> note = fileNoteFrom(*body);
            isDead_ = isDead_ || !note;
            if (note) notes.push_back(std::move(*note));
        }
        isDead_ = isDead_ || notes_.isBroken();
        if (static_cast<std::size_t>(count) < buffer.size()) return notes;
    }
    // What it has told before its end holds.
    return notes.empty() ? std::nullopt : std::optional(std::move(notes));
}

}  // namespace marrowbeck::tools
