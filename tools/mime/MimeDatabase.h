#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/mime/MimeCache.h"

namespace marrowbeck::tools {

/// The shared MIME database of the desktop: all its caches, from the user's own
/// to the system's (`XDG_DATA_HOME`, `XDG_DATA_DIRS`).
///
/// It is read here and not through a toolkit because a tool runs once for each
/// file: linking a toolkit for it took three times as long as all the rest.
/// Types are views that live as long as the database.
class MimeDatabase {
  public:
    /// How much of a file `typeByContent` can make use of.
    static constexpr size_t contentBytes = 32768;

    MimeDatabase();

    /// True where no database is installed: then no type is ever found.
    bool isEmpty() const { return caches_.empty(); }

    /// The type that the name tells; where it tells nothing or two things, the one
    /// that the content tells. `readContent` gives the file's first bytes, and is
    /// called only when they are needed. Empty when neither knows.
    std::string_view typeByName(std::string_view name, const std::function<std::string()>& readContent) const;

    /// The type that the content tells, or a finer one of the same family that the
    /// name tells (raw camera formats look like TIFF). A content that tells nothing
    /// leaves the word to the name. Empty when neither knows.
    std::string_view typeByContent(std::string_view name, std::string_view content) const;

    /// True when `type` is `ancestor` or descends from it.
    bool inherits(std::string_view type, std::string_view ancestor) const;

    /// True when `type` or one of its ancestors is an image type.
    bool isImage(std::string_view type) const;

    /// The name of a type for people, in the user's language, such as "JPEG image";
    /// empty when the database gives none.
    std::string comment(std::string_view type) const;

  private:
    std::vector<std::string_view> namedTypes(std::string_view name) const;
    std::string_view contentType(std::string_view content) const;
    bool anyAncestor(std::string_view type, const std::function<bool(std::string_view)>& test, int depth) const;

    std::vector<std::string> folders_;
    std::vector<MimeCache> caches_;
};

}  // namespace marrowbeck::tools
