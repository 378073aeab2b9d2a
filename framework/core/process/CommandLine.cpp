// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/process/CommandLine.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>

namespace framework::internal {
namespace {

/// Words that a shell does not look up as programs: its reserved words and the commands that it carries out itself.
constexpr std::array<std::string_view, 56> kShellWords = {
    "!",      "{",        "}",       "case",    "do",      "done",     "elif",  "else",  "esac",   "fi",
    "for",    "if",       "in",      "then",    "until",   "while",    ".",     ":",     "[",      "alias",
    "bg",     "break",    "cd",      "chdir",   "command", "continue", "echo",  "eval",  "exec",   "exit",
    "export", "false",    "fg",      "getopts", "hash",    "jobs",     "kill",  "local", "printf", "pwd",
    "read",   "readonly", "return",  "set",     "shift",   "test",     "times", "trap",  "true",   "type",
    "ulimit", "umask",    "unalias", "unset",   "wait",    "function"};

/// For each byte whether it means nothing to a shell, wherever it stands in a word. Those above 127 are among them.
constexpr std::array<bool, 256> kIsPlain = [] {
    std::array<bool, 256> plain{};
    for (std::size_t byte = 0; byte < plain.size(); ++byte) {
        plain[byte] = byte >= 0x80 || (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') ||
                      (byte >= 'a' && byte <= 'z');
    }
    for (const char byte : std::string_view("-_./,:@%+=")) plain[static_cast<unsigned char>(byte)] = true;
    return plain;
}();

bool isPlain(char character) {
    return kIsPlain[static_cast<unsigned char>(character)];
}

/// As many as the longest of the program's own questions has.
constexpr std::size_t kUsualWords = 32;

bool isBlank(char character) {
    return character == ' ' || character == '\t';
}

}  // namespace

std::optional<std::vector<std::string>> PlainWords(std::string_view line) {
    std::vector<std::string> words;
    words.reserve(kUsualWords);
    bool inWord = false;
    bool isPattern = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (isBlank(line[i])) {
            inWord = false;
            continue;
        }
        if (!inWord) {
            words.emplace_back();
            isPattern = false;
        }
        inWord = true;
        if (line[i] == '\\') {
            if (i + 1 == line.size() || line[i + 1] == '\n') return std::nullopt;
            words.back().push_back(line[++i]);
        } else if (line[i] == '\'') {
            const std::size_t end = line.find('\'', i + 1);
            if (end == std::string_view::npos) return std::nullopt;
            words.back().append(line.substr(i + 1, end - i - 1));
            i = end;
        } else if (isPlain(line[i])) {
            const auto end = std::find_if_not(line.begin() + i, line.end(), isPlain);
            const std::string_view part(line.begin() + i, end);
            // An assignment stands before the command's name only.
            if (words.size() == 1 && part.find('=') != std::string_view::npos) return std::nullopt;
            words.back().append(part);
            i += part.size() - 1;
        } else if (line[i] == '*' && words.size() > 1) {
            isPattern = true;
            words.back().push_back(line[i]);
        } else {
            return std::nullopt;
        }
        if (isPattern && words.back().find('/') != std::string::npos) return std::nullopt;
    }
    if (words.empty() || std::find(kShellWords.begin(), kShellWords.end(), words.front()) != kShellWords.end()) {
        return std::nullopt;
    }
    return words;
}

std::string FindProgram(const std::string& name, std::string_view searchPath) {
    const auto isProgram = [](const std::string& path) {
        struct stat status {};
        return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && access(path.c_str(), X_OK) == 0;
    };
    if (name.empty()) return {};
    if (name.find('/') != std::string::npos) return isProgram(name) ? name : std::string();
    while (!searchPath.empty()) {
        const std::size_t colon = std::min(searchPath.find(':'), searchPath.size());
        const std::string folder(searchPath.substr(0, colon));
        const std::string path = (folder.empty() ? "." : folder) + "/" + name;
        if (isProgram(path)) return path;
        searchPath.remove_prefix(std::min(colon + 1, searchPath.size()));
    }
    return {};
}

}  // namespace framework::internal
