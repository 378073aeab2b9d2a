// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/files/TextOutputStream.h"

#include <sys/stat.h>

#include <cerrno>
#include <utility>

#include "framework/core/files/FolderItem.h"

namespace framework {

TextOutputStream::TextOutputStream(base::Descriptor file) : file_(std::move(file)) {}

TextOutputStream::~TextOutputStream() {
    Close();
}

Ref<TextOutputStream> TextOutputStream::Create(const Ref<FolderItem>& file) {
    return file->CreateTextFile();
}

Ref<TextOutputStream> TextOutputStream::CreatePrivate(const Ref<FolderItem>& file) {
    constexpr mode_t kOwnerOnly = 0600;
    Ref<TextOutputStream> stream = file->CreateTextFile(kOwnerOnly);
    // One that was there has kept its rights so far. Where files have no rights of their own this is refused, and who
    // may read them was decided for all of them when the volume was mounted.
    if (stream) fchmod(stream->file_.Number(), kOwnerOnly);
    return stream;
}

void TextOutputStream::Write(const String& text) {
    constexpr std::size_t kBufferSize = std::size_t{64} * 1024;
    buffer_ += text.Bytes();
    if (buffer_.size() >= kBufferSize) flush();
}

void TextOutputStream::WriteLine(const String& text) {
    Write(text);
    Write("\n");
}

/// Remembers why the first call failed that did.
void TextOutputStream::note(bool worked) {
    if (!worked && errorNumber_ == 0) errorNumber_ = errno != 0 ? errno : EIO;
}

void TextOutputStream::flush() {
    if (!buffer_.empty() && !Failed()) note(file_.Write(buffer_));
    buffer_.clear();
}

bool TextOutputStream::Sync() {
    flush();
    if (!Failed()) note(file_.Sync());
    return !Failed();
}

bool TextOutputStream::Close() {
    flush();
    note(file_.Close());
    return !Failed();
}

}  // namespace framework
