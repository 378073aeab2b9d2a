// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/plutil/plutil.h"

#include <plist.h>
#include <sys/stat.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "tools/plutil/PropertyListCheck.h"
#include "tools/service/InputFile.h"
#include "tools/service/ReplacementFile.h"

namespace marrowbeck::tools {

namespace {

constexpr const char* usage = "Usage: plutil -convert xml1|binary1 [-o -] FILE\n";

enum class Form { xml, binary };

struct Request {
    Form form = Form::xml;
    bool toOutput = false;
    std::string path;
};

std::optional<Request> parse(Arguments arguments) {
    Request request;
    const auto take = [&arguments](std::initializer_list<std::string_view> words) {
        if (arguments.size() < words.size() || !std::equal(words.begin(), words.end(), arguments.begin())) return false;
        arguments.erase(arguments.begin(), arguments.begin() + static_cast<std::ptrdiff_t>(words.size()));
        return true;
    };
    if (take({"-convert", "binary1"})) {
        request.form = Form::binary;
    } else if (!take({"-convert", "xml1"})) {
        return std::nullopt;
    }
    request.toOutput = take({"-o", "-"});
    const bool marked = take({"--"});
    if (arguments.size() != 1 || arguments[0].empty() || (arguments[0].starts_with('-') && !marked))
        return std::nullopt;
    request.path = arguments[0];
    return request;
}

struct FreeTree {
    void operator()(void* tree) const { plist_free(tree); }
};
using Tree = std::unique_ptr<void, FreeTree>;

/// Text or bytes that the library has allocated.
struct Output {
    std::unique_ptr<char, decltype(&plist_mem_free)> bytes{nullptr, &plist_mem_free};
    std::uint32_t size = 0;
    std::string_view View() const { return {bytes.get(), size}; }
};

Tree read(std::string_view file) {
    plist_t tree = nullptr;
    const auto size = static_cast<std::uint32_t>(file.size());
    if (isBinaryPropertyList(file)) {
        plist_from_bin(file.data(), size, &tree);
    } else {
        plist_from_xml(file.data(), size, &tree);
    }
    return Tree(tree);
}

Output write(const Tree& tree, Form form) {
    Output output;
    char* bytes = nullptr;
    if (form == Form::xml) {
        plist_to_xml(tree.get(), &bytes, &output.size);
    } else {
        plist_to_bin(tree.get(), &bytes, &output.size);
    }
    output.bytes.reset(bytes);
    return output;
}

/// The converted file, or why there is none.
std::string convert(const InputFile& file, Form form, Output& output) {
    struct stat status {};
    if (fstat(file.descriptor(), &status) != 0) return "Cannot be read";
    if (static_cast<unsigned long long>(status.st_size) > largestFile) return "Too large";
    const std::string content = file.head(static_cast<size_t>(status.st_size));
    if (std::string refusal = checkPropertyList(content); !refusal.empty()) return refusal;
    const Tree tree = read(content);
    if (!tree) return "Not a property list";
    output = write(tree, form);
    return output.bytes && output.size > 0 ? "" : "Cannot be converted";
}

}  // namespace

ToolResult plutil(const Arguments& arguments) {
    const std::optional<Request> request = parse(arguments);
    if (!request) return {{}, usage, exitUsage};
    const auto failure = [&](const std::string& reason) {
        return ToolResult{{}, "plutil: " + request->path + ": " + reason + "\n", exitFailure};
    };
    const InputFile file(request->path);
    if (!file.isOpen()) return failure(file.error());
    Output output;
    if (const std::string refusal = convert(file, request->form, output); !refusal.empty()) return failure(refusal);
    if (request->toOutput) return {std::string(output.View()), {}, exitSuccess};
    ReplacementFile replacement(request->path);
    if (!replacement.replaceWith(output.View())) return failure(replacement.error());
    return {};
}

}  // namespace marrowbeck::tools
