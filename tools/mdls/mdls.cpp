#include "tools/mdls/mdls.h"

#include <algorithm>
#include <optional>
#include <set>

#include "tools/mdls/ImageAttributes.h"

namespace marrowbeck::tools {

namespace {

constexpr const char* usage = "Usage: mdls [-name ATTRIBUTE]... [-raw] FILE\n";

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

struct Request {
    std::set<std::string, std::less<>> names;
    bool raw = false;
    std::string path;
};

std::optional<Request> parse(const Arguments& arguments) {
    Request request;
    bool optionsEnded = false;
    bool pathGiven = false;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& word = arguments[i];
        const bool option = !optionsEnded && word.size() > 1 && word.starts_with('-');
        if (option && word == "--") {
            optionsEnded = true;
        } else if (option && word == "-raw") {
            request.raw = true;
        } else if (option && word == "-name" && i + 1 < arguments.size()) {
            request.names.insert(arguments[++i]);
        } else if (option || pathGiven || word.empty()) {
            return std::nullopt;
        } else {
            request.path = word;
            pathGiven = true;
        }
    }
    if (!pathGiven) return std::nullopt;
    if (request.names.empty()) request.names.insert(std::begin(allNames), std::end(allNames));
    return request;
}

}  // namespace

ToolResult mdls(const Arguments& arguments) {
    const std::optional<Request> request = parse(arguments);
    if (!request) return {{}, usage, exitUsage};
    const InputFile file(request->path);
    if (!file.isOpen()) return {{}, "mdls: " + request->path + ": " + file.error() + "\n", exitFailure};

    // The kind and the rest come from different places, each with a price: ask only where there is a question.
    AttributeMap values;
    const bool kindWanted = request->names.contains(kindAttribute);
    if (!kindWanted || request->names.size() > 1) values = readImageAttributes(file);
    if (kindWanted) {
        std::string kind = readKind(file);
        if (!kind.empty()) values.emplace(kindAttribute, std::move(kind));
    }

    ToolResult result;
    for (const std::string& name : request->names) {
        const auto found = values.find(name);
        const std::string& value = found == values.end() ? "(null)" : found->second;
        if (!request->raw) {
            result.output.append(name).append(" = ").append(value).append("\n");
            continue;
        }
        if (name != *request->names.begin()) result.output += '\0';
        result.output += value;
    }
    return result;
}

}  // namespace marrowbeck::tools
