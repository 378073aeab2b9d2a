#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace marrowbeck::tools {

/// Reads one `mime.cache`, the compiled form of the shared MIME database
/// (freedesktop.org Shared MIME-info Database, cache version 1.x). The file is
/// mapped and searched in place: opening it costs microseconds, and a name is
/// looked up without allocating. Offsets that leave the file read as empty.
class MimeCache {
  public:
    /// A type whose pattern fits a name. Types are views into the mapped file.
    struct NameMatch {
        std::string_view type;
        uint32_t weight;  ///< 0 to 100, the database's own preference
        size_t length;    ///< length of the pattern: the longer one knows more
    };

    /// A type whose magic fits a content.
    struct ContentMatch {
        std::string_view type;
        uint32_t priority;  ///< 0 to 100
    };

    /// Maps the file. A missing or foreign file gives an object whose `isOpen()` is
    /// false and which may only be destroyed or moved.
    explicit MimeCache(const std::string& path);
    ~MimeCache();
    MimeCache(MimeCache&& other) noexcept;
    MimeCache(const MimeCache&) = delete;
    MimeCache& operator=(const MimeCache&) = delete;

    bool isOpen() const { return size_ > 0; }

    /// The type that stands for this whole name, with the letters as they are, or
    /// with small ones where the case does not matter.
    std::optional<NameMatch> matchLiteral(std::string_view name, bool exactCase) const;

    /// Appends the types whose suffix (`*.jpg`) ends the name, letters taken likewise.
    void matchSuffixes(std::string_view name, bool exactCase, std::vector<NameMatch>& matches) const;

    /// Appends the types of the remaining patterns that fit the name, letters taken likewise.
    void matchGlobs(std::string_view name, bool exactCase, std::vector<NameMatch>& matches) const;

    /// The best type for a content, told by its first bytes.
    std::optional<ContentMatch> matchContent(std::string_view bytes) const;

    /// The direct parents of a type.
    std::vector<std::string_view> parents(std::string_view type) const;

    /// The present name of a type that is known by an older one; empty if it is none.
    std::string_view aliasTarget(std::string_view type) const;

  private:
    uint32_t word(size_t offset) const;
    std::string_view text(size_t offset) const;
    std::string_view bytes(size_t offset, size_t count) const;
    size_t findKey(size_t list, size_t entrySize, std::string_view key) const;
    bool matchesAnyRule(size_t firstRule, uint32_t count, std::string_view content, int depth) const;
    bool matchesValue(size_t rule, std::string_view content) const;

    const char* data_ = nullptr;
    size_t size_ = 0;
};

}  // namespace marrowbeck::tools
