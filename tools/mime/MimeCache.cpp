#include "tools/mime/MimeCache.h"

#include <fcntl.h>
#include <fnmatch.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <utility>

namespace marrowbeck::tools {

namespace {

// Where the header keeps the offset of each list.
constexpr size_t aliasList = 4;
constexpr size_t parentList = 8;
constexpr size_t literalList = 12;
constexpr size_t suffixTree = 16;
constexpr size_t globList = 20;
constexpr size_t magicList = 24;
constexpr size_t headerSize = 40;

constexpr uint32_t weightMask = 0xff;
constexpr uint32_t caseSensitive = 0x100;

// Rules nest a few levels deep; a damaged file could nest them in a circle.
constexpr int maximumRuleDepth = 16;

char smallLetter(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
}

std::string inSmallLetters(std::string_view name) {
    std::string small(name);
    std::transform(small.begin(), small.end(), small.begin(), smallLetter);
    return small;
}

}  // namespace

MimeCache::MimeCache(const std::string& path) {
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0) return;
    struct stat status {};
    if (fstat(descriptor, &status) == 0 && status.st_size > static_cast<off_t>(headerSize)) {
        const auto size = static_cast<size_t>(status.st_size);
        void* const mapped = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
        if (mapped != MAP_FAILED) {
            data_ = static_cast<const char*>(mapped);
            size_ = size;
        }
    }
    ::close(descriptor);
    constexpr uint32_t majorVersion = 1;
    if (isOpen() && word(0) >> 16 != majorVersion) {
        munmap(const_cast<char*>(data_), size_);
        size_ = 0;
    }
}

MimeCache::~MimeCache() {
    if (isOpen()) munmap(const_cast<char*>(data_), size_);
}

MimeCache::MimeCache(MimeCache&& other) noexcept
    : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)) {}

uint32_t MimeCache::word(size_t offset) const {
    if (offset > size_ || size_ - offset < 4) return 0;
    uint32_t value = 0;
    for (size_t i = 0; i < 4; ++i) value = value << 8 | static_cast<unsigned char>(data_[offset + i]);
    return value;
}

std::string_view MimeCache::bytes(size_t offset, size_t count) const {
    if (offset > size_ || size_ - offset < count) return {};
    return {data_ + offset, count};
}

std::string_view MimeCache::text(size_t offset) const {
    if (offset >= size_) return {};
    const std::string_view rest(data_ + offset, size_ - offset);
    return rest.substr(0, std::min(rest.find('\0'), rest.size()));
}

/// The offset of the entry with this key in a sorted list, or 0.
size_t MimeCache::findKey(size_t list, size_t entrySize, std::string_view key) const {
    size_t low = 0;
    size_t high = word(list);
    while (low < high) {
        const size_t middle = low + (high - low) / 2;
        const size_t entry = list + 4 + middle * entrySize;
        const int order = text(word(entry)).compare(key);
        if (order == 0) return entry;
        if (order < 0) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    return 0;
}

std::optional<MimeCache::NameMatch> MimeCache::matchLiteral(std::string_view name, bool exactCase) const {
    const std::string key = exactCase ? std::string(name) : inSmallLetters(name);
    const size_t entry = findKey(word(literalList), 12, key);
    if (entry == 0 || (!exactCase && (word(entry + 8) & caseSensitive) != 0)) return std::nullopt;
    return NameMatch{text(word(entry + 4)), word(entry + 8) & weightMask, name.size()};
}

void MimeCache::matchSuffixes(std::string_view name, bool exactCase, std::vector<NameMatch>& matches) const {
    // The tree spells suffixes from their end, a character a level; a child whose
    // character is 0 holds a type. Characters beyond ASCII end the search, as no
    // type of the database has a suffix with one.
    size_t count = word(word(suffixTree));
    size_t first = word(word(suffixTree) + 4);
    for (size_t length = 1; length <= name.size() && count > 0; ++length) {
        const char letter = exactCase ? name[name.size() - length] : smallLetter(name[name.size() - length]);
        if (letter <= 0) return;
        size_t low = 0;
        size_t high = count;
        while (low < high) {
            const size_t middle = low + (high - low) / 2;
            if (word(first + middle * 12) < static_cast<uint32_t>(letter)) {
                low = middle + 1;
            } else {
                high = middle;
            }
        }
        const size_t node = first + low * 12;
        if (low == count || word(node) != static_cast<uint32_t>(letter)) return;
        count = word(node + 4);
        first = word(node + 8);
        for (size_t i = 0; i < count && first + i * 12 < size_ && word(first + i * 12) == 0; ++i) {
            const uint32_t flags = word(first + i * 12 + 8);
            if (!exactCase && (flags & caseSensitive) != 0) continue;
            matches.push_back({text(word(first + i * 12 + 4)), flags & weightMask, length});
        }
    }
}

void MimeCache::matchGlobs(std::string_view name, bool exactCase, std::vector<NameMatch>& matches) const {
    const size_t list = word(globList);
    const size_t count = std::min<size_t>(word(list), size_ / 12);
    const std::string terminated = exactCase ? std::string(name) : inSmallLetters(name);
    for (size_t entry = list + 4; entry < list + 4 + count * 12; entry += 12) {
        const std::string_view pattern = text(word(entry));
        if (!exactCase && (word(entry + 8) & caseSensitive) != 0) continue;
        if (pattern.empty() || fnmatch(pattern.data(), terminated.c_str(), 0) != 0) continue;
        matches.push_back({text(word(entry + 4)), word(entry + 8) & weightMask, pattern.size()});
    }
}

bool MimeCache::matchesValue(size_t rule, std::string_view content) const {
    const size_t start = word(rule);
    const size_t starts = word(rule + 4);
    const size_t length = word(rule + 12);
    const std::string_view value = bytes(word(rule + 16), length);
    const size_t maskOffset = word(rule + 20);
    const std::string_view mask = maskOffset == 0 ? std::string_view() : bytes(maskOffset, length);
    if (value.empty()) return false;
    for (size_t at = start; at < start + starts && at + length <= content.size(); ++at) {
        const std::string_view found = content.substr(at, length);
        bool same = true;
        for (size_t i = 0; i < length && same; ++i) {
            const int difference = found[i] ^ value[i];
            same = (mask.empty() ? difference : difference & mask[i]) == 0;
        }
        if (same) return true;
    }
    return false;
}

/// True when one of the rules fits, and of its own rules, if it has any, one too.
bool MimeCache::matchesAnyRule(size_t firstRule, uint32_t count, std::string_view content, int depth) const {
    if (depth > maximumRuleDepth) return false;
    for (size_t rule = firstRule; count > 0 && rule < size_; --count, rule += 32) {
        if (!matchesValue(rule, content)) continue;
        const uint32_t children = word(rule + 24);
        if (children == 0 || matchesAnyRule(word(rule + 28), children, content, depth + 1)) return true;
    }
    return false;
}

std::optional<MimeCache::ContentMatch> MimeCache::matchContent(std::string_view content) const {
    // The list is sorted by falling priority, so that the first match is the best.
    const size_t list = word(magicList);
    size_t entry = word(list + 8);
    for (uint32_t left = word(list); left > 0 && entry < size_; --left, entry += 16) {
        if (matchesAnyRule(word(entry + 12), word(entry + 8), content, 0))
            return ContentMatch{text(word(entry + 4)), word(entry)};
    }
    return std::nullopt;
}

std::vector<std::string_view> MimeCache::parents(std::string_view type) const {
    std::vector<std::string_view> found;
    const size_t entry = findKey(word(parentList), 8, type);
    if (entry == 0) return found;
    const size_t list = word(entry + 4);
    const size_t count = std::min<size_t>(word(list), size_ / 4);
    for (size_t i = 0; i < count; ++i) found.push_back(text(word(list + 4 + i * 4)));
    return found;
}

std::string_view MimeCache::aliasTarget(std::string_view type) const {
    const size_t entry = findKey(word(aliasList), 8, type);
    return entry == 0 ? std::string_view() : text(word(entry + 4));
}

}  // namespace marrowbeck::tools
