// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>

#include "base/Descriptor.h"
#include "framework/core/files/Readable.h"
#include "framework/core/files/Writeable.h"
#include "framework/core/objects/Object.h"
#include "framework/core/text/String.h"

namespace framework {

/// Reads and writes a file's bytes at a position that moves along and can be set. Nothing is buffered. The first read
/// or write that fails is remembered.
class BinaryStream : public Object, public Readable, public Writeable {
  public:
    explicit BinaryStream(base::Descriptor file);

    /// The next `count` bytes, fewer at the end.
    String Read(int count, TextEncoding encoding = Encodings::Undefined) override;
    void Write(const String& bytes) override;

    /// The file's size in bytes.
    std::uint64_t Length() const;
    /// Where the next byte is read or written, from 0. Writing behind the end fills the gap with zeros.
    std::uint64_t Position() const { return position_; }
    void Position(std::uint64_t position) { position_ = position; }
    /// Whether the position is at or behind the end.
    bool EndOfFile() const { return position_ >= Length(); }
    /// Whether the bytes are those of an ordinary file, and not a device's.
    bool IsOrdinaryFile() const { return ordinary_; }

    /// Returns when all that was written is on the disk; False when something is not.
    bool Sync();
    /// False when something that was written is not in the file. A second call answers the same.
    bool Close();
    bool Failed() const { return error_ != 0; }
    /// What the system says of the failure, for people; empty without one.
    String FailureReason() const;

  private:
    void fail(int error);

    base::Descriptor file_;
    bool ordinary_;
    std::uint64_t position_ = 0;
    /// Bytes written since the disk was last told to begin.
    std::uint64_t unsent_ = 0;
    /// The system's number of the first failure; 0 without one.
    int error_ = 0;
};

}  // namespace framework
