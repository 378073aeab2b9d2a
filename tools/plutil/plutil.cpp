// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/plutil/plutil.h"

#include <plist.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "tools/plutil/PropertyListCheck.h"
#include "tools/service/ReplacementFile.h"
#include "tools/service/Service.h"
#include "tools/service/Tool.h"

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

/// What a reader says: a converted file, or why there is none.
constexpr char converted = 'C';
constexpr char refused = 'R';

constexpr std::size_t longestReason = 200;
/// Bytes of a converted file, of which the supervisor holds one copy, or for a moment two.
constexpr std::uint32_t longestResult = 3U << 30;

std::string convert(std::string_view file, Form form) {
    if (file.size() > largestFile) return refused + std::string("Too large");
    if (const std::string refusal = checkPropertyList(file); !refusal.empty()) return refused + refusal;
    Tree tree = read(file);
    if (!tree) return refused + std::string("Not a property list");
    const Output output = write(tree, form);
    tree.reset();
    if (output.size > longestResult) return refused + std::string("Too large");
    if (!output.bytes || output.size == 0) return refused + std::string("Cannot be converted");
    std::string answer(1, converted);
    return answer.append(output.View());
}

ToolResult failure(const std::string& path, std::string_view reason) {
    return {{}, "plutil: " + path + ": " + std::string(reason) + "\n", exitFailure};
}

ToolResult finish(const Request& request, std::optional<std::string_view> answer) {
    if (!answer) return failure(request.path, "Not a property list");
    const std::string_view rest = answer->substr(1);
    if (answer->front() == refused) return failure(request.path, rest);
    if (request.toOutput) return {std::string(rest), {}, exitSuccess};
    ReplacementFile replacement(request.path);
    if (!replacement.replaceWith(rest)) return failure(request.path, replacement.error());
    return {};
}

class Plutil final : public Tool {
  public:
    Limits limits() const override {
        Limits limits;
        // Room for the largest document that passes the checks, as a tree and as text at once.
        limits.memoryBytes = 6ULL << 30;
        limits.seconds = 120;
        limits.answerBytes = longestResult + longestReason;
        return limits;
    }
    bool keepsAnswers() const override { return false; }
    std::variant<Job, ToolResult> begin(const Arguments& arguments) const override {
        std::optional<Request> request = parse(arguments);
        if (!request) return ToolResult{{}, usage, exitUsage};
        Job job;
        job.path = request->path;
        job.question = request->form == Form::binary ? binaryWord : "";
        job.finish = [request = std::move(*request)](std::optional<std::string_view> answer, const auto&) {
            return finish(request, answer);
        };
        return job;
    }
    std::optional<ToolResult> unopened(const std::string& path, const FileNote& note) const override {
        return failure(path, note.error);
    }
    bool isSound(const std::string& /*question*/, std::string_view answer) const override {
        if (answer.size() < 2) return false;
        const std::string_view rest = answer.substr(1);
        return answer.front() == converted || (answer.front() == refused && rest.size() <= longestReason &&
                                               std::ranges::all_of(rest, [](char c) { return c >= ' ' && c <= '~'; }));
    }
    void warmUp() const override {}
    std::vector<std::string> dataFolders() const override { return {}; }
    std::optional<std::string> read(const std::string& question, Content content) override {
        return convert({reinterpret_cast<const char*>(content.data()), content.size()},
                       question == binaryWord ? Form::binary : Form::xml);
    }

  private:
    static constexpr const char* binaryWord = "binary";
};

}  // namespace

ToolResult plutil(const Arguments& arguments) {
    Plutil tool;
    return runOnce(tool, arguments);
}

}  // namespace marrowbeck::tools
