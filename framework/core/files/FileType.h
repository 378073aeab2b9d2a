// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string_view>

#include "framework/core/objects/Object.h"
#include "framework/core/text/String.h"

namespace framework {

/// A kind of file, by name. Each record takes part in what FolderItem::Type answers as long as it lives. A file is of
/// the first record, in the order of their making, that has its suffix; else of the first that has its Mac type and
/// creator, where "????" in a record stands for any. A record that names neither suffix nor type answers for nothing:
/// it is for those who accept every file.
class FileType : public Object {
  public:
    FileType();
    FileType(const String& name, const String& extensions, const String& macType, const String& macCreator);
    ~FileType() override;

    const String& Name() const { return name_; }
    void Name(const String& name) { name_ = name; }
    /// Suffixes with their dots, with ";" between them, such as ".tif;.tiff". Case does not matter.
    const String& Extensions() const { return extensions_; }
    void Extensions(const String& extensions) { extensions_ = extensions; }
    /// Four characters each.
    const String& MacType() const { return macType_; }
    void MacType(const String& code) { macType_ = code; }
    const String& MacCreator() const { return macCreator_; }
    void MacCreator(const String& code) { macCreator_ = code; }

    /// The name of the record for a file called `fileName`, empty when there is none.
    static String NameForFile(std::string_view fileName);
    /// The name of the record for a file with these codes, empty when there is none.
    static String NameForCodes(const String& macType, const String& macCreator);
    /// The name of the record for folders, which by their old codes are of type "fold"; empty when there is none.
    static String NameForFolder();

  private:
    bool hasSuffixOf(std::string_view fileName) const;

    String name_;
    String extensions_;
    String macType_;
    String macCreator_;
    /// The records in the order of their making. A chain through the records themselves, since they live in globals,
    /// which are made and destroyed in an order that nobody knows.
    FileType* next_ = nullptr;
    static FileType* first_;
};

}  // namespace framework
