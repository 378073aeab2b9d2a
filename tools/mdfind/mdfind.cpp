#include "tools/mdfind/mdfind.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string_view>
#include <system_error>
#include <thread>
#include <vector>

#include "tools/mdfind/FolderWalk.h"
#include "tools/mime/MimeTypes.h"
#include "tools/service/InputFile.h"

namespace marrowbeck::tools {

namespace {

constexpr const char* usage =
    "Usage: mdfind [-0] -onlyin FOLDER QUERY\n"
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
};

std::optional<Request> parse(const Arguments& arguments) {
    Request request;
    std::string words;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        if (word == "-0") {
            request.ending = '\0';
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

std::string head(const std::string& path) {
    const InputFile file(path);
    return file.isOpen() ? file.head(MimeTypes::contentBytes) : std::string();
}

/// Takes out the files that the user may not read. To ask the system that of each file is most of what a search of a
/// large folder costs, so all processors ask at a time.
void removeUnreadable(std::vector<std::string>& paths) {
    constexpr std::size_t worthAThread = 4096;
    const std::size_t askers =
        std::clamp<std::size_t>(paths.size() / worthAThread, 1, std::max(std::thread::hardware_concurrency(), 1U));
    const auto askFor = [&](std::size_t asker) {
        for (std::size_t i = paths.size() * asker / askers; i < paths.size() * (asker + 1) / askers; ++i) {
            if (::faccessat(AT_FDCWD, paths[i].c_str(), R_OK, AT_EACCESS) != 0) paths[i].clear();
        }
    };
    {
        std::vector<std::jthread> threads;
        for (std::size_t asker = 1; asker < askers; ++asker) threads.emplace_back(askFor, asker);
        askFor(0);
    }
    std::erase(paths, std::string());
}

}  // namespace

ToolResult mdfind(const Arguments& arguments) {
    const std::optional<Request> request = parse(arguments);
    if (!request) return {{}, usage, exitUsage};
    if (!MimeTypes::areInstalled()) return {{}, "mdfind: the shared MIME database is not installed\n", exitFailure};

    MimeTypes types;
    std::vector<std::string> found;
    const int failure = walkFolder(absolutePath(request->folder), [&](const std::string& path, std::string_view name) {
        const std::string type = types.typeByName(name, [&path] { return head(path); });
        const bool wanted = request->type.empty() ? types.isImage(type) : type == request->type;
        if (wanted) found.push_back(path);
    });
    removeUnreadable(found);
    ToolResult result;
    for (const std::string& path : found) result.output.append(path).push_back(request->ending);
    if (failure != 0) {
        result.error = "mdfind: " + request->folder + ": " + std::generic_category().message(failure) + "\n";
        result.status = exitFailure;
    }
    return result;
}

}  // namespace marrowbeck::tools
