// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "tools/service/Tool.h"

namespace marrowbeck::tools {

/// `sips -s format png [-Z PIXELS] [--] FILE --out FILE|-`: writes a picture as an
/// upright sRGB PNG, whatever the name of the written file ends in.
///
/// With `-Z` the longer side gets at most that many pixels; proportions stay, and nothing
/// is enlarged. Without, the natural size is kept up to `largestSide`. The output takes
/// its place in one step: on failure it is as it was before, and nothing else is left. "-" is standard output. The
/// source itself is not written over.
class Sips final : public Tool {
  public:
    Limits limits() const override;
    bool keepsAnswers() const override { return false; }
    std::variant<Job, ToolResult> begin(const Arguments& arguments) const override;
    std::optional<ToolResult> unopened(const std::string& path, const FileNote& note) const override;
    bool isSound(const std::string& question, std::string_view answer) const override;
    void warmUp() const override;
    std::vector<std::string> dataFolders() const override;
    /// `question` is the most pixels on the longer side. The answer is width, height and channels as numbers
    /// of 32 bits, and the pixels: what the PNG is made of, since a PNG from there would be foreign bytes too.
    std::optional<std::string> read(const std::string& question, Content content) override;
};

/// Pixels on a side of the largest PNG that is written. A screen shows no more, and
/// memory and time of the writing stay bounded whatever the source says of itself.
inline constexpr int largestSide = 4096;

}  // namespace marrowbeck::tools
