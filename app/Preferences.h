// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/core.h"
#include "plist/plist.h"

namespace marrowbeck {

/// The program's folder under the user's application data, and what lies in it: the preferences, scratch space for
/// saving them, and the thumbnails. What the program remembers is kept in memory and written once, at quit. Main
/// thread, but for CreateFolder and ThumbnailsFolder.
namespace Preferences {

/// The document, whose keys stand on its `root`. Nil until LoadPreferences, as are the two files.
const Ref<plist>& prefs();
/// Where it is kept.
const Ref<FolderItem>& PreferenceFile();
/// What every save writes first. Its name is another one in each run.
const Ref<FolderItem>& TempFile();

/// Makes the folders that are missing, closes those that are there to other people, clears away what a run that died
/// left behind, and reads the preferences. Where there are none the document is empty. A file that is no property list
/// is put aside, which a message tells.
void LoadPreferences();
/// Writes the document. Raises FileReplaceException, and leaves the file as it was, where that cannot be done.
void SavePreferences();
/// Digits and points, of no fixed length.
String generateRandomString();

/// The folder "thumbnails" in the program's folder, whether it exists or not.
Ref<FolderItem> ThumbnailsFolder();
/// Makes a folder, and those above it, where it is missing, for this person alone: on a new account not even the one
/// for application data is there. A failure is silent.
void CreateFolder(const Ref<FolderItem>& folder);
/// Empties `folder` of files and folders; the folder itself stays. Through a link only files that this program made are
/// taken, as IsOwnFile tells. What cannot be deleted stays without a word. Raises NilObjectException for Nil.
void deleteFilesFromFolder(const Ref<FolderItem>& folder);

}  // namespace Preferences
}  // namespace marrowbeck
