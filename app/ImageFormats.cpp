// SPDX-License-Identifier: GPL-2.0-or-later
#include "app/ImageFormats.h"

namespace marrowbeck {
namespace {

Ref<FileType> gif;
Ref<FileType> jpeg;
Ref<FileType> pict;
Ref<FileType> png;
Ref<FileType> tiff;
Ref<FileType> jpeg2000;

}  // namespace

void ImageFormats::_Initialize() {
    gif = New<FileType>("image/gif", ".gif", "GIFf", "prvw");
    jpeg = New<FileType>("image/jpeg", ".jfif;.jpe;.jpeg;.jpg", "JPEG", "prvw");
    pict = New<FileType>("image/pict", ".pict;.pic;.pct", "PICT", "ttxt");
    png = New<FileType>("image/png", ".png", "PNGf", "ogle");
    tiff = New<FileType>("image/tiff", ".jfx;.tif;.tiff", "TIFF", "????");
    jpeg2000 = New<FileType>("image/jpeg2000", ".jp2", "jp2 ", "ogle");
}

Ref<FileType> ImageFormats::pImageGif() {
    return gif;
}

Ref<FileType> ImageFormats::pImageJpeg() {
    return jpeg;
}

Ref<FileType> ImageFormats::pImagePict() {
    return pict;
}

Ref<FileType> ImageFormats::pImagePng() {
    return png;
}

Ref<FileType> ImageFormats::pImageTiff() {
    return tiff;
}

Ref<FileType> ImageFormats::pImageJpeg2000() {
    return jpeg2000;
}

String ImageFormats::All() {
    return "image/gif;image/jpeg;image/pict;image/png;image/tiff;image/jpeg2000;";
}

}  // namespace marrowbeck
