#include "framework/core/TextOutputStream.h"

#include <utility>

#include "framework/core/FolderItem.h"

namespace framework {

TextOutputStream::TextOutputStream(Descriptor file) : file_(std::move(file)) {}

TextOutputStream::~TextOutputStream() {
    Close();
}

Ref<TextOutputStream> TextOutputStream::Create(const Ref<FolderItem>& file) {
    return file->CreateTextFile();
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

void TextOutputStream::flush() {
    if (!buffer_.empty() && !failed_) failed_ = !file_.IsOpen() || !file_.Write(buffer_);
    buffer_.clear();
}

bool TextOutputStream::Sync() {
    flush();
    if (!failed_) failed_ = !file_.IsOpen() || !file_.Sync();
    return !failed_;
}

bool TextOutputStream::Close() {
    flush();
    if (!file_.Close()) failed_ = true;
    return !failed_;
}

}  // namespace framework
