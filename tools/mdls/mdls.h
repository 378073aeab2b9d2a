// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "tools/mime/MimeTypes.h"
#include "tools/service/Tool.h"

namespace marrowbeck::tools {

/// `mdls [-name ATTRIBUTE]... [-raw] [--] FILE`: the metadata of a picture.
///
/// With `-raw` the values of the attributes in the order of their names, a NUL
/// between any two; otherwise a line `name = value` for each. An attribute without
/// a value, or one that is unknown, is "(null)". Without `-name` every attribute
/// is answered. Values are UTF-8, hold no NUL, and have at most 64 KiB.
///
/// Only a file that is missing, or is no file, gives a status other than 0; one that makes no
/// sense, or may not be read, gives "(null)", but for its kind, which its name tells where nothing else does.
class Mdls final : public Tool {
  public:
    Limits limits() const override;
    bool keepsAnswers() const override { return true; }
    std::variant<Job, ToolResult> begin(const Arguments& arguments) const override;
    std::optional<ToolResult> unopened(const std::string& path, const FileNote& note) const override;
    bool isSound(const std::string& question, std::string_view answer) const override;
    void warmUp() const override;
    std::vector<std::string> dataFolders() const override;
    /// `question` is the file's name. The answer is each attribute's name and value, a NUL behind each.
    std::optional<std::string> read(const std::string& question, Content content) override;

  private:
    MimeTypes types_;  ///< a reader's own: what it has learned stays with it
};

}  // namespace marrowbeck::tools
