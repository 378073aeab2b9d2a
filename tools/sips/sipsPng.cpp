// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/sips/sipsPng.h"

#include <png.h>

namespace marrowbeck::tools {

std::string pngOf(const Pixels& pixels) {
    png_image head{};
    head.version = PNG_IMAGE_VERSION;
    head.width = static_cast<png_uint_32>(pixels.width);
    head.height = static_cast<png_uint_32>(pixels.height);
    head.format = pixels.channels == 4 ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB;
    head.flags = PNG_IMAGE_FLAG_FAST;  // read once or twice, then thrown away
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(head);
    std::string bytes(size, '\0');
    const int written = png_image_write_to_memory(&head, bytes.data(), &size, 0, pixels.bytes.data(), 0, nullptr);
    bytes.resize(written != 0 ? size : 0);
    return bytes;
}

}  // namespace marrowbeck::tools
