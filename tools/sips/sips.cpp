#include "tools/sips/sips.h"

#include <algorithm>
#include <charconv>
#include <optional>

#include "tools/service/InputFile.h"
#include "tools/service/ReplacementFile.h"
#include "tools/sips/sipsPicture.h"
#include "tools/sips/sipsPng.h"

namespace marrowbeck::tools {

namespace {

constexpr const char* usage = "Usage: sips -s format png [-Z PIXELS] FILE --out FILE\n";

struct Request {
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

std::optional<Request> parse(const Arguments& arguments) {
    Request request;
    bool marked = false;  // the next word is the source, whatever it begins with
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        const size_t left = arguments.size() - i - 1;
        if (marked || !word.starts_with('-')) {
            if (!request.source.empty() || word.empty()) return std::nullopt;
            request.source = word;
            marked = false;
        } else if (word == "--") {
            marked = true;
        } else if (word == "-s" && left >= 2 && arguments[i + 1] == "format" && arguments[i + 2] == "png") {
            request.png = true;
            i += 2;
        } else if (word == "-Z" && left >= 1) {
            const std::optional<int> side = sideFrom(arguments[++i]);
            if (!side) return std::nullopt;
            request.side = *side;
        } else if (word == "--out" && left >= 1) {
            request.target = arguments[++i];
        } else {
            return std::nullopt;
        }
    }
    if (!request.png || marked || request.source.empty() || request.target.empty()) return std::nullopt;
    return request;
}

}  // namespace

ToolResult sips(const Arguments& arguments) {
    const std::optional<Request> request = parse(arguments);
    if (!request) return {{}, usage, exitUsage};
    const auto failure = [](const std::string& path, const std::string& reason) {
        return ToolResult{{}, "sips: " + path + ": " + reason + "\n", exitFailure};
    };
    const InputFile file(request->source);
    if (!file.isOpen()) return failure(file.path(), file.error());
    const QImage image = sipsPicture(file, request->side);
    if (image.isNull()) return failure(file.path(), "Cannot be read as a picture");
    const std::string png = sipsPng(image);
    if (png.empty()) return failure(file.path(), "Cannot be written as PNG");
    ReplacementFile replacement(request->target);
    // Should the machine stop now, the preview is made again.
    if (!replacement.replaceWith(png, ReplacementFile::Sync::no)) return failure(request->target, replacement.error());
    return {};
}

}  // namespace marrowbeck::tools
