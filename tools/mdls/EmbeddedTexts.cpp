// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/mdls/EmbeddedTexts.h"

#include <QString>
#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "tools/pictures/TextEncoding.h"

namespace marrowbeck::tools {

namespace {

/// The bytes of a value as the file holds them, with the NULs at which the library's texts end.
std::string exifBytes(const Exiv2::ExifData& data, const char* key) {
    return guarded([&] {
        const auto found = data.findKey(Exiv2::ExifKey(key));
        if (found == data.end() || found->size() == 0) return std::string();
        std::string bytes(static_cast<size_t>(found->size()), '\0');
        found->copy(reinterpret_cast<Exiv2::byte*>(bytes.data()), Exiv2::littleEndian);
        return bytes;
    });
}

/// The texts that Windows writes into byte arrays: UTF-16, least byte first.
std::string windowsText(const Exiv2::ExifData& data, const char* key) {
    return tidied(convertToUtf8(exifBytes(data, key), "UTF-16LE"));
}

/// The comment behind the prefix that names its character set.
std::string userComment(const Exiv2::ExifData& data) {
    return guarded([&] {
        const auto found = data.findKey(Exiv2::ExifKey("Exif.Photo.UserComment"));
        if (found == data.end()) return std::string();
        const auto* const comment = dynamic_cast<const Exiv2::CommentValue*>(&found->value());
        return comment == nullptr ? std::string() : tidied(guessedToUtf8(comment->comment()));
    });
}

/// A text in several languages: the one that is meant for everybody, else the first.
std::string xmpText(const Exiv2::XmpData& data, const char* key) {
    return guarded([&] {
        const auto found = data.findKey(Exiv2::XmpKey(key));
        if (found == data.end()) return std::string();
        const auto* const languages = dynamic_cast<const Exiv2::LangAltValue*>(&found->value());
        if (languages == nullptr) return tidied(guessedToUtf8(found->toString(0)));
        const auto general = languages->value_.find("x-default");
        std::string text = general == languages->value_.end() ? std::string() : tidied(guessedToUtf8(general->second));
        for (const auto& alternative : languages->value_) {
            if (text.empty()) text = tidied(guessedToUtf8(alternative.second));
        }
        return text;
    });
}

std::vector<std::string> iptcTexts(const Exiv2::IptcData& data, const char* key) {
    const std::string declared = guarded([&] {
        const auto found = data.findKey(Exiv2::IptcKey("Iptc.Envelope.CharacterSet"));
        return found == data.end() ? std::string() : found->toString();
    });
    std::vector<std::string> texts;
    for (const Exiv2::Iptcdatum& dataset : data) {
        if (guarded([&] { return dataset.key(); }) != key) continue;
        texts.push_back(guarded([&] { return tidied(iptcToUtf8(dataset.toString(), declared)); }));
    }
    return texts;
}

std::string iptcText(const Exiv2::IptcData& data, const char* key) {
    const std::vector<std::string> texts = iptcTexts(data, key);
    return texts.empty() ? std::string() : texts.front();
}

/// The photographer's right, then a NUL and the editor's; either may be empty.
std::string exifCopyright(const Exiv2::ExifData& data) {
    const std::string both = exifBytes(data, "Exif.Image.Copyright");
    const size_t middle = std::min(both.find('\0'), both.size());
    const std::string photographer = tidied(guessedToUtf8(both.substr(0, middle)));
    const std::string editor = tidied(guessedToUtf8(both.substr(middle)));
    return photographer.empty() || editor.empty() ? photographer + editor : photographer + ", " + editor;
}

class KeywordList {
  public:
    /// A list has an element a line: what has several lines is several keywords. One that is written with other code
    /// points but looks the same (Unicode Standard Annex 15) is the same.
    void add(const std::string& keywords) {
        for (std::size_t start = 0; start < keywords.size();) {
            const std::size_t end = std::min(keywords.find_first_of("\r\n", start), keywords.size());
            std::string keyword = tidied(std::string_view(keywords).substr(start, end - start));
            start = end + 1;
            if (keyword.empty()) continue;
            const QString normal = QString::fromStdString(keyword).normalized(QString::NormalizationForm_C);
            if (known_.insert(normal.toStdString()).second) keywords_.push_back(std::move(keyword));
        }
    }

    bool isEmpty() const { return keywords_.empty(); }
    std::vector<std::string> take() { return std::move(keywords_); }

  private:
    std::vector<std::string> keywords_;
    std::unordered_set<std::string> known_;
};

}  // namespace

std::string exifText(const Exiv2::ExifData& data, const char* key) {
    return guarded([&] {
        const auto found = data.findKey(Exiv2::ExifKey(key));
        return found == data.end() ? std::string() : tidied(guessedToUtf8(found->toString()));
    });
}

std::string captionOf(const Exiv2::Image& image) {
    std::string text = xmpText(image.xmpData(), "Xmp.dc.description");
    if (text.empty()) text = iptcText(image.iptcData(), "Iptc.Application2.Caption");
    if (text.empty()) text = exifText(image.exifData(), "Exif.Image.ImageDescription");
    if (text.empty()) text = windowsText(image.exifData(), "Exif.Image.XPComment");
    if (text.empty()) text = userComment(image.exifData());
    return text;
}

std::string copyrightOf(const Exiv2::Image& image) {
    std::string text = xmpText(image.xmpData(), "Xmp.dc.rights");
    if (text.empty()) text = iptcText(image.iptcData(), "Iptc.Application2.Copyright");
    if (text.empty()) text = exifCopyright(image.exifData());
    return text;
}

std::vector<std::string> keywordsOf(const Exiv2::Image& image) {
    KeywordList keywords;
    guarded([&] {
        const Exiv2::XmpData& data = image.xmpData();
        const auto subject = data.findKey(Exiv2::XmpKey("Xmp.dc.subject"));
        if (subject == data.end()) return true;
        for (auto i = decltype(subject->count()){0}; i < subject->count(); ++i)
            keywords.add(guessedToUtf8(subject->toString(i)));
        return true;
    });
    for (const std::string& keyword : iptcTexts(image.iptcData(), "Iptc.Application2.Keywords")) keywords.add(keyword);
    if (keywords.isEmpty()) {
        const std::string all = windowsText(image.exifData(), "Exif.Image.XPKeywords");
        for (size_t start = 0; start < all.size();) {
            const size_t end = std::min(all.find(';', start), all.size());
            keywords.add(all.substr(start, end - start));
            start = end + 1;
        }
    }
    return keywords.take();
}

}  // namespace marrowbeck::tools
