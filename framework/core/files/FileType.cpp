// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/files/FileType.h"

#include <algorithm>

#include "framework/core/text/Characters.h"

namespace framework {

namespace {

constexpr std::string_view kAnyCode = "????";

bool sameIgnoringCase(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return FoldAscii(a) == FoldAscii(b); });
}

}  // namespace

constinit FileType* FileType::first_ = nullptr;

FileType::FileType() : FileType({}, {}, {}, {}) {}

FileType::FileType(const String& name, const String& extensions, const String& macType, const String& macCreator)
    : name_(name), extensions_(extensions), macType_(macType), macCreator_(macCreator) {
    FileType** link = &first_;
    while (*link) link = &(*link)->next_;
    *link = this;
}

FileType::~FileType() {
    FileType** link = &first_;
    while (*link != this) link = &(*link)->next_;
    *link = next_;
}

bool FileType::hasSuffixOf(std::string_view fileName) const {
    std::string_view rest = extensions_.Bytes();
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find(';'), rest.size());
        const std::string_view suffix = rest.substr(0, end);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (!suffix.empty() && suffix.size() <= fileName.size() &&
            sameIgnoringCase(fileName.substr(fileName.size() - suffix.size()), suffix)) {
            return true;
        }
    }
    return false;
}

String FileType::NameForFile(std::string_view fileName) {
    for (const FileType* type = first_; type; type = type->next_) {
        if (type->hasSuffixOf(fileName)) return type->name_;
    }
    return {};
}

String FileType::NameForCodes(const String& macType, const String& macCreator) {
    if (macType.IsEmpty() || macType.Bytes() == kAnyCode) return {};
    for (const FileType* type = first_; type; type = type->next_) {
        const bool creatorFits = type->macCreator_.Bytes() == kAnyCode || type->macCreator_.SameBytes(macCreator);
        if (type->macType_.SameBytes(macType) && creatorFits) return type->name_;
    }
    return {};
}

String FileType::NameForFolder() {
    return NameForCodes("fold", "MACS");
}

}  // namespace framework
