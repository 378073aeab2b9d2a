// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/files/TextInputStream.h"

#include <algorithm>
#include <utility>

namespace framework {

TextInputStream::TextInputStream(base::Descriptor file) : file_(std::move(file)) {}

TextInputStream::TextInputStream(const String& text) : buffer_(text.Bytes()), rest_(buffer_) {}

bool TextInputStream::refill() {
    constexpr std::size_t kBufferSize = std::size_t{64} * 1024;
    if (!file_.IsOpen()) return false;
    buffer_.resize(kBufferSize);
    const ssize_t count = file_.Read(buffer_.data(), buffer_.size());
    if (count <= 0) {
        failed_ = count < 0;
        file_.Close();
        return false;
    }
    rest_ = std::string_view(buffer_).substr(0, static_cast<std::size_t>(count));
    return true;
}

bool TextInputStream::fill() {
    if (rest_.empty() && !refill()) return false;
    if (std::exchange(skipLineFeed_, false) && rest_.front() == '\n') {
        rest_.remove_prefix(1);
        return !rest_.empty() || refill();
    }
    return true;
}

String TextInputStream::ReadLine(TextEncoding encoding) {
    std::string line;
    while (fill()) {
        const auto* const end =
            std::find_if(rest_.begin(), rest_.end(), [](char byte) { return byte == '\n' || byte == '\r'; });
        const auto size = static_cast<std::size_t>(end - rest_.begin());
        const bool ended = end != rest_.end();
        skipLineFeed_ = ended && *end == '\r';
        const std::string_view piece = rest_.substr(0, size);
        rest_.remove_prefix(size + (ended ? 1 : 0));
        if (ended && line.empty()) return String(piece, encoding);
        line += piece;
        if (ended) break;
    }
    return String(line, encoding);
}

String TextInputStream::ReadAll(TextEncoding encoding) {
    std::string text;
    while (fill()) {
        text += rest_;
        rest_ = {};
    }
    return String(text, encoding);
}

bool TextInputStream::EndOfFile() {
    return !fill();
}

void TextInputStream::Close() {
    file_.Close();
    rest_ = {};
}

}  // namespace framework
