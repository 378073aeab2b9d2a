// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/plutil/BinaryPropertyList.h"

#include <algorithm>

#include "tools/plutil/PropertyListCheck.h"

namespace marrowbeck::tools {

namespace {

using Limits = PropertyListLimits;

constexpr const char* damaged = "Damaged property list";
constexpr size_t headerSize = 8;
constexpr size_t trailerSize = 32;

}  // namespace

std::uint64_t BinaryPropertyList::number(std::uint64_t at, unsigned size) const {
    std::uint64_t value = 0;
    for (unsigned i = 0; i < size; ++i) value = value << 8 | static_cast<std::uint8_t>(file_[at + i]);
    return value;
}

bool BinaryPropertyList::readTrailer() {
    if (file_.size() < headerSize + trailerSize) return false;
    const std::uint64_t trailer = file_.size() - trailerSize;
    offsetSize_ = static_cast<unsigned>(number(trailer + 6, 1));
    referenceSize_ = static_cast<unsigned>(number(trailer + 7, 1));
    count_ = number(trailer + 8, 8);
    top_ = number(trailer + 16, 8);
    table_ = number(trailer + 24, 8);
    const auto fits = [](unsigned size) { return size >= 1 && size <= 8; };
    return fits(offsetSize_) && fits(referenceSize_) && top_ < count_ && table_ <= trailer &&
           count_ <= (trailer - table_) / offsetSize_;
}

std::optional<BinaryPropertyList::Object> BinaryPropertyList::object(std::uint64_t index) const {
    std::uint64_t at = number(table_ + index * offsetSize_, offsetSize_);
    if (at >= table_) return std::nullopt;
    const auto marker = static_cast<std::uint8_t>(file_[at++]);
    const unsigned kind = marker >> 4;
    std::uint64_t length = marker & 0xF;
    std::uint64_t width = 1;
    switch (kind) {
        case 0x0:  // true, false and the like
            return Object{};
        case 0x1:  // integer
        case 0x2:  // real
        case 0x3:  // date
            if (length > 4) return std::nullopt;
            length = 1U << length;
            break;
        case 0x8:  // identifier
            ++length;
            break;
        case 0x4:  // data
        case 0x5:  // ASCII
        case 0x6:  // UTF-16
        case 0xA:  // array
        case 0xC:  // set
        case 0xD:  // dictionary
            if (length == 0xF) {
                // The count stands in an integer object of its own.
                const auto sizeMarker = at < table_ ? static_cast<std::uint8_t>(file_[at++]) : std::uint8_t{0};
                const unsigned size = 1U << (sizeMarker & 0xF);
                if (sizeMarker >> 4 != 1 || size > 8 || table_ - at < size) return std::nullopt;
                length = number(at, size);
                at += size;
            }
            if (kind == 0x6) width = 2;
            if (kind >= 0xA) width = referenceSize_;
            if (kind == 0xD) width *= 2;
            break;
        default:
            return std::nullopt;
    }
    if (length > (table_ - at) / width) return std::nullopt;
    // A UTF-16 unit takes up to three bytes of UTF-8.
    if (kind < 0xA) return Object{.bytes = kind == 0x6 ? length * 3 : length};
    return Object{.firstReference = at, .references = length * width / referenceSize_};
}

/// Sums of sums: kept from growing without end by the limits, checked at each step.
bool BinaryPropertyList::add(Extent& extent, const Extent& below) {
    extent.values += below.values;
    extent.bytes += below.bytes;
    extent.height = std::max(extent.height, below.height + 1);
    return extent.values <= Limits::values && extent.bytes <= Limits::text;
}

std::string BinaryPropertyList::walk() {
    const auto begin = [this](std::uint64_t index) {
        const std::optional<Object> content = object(index);
        if (!content) return false;
        extents_[index].state = Extent::open;
        extents_[index].bytes = content->bytes;
        steps_.push_back({index, 0, *content});
        return true;
    };
    if (!begin(top_)) return damaged;
    while (!steps_.empty()) {
        Step& step = steps_.back();
        Extent& extent = extents_[step.object];
        if (step.reference == step.content.references) {
            extent.state = Extent::done;
            steps_.pop_back();
            continue;
        }
        const std::uint64_t next =
            number(step.content.firstReference + step.reference * referenceSize_, referenceSize_);
        if (next >= count_ || extents_[next].state == Extent::open) return damaged;
        if (extents_[next].state == Extent::unseen) {
            if (steps_.size() >= Limits::nesting) return "Nested too deeply";
            if (!begin(next)) return damaged;
            continue;
        }
        if (!add(extent, extents_[next])) return "Too many values";
        if (extent.height > Limits::nesting) return "Nested too deeply";
        ++step.reference;
    }
    return {};
}

std::string BinaryPropertyList::Check() {
    if (!readTrailer()) return damaged;
    if (count_ > Limits::values) return "Too many values";
    extents_.resize(count_);
    if (std::string refusal = walk(); !refusal.empty()) return refusal;
    // Each value has its tags and indentation; each byte may be escaped, or stand in a short line with an indentation
    // of its own.
    const Extent& all = extents_[top_];
    const std::uint64_t text = all.values * (64 + all.height) + all.bytes * (5 + all.height);
    return text > Limits::text ? "Too large" : std::string();
}

}  // namespace marrowbeck::tools
