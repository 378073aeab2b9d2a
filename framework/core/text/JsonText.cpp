// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/text/JsonText.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QString>
#include <string>

namespace framework {

String JsonText(const String& text) {
    const std::string bytes = text.ToStd();
    const QJsonArray array{QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()))};
    const QByteArray json = QJsonDocument(array).toJson(QJsonDocument::Compact);
    // A document holds a list or an object, never a text alone.
    return String(json.mid(1, json.size() - 2).toStdString(), Encodings::UTF8);
}

}  // namespace framework
