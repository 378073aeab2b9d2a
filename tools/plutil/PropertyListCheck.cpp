// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/plutil/PropertyListCheck.h"

#include "tools/plutil/BinaryPropertyList.h"

namespace marrowbeck::tools {

namespace {

/// Goes through the tags alone. Counts at least what a parser would meet: what
/// does not fit together is for that one to say.
std::string checkXml(std::string_view text) {
    unsigned long long values = 0;
    unsigned depth = 0;
    const auto skipPast = [text](size_t from, std::string_view end) {
        const size_t found = text.find(end, from);
        return found == std::string_view::npos ? text.size() : found + end.size();
    };
    for (size_t at = text.find('<'); at < text.size(); at = text.find('<', at)) {
        const std::string_view tag = text.substr(at);
        if (tag.starts_with("<!--")) {
            at = skipPast(at + 4, "-->");
        } else if (tag.starts_with("<![CDATA[")) {
            at = skipPast(at, "]]>");
        } else {
            const bool closing = tag.starts_with("</");
            const bool markup = tag.starts_with("<?") || tag.starts_with("<!");
            at = skipPast(at, ">");
            if (markup) continue;
            if (closing) {
                depth -= depth > 0 ? 1 : 0;
                continue;
            }
            if (++values > PropertyListLimits::values) return "Too many values";
            if (text[at - 1] == '>' && text[at - 2] == '/') continue;
            if (++depth > PropertyListLimits::nesting) return "Nested too deeply";
        }
    }
    return {};
}

}  // namespace

bool isBinaryPropertyList(std::string_view file) {
    return file.starts_with("bplist");
}

std::string checkPropertyList(std::string_view file) {
    return isBinaryPropertyList(file) ? BinaryPropertyList(file).Check() : checkXml(file);
}

}  // namespace marrowbeck::tools
