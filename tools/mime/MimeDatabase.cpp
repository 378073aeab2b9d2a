#include "tools/mime/MimeDatabase.h"

#include <algorithm>
#include <cstdlib>

#include "tools/mime/MimeComment.h"

namespace marrowbeck::tools {

namespace {

// Families are a few generations deep; a damaged database could hold a circle.
constexpr int maximumGenerations = 8;

std::string environment(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

/// The folders of the XDG Base Directory Specification, best first.
std::vector<std::string> dataFolders() {
    std::vector<std::string> folders;
    std::string own = environment("XDG_DATA_HOME");
    if (own.empty() && !environment("HOME").empty()) own = environment("HOME") + "/.local/share";
    std::string shared = environment("XDG_DATA_DIRS");
    if (shared.empty()) shared = "/usr/local/share:/usr/share";
    const std::string all = own + ":" + shared;
    for (size_t start = 0; start <= all.size();) {
        const size_t end = std::min(all.find(':', start), all.size());
        if (all[start] == '/') folders.push_back(all.substr(start, end - start) + "/mime");
        start = end + 1;
    }
    return folders;
}

}  // namespace

MimeDatabase::MimeDatabase() {
    for (std::string& folder : dataFolders()) {
        MimeCache cache(folder + "/mime.cache");
        if (cache.isOpen()) caches_.push_back(std::move(cache));
        folders_.push_back(std::move(folder));
    }
}

std::vector<std::string_view> MimeDatabase::namedTypes(std::string_view name) const {
    for (const bool exactCase : {true, false}) {
        for (const MimeCache& cache : caches_) {
            if (const auto literal = cache.matchLiteral(name, exactCase)) return {literal->type};
        }
    }
    std::vector<MimeCache::NameMatch> matches;
    for (const bool exactCase : {true, false}) {
        if (!matches.empty()) break;
        for (const MimeCache& cache : caches_) cache.matchSuffixes(name, exactCase, matches);
    }
    for (const bool exactCase : {true, false}) {
        if (!matches.empty()) break;
        for (const MimeCache& cache : caches_) cache.matchGlobs(name, exactCase, matches);
    }

    // Only the heaviest patterns count, and of these the longest; what is left may still be several types.
    const auto rank = [](const MimeCache::NameMatch& match) { return std::pair(match.weight, match.length); };
    std::vector<std::string_view> types;
    std::pair<uint32_t, size_t> best(0, 0);
    for (const MimeCache::NameMatch& match : matches) {
        if (rank(match) > best) {
            best = rank(match);
            types.clear();
        }
        if (rank(match) == best && std::find(types.begin(), types.end(), match.type) == types.end())
            types.push_back(match.type);
    }
    return types;
}

std::string_view MimeDatabase::contentType(std::string_view content) const {
    MimeCache::ContentMatch best{{}, 0};
    for (const MimeCache& cache : caches_) {
        const auto match = cache.matchContent(content);
        if (match && (best.type.empty() || match->priority > best.priority)) best = *match;
    }
    return best.type;
}

std::string_view MimeDatabase::typeByName(std::string_view name,
                                          const std::function<std::string()>& readContent) const {
    const std::vector<std::string_view> named = namedTypes(name);
    if (named.size() == 1) return named.front();
    const std::string_view told = contentType(readContent());
    for (const std::string_view type : named) {
        if (!told.empty() && inherits(type, told)) return type;
    }
    if (!told.empty()) return told;
    return named.empty() ? std::string_view() : named.front();
}

std::string_view MimeDatabase::typeByContent(std::string_view name, std::string_view content) const {
    const std::string_view told = contentType(content);
    const std::vector<std::string_view> named = namedTypes(name);
    for (const std::string_view type : named) {
        if (told.empty() || inherits(type, told)) return type;
    }
    return told;
}

bool MimeDatabase::anyAncestor(std::string_view type, const std::function<bool(std::string_view)>& test,
                               int depth) const {
    if (test(type)) return true;
    if (depth == maximumGenerations) return false;
    for (const MimeCache& cache : caches_) {
        for (const std::string_view parent : cache.parents(type)) {
            if (anyAncestor(parent, test, depth + 1)) return true;
        }
    }
    return false;
}

bool MimeDatabase::inherits(std::string_view type, std::string_view ancestor) const {
    const auto present = [this](std::string_view name) {
        for (const MimeCache& cache : caches_) {
            if (const std::string_view target = cache.aliasTarget(name); !target.empty()) return target;
        }
        return name;
    };
    const std::string_view wanted = present(ancestor);
    return anyAncestor(
        present(type), [&](std::string_view candidate) { return present(candidate) == wanted; }, 0);
}

bool MimeDatabase::isImage(std::string_view type) const {
    return anyAncestor(
        type, [](std::string_view candidate) { return candidate.starts_with("image/"); }, 0);
}

std::string MimeDatabase::comment(std::string_view type) const {
    for (const std::string& folder : folders_) {
        std::string text = mimeComment(folder + "/" + std::string(type) + ".xml", userLanguages());
        if (!text.empty()) return text;
    }
    return {};
}

}  // namespace marrowbeck::tools
