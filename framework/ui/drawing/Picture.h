// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <memory>

#include "framework/core/objects/Object.h"
#include "framework/core/objects/Ref.h"

namespace framework {

class FolderItem;
class Graphics;

/// A picture in memory. Its size is in the units of the window's coordinates; on a screen of high resolution a picture
/// may hold several dots to each.
class Picture : public Object {
  public:
    /// Loads a PNG or TIFF file, whatever its name says, and of the files NAME@2x.EXT and NAME@3x.EXT beside it the
    /// one that a screen of high resolution asks for. Nil for a missing or unreadable file and for any other format:
    /// the program's process decodes no files but its own.
    static Ref<Picture> Open(const Ref<FolderItem>& file);

    int Width() const;
    int Height() const;

    /// For drawing into the picture.
    framework::Graphics Graphics();

    /// The toolkit's image; see NativePicture.h. For the framework alone.
    struct Pixels;
    Pixels& GetPixels() const { return *pixels_; }
    explicit Picture(std::unique_ptr<Pixels> pixels);
    ~Picture() override;

  private:
    std::unique_ptr<Pixels> pixels_;
};

/// A blank, white picture. The depth is 32, whatever is asked for. Nil when a side is below 1 or memory is lacking.
Ref<Picture> NewPicture(int width, int height, int depth);

/// The same as Picture::Open.
Ref<Picture> OpenAsPicture(const Ref<FolderItem>& file);

}  // namespace framework
