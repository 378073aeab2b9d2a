// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/ImageFormats.h"

namespace marrowbeck {

void ImageFormats::_Initialize() {
    pImageGif = New<FileType>("image/gif", ".gif", "GIFf", "prvw");
    pImageJpeg = New<FileType>("image/jpeg", ".jfif;.jpe;.jpeg;.jpg", "JPEG", "prvw");
    pImagePict = New<FileType>("image/pict", ".pict;.pic;.pct", "PICT", "ttxt");
    pImagePng = New<FileType>("image/png", ".png", "PNGf", "ogle");
    pImageTiff = New<FileType>("image/tiff", ".jfx;.tif;.tiff", "TIFF", "????");
    pImageJpeg2000 = New<FileType>("image/jpeg2000", ".jp2", "jp2 ", "ogle");
}

String ImageFormats::All() {
    return "image/gif;image/jpeg;image/pict;image/png;image/tiff;image/jpeg2000;";
}

}  // namespace marrowbeck
