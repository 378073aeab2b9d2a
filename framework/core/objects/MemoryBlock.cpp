// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/objects/MemoryBlock.h"

#include <algorithm>
#include <cstring>
#include <string_view>

#include "framework/core/objects/Exceptions.h"

namespace framework {

MemoryBlock::MemoryBlock(int size) {
    Size(size);
}

MemoryBlock::MemoryBlock(const String& bytes) : bytes_(bytes.Bytes().begin(), bytes.Bytes().end()) {}

int MemoryBlock::Size() const {
    return static_cast<int>(bytes_.size());
}

void MemoryBlock::Size(int size) {
    bytes_.resize(static_cast<std::size_t>(std::max(size, 0)));
}

/// The offset of `size` bytes that all lie in the block.
std::size_t MemoryBlock::checked(int offset, std::size_t size) const {
    const auto begin = static_cast<std::size_t>(offset);
    if (offset < 0 || begin > bytes_.size() || size > bytes_.size() - begin) throw OutOfBoundsException();
    return begin;
}

template <class T>
T MemoryBlock::read(int offset) const {
    T value;
    std::memcpy(&value, bytes_.data() + checked(offset, sizeof value), sizeof value);
    return value;
}

template <class T>
void MemoryBlock::write(int offset, T value) {
    std::memcpy(bytes_.data() + checked(offset, sizeof value), &value, sizeof value);
}

std::int32_t MemoryBlock::Long(int offset) const {
    return read<std::int32_t>(offset);
}

void MemoryBlock::Long(int offset, std::int32_t value) {
    write(offset, value);
}

std::int16_t MemoryBlock::Short(int offset) const {
    return read<std::int16_t>(offset);
}

void MemoryBlock::Short(int offset, std::int16_t value) {
    write(offset, value);
}

std::uint16_t MemoryBlock::UShort(int offset) const {
    return read<std::uint16_t>(offset);
}

void MemoryBlock::UShort(int offset, std::uint16_t value) {
    write(offset, value);
}

std::uint8_t MemoryBlock::Byte(int offset) const {
    return read<std::uint8_t>(offset);
}

void MemoryBlock::Byte(int offset, std::uint8_t value) {
    write(offset, value);
}

String MemoryBlock::CString(int offset) const {
    const std::size_t begin = checked(offset, 0);
    const std::string_view rest(bytes_.data() + begin, bytes_.size() - begin);
    return String(rest.substr(0, rest.find('\0')), Encodings::Undefined);
}

void MemoryBlock::CString(int offset, const String& value) {
    const std::size_t size = value.ByteCount() + 1;
    const std::size_t begin = checked(offset, size);
    std::memcpy(bytes_.data() + begin, value.CString(), size);
}

String MemoryBlock::StringValue(int offset, int length) const {
    if (length < 0) throw OutOfBoundsException();
    const auto size = static_cast<std::size_t>(length);
    const std::size_t begin = checked(offset, size);
    return String(std::string_view(bytes_.data() + begin, size), Encodings::Undefined);
}

void MemoryBlock::StringValue(int offset, int length, const String& value) {
    if (length < 0) throw OutOfBoundsException();
    const auto size = static_cast<std::size_t>(length);
    const auto field = bytes_.begin() + static_cast<std::ptrdiff_t>(checked(offset, size));
    const std::string_view written = value.Bytes().substr(0, size);
    std::fill_n(std::copy(written.begin(), written.end(), field), size - written.size(), '\0');
}

}  // namespace framework
