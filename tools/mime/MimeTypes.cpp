// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/mime/MimeTypes.h"

#include <QLocale>
#include <QMimeDatabase>
#include <QStandardPaths>
#include <algorithm>
#include <cstdlib>
#include <utility>

#include "tools/pictures/JpegHeader.h"

namespace marrowbeck::tools {

namespace {

/// More ends of names than any folder has, but not all that a hostile one can make up.
constexpr std::size_t mostRemembered = 10'000;

/// What a name's type can depend on, but for a few names as a whole ("README"), which are no pictures: the last two
/// of its suffixes, since "svg.gz" says another thing than "gz". A name without a dot is its own end.
std::string_view endOf(std::string_view name) {
    const std::size_t last = name.rfind('.');
    if (last == std::string_view::npos || last == 0) return name;
    const std::size_t before = name.rfind('.', last - 1);
    return name.substr(before == std::string_view::npos ? last : before);
}

QString textOf(std::string_view bytes) {
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

/// No type for no content, which the database would call an empty document.
QMimeType contentType(const char* bytes, std::size_t size) {
    if (size == 0) return {};
    const auto head = static_cast<qsizetype>(std::min(size, MimeTypes::contentBytes));
    return QMimeDatabase().mimeTypeForData(QByteArray::fromRawData(bytes, head));
}

/// Bytes of any kind, or text of any kind: a guess, and no knowledge.
bool tellsNothing(const QMimeType& type) {
    return !type.isValid() || type.isDefault() || type.name() == QLatin1String("text/plain");
}

std::string variable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : std::string(value);
}

/// The type's name in a language; the database's own, which is English, where it has none in that.
QString commentIn(const QMimeType& type, const QLocale& language) {
    QLocale::setDefault(language);
    return type.comment();
}

std::string displayName(const QMimeType& type) {
    const QString own = commentIn(type, QLocale::c());
    for (const std::string& name : userLanguages()) {
        const QLocale language(QString::fromStdString(name));
        if (language.language() == QLocale::English) break;
        if (const QString text = commentIn(type, language); text != own) return text.toStdString();
    }
    return own.toStdString();
}

}  // namespace

std::vector<std::string> userLanguages() {
    std::string locale = variable("LC_ALL");
    if (locale.empty()) locale = variable("LC_MESSAGES");
    if (locale.empty()) locale = variable("LANG");
    if (locale.empty() || locale == "POSIX" || locale == "C" || locale.starts_with("C.")) return {};

    std::vector<std::string> languages;
    const std::string list = variable("LANGUAGE") + ":" + locale;
    for (std::size_t start = 0; start < list.size();) {
        const std::size_t end = std::min(list.find(':', start), list.size());
        // The form is language_COUNTRY.charset@variant; all but the language may be missing.
        std::string entry = list.substr(start, end - start);
        entry.erase(std::min(entry.find_first_of(".@"), entry.size()));
        if (!entry.empty()) languages.push_back(std::move(entry));
        start = end + 1;
    }
    return languages;
}

bool MimeTypes::areInstalled() {
    return QMimeDatabase().mimeTypeForName(QStringLiteral("image/jpeg")).isValid() && !folders().empty();
}

std::vector<std::string> MimeTypes::folders() {
    std::vector<std::string> found;
    for (const QString& folder : QStandardPaths::locateAll(QStandardPaths::GenericDataLocation, QStringLiteral("mime"),
                                                           QStandardPaths::LocateDirectory))
        found.push_back(folder.toStdString());
    return found;
}

void MimeTypes::warmUp() {
    displayName(QMimeDatabase().mimeTypeForName(QStringLiteral("image/jpeg")));
    contentType("x", 1);
}

std::string MimeTypes::typeByName(std::string_view name, const std::function<std::string()>& readContent) {
    const std::string_view end = endOf(name);
    auto found = typesByEnd_.find(end);
    if (found == typesByEnd_.end()) {
        if (typesByEnd_.size() == mostRemembered) typesByEnd_.clear();
        std::vector<std::string> types;
        for (const QMimeType& type : QMimeDatabase().mimeTypesForFileName(textOf(name)))
            types.push_back(type.name().toStdString());
        found = typesByEnd_.emplace(end, std::move(types)).first;
    }
    const std::vector<std::string>& named = found->second;
    if (named.size() == 1) return named.front();
    const std::string content = readContent();
    const QMimeType told = contentType(content.data(), content.size());
    if (tellsNothing(told)) return named.empty() ? std::string() : named.front();
    for (const std::string& type : named) {
        if (QMimeDatabase().mimeTypeForName(QString::fromStdString(type)).inherits(told.name())) return type;
    }
    return told.name().toStdString();
}

bool MimeTypes::isImage(const std::string& type) {
    const auto found = images_.find(type);
    if (found != images_.end()) return found->second;
    const QMimeType known = QMimeDatabase().mimeTypeForName(QString::fromStdString(type));
    QStringList family = known.allAncestors();
    family.append(known.name());
    const bool image = std::any_of(family.begin(), family.end(),
                                   [](const QString& name) { return name.startsWith(QLatin1String("image/")); });
    images_.emplace(type, image);
    return image;
}

std::string MimeTypes::kindOf(std::string_view name, Content content) {
    // Most pictures are JPEG, and to ask all magic of the database takes longer than to read one's metadata.
    const QMimeType told = isJpeg(content) ? QMimeDatabase().mimeTypeForName(QStringLiteral("image/jpeg"))
                                           : contentType(reinterpret_cast<const char*>(content.data()), content.size());
    const bool nothing = tellsNothing(told);
    QMimeType best = nothing ? QMimeType() : told;
    for (const QMimeType& type : QMimeDatabase().mimeTypesForFileName(textOf(name))) {
        if (!nothing && !type.inherits(told.name())) continue;
        best = type;
        break;
    }
    if (!best.isValid()) return {};
    const std::string key = best.name().toStdString();
    auto known = kinds_.find(key);
    if (known == kinds_.end()) known = kinds_.emplace(key, displayName(best)).first;
    return known->second;
}

}  // namespace marrowbeck::tools
