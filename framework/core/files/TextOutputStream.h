// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <string>

#include "base/Descriptor.h"
#include "framework/core/files/Writeable.h"
#include "framework/core/objects/Object.h"
#include "framework/core/objects/Ref.h"
#include "framework/core/text/String.h"

namespace framework {

class FolderItem;

/// Writes a file as text, byte by byte as it is given. What is written waits in a buffer until that is full or the
/// stream is closed. A write that fails is remembered, and all later ones are left out, so that it is enough to ask
/// once, at the end. Dropping the last reference closes the stream.
class TextOutputStream : public Object, public Writeable {
  public:
    explicit TextOutputStream(base::Descriptor file);
    ~TextOutputStream() override;

    /// A stream on `file`, made or emptied; Nil, with errno telling why, when that fails.
    static Ref<TextOutputStream> Create(const Ref<FolderItem>& file);
    /// The same, and nobody but its owner may read or write the file, from before the first byte, as far as its volume
    /// knows such rights.
    static Ref<TextOutputStream> CreatePrivate(const Ref<FolderItem>& file);

    void Write(const String& text) override;
    /// Writes the text and a line feed.
    void WriteLine(const String& text = {});
    /// Returns when all that was written is on the disk; False when something is not.
    bool Sync();
    /// False when something that was ever written is not in the file. A second call answers the same.
    bool Close();
    bool Failed() const { return errorNumber_ != 0; }
    /// Why a write failed, by the operating system's number; 0 where none did.
    int ErrorNumber() const { return errorNumber_; }

  private:
    void flush();
    void note(bool worked);

    base::Descriptor file_;
    std::string buffer_;
    int errorNumber_ = 0;
};

}  // namespace framework
