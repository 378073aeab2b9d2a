// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "framework/core/objects/Object.h"
#include "framework/core/text/String.h"

namespace framework {

/// A piece of raw memory for structures that the operating system defines. Offsets count bytes from 0; numbers are in
/// the machine's byte order and need no alignment. Whatever reaches outside the block raises OutOfBoundsException and
/// changes nothing.
class MemoryBlock : public Object {
  public:
    /// `size` bytes of zero; a negative size counts as 0.
    explicit MemoryBlock(int size);
    /// The bytes of a text, without a NUL behind them.
    explicit MemoryBlock(const String& bytes);

    int Size() const;
    /// Cuts the block, or adds zeros at its end. Moves the memory.
    void Size(int size);

    std::int32_t Long(int offset) const;
    void Long(int offset, std::int32_t value);
    std::int16_t Short(int offset) const;
    void Short(int offset, std::int16_t value);
    std::uint16_t UShort(int offset) const;
    void UShort(int offset, std::uint16_t value);
    std::uint8_t Byte(int offset) const;
    void Byte(int offset, std::uint8_t value);

    /// The bytes up to the next NUL, or to the end of the block, without an encoding.
    String CString(int offset) const;
    /// Writes the bytes of a text and a NUL.
    void CString(int offset, const String& value);

    /// `length` bytes, NUL or not, without an encoding.
    String StringValue(int offset, int length) const;
    /// Writes the bytes of a text into the field of `length` bytes: a longer text is cut, a shorter one filled up with
    /// NUL.
    void StringValue(int offset, int length, const String& value);

    /// The memory itself, for system calls. Good until the size changes; null when that is 0.
    void* Data() { return bytes_.data(); }

  private:
    std::size_t checked(int offset, std::size_t size) const;
    template <class T>
    T read(int offset) const;
    template <class T>
    void write(int offset, T value);

    std::vector<char> bytes_;
};

}  // namespace framework
