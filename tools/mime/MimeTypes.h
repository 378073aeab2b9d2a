// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tools/pictures/PictureLibrary.h"

namespace marrowbeck::tools {

/// The types of files by the shared MIME database of the desktop. For one thread.
class MimeTypes {
  public:
    /// How much of a file the database can make use of.
    static constexpr std::size_t contentBytes = 16384;

    /// False where no database is installed: then no type is ever found.
    static bool areInstalled();

    /// The folders of the database, from the user's own to the system's.
    static std::vector<std::string> folders();

    /// Reads the database's caches, so that forks of this process need not. Starts no thread.
    static void warmUp();

    /// The type that the name tells, such as "image/jpeg"; where it tells nothing or two things, the one that the
    /// content tells. `readContent` gives the file's first bytes, and is called only when they are needed.
    /// What a name tells is remembered by its end, so that a folder of many files costs next to nothing a file.
    std::string typeByName(std::string_view name, const std::function<std::string()>& readContent);

    /// True when the type or one of its ancestors is an image type.
    bool isImage(const std::string& type);

    /// The kind of a file for people, in the user's language, such as "JPEG image", by its content, or by a finer type
    /// of the same family that its name tells (raw camera formats look like TIFF). A content that tells nothing leaves
    /// the word to the name. Empty when neither knows.
    std::string kindOf(std::string_view name, Content content);

  private:
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };
    template <class Value>
    using Memory = std::unordered_map<std::string, Value, Hash, std::equal_to<>>;

    Memory<std::vector<std::string>> typesByEnd_;
    Memory<bool> images_;
    Memory<std::string> kinds_;
};

/// The user's languages as gettext orders them, best first; empty in the C locale.
std::vector<std::string> userLanguages();

}  // namespace marrowbeck::tools
