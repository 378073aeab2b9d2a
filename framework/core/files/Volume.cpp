// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/files/Volume.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "framework/core/files/TextInputStream.h"

namespace framework {

namespace {

/// A path as the list of mounts writes it: blank, tab, line end and backslash are a backslash and three octal digits.
std::string unescape(std::string_view text) {
    const auto isOctal = [](char byte) { return byte >= '0' && byte <= '7'; };
    std::string plain;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\\' && i + 3 < text.size() && std::all_of(&text[i + 1], &text[i + 1] + 3, isOctal)) {
            plain += static_cast<char>((text[i + 1] - '0') * 64 + (text[i + 2] - '0') * 8 + (text[i + 3] - '0'));
            i += 3;
        } else {
            plain += text[i];
        }
    }
    return plain;
}

std::vector<std::string> mountPoints() {
    std::vector<std::string> points = {"/"};
    const Ref<TextInputStream> mounts = FolderItem::Own("/proc/self/mounts")->OpenAsTextFile();
    while (mounts && !mounts->EndOfFile()) {
        const String line = mounts->ReadLine();
        std::string_view rest = line.Bytes();
        rest.remove_prefix(std::min(rest.find(' ') + 1, rest.size()));
        std::string point = unescape(rest.substr(0, rest.find(' ')));
        if (point.starts_with('/') && std::find(points.begin(), points.end(), point) == points.end()) {
            points.push_back(std::move(point));
        }
    }
    return points;
}

}  // namespace

int VolumeCount() {
    return static_cast<int>(mountPoints().size());
}

Ref<FolderItem> Volume(int index) {
    const std::vector<std::string> points = mountPoints();
    if (index < 0 || static_cast<std::size_t>(index) >= points.size()) return Nil;
    return New<FolderItem>(String(points[static_cast<std::size_t>(index)]));
}

}  // namespace framework
