// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "catalogue/RowRecord.h"
#include "framework/core/core.h"

namespace marrowbeck {

/// Turns one file into the texts of one row. Where the texts go, and who asks the metadata tool, is up to the derived
/// class: the row of the list on show, or a record that is printed.
class ImageRow {
  public:
    virtual ~ImageRow() = default;

    /// Gives the texts of `item` one by one, always in the same order. Raises OutOfBoundsException when the metadata
    /// tool gave no answer; what was known until then has been given.
    void Fill(const Ref<FolderItem>& item);

  protected:
    /// The text in a column.
    virtual void Show(RowRecord::Column column, const String& text) = 0;
    /// What the column's help tag says behind its label, with a unit where there is one. Not called for a profile, a
    /// copyright, keywords or a caption that is missing, nor for the camera data. Keywords of blanks alone give an
    /// empty text.
    virtual void Tell(RowRecord::Column column, const String& text) = 0;
    /// A value that goes with the row unseen.
    virtual void Keep(RowRecord::Tag tag, const String& value) = 0;
    /// The image of this path, which is escaped, has camera data.
    virtual void TellCamera(const String& path) = 0;
    /// The metadata tool's answer to MetadataQueries::kAll, empty when there is none.
    virtual String Ask(const String& path) = 0;
};

}  // namespace marrowbeck
