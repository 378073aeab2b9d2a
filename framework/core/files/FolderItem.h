// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "framework/core/files/Disk.h"
#include "framework/core/objects/Object.h"
#include "framework/core/objects/Ref.h"
#include "framework/core/text/String.h"

namespace framework {

class BinaryStream;
class TextInputStream;
class TextOutputStream;

namespace internal {
class ChildList;
}

/// A handle on an absolute path, whether something is there or not. Paths are bytes: names that are no UTF-8, or that
/// hold line ends, work like any other. An item stands for exactly what its path names, so that one made for a link is
/// the link; which of the makers below follow a link is said with each. Questions are answered from the disk each time,
/// but for the list of children and what it tells of their types, and for the length of the file that a tool has just
/// told of. Nothing here raises; failures are False, Nil, 0 or an empty text.
///
/// The disk may take its time. An item that is made from a text, or reached from such a one, is asked about aside: the
/// thread that asks parks, and what is not answered in half a minute is not there. Files of the program's own, to which
/// Own and SpecialFolder lead, are asked about directly. So is whatever opens, writes, moves or deletes.
class FolderItem : public Object {
  public:
    /// From a path, relative ones starting at the current folder, with a link at its end followed; or from a text that
    /// GetSaveInfo gave, which stands for the very item that it was taken from. A text that can be no path makes an
    /// item that does not exist and that nothing can be done with. The mode is 0.
    explicit FolderItem(const String& pathOrSaveInfo, int mode = 0);
    ~FolderItem() override;

    /// From a path likewise, for the program's own files.
    static Ref<FolderItem> Own(const String& path);

    /// The item called `name` in this folder, existing or not, with a link followed. An empty name gives this folder
    /// itself; a name that no file can have gives Nil.
    Ref<FolderItem> Child(const String& name) const;
    /// The same without following a link.
    Ref<FolderItem> TrueChild(const String& name) const;

    /// Reads the folder and gives the number of its direct children, hidden ones too; 0 when it is none or may not be
    /// read. The list, sorted by the bytes of the names, is kept for TrueItem until the next call.
    int Count() const;
    /// Why the last Count may not have found all children, by the system's number for it; 0 where it has.
    int CountError() const;
    /// The direct child at `index`, from 1, as Count found it, links not followed; Nil when there is none. Reads the
    /// folder only if Count was never called.
    Ref<FolderItem> TrueItem(int index) const;

    bool Exists() const;
    /// Whether it is a folder. A link to one is none.
    bool Directory() const;
    /// The path of the folder that it is or, as a link, leads to; empty where it is none, and where the disk has not
    /// told by then.
    String FolderWithin(int milliseconds) const;
    /// Why it, or what it leads to as a link, may not be used as `rights` of access(2) say, by the system's number; 0
    /// where it may.
    int AccessError(int rights) const;
    /// Whether both exist and are one and the same, by whatever paths.
    bool IsSame(const Ref<FolderItem>& other) const;
    /// Size in bytes, 0 when there is nothing. Of a link, that of what it leads to, as its content is that one's.
    std::uint64_t Length() const;

    /// The name: the last part of the path, "/" for the root.
    String Name() const;
    /// The name as valid UTF-8 in which nothing is invisible, for people.
    String DisplayName() const;
    String AbsolutePath() const { return path_; }
    /// The path escaped so that a shell reads it as one word. Its parts between the slashes are so escaped by
    /// themselves.
    String ShellPath() const;
    /// The "file:" URL by RFC 3986. Colons of the path stand in it as they are.
    String URLPath() const;
    /// A text from which the constructor and GetFolderItem make this item again. It is plain ASCII, whatever the path,
    /// and opaque. The base and the mode are taken for the interface's sake: all such texts are absolute.
    String GetSaveInfo(const Ref<FolderItem>& relativeTo, int mode) const;
    /// The enclosing folder, Nil for the root.
    Ref<FolderItem> Parent() const;

    /// The name of the registered FileType that this matches, else the empty text: see FileType.
    String Type() const;

    /// Makes a folder here; True when there is one afterwards. One that is made gets `permissions`, less those that the
    /// process's umask takes away.
    bool CreateAsFolder(mode_t permissions = 0777) const;
    /// Takes from a folder the rights of everybody but its owner. What a link leads to keeps them, and so does what is
    /// another person's.
    void CloseToOthers() const;
    /// Removes a file, an empty folder, or a link itself.
    bool Delete() const;
    /// Copies the file's content, mode, Mac type and creator to `destination`, or into it when that is a folder.
    /// Nothing that exists is overwritten, and nothing half-copied is left.
    bool CopyFileTo(const Ref<FolderItem>& destination) const;
    /// Gives the file, or the link itself, the path of `destination` on the same volume, in the place of a file that is
    /// there. Both are kept when that fails.
    bool MoveFileTo(const Ref<FolderItem>& destination) const;

    /// Opens a file for reading; Nil when that fails.
    Ref<TextInputStream> OpenAsTextFile() const;
    /// Makes or empties a file and opens it for writing; Nil when that fails. One that is made gets `permissions`, less
    /// those that the process's umask takes away.
    Ref<TextOutputStream> CreateTextFile(mode_t permissions = 0666) const;
    /// Opens an existing file, to be written too or only to be read; Nil when that fails.
    Ref<BinaryStream> OpenAsBinaryFile(bool write = false) const;

    /// Opens it in the desktop's application for it; False when it does not exist or nothing could be started.
    bool Launch(bool activate = true) const;

    /// The four characters of the old type and creator codes, kept as extended attributes; a file system without those
    /// forgets them. An empty text takes the code away.
    String MacType() const;
    void MacType(const String& code) const;
    String MacCreator() const;
    void MacCreator(const String& code) const;
    /// Whether the desktop shows it. A name with a leading dot is what hides a file here, and a name is not an
    /// attribute: setting this does nothing.
    bool Visible() const;
    void Visible(bool visible) const;
    /// A number that is the same for all items of a volume; 0 when there is nothing.
    int MacVRefNum() const;

  private:
    friend std::vector<Ref<FolderItem>> FoldersOf(const std::vector<std::string>& paths);

    /// Tag: the path is used as it stands.
    struct Exact {};

  public:
    FolderItem(Exact, const internal::Disk& disk, String path);

  private:
    const char* path() const { return path_.CString(); }
    Ref<FolderItem> at(std::string_view path) const;
    base::PathFacts facts() const;
    internal::FileCodes codes() const;
    const Ref<internal::ChildList>& list() const;

    String path_;
    internal::Disk disk_;
    mutable Ref<internal::ChildList> children_;
    /// The list that this comes from, and its place there, so that the types of children cost no question each.
    Ref<internal::ChildList> siblings_;
    std::size_t place_ = 0;
};

/// The folders of several absolute paths, each with a link at its end followed; Nil where that leads to no folder. All
/// are asked about at once.
std::vector<Ref<FolderItem>> FoldersOf(const std::vector<std::string>& paths);

/// The item of a path or of a text that GetSaveInfo gave, as FolderItem's constructor makes it; Nil for a text that can
/// be no path, the empty one above all.
Ref<FolderItem> GetFolderItem(const String& pathOrSaveInfo, int mode = 0);

}  // namespace framework
