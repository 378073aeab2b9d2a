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

  private:
    void use(std::string changed);
    void completeWebp();
    void closePng();
    void markPict();
    void enterIcon();

    Content content_;
    std::string own_;
};

}  // namespace marrowbeck::tools
