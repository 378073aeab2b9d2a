// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/core.h"

namespace marrowbeck {

/// The list without a window: what the rows of a folder's images show, printed as text.
struct FolderListing {
    enum class Form { Csv, Json };

    /// As it was typed: relative to the current folder.
    String Folder;
    bool Subfolders = false;
    Form Shape = Form::Csv;

    /// Prints a record for each image on standard output, each as soon as it is known, in the order in which the search
    /// of the window finds them. What cannot be read, and what makes no sense, is told on standard error and ends
    /// nothing. The exit status: 0, or 1 when the list may not be whole, since the folder, one in it or a file could
    /// not be read, or could not be written. Needs no display; blocks.
    int Print() const;
};

}  // namespace marrowbeck
