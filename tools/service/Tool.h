// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "tools/pictures/PictureLibrary.h"
#include "tools/service/FileNote.h"
#include "tools/service/ToolResult.h"

namespace marrowbeck::tools {

/// A request that is about a file: what a reader is to find out, and what is made of it.
struct Job {
    std::string path;
    /// What the reader is told beside the file's content. Never a path.
    std::string question;
    /// Makes the tool's result of the reader's answer; of nothing when the file makes no sense. `file` is what was seen
    /// of the file, where it could be looked at.
    std::function<ToolResult(std::optional<std::string_view> answer, const std::optional<base::FileIdentity>& file)>
        finish;
};

/// What a process that reads foreign bytes may use.
struct Limits {
    unsigned long long memoryBytes = 0;
    /// Processor time for one file.
    unsigned seconds = 0;
    /// Bytes of the longest answer.
    std::size_t answerBytes = 0;
};

/// A tool in two halves. The supervisor calls `begin`, `unopened` and the job's `finish`: our own code, with the user's
/// rights, that never sees a byte of the file. A reader, a confined process of its own, calls `read`.
class Tool {
  public:
    virtual ~Tool() = default;

    virtual Limits limits() const = 0;

    /// Whether answers are worth keeping: the same file is asked about again, and answers are small.
    virtual bool keepsAnswers() const = 0;

    /// What these arguments ask for: a file to be read, or a result at once.
    virtual std::variant<Job, ToolResult> begin(const Arguments& arguments) const = 0;

    /// The result for a file that could not be opened; nothing when the reader is to be asked all the same, without
    /// a content.
    virtual std::optional<ToolResult> unopened(const std::string& path, const FileNote& note) const = 0;

    /// Loads all that `read` may need, so that forks of this process need not. Starts no thread.
    virtual void warmUp() const = 0;

    /// Folders, beside the system's libraries, whose files `read` opens.
    virtual std::vector<std::string> dataFolders() const = 0;

    /// Whether the answer is one that `read` can give to the question. One that is not comes from a reader that is no
    /// longer ours, or from a mistake of our own.
    virtual bool isSound(const std::string& question, std::string_view answer) const = 0;

    /// The reader's answer on a file; nothing when it makes no sense.
    virtual std::optional<std::string> read(const std::string& question, Content content) = 0;
};

}  // namespace marrowbeck::tools
