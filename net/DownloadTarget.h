// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/core.h"

namespace marrowbeck {

/// The place of a download that goes by the name which a stranger gave it. On the Desktop it takes the place of a file
/// of its name; where there is no Desktop, or that is the home folder itself, it goes to the person's download folder,
/// else to the home folder, under a number if its name is taken. Of the name, dots at the beginning, control
/// characters, line ends and marks that change the direction of writing are left out.
///
/// A file whose place it takes is set aside beside it, under a name of its own, as long as this lives: unless the
/// download was completed meanwhile, it is then back in its place. Main thread.
class DownloadTarget {
  public:
    explicit DownloadTarget(const String& name);
    ~DownloadTarget();
    DownloadTarget(const DownloadTarget&) = delete;
    DownloadTarget& operator=(const DownloadTarget&) = delete;

    /// The file to be written; Nil where the name is none of a file, or where a file in its place cannot be set aside.
    const Ref<FolderItem>& File() const { return file_; }
    /// The name that the file has in its folder.
    String Name() const { return name_; }
    /// Where that is, for people, such as "on your Desktop".
    String Place() const { return place_; }

    /// The download is over, and the file stays. Where it is known not to be whole, a file that was set aside is back
    /// in its place all the same, and File and Name are beside it.
    void Complete(bool whole);

  private:
    Ref<FolderItem> folder_;
    String place_;
    String name_;
    Ref<FolderItem> file_;
    /// What was set aside, Nil for nothing.
    Ref<FolderItem> aside_;
};

}  // namespace marrowbeck
