// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

// A picture as the toolkit's images; for the sources of framework/ui and for tests of it.

#include <QIcon>
#include <QImage>
#include <QPixmap>

#include "framework/ui/drawing/Picture.h"

namespace framework {

struct Picture::Pixels {
    /// Its device pixel ratio says how many dots make a unit.
    QImage image;
};

namespace native {

inline const QImage& ToQImage(const Ref<Picture>& picture) {
    return picture->GetPixels().image;
}

/// The picture for a label or button; a Nil picture gives an empty one.
inline QPixmap ToQPixmap(const Ref<Picture>& picture) {
    return picture ? QPixmap::fromImage(ToQImage(picture)) : QPixmap();
}

/// Grown with the layout.
QIcon ToQIcon(const Ref<Picture>& picture);

}  // namespace native
}  // namespace framework
