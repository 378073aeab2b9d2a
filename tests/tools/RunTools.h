// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QImage>
#include <string>

#include "tests/tools/TestFiles.h"
#include "tools/mdls/mdls.h"
#include "tools/service/Service.h"
#include "tools/sips/sips.h"

namespace marrowbeck::tools {

/// The tools as functions, each call with a confined reader of its own. What readers load is loaded here once.
template <class Tool>
ToolResult runWarm(const Arguments& arguments) {
    static Tool tool;
    static const bool warm = (tool.warmUp(), true);
    static_cast<void>(warm);
    return runOnce(tool, arguments);
}

inline ToolResult mdls(const Arguments& arguments) {
    return runWarm<Mdls>(arguments);
}

inline ToolResult sips(const Arguments& arguments) {
    return runWarm<Sips>(arguments);
}

/// What `sips` makes of a file, with a limit on the longer side or none; null where it fails.
inline QImage preview(const std::string& path, int side = 0) {
    const TemporaryFolder folder;
    const std::string target = folder.Path("preview");
    Arguments arguments = {"-s", "format", "png"};
    if (side > 0) arguments.insert(arguments.end(), {"-Z", std::to_string(side)});
    arguments.insert(arguments.end(), {"--", path, "--out", target});
    if (sips(arguments).status != exitSuccess) return {};
    return QImage(QString::fromStdString(target), "png").convertToFormat(QImage::Format_ARGB32);
}

}  // namespace marrowbeck::tools
