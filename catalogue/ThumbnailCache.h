// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/core.h"

namespace marrowbeck {

/// The cached thumbnail of one source image. Its file, a PNG whatever its suffix says, is called by a hash of the
/// source's escaped path, in decimal, directly followed by the source's name; so two sources of the same name in
/// different folders stay apart. IsOwnFile knows entries by that. Nothing else is stored, and one that exists counts as
/// good.
class ThumbnailEntry {
  public:
    /// Raises NilObjectException for Nil.
    explicit ThumbnailEntry(const Ref<FolderItem>& source);

    /// Makes the cache's folder, and the program's, where they are missing. Raises NilObjectException where that cannot
    /// be done.
    static void MakeFolder();

    /// The entry's file, whether it exists or not.
    Ref<FolderItem> File() const;

    /// The command that makes the entry from a source of `width` by `height` pixels. What fits the preview as it is
    /// gets converted and never enlarged; so does a source whose size is not known.
    String Command(int width, int height) const;

  private:
    String source_;
    String hash_;
    String name_;
};

}  // namespace marrowbeck
