#include "tools/mime/MimeComment.h"

#include <expat.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string_view>
#include <type_traits>

#include "tools/service/InputFile.h"

namespace marrowbeck::tools {

namespace {

// The longest description of the database has some 10 kB.
constexpr size_t maximumDescription = 65536;

struct Search {
    const std::vector<std::string>& languages;
    size_t bestRank;  ///< index into `languages`; one more for the description's own language
    bool inside = false;
    std::string text;
};

void startElement(void* context, const char* name, const char** attributes) {
    auto& search = *static_cast<Search*>(context);
    if (std::string_view(name) != "comment") return;
    size_t rank = search.languages.size();
    for (; *attributes != nullptr; attributes += 2) {
        if (std::string_view(attributes[0]) != "xml:lang") continue;
        const auto found = std::find(search.languages.begin(), search.languages.end(), attributes[1]);
        if (found == search.languages.end()) return;
        rank = static_cast<size_t>(found - search.languages.begin());
    }
    if (rank >= search.bestRank) return;
    search.bestRank = rank;
    search.inside = true;
    search.text.clear();
}

void endElement(void* context, const char* /*name*/) {
    static_cast<Search*>(context)->inside = false;
}

void characters(void* context, const char* text, int length) {
    auto& search = *static_cast<Search*>(context);
    if (search.inside) search.text.append(text, static_cast<size_t>(length));
}

}  // namespace

std::vector<std::string> userLanguages() {
    const auto variable = [](const char* name) {
        const char* const value = std::getenv(name);
        return value == nullptr ? std::string() : std::string(value);
    };
    std::string locale = variable("LC_ALL");
    if (locale.empty()) locale = variable("LC_MESSAGES");
    if (locale.empty()) locale = variable("LANG");
    if (locale.empty() || locale == "POSIX" || locale == "C" || locale.starts_with("C.")) return {};

    std::vector<std::string> languages;
    const std::string list = variable("LANGUAGE") + ":" + locale;
    for (size_t start = 0; start < list.size();) {
        const size_t end = std::min(list.find(':', start), list.size());
        const std::string_view entry = std::string_view(list).substr(start, end - start);
        start = end + 1;
        // The form is language_COUNTRY.charset@variant; all but the language may be missing.
        const size_t at = entry.find('@');
        const std::string_view variant = at == std::string_view::npos ? std::string_view() : entry.substr(at);
        const std::string_view country = entry.substr(0, entry.find_first_of(".@"));
        const std::string_view language = country.substr(0, country.find('_'));
        for (const std::string_view base : {country, language}) {
            if (base.empty()) continue;
            if (!variant.empty()) languages.push_back(std::string(base) + std::string(variant));
            languages.emplace_back(base);
        }
    }
    return languages;
}

std::string mimeComment(const std::string& file, const std::vector<std::string>& languages) {
    const InputFile input(file);
    if (!input.isOpen()) return {};
    const std::string description = input.head(maximumDescription);
    const std::unique_ptr<std::remove_pointer_t<XML_Parser>, void (*)(XML_Parser)> parser(XML_ParserCreate(nullptr),
                                                                                          XML_ParserFree);
    Search search{languages, languages.size() + 1, false, {}};
    XML_SetUserData(parser.get(), &search);
    XML_SetElementHandler(parser.get(), startElement, endElement);
    XML_SetCharacterDataHandler(parser.get(), characters);
    XML_Parse(parser.get(), description.data(), static_cast<int>(description.size()), XML_TRUE);
    return search.text;
}

}  // namespace marrowbeck::tools
