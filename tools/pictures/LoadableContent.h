// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "tools/pictures/PictureLibrary.h"

namespace marrowbeck::tools {

/// The content of a file in a form that libvips takes for what it is: where its loaders see another format than there
/// is, or want more than there is, they are helped.
class LoadableContent {
  public:
    /// `content` must outlive this.
    explicit LoadableContent(Content content);
    LoadableContent(const LoadableContent&) = delete;
    LoadableContent& operator=(const LoadableContent&) = delete;

    Content content() const { return content_; }
    std::string_view bytes() const { return {reinterpret_cast<const char*>(content_.data()), content_.size()}; }

    /// Whether it is a QuickDraw picture, with the 512 bytes before it.
    bool isPict() const { return isPict_; }
    /// How the rows stand as they are stored, as in Exif (1 to 8), where the format says that and its loaders disagree
    /// on whose part it is to turn them; the content says no more of it then. Otherwise 0.
    int orientation() const { return orientation_; }

    /// Leaves out what stands beside the pixels, as far as a loader may find that too large and give up the whole.
    /// False where there is no such thing.
    bool leaveOutExtras();

  private:
    void use(std::string changed);
    void completeWebp();
    void closePng();
    void completePict();
    void enterIcon();
    void straightenTarga();

    Content content_;
    std::string own_;
    bool isPict_ = false;
    int orientation_ = 0;
};

}  // namespace marrowbeck::tools
