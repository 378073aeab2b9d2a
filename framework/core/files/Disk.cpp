// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/files/Disk.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <optional>
#include <utility>

#include "base/Paths.h"
#include "framework/core/threads/Waiting.h"

namespace framework::internal {
namespace {

/// What stands before the next NUL; the rest stays.
std::string_view takeField(std::string_view& text) {
    const std::size_t end = std::min(text.find('\0'), text.size());
    const std::string_view field = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return field;
}

int numberIn(std::string_view text, int otherwise) {
    int number = otherwise;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

/// The one path in an answer of `look`; `otherwise` where that came too late.
std::string pathIn(const Aside::Answer& answer, std::string otherwise) {
    std::string_view text = answer.text;
    return answer.came ? std::string(takeField(text)) : std::move(otherwise);
}

/// What `look` says on each of the names, as `take` reads it from the answer; nothing where it is not to be had.
template <class Take>
auto eachAside(base::Arguments words, const std::vector<std::string>& names, Take take, int patience = Aside::kPatience)
    -> std::optional<std::vector<decltype(take(std::declval<std::string_view&>()))>> {
    words.insert(words.end(), names.begin(), names.end());
    const auto answer = Aside::Ask(words, patience);
    if (!answer) return std::nullopt;
    std::string_view text = answer->text;
    std::vector<decltype(take(text))> taken;
    taken.reserve(names.size());
    while (taken.size() < names.size()) taken.push_back(take(text));
    return taken;
}

std::string lettersOf(int rights) {
    std::string letters;
    if ((rights & R_OK) != 0) letters += 'r';
    if ((rights & W_OK) != 0) letters += 'w';
    if ((rights & X_OK) != 0) letters += 'x';
    return letters.empty() ? "f" : letters;
}

}  // namespace

base::PathFacts Disk::FactsAt(const std::string& path) const {
    if (path.empty()) return {};
    if (aside_) {
        if (const auto answer = Aside::Ask({"at", path})) {
            std::string_view text = answer->text;
            return base::factsFrom(takeField(text));
        }
    }
    return base::factsAt(path.c_str());
}

int Disk::AccessFailure(const std::string& path, int rights) const {
    if (aside_) {
        if (const auto answer = Aside::Ask({"access", lettersOf(rights), path})) {
            return numberIn(answer->text, ETIMEDOUT);
        }
    }
    return ::access(path.c_str(), rights) == 0 ? 0 : errno;
}

std::string Disk::Clean(std::string_view path) const {
    std::string whole = base::absolutePath(path);
    if (aside_ && base::goesUp(whole)) {
        if (const auto answer = Aside::Ask({"clean", whole})) return pathIn(*answer, std::move(whole));
    }
    return base::cleanPath(whole);
}

std::string Disk::Follow(std::string_view path) const {
    std::string whole = base::absolutePath(path);
    if (whole.empty()) return whole;
    if (aside_) {
        if (const auto answer = Aside::Ask({"follow", whole})) return pathIn(*answer, std::move(whole));
    }
    return base::followedLink(base::cleanPath(whole));
}

std::vector<std::string> Disk::FoldersOf(const std::vector<std::string>& paths, int milliseconds) const {
    const auto take = [](std::string_view& text) { return std::string(takeField(text)); };
    if (aside_) {
        if (auto folders = eachAside({"folders"}, paths, take, milliseconds)) return std::move(*folders);
    }
    std::vector<std::string> folders;
    folders.reserve(paths.size());
    for (const std::string& path : paths) {
        std::string folder = Follow(path);
        folders.push_back(KindAt(folder) == base::PathKind::folder ? std::move(folder) : std::string());
    }
    return folders;
}

std::string Disk::ChildrenOf(const std::string& folder) const {
    if (aside_) {
        if (auto answer = Aside::Ask({"list", folder})) {
            return answer->came ? std::move(answer->text) : std::to_string(ETIMEDOUT) + '\0';
        }
    }
    const base::FolderChildren children = base::childrenOf(folder.c_str(), LoopYield);
    std::string text = std::to_string(children.failure) + '\0';
    for (const base::FolderChild& child : children.list) {
        text += static_cast<char>(child.kind);
        text.append(child.name).push_back('\0');
        LoopYield();
    }
    return text;
}

std::vector<base::PathKind> Disk::KindsOf(const std::string& folder, const std::vector<std::string>& names) const {
    const auto take = [](std::string_view& text) {
        const std::string_view letter = takeField(text);
        return letter.empty() ? base::PathKind::unknown : static_cast<base::PathKind>(letter.front());
    };
    if (aside_) {
        if (auto kinds = eachAside({"kinds", folder}, names, take)) return std::move(*kinds);
    }
    std::vector<base::PathKind> kinds;
    kinds.reserve(names.size());
    for (const std::string& name : names) kinds.push_back(base::kindAt(base::joined(folder, name).c_str()));
    return kinds;
}

std::vector<FileCodes> Disk::CodesOf(const std::string& folder, const std::vector<std::string>& names) const {
    const auto take = [](std::string_view& text) {
        const std::string_view type = takeField(text);
        return FileCodes{std::string(type), std::string(takeField(text))};
    };
    if (aside_) {
        if (auto codes = eachAside({"codes", folder}, names, take)) return std::move(*codes);
    }
    std::vector<FileCodes> codes;
    codes.reserve(names.size());
    for (const std::string& name : names) {
        const std::string path = base::joined(folder, name);
        codes.push_back({base::attributeAt(path.c_str(), base::typeAttribute),
                         base::attributeAt(path.c_str(), base::creatorAttribute)});
    }
    return codes;
}

}  // namespace framework::internal
