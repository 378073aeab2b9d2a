// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/files/ChildList.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "framework/core/files/FileType.h"
#include "framework/core/threads/Waiting.h"

namespace framework::internal {

using base::PathKind;

namespace {

/// As many as a disk answers in two rounds or so: what is not asked yet keeps nobody waiting.
constexpr std::size_t kKindsAtOnce = 64;
/// As many files as are asked about their codes at once: their names fit into a question.
constexpr std::size_t kCodesAtOnce = 1024;

bool isOpen(PathKind kind) {
    return kind == PathKind::unknown || kind == PathKind::anyLink;
}

}  // namespace

ChildList::ChildList(const Disk& disk, std::string folder) : disk_(disk), folder_(std::move(folder)) {
    text_ = disk_.ChildrenOf(folder_);
    const std::size_t end = std::min(text_.find('\0'), text_.size());
    std::from_chars(text_.data(), text_.data() + end, failure_);
    for (std::size_t start = end + 1; start < text_.size();) {
        starts_.push_back(static_cast<std::uint32_t>(start));
        start = std::min(text_.find('\0', start), text_.size()) + 1;
        LoopYield();
    }
    starts_.shrink_to_fit();
}

std::string_view ChildList::NameAt(std::size_t index) const {
    return text_.c_str() + starts_[index] + 1;
}

PathKind ChildList::told(std::size_t index) const {
    return static_cast<PathKind>(text_[starts_[index]]);
}

PathKind ChildList::KindAt(std::size_t index) const {
    if (isOpen(told(index))) askKindsFrom(index);
    return told(index);
}

void ChildList::askKindsFrom(std::size_t index) const {
    std::vector<std::size_t> indexes;
    std::vector<std::string> names;
    for (; index < Count() && names.size() < kKindsAtOnce; ++index) {
        LoopYield();
        if (!isOpen(told(index))) continue;
        indexes.push_back(index);
        names.emplace_back(NameAt(index));
    }
    const std::vector<PathKind> kinds = disk_.KindsOf(folder_, names);
    for (std::size_t i = 0; i < indexes.size(); ++i) {
        const PathKind before = told(indexes[i]);
        if (!isOpen(before)) continue;  // another thread was told meanwhile
        const PathKind otherwise = before == PathKind::unknown ? PathKind::file : PathKind::link;
        text_[starts_[indexes[i]]] = static_cast<char>(kinds[i] == PathKind::unknown ? otherwise : kinds[i]);
    }
}

FileCodes ChildList::CodesAt(std::size_t index) const {
    if (asked_.empty()) asked_.resize(Count());
    if (!asked_[index]) askCodesFrom(index);
    const auto found = codes_.find(index);
    return found == codes_.end() ? FileCodes() : found->second;
}

bool ChildList::wantsCodes(std::size_t index) const {
    const PathKind kind = told(index);
    return (isOpen(kind) || kind == PathKind::file || kind == PathKind::linkToFile) &&
           FileType::NameForFile(NameAt(index)).IsEmpty();
}

void ChildList::askCodesFrom(std::size_t index) const {
    std::vector<std::size_t> indexes{index};
    std::vector<std::string> names{std::string(NameAt(index))};
    for (std::size_t next = index + 1; next < Count() && names.size() < kCodesAtOnce; ++next) {
        LoopYield();
        if (asked_[next] || !wantsCodes(next)) continue;
        indexes.push_back(next);
        names.emplace_back(NameAt(next));
    }
    std::vector<FileCodes> codes = disk_.CodesOf(folder_, names);
    for (std::size_t i = 0; i < indexes.size(); ++i) {
        asked_[indexes[i]] = true;
        if (!codes[i].type.empty()) codes_.insert_or_assign(indexes[i], std::move(codes[i]));
    }
}

}  // namespace framework::internal
