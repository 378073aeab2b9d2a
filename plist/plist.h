// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include "framework/core/core.h"
#include "plist/BackReference.h"
#include "plist/plistDict.h"

namespace marrowbeck {

/// A property list: a tree of keys and values that is read from a file and saved to it, as the published XML format,
/// version 1.0, or in binary form by way of the system's `plutil`. Made for preferences:
///
///     const auto document = New<plist>(file);      // a missing file makes an empty document
///     document->root->GetBoolean("Sub", true);     // reading a missing key creates it
///     document->Save();
///
/// A failed operation sets `error` and `errorMessage`; a later one that works clears them, save for Load and Save.
/// The reader goes by lines, not by XML: one element to a line, indented with tabs, as `plutil -convert xml1` and Save
/// write it. Anything else is dropped or misread without a word.
/// For the program's one thread. Reading, writing and searching let other threads run.
class plist : public Object {
  public:
    /// Loads `file`; see Load.
    plist(const Ref<FolderItem>& file, const Ref<FolderItem>& defaultFile);
    explicit plist(const Ref<FolderItem>& file);
    ~plist() override;

    /// Where every document of the process is written before it takes its file's place, so that a crash leaves the old
    /// file or the new one. Set once by the program, to a file on the volume of the documents; saving without it raises
    /// NilObjectException.
    static const Ref<FolderItem>& StagingFile();
    static void StagingFile(const Ref<FolderItem>& file);

    /// Writes the document to its file. With `cleanup`, Cleanup follows. Where the staging file cannot be made or
    /// written, `error` is set and FileReplaceException is raised, unless an earlier save has left one, which then
    /// takes the file's place. What keeps the file from being replaced raises FileReplaceException too, a key without a
    /// value KeyNotFoundException, and a tree that is nested too deeply StackOverflowException; the file stays as it
    /// was. A binary document that cannot be converted back is left as XML.
    virtual void Save(bool cleanup);
    /// Reads `file`, or, where there is none, `defaultFile`, which may be Nil; what is saved later is `file` in both
    /// cases. Sets `error` when neither exists, which leaves an empty document that can be used, and when the file has
    /// no line "<dict>", as one in binary form has not where a folder stands in the way of its XML copy. A file that
    /// cannot be opened raises NilObjectException, one that is nested too deeply StackOverflowException.
    virtual void Load(const Ref<FolderItem>& file, const Ref<FolderItem>& defaultFile);
    /// Deletes the XML copy that was made of a binary file. A later Save makes it again.
    virtual void Cleanup();
    virtual void Save();

    /// Goes to the first leaf whose text holds `needle`, whatever the case, and tells it in the found fields; False,
    /// with empty fields, when there is none. Moves the cursors of all nodes. An empty dictionary or array in the tree
    /// raises KeyNotFoundException.
    virtual bool Find(const String& needle);
    /// Goes to the next one; False, with the fields as they were, when there is none. With another needle than Find was
    /// given it starts from the beginning each time.
    virtual bool FindNext(const String& needle);
    /// Forgets which leaves in and under `node` a search has told.
    virtual void ClearSearch(const Ref<plistDict>& node);

    /// Writes over the document's own file in place and hides it. `file` is not looked at.
    virtual void SaveAsInvisible(const Ref<FolderItem>& file);
    virtual void SaveAsInvisible(const Ref<FolderItem>& file, bool cleanup);

    /// Puts the tree on the clipboard, for debugging: the lines of deeper nodes first. Not virtual, as it stands in the
    /// library for programs with windows.
    void Dump();

    /// For BackReference.
    const Ref<Anchor<plist>>& BackAnchor() { return anchor_.For(this); }

    /// The top node, made anew by each Load.
    Ref<plistDict> root;
    /// Whether the last operation failed, and why.
    bool error = false;
    String errorMessage;
    /// Why the last Save could not write the staging file, by the operating system's number; 0 where it could.
    int systemError = 0;
    /// The file that Save replaces; for a binary document the XML copy beside it.
    Ref<FolderItem> savePath;
    /// Whether the file was in binary form; then `org` is that file.
    bool isBinary = false;
    Ref<FolderItem> org;
    /// Whether each error of the tree is shown in an alert too.
    bool debug = false;
    /// What a search found last.
    Ref<plistDict> foundDict;
    String foundKey;
    String foundValue;
    String foundType;
    /// Kept for clients; nothing here uses them.
    bool brk = false;
    bool findingNext = false;

  protected:
    /// The lines of the file up to "<dict>", from index 1.
    Array<String> headers{String()};

  private:
    bool ReadStructure(const Ref<plistDict>& node, const String& needle, const String& mode);
    void writeDocument(const Ref<TextOutputStream>& stream);
    void convertToBinary();
    void loadText(const Ref<TextInputStream>& stream, String line);
    Ref<TextInputStream> openAsText(const Ref<FolderItem>& binary);
    void beginDocument();

    String lastSearch;
    AnchorOwner<plist> anchor_;
};

}  // namespace marrowbeck
