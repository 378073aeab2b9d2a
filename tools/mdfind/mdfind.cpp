// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/mdfind/mdfind.h"

#include <poll.h>
#include <sys/socket.h>

#include <cerrno>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include "base/Frames.h"
#include "base/Paths.h"
#include "base/WriteAll.h"
#include "tools/mdfind/FolderSearch.h"
#include "tools/mime/MimeTypes.h"
#include "tools/service/Offspring.h"

namespace marrowbeck::tools {

namespace {

constexpr const char* usage =
    "Usage: mdfind [-0] [-strict] -onlyin FOLDER QUERY\n"
    "QUERY: kMDItemContentType == public.jpeg | public.tiff | public.png\n"
    "       kMDItemContentTypeTree == *image\n";

struct Query {
    std::string_view words;
    std::string_view type;  ///< empty for every image type
};

constexpr Query queries[] = {
    {"kMDItemContentType == public.jpeg", "image/jpeg"}, {"kMDItemContentType == public.tiff", "image/tiff"},
    {"kMDItemContentType == public.png", "image/png"},   {"kMDItemContentTypeTree == *image", ""},
    {"kMDItemContentTypeTree == public.image", ""},
};

struct Request {
    std::string folder;
    std::string_view type;
    char ending = '\n';
    bool isStrict = false;
};

std::optional<Request> parse(const Arguments& arguments) {
    Request request;
    std::string words;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        if (word == "-0") {
            request.ending = '\0';
        } else if (word == "-strict") {
            request.isStrict = true;
        } else if (word == "-onlyin" && i + 1 < arguments.size()) {
            request.folder = arguments[++i];
        } else if (word.starts_with('-')) {
            return std::nullopt;
        } else {
            words += (words.empty() ? "" : " ") + word;
        }
    }
    if (request.folder.empty()) return std::nullopt;
    for (const Query& query : queries) {
        if (query.words != words) continue;
        request.type = query.type;
        return request;
    }
    return std::nullopt;
}

/// The folder as it stands, behind the current one where it is relative.
std::string wholePath(const std::string& path) {
    const std::string whole = base::absolutePath(path);
    return path == "." ? std::string(base::enclosingFolder(whole)) : whole;
}

/// What the process that searches says: a letter, a length and so many bytes, or a status instead of the length, which
/// comes last.
enum Word : char { foundWord = 'F', toldWord = 'T', statusWord = 'S' };

constexpr std::size_t headSize = 1 + sizeof(std::uint32_t);

void say(int socket, Word word, std::size_t number) {
    base::writeAll(socket, static_cast<char>(word) + base::numberBytes(static_cast<std::uint32_t>(number)));
}

void say(int socket, Word word, std::string_view bytes) {
    while (!bytes.empty()) {
        const std::string_view part = bytes.substr(0, std::numeric_limits<std::uint32_t>::max());
        say(socket, word, part.size());
        base::writeAll(socket, part);
        bytes.remove_prefix(part.size());
    }
}

/// The life of the process that searches.
void search(const Request& request, int socket) {
    const auto end = [socket](int status) { say(socket, statusWord, static_cast<std::size_t>(status)); };
    // It never goes: threads that the disk holds may still use it when all has been said.
    auto* const found = new FolderSearch(request.type, request.isStrict, request.ending);
    found->begin(wholePath(request.folder));
    if (!MimeTypes::areInstalled()) {
        say(socket, toldWord, "mdfind: the shared MIME database is not installed\n");
        return end(exitFailure);
    }
    bool isRefused = false;
    const int failure = found->run([&](std::string_view paths, std::string_view lines) {
        isRefused = isRefused || (request.isStrict && !lines.empty());
        say(socket, foundWord, paths);
        say(socket, toldWord, lines);
    });
    if (failure != 0) {
        say(socket, toldWord, "mdfind: " + request.folder + ": " + std::generic_category().message(failure) + "\n");
        isRefused = true;
    }
    end(isRefused ? exitFailure : exitSuccess);
}

/// Puts the next `count` bytes at the end of `bytes`. False when so many do not come.
bool hear(int socket, std::string& bytes, std::size_t count) {
    std::size_t at = bytes.size();
    bytes.resize(at + count);
    while (at < bytes.size()) {
        const ssize_t got = ::recv(socket, &bytes[at], bytes.size() - at, 0);
        if (got > 0) {
            at += static_cast<std::size_t>(got);
        } else if (got < 0 && errno == EAGAIN) {
            pollfd readable{socket, POLLIN, 0};
            ::poll(&readable, 1, -1);
        } else if (got == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

/// What the process that searches says, when it has said all. Nobody waits for its end: that comes when the disk has
/// answered all its threads.
ToolResult resultOf(int socket) {
    ToolResult result;
    std::string head;
    while (hear(socket, head, headSize)) {
        std::string_view length = std::string_view(head).substr(1);
        const std::uint32_t number = base::takeNumber(length).value_or(0);
        if (head.front() == statusWord) {
            result.status = static_cast<int>(number);
            return result;
        }
        if (!hear(socket, head.front() == foundWord ? result.output : result.error, number)) break;
        head.clear();
    }
    // Half an answer is none.
    return {{}, "mdfind: the search was ended before it was done\n", exitFailure};
}

}  // namespace

ToolResult mdfind(const Arguments& arguments) {
    const std::optional<Request> request = parse(arguments);
    if (!request) return {{}, usage, exitUsage};
    const std::optional<Offspring> searcher = Offspring::start([&request](int socket) { search(*request, socket); });
    if (!searcher) return {{}, "mdfind: " + std::generic_category().message(errno) + "\n", exitFailure};
    return resultOf(searcher->socket());
}

}  // namespace marrowbeck::tools
