// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/drawing/Picture.h"

#include <QFile>
#include <QGuiApplication>
#include <QImageReader>
#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>

#include "base/Descriptor.h"
#include "framework/core/files/FolderItem.h"
#include "framework/ui/drawing/Graphics.h"
#include "framework/ui/drawing/LayoutScale.h"
#include "framework/ui/drawing/NativePicture.h"

namespace framework {
namespace {

/// The format by the first bytes of the file, null for all but the two that we make ourselves.
const char* formatOf(QFile& file) {
    const QByteArray start = file.peek(8);
    if (start == "\x89PNG\r\n\x1a\n") return "png";
    if (start.startsWith(QByteArray("II*\0", 4)) || start.startsWith(QByteArray("MM\0*", 4))) return "tiff";
    return nullptr;
}

/// The file's image, empty on failure. Opened by its bytes, since a name need not be valid text.
QImage load(const std::string& path) {
    const base::Descriptor descriptor = base::Descriptor::OpenForReading(path.c_str());
    QFile file;
    if (!descriptor.IsOpen() || !file.open(descriptor.Number(), QIODevice::ReadOnly)) return {};
    const char* const format = formatOf(file);
    if (!format) return {};
    QImageReader reader(&file, format);
    reader.setAutoDetectImageFormat(false);
    QImage image = reader.read();
    // A kind that can be drawn on, whatever the file has.
    image.convertTo(image.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32);
    return image;
}

/// "folder/name.png" as "folder/name@2x.png".
std::string withScale(const std::string& path, int scale) {
    const std::size_t nameStart = path.rfind('/') + 1;
    const std::size_t dot = path.rfind('.');
    const std::size_t end = dot == std::string::npos || dot <= nameStart ? path.size() : dot;
    return path.substr(0, end) + "@" + std::to_string(scale) + "x" + path.substr(end);
}

}  // namespace

Picture::Picture(std::unique_ptr<Pixels> pixels) : pixels_(std::move(pixels)) {}

Picture::~Picture() = default;

Ref<Picture> Picture::Open(const Ref<FolderItem>& file) {
    constexpr int kLargestScale = 3;
    const std::string path = file->AbsolutePath().ToStd();
    // Icons grow with the layout.
    const double ratio = qGuiApp ? qGuiApp->devicePixelRatio() * native::LayoutScale() : 1.0;
    QImage image;
    for (int scale = std::min(static_cast<int>(std::ceil(ratio)), kLargestScale); scale > 1 && image.isNull();
         --scale) {
        image = load(withScale(path, scale));
        image.setDevicePixelRatio(scale);
    }
    if (image.isNull()) {
        image = load(path);
        image.setDevicePixelRatio(1.0);
    }
    if (image.isNull()) return Nil;
    return New<Picture>(std::make_unique<Pixels>(Pixels{std::move(image)}));
}

int Picture::Width() const {
    return static_cast<int>(std::lround(pixels_->image.deviceIndependentSize().width()));
}

int Picture::Height() const {
    return static_cast<int>(std::lround(pixels_->image.deviceIndependentSize().height()));
}

Graphics Picture::Graphics() {
    return framework::Graphics(Ref<Picture>(this));
}

Ref<Picture> NewPicture(int width, int height, int) {
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull()) return Nil;
    image.fill(Qt::white);
    return New<Picture>(std::make_unique<Picture::Pixels>(Picture::Pixels{std::move(image)}));
}

Ref<Picture> OpenAsPicture(const Ref<FolderItem>& file) {
    return Picture::Open(file);
}

}  // namespace framework
