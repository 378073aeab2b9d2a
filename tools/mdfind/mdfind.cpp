// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/mdfind/mdfind.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <deque>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include "tools/mdfind/FolderWalk.h"
#include "tools/mime/MimeTypes.h"
#include "tools/service/InputFile.h"

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

std::string absolutePath(const std::string& path) {
    if (path.starts_with('/')) return path;
    const std::unique_ptr<char, void (*)(void*)> current(getcwd(nullptr, 0), std::free);
    if (current == nullptr) return path;
    return path == "." ? std::string(current.get()) : std::string(current.get()) + "/" + path;
}

/// Those of the paths, a NUL behind each, that are wanted, each with the request's ending: all in a strict search, else
/// those whose files the user may read.
std::string wantedOf(const std::string& paths, const Request& request) {
    std::string output;
    output.reserve(paths.size());
    for (std::size_t start = 0; start < paths.size();) {
        const std::size_t end = paths.find('\0', start);
        if (request.isStrict || ::faccessat(AT_FDCWD, &paths[start], R_OK, AT_EACCESS) == 0)
            output.append(paths, start, end - start).push_back(request.ending);
        start = end + 1;
    }
    return output;
}

/// Takes found paths and gives those that are wanted back in their order. To ask the system whether the user may read a
/// file is most of what a search costs; other processors do it while the search goes on.
class Findings {
  public:
    explicit Findings(const Request& request) : request_(request) {}

    void add(const std::string& path) {
        batch_.append(path).push_back('\0');
        if (batch_.size() < batchSize) return;
        if (asking_.size() >= 2 * std::size_t{std::max(std::thread::hardware_concurrency(), 1U)}) takeOldest();
        asking_.push_back(std::async(std::launch::async, wantedOf, std::exchange(batch_, {}), request_));
    }

    std::string take() {
        while (!asking_.empty()) takeOldest();
        return std::move(output_.append(wantedOf(batch_, request_)));
    }

  private:
    /// Bytes of paths that are worth a thread.
    static constexpr std::size_t batchSize = std::size_t{128} * 1024;

    void takeOldest() {
        output_ += asking_.front().get();
        asking_.pop_front();
    }

    const Request& request_;
    std::string batch_;
    std::deque<std::future<std::string>> asking_;
    std::string output_;
};

}  // namespace

ToolResult mdfind(const Arguments& arguments) {
    const std::optional<Request> request = parse(arguments);
    if (!request) return {{}, usage, exitUsage};
    if (!MimeTypes::areInstalled()) return {{}, "mdfind: the shared MIME database is not installed\n", exitFailure};

    MimeTypes types;
    Findings found(*request);
    std::string errors;
    const auto tell = [&errors](const std::string& path, const std::string& reason) {
        errors += "mdfind: " + path + ": " + reason + "\n";
    };
    const auto skip = [&tell](const std::string& path, int failure) {
        tell(path, std::generic_category().message(failure));
    };
    const auto visit = [&](const std::string& path, std::string_view name) {
        std::string refusal;
        const std::string& type = types.typeByName(name, [&path, &refusal] {
            const InputFile file(path);
            refusal = file.error();
            return file.isOpen() ? file.head(MimeTypes::contentBytes) : std::string();
        });
        const bool wanted = request->type.empty() ? types.isImage(type) : type == request->type;
        if (wanted) {
            found.add(path);
        } else if (request->isStrict && !refusal.empty()) {
            tell(path, refusal);
        }
    };
    const int failure = walkFolder(absolutePath(request->folder), visit, skip);
    if (failure != 0) skip(request->folder, failure);
    const bool isRefused = failure != 0 || (request->isStrict && !errors.empty());
    return {found.take(), errors, isRefused ? exitFailure : exitSuccess};
}

}  // namespace marrowbeck::tools
