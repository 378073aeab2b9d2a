// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/sips/EmbeddedPreview.h"

#include <algorithm>
#include <cstddef>

namespace marrowbeck::tools {

namespace {

int longer(const Exiv2::PreviewProperties& preview) {
    return static_cast<int>(std::min<std::size_t>(std::max(preview.width_, preview.height_), 1U << 30));
}

EmbeddedPreview previewOf(const Exiv2::Image& image, int side) {
    const Exiv2::PreviewManager manager(image);
    const Exiv2::PreviewPropertiesList list = manager.getPreviewProperties();  // from small to large
    if (list.empty()) return {};
    const auto enough = std::find_if(list.begin(), list.end(), [side](const auto& one) { return longer(one) >= side; });
    const Exiv2::PreviewProperties& chosen = enough == list.end() ? list.back() : *enough;
    const Exiv2::PreviewImage found = manager.getPreviewImage(chosen);
    if (found.pData() == nullptr) return {};
    return {{reinterpret_cast<const char*>(found.pData()), found.size()}, longer(chosen)};
}

}  // namespace

EmbeddedPreview embeddedPreview(const Exiv2::Image& image, int side) {
    return guarded([&] { return previewOf(image, side); });
}

}  // namespace marrowbeck::tools
