#pragma once

#include <cstdint>

#include "framework/core/Descriptor.h"
#include "framework/core/Object.h"
#include "framework/core/String.h"

namespace framework {

/// Reads and writes a file's bytes at a position that moves along and can be set. Nothing is buffered. A read or write
/// that fails is remembered.
class BinaryStream : public Object {
  public:
    explicit BinaryStream(Descriptor file);

    /// The next `count` bytes, fewer at the end.
    String Read(int count, TextEncoding encoding = Encodings::Undefined);
    void Write(const String& bytes);

    /// The file's size in bytes.
    std::uint64_t Length() const;
    /// Where the next byte is read or written, from 0. Writing behind the end fills the gap with zeros.
    std::uint64_t Position() const { return position_; }
    void Position(std::uint64_t position) { position_ = position; }
    /// Whether the position is at or behind the end.
    bool EndOfFile() const { return position_ >= Length(); }

    /// False when something that was written is not in the file. A second call answers the same.
    bool Close();
    bool Failed() const { return failed_; }

  private:
    Descriptor file_;
    std::uint64_t position_ = 0;
    bool failed_ = false;
};

}  // namespace framework
