// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/drawing/Graphics.h"

#include <QPainter>
#include <QWidget>
#include <utility>

#include "framework/ui/drawing/Native.h"
#include "framework/ui/drawing/NativePicture.h"

namespace framework {

Graphics::Graphics(QPainter& painter, int width, int height) : painter_(&painter), width_(width), height_(height) {}

Graphics::Graphics(Ref<Picture> picture)
    : picture_(std::move(picture)), width_(picture_->Width()), height_(picture_->Height()) {}

Graphics::Graphics(std::function<void()> refresh, int width, int height)
    : refresh_(std::move(refresh)), width_(width), height_(height) {}

Graphics::~Graphics() = default;

/// Runs the operation on the painter at hand: the event's own, or one on the picture for this operation alone.
template <class Operation>
void Graphics::draw(Operation operation) {
    if (painter_) {
        operation(*painter_);
    } else if (picture_) {
        QPainter painter(&picture_->GetPixels().image);
        operation(painter);
    } else {
        refresh_();
    }
}

void Graphics::FillRect(int x, int y, int width, int height) {
    if (x <= 0 && y <= 0 && x + width >= width_ && y + height >= height_) {
        covered_ = true;
        cover_ = foreColor_;
    }
    draw([&](QPainter& painter) { painter.fillRect(x, y, width, height, native::ToQt(foreColor_)); });
}

void Graphics::ClearRect(int x, int y, int width, int height) {
    draw([&](QPainter& painter) {
        if (picture_) {
            painter.fillRect(x, y, width, height, Qt::white);
        } else {
            painter.eraseRect(x, y, width, height);
        }
    });
}

void Graphics::DrawPicture(const Ref<Picture>& picture, int x, int y) {
    const QImage& image = native::ToQImage(picture);
    draw([&](QPainter& painter) {
        // On a fine screen a picture of few dots is enlarged.
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(QPoint(x, y), image);
    });
}

void Graphics::DrawPicture(const Ref<Picture>& picture, int x, int y, int destinationWidth, int destinationHeight,
                           int sourceX, int sourceY, int sourceWidth, int sourceHeight) {
    const QImage& image = native::ToQImage(picture);
    const double dots = image.devicePixelRatio();
    const QRectF source(sourceX * dots, sourceY * dots, sourceWidth * dots, sourceHeight * dots);
    draw([&](QPainter& painter) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(QRectF(x, y, destinationWidth, destinationHeight), image, source);
    });
}

bool Graphics::CoveredWith(Color& color) const {
    if (covered_) color = cover_;
    return covered_;
}

}  // namespace framework
