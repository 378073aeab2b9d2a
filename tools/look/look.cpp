// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/look/look.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/DiskFacts.h"
#include "base/Paths.h"

namespace marrowbeck::tools {

namespace {

using base::PathKind;

constexpr const char* usage =
    "Usage: look list FOLDER\n"
    "       look at PATH...\n"
    "       look access RIGHTS PATH...\n"
    "       look kinds FOLDER NAME...\n"
    "       look codes FOLDER NAME...\n"
    "       look clean PATH\n"
    "       look follow PATH\n"
    "       look folders PATH...\n"
    "RIGHTS: f, or some of r, w and x\n";

/// On whose behalf is asked.
struct Asking {
    const Dropped& dropped;

    template <class Answer>
    std::vector<Answer> sideBySide(std::vector<std::function<Answer()>> questions, const Answer& unanswered) const {
        if (questions.size() == 1) return {questions.front()()};
        return SideBySide<Answer>::ask(std::move(questions), unanswered, dropped);
    }

    /// The answers to one question on each of the words from `first` on, a NUL behind each.
    std::string ofEach(const Arguments& words, std::size_t first,
                       const std::function<std::string(const std::string&)>& ask, const std::string& unanswered) const {
        std::vector<std::function<std::string()>> questions;
        for (std::size_t i = first; i < words.size(); ++i)
            questions.emplace_back([ask, word = words[i]] { return ask(word); });
        std::string output;
        for (const std::string& answer : sideBySide(std::move(questions), unanswered))
            output.append(answer).push_back('\0');
        return output;
    }
};

ToolResult list(const std::string& folder) {
    const base::FolderChildren children = base::childrenOf(folder.c_str(), [] {});
    ToolResult result{std::to_string(children.failure) + '\0', {}, exitSuccess};
    for (const base::FolderChild& child : children.list) {
        result.output += static_cast<char>(child.kind);
        result.output.append(child.name).push_back('\0');
    }
    if (children.failure == 0) return result;
    result.error = "look: " + folder + ": " + std::generic_category().message(children.failure) + "\n";
    result.status = exitFailure;
    return result;
}

std::optional<int> rightsOf(std::string_view letters) {
    if (letters == "f") return F_OK;
    int rights = 0;
    for (const char letter : letters) {
        if (letter != 'r' && letter != 'w' && letter != 'x') return std::nullopt;
        rights |= letter == 'r' ? R_OK : letter == 'w' ? W_OK : X_OK;
    }
    return letters.empty() ? std::nullopt : std::optional(rights);
}

/// The codes of type and creator with a NUL between them. Without a type the creator tells nothing.
std::string codesAt(const std::string& path) {
    const auto codeOf = [&path](const char* name) {
        std::string code = base::attributeAt(path.c_str(), name);
        return code.find('\0') == std::string::npos ? code : std::string();
    };
    const std::string type = codeOf(base::typeAttribute);
    return type + '\0' + (type.empty() ? type : codeOf(base::creatorAttribute));
}

std::string folderAt(const std::string& path) {
    std::string real = base::followedLink(base::cleanPath(path));
    return base::kindAt(real.c_str()) == PathKind::folder ? real : std::string();
}

}  // namespace

ToolResult look(const Arguments& arguments, const Dropped& dropped) {
    const Asking asking{dropped};
    const std::string verb = arguments.empty() ? std::string() : arguments.front();
    const std::size_t count = arguments.size();
    if (verb == "list" && count == 2) return list(arguments[1]);
    if (verb == "at" && count >= 2) {
        const auto facts = [](const std::string& path) { return base::textOf(base::factsAt(path.c_str())); };
        return {asking.ofEach(arguments, 1, facts, base::textOf({})), {}, exitSuccess};
    }
    if (verb == "access" && count >= 3) {
        const std::optional<int> rights = rightsOf(arguments[1]);
        if (!rights) return {{}, usage, exitUsage};
        const auto failure = [rights](const std::string& path) {
            return std::to_string(::access(path.c_str(), *rights) == 0 ? 0 : errno);
        };
        return {asking.ofEach(arguments, 2, failure, std::to_string(ETIMEDOUT)), {}, exitSuccess};
    }
    if (verb == "kinds" && count >= 3) {
        const auto kind = [folder = arguments[1]](const std::string& name) {
            return std::string(1, static_cast<char>(base::kindAt(base::joined(folder, name).c_str())));
        };
        return {
            asking.ofEach(arguments, 2, kind, std::string(1, static_cast<char>(PathKind::unknown))), {}, exitSuccess};
    }
    if (verb == "codes" && count >= 3) {
        const auto codes = [folder = arguments[1]](const std::string& name) {
            return codesAt(base::joined(folder, name));
        };
        return {asking.ofEach(arguments, 2, codes, std::string(1, '\0')), {}, exitSuccess};
    }
    if (verb == "clean" && count == 2) return {base::cleanPath(arguments[1]) + '\0', {}, exitSuccess};
    if (verb == "follow" && count == 2)
        return {base::followedLink(base::cleanPath(arguments[1])) + '\0', {}, exitSuccess};
    if (verb == "folders" && count >= 2) return {asking.ofEach(arguments, 1, folderAt, {}), {}, exitSuccess};
    return {{}, usage, exitUsage};
}

}  // namespace marrowbeck::tools
