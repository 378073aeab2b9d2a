#include "tools/plutil/plutil.h"

#include <plist.h>
#include <sys/stat.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "tools/plutil/PropertyListCheck.h"
#include "tools/service/InputFile.h"
#include "tools/service/ReplacementFile.h"

namespace marrowbeck::tools {

namespace {

constexpr const char* usage = "Usage: plutil -convert xml1|binary1 FILE\n";

enum class Form { xml, binary };

struct Request {
    Form form = Form::xml;
    std::string path;
};

std::optional<Request> parse(const Arguments& arguments) {
    const bool marked = arguments.size() == 4 && arguments[2] == "--";
    if (arguments.size() != 3 && !marked) return std::nullopt;
    const std::string& path = arguments.back();
    if (arguments[0] != "-convert" || path.empty() || (path.starts_with('-') && !marked)) return std::nullopt;
    if (arguments[1] == "xml1") return Request{Form::xml, path};
    if (arguments[1] == "binary1") return Request{Form::binary, path};
    return std::nullopt;
}

struct FreeTree {
    void operator()(void* tree) const { plist_free(tree); }
};
using Tree = std::unique_ptr<void, FreeTree>;

/// Text or bytes that the library has allocated.
struct Output {
    std::unique_ptr<char, decltype(&plist_to_xml_free)> bytes{nullptr, &plist_to_xml_free};
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
    ReplacementFile replacement(request->path);
    if (!replacement.replaceWith(output.View())) return failure(replacement.error());
    return {};
}

}  // namespace marrowbeck::tools
