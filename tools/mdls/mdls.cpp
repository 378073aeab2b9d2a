// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/mdls/mdls.h"

#include <algorithm>
#include <functional>
#include <memory>
#include <set>
#include <string_view>
#include <utility>

#include "base/Utf8.h"
#include "tools/mdls/ImageAttributes.h"
#include "tools/mime/MimeTypes.h"
#include "tools/pictures/PictureLibrary.h"
#include "tools/service/InputFile.h"

namespace marrowbeck::tools {

namespace {

constexpr const char* usage = "Usage: mdls [-name ATTRIBUTE]... [-raw] FILE\n       mdls -stay_open\n";

constexpr const char* allNames[] = {
    "kMDItemAcquisitionMake", "kMDItemAcquisitionModel",
    "kMDItemBitsPerSample",   "kMDItemColorSpace",
    "kMDItemCopyright",       "kMDItemDescription",
    "kMDItemEXIFVersion",     "kMDItemExposureTimeSeconds",
    "kMDItemFNumber",         "kMDItemFocalLength",
    "kMDItemHasAlphaChannel", "kMDItemISOSpeed",
    "kMDItemKeywords",        "kMDItemKind",
    "kMDItemPixelHeight",     "kMDItemPixelWidth",
    "kMDItemProfileName",
};

struct Wish {
    std::set<std::string, std::less<>> names;
    bool raw = false;
    std::string path;
};

std::optional<Wish> parse(const Arguments& arguments) {
    Wish wish;
    bool optionsEnded = false;
    bool pathGiven = false;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        const bool option = !optionsEnded && word.size() > 1 && word.starts_with('-');
        if (option && word == "--") {
            optionsEnded = true;
        } else if (option && word == "-raw") {
            wish.raw = true;
        } else if (option && word == "-name" && i + 1 < arguments.size()) {
            wish.names.insert(arguments[++i]);
        } else if (option || pathGiven || word.empty()) {
            return std::nullopt;
        } else {
            wish.path = word;
            pathGiven = true;
        }
    }
    if (!pathGiven) return std::nullopt;
    if (wish.names.empty()) wish.names.insert(std::begin(allNames), std::end(allNames));
    return wish;
}

/// A name and a value of an answer, a NUL behind each.
void append(std::string& answer, std::string_view name, std::string_view value) {
    answer.append(name).push_back('\0');
    answer.append(value).push_back('\0');
}

/// What is known of a file that its reader did not survive.
std::string kindByName(std::string_view name) {
    std::string answer;
    if (const std::string kind = MimeTypes().kindOf(name, {}); !kind.empty()) append(answer, kindAttribute, kind);
    return answer;
}

std::string_view takeWord(std::string_view& answer) {
    const std::string_view word = answer.substr(0, answer.find('\0'));
    answer.remove_prefix(std::min(word.size() + 1, answer.size()));
    return word;
}

/// A value for people: what it has beyond its first line stands behind blanks, so that none looks like the line of
/// another attribute, and what would steer a terminal is shown as a sign that it is there.
std::string readable(std::string_view value) {
    std::string text;
    while (!value.empty()) {
        const base::Utf8Character character = base::utf8Character(value);
        if (value.starts_with("\r\n")) value.remove_prefix(1);
        if (value.front() == '\n') {
            text += "\n    ";
        } else if (base::steers(character.code)) {
            text += "\xef\xbf\xbd";
        } else {
            text += value.substr(0, character.size);
        }
        value.remove_prefix(std::max<std::size_t>(character.size, 1));
    }
    return text;
}

/// The output, of names and values as the reader gives them.
std::string outputOf(const Wish& wish, std::string_view answer) {
    // Few enough that to look through them costs less than to sort them.
    std::vector<std::pair<std::string_view, std::string_view>> values;
    values.reserve(std::size(allNames));
    while (!answer.empty()) {
        const std::string_view name = takeWord(answer);
        values.emplace_back(name, takeWord(answer));
    }
    std::string output;
    for (const std::string& name : wish.names) {
        const auto found = std::ranges::find(values, name, &decltype(values)::value_type::first);
        const std::string_view value = found == values.end() ? "(null)" : found->second;
        if (!wish.raw) {
            output.append(name).append(" = ").append(readable(value)).append("\n");
            continue;
        }
        if (name != *wish.names.begin()) output += '\0';
        output += value;
    }
    return output;
}

}  // namespace

Limits Mdls::limits() const {
    Limits limits;
    // Far more than any picture's metadata takes; what wants more is no picture.
    limits.memoryBytes = 1ULL << 30;
    // A row waits for it, and the slowest of honest files takes a tenth.
    limits.seconds = 5;
    // All attributes, each as long as it may be.
    limits.answerBytes = 2U << 20;
    return limits;
}

std::variant<Job, ToolResult> Mdls::begin(const Arguments& arguments) const {
    std::optional<Wish> wish = parse(arguments);
    if (!wish) return ToolResult{{}, usage, exitUsage};
    Job job;
    job.path = wish->path;
    job.question = nameOf(wish->path);
    job.finish = [wish = std::move(*wish), name = job.question](std::optional<std::string_view> answer, const auto&) {
        const std::string kind = answer ? std::string() : kindByName(name);
        return ToolResult{outputOf(wish, answer.value_or(kind)), {}, exitSuccess};
    };
    return job;
}

bool Mdls::isSound(const std::string& /*question*/, std::string_view answer) const {
    if (!answer.empty() && answer.back() != '\0') return false;
    // Each name once, in their order; and so each has one value.
    const auto* known = std::begin(allNames);
    while (!answer.empty()) {
        const std::string_view name = takeWord(answer);
        known = std::find(known, std::end(allNames), name);
        if (known == std::end(allNames) || answer.empty()) return false;
        const std::string_view value = takeWord(answer);
        if (value.size() > longestValue || !base::isUtf8(value)) return false;
        ++known;
    }
    return true;
}

std::optional<ToolResult> Mdls::unopened(const std::string& path, const FileNote& note) const {
    if (note.isForbidden) return std::nullopt;
    return ToolResult{{}, "mdls: " + path + ": " + note.error + "\n", exitFailure};
}

void Mdls::warmUp() const {
    MimeTypes::warmUp();
    if (PictureLibrary* const library = pictureLibrary()) library->warmUp();
}

std::vector<std::string> Mdls::dataFolders() const {
    std::vector<std::string> folders = MimeTypes::folders();
    for (std::string& folder : pictureLibraryFolders()) folders.push_back(std::move(folder));
    return folders;
}

std::optional<std::string> Mdls::read(const std::string& question, Content content) {
    AttributeMap values = readImageAttributes(content);
    if (std::string kind = types_.kindOf(question, content); !kind.empty())
        values.emplace(kindAttribute, std::move(kind));
    std::string answer;
    for (const auto& [name, value] : values) append(answer, name, value);
    return answer;
}

}  // namespace marrowbeck::tools
