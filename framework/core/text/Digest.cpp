// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/text/Digest.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <string>
#include <string_view>

namespace framework {
namespace {

/// The bytes as Qt sees them, without a copy: the text must outlive them.
QByteArray viewed(const String& text) {
    return QByteArray::fromRawData(text.CString(), static_cast<qsizetype>(text.ByteCount()));
}

std::string_view viewed(const QByteArray& bytes) {
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

}  // namespace

String MD5(const String& data) {
    const QByteArray digest = QCryptographicHash::hash(viewed(data), QCryptographicHash::Md5);
    return String(viewed(digest), Encodings::Undefined);
}

String EncodeBase64(const String& data, int lineLength) {
    const QByteArray encoded = viewed(data).toBase64();
    std::string_view rest = viewed(encoded);
    if (lineLength <= 0) return String(rest);
    const auto length = static_cast<std::size_t>(lineLength);
    std::string lines;
    for (; rest.size() > length; rest.remove_prefix(length)) {
        lines.append(rest.substr(0, length));
        lines.append("\r\n");
    }
    lines.append(rest);
    return String(lines);
}

String DecodeBase64(const String& text) {
    const QByteArray decoded = QByteArray::fromBase64(viewed(text));
    return String(viewed(decoded), Encodings::Undefined);
}

}  // namespace framework
