#pragma once

#include "framework/core/core.h"

namespace marrowbeck {

/// The program's folder under the user's application data, and what lies in it.
namespace Preferences {

/// The folder "thumbnails" in the program's folder, whether it exists or not.
Ref<FolderItem> ThumbnailsFolder();

/// Empties `folder` of files and folders; the folder itself stays. What cannot be deleted stays without a word. Raises
/// NilObjectException for Nil.
void deleteFilesFromFolder(const Ref<FolderItem>& folder);

}  // namespace Preferences
}  // namespace marrowbeck
