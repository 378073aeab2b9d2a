// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/sips/sips.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/Frames.h"
#include "tools/pictures/PictureLibrary.h"
#include "tools/service/ReplacementFile.h"
#include "tools/sips/sipsPicture.h"
#include "tools/sips/sipsPng.h"

namespace marrowbeck::tools {

namespace {

constexpr const char* usage = "Usage: sips -s format png [-Z PIXELS] FILE --out FILE|-\n       sips -stay_open\n";

/// As a target: standard output.
constexpr std::string_view outputName = "-";

struct Wish {
    std::string source;
    std::string target;
    int side = largestSide;
    bool png = false;
};

std::optional<int> sideFrom(const std::string& word) {
    int side = 0;
    const auto [end, failure] = std::from_chars(word.data(), word.data() + word.size(), side);
    if (failure != std::errc() || end != word.data() + word.size() || side < 1) return std::nullopt;
    return std::min(side, largestSide);
}

std::optional<Wish> parse(const Arguments& arguments) {
    Wish wish;
    bool marked = false;  // the next word is the source, whatever it begins with
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        const size_t left = arguments.size() - i - 1;
        if (marked || !word.starts_with('-')) {
            if (!wish.source.empty() || word.empty()) return std::nullopt;
            wish.source = word;
            marked = false;
        } else if (word == "--") {
            marked = true;
        } else if (word == "-s" && left >= 2 && arguments[i + 1] == "format" && arguments[i + 2] == "png") {
            wish.png = true;
            i += 2;
        } else if (word == "-Z" && left >= 1) {
            const std::optional<int> side = sideFrom(arguments[++i]);
            if (!side) return std::nullopt;
            wish.side = *side;
        } else if (word == "--out" && left >= 1) {
            wish.target = arguments[++i];
        } else {
            return std::nullopt;
        }
    }
    if (!wish.png || marked || wish.source.empty() || wish.target.empty()) return std::nullopt;
    return wish;
}

ToolResult failure(const std::string& path, const std::string& reason) {
    return {{}, "sips: " + path + ": " + reason + "\n", exitFailure};
}

/// Whether the path leads to that very file, by whatever links.
bool leadsTo(const std::string& path, const std::optional<base::FileIdentity>& file) {
    const std::optional<base::FileIdentity> found = base::FileIdentity::of(path);
    return found && file && found->isSameFile(*file);
}

/// A picture without its pixels, of the reader's answer, from which it is taken away; without a width unless the
/// numbers are what was asked for and fit each other.
Pixels takeShape(std::string_view& answer, int side) {
    const auto number = [&answer] { return static_cast<int>(base::takeNumber(answer).value_or(0)); };
    Pixels pixels;
    pixels.width = number();
    pixels.height = number();
    pixels.channels = number();
    const auto fits = [side](int length) { return length >= 1 && length <= side; };
    if (!fits(pixels.width) || !fits(pixels.height) || (pixels.channels != 3 && pixels.channels != 4)) return {};
    const auto size = std::size_t{1} * static_cast<unsigned>(pixels.width) * static_cast<unsigned>(pixels.height) *
                      static_cast<unsigned>(pixels.channels);
    return answer.size() == size ? pixels : Pixels{};
}

ToolResult finish(const Wish& wish, std::optional<std::string_view> answer,
                  const std::optional<base::FileIdentity>& source) {
    if (!answer) return failure(wish.source, "Cannot be read as a picture");
    Pixels pixels = takeShape(*answer, wish.side);
    pixels.bytes = *answer;
    const std::string png = pngOf(pixels);
    if (png.empty()) return failure(wish.source, "Cannot be written as PNG");
    if (wish.target == outputName) return {png, {}, exitSuccess};
    // A small copy must not cost the picture that it is of.
    if (leadsTo(wish.target, source)) return failure(wish.target, "Is the picture itself");
    ReplacementFile replacement(wish.target);
    // Should the machine stop now, the preview is made again.
    if (!replacement.replaceWith(png, ReplacementFile::Sync::no)) return failure(wish.target, replacement.error());
    return {};
}

}  // namespace

Limits Sips::limits() const {
    Limits limits;
    // The largest picture that a decoder may lay out whole, and half as much again to work on it.
    limits.memoryBytes = 1536ULL << 20;
    // Many times what the largest picture takes that can be read. Someone is waiting for it.
    limits.seconds = 20;
    limits.answerBytes = std::size_t{4} * largestSide * largestSide + 64;
    return limits;
}

std::variant<Job, ToolResult> Sips::begin(const Arguments& arguments) const {
    std::optional<Wish> wish = parse(arguments);
    if (!wish) return ToolResult{{}, usage, exitUsage};
    Job job;
    job.path = wish->source;
    job.question = std::to_string(wish->side);
    job.finish = [wish = std::move(*wish)](std::optional<std::string_view> answer, const auto& file) {
        return finish(wish, answer, file);
    };
    return job;
}

bool Sips::isSound(const std::string& question, std::string_view answer) const {
    return takeShape(answer, sideFrom(question).value_or(largestSide)).width > 0;
}

std::optional<ToolResult> Sips::unopened(const std::string& path, const FileNote& note) const {
    return failure(path, note.error);
}

void Sips::warmUp() const {
    if (PictureLibrary* const library = pictureLibrary()) library->warmUp();
}

std::vector<std::string> Sips::dataFolders() const {
    return pictureLibraryFolders();
}

std::optional<std::string> Sips::read(const std::string& question, Content content) {
    const Pixels pixels = sipsPicture(content, sideFrom(question).value_or(largestSide));
    if (pixels.width == 0) return std::nullopt;
    std::string answer;
    for (const int number : {pixels.width, pixels.height, pixels.channels})
        answer += base::numberBytes(static_cast<std::uint32_t>(number));
    return answer + pixels.bytes;
}

}  // namespace marrowbeck::tools
