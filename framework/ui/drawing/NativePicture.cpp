// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/ui/drawing/NativePicture.h"

#include <QGuiApplication>

#include "framework/ui/drawing/LayoutScale.h"

namespace framework::native {

QIcon ToQIcon(const Ref<Picture>& picture) {
    if (!picture || LayoutScale() == 1) return QIcon(ToQPixmap(picture));
    const QImage& image = ToQImage(picture);
    const double density = qGuiApp->devicePixelRatio();
    const QSizeF dots = image.deviceIndependentSize() * LayoutScale() * density;
    QPixmap grown = QPixmap::fromImage(image.scaled(dots.toSize(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
    grown.setDevicePixelRatio(density);
    return QIcon(grown);
}

}  // namespace framework::native
