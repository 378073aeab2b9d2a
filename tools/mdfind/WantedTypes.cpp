// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/mdfind/WantedTypes.h"

namespace marrowbeck::tools {

bool WantedTypes::fits(const std::string& type) {
    return type_.empty() ? types_.isImage(type) : type == type_;
}

std::vector<WantedTypes::Verdict> WantedTypes::byName(const std::vector<std::string_view>& names) {
    std::vector<Verdict> verdicts;
    verdicts.reserve(names.size());
    const std::lock_guard lock(mutex_);
    for (const std::string_view name : names) {
        bool isUnsure = false;
        const bool fitting = fits(types_.typeByName(name, [&isUnsure] {
            isUnsure = true;
            return std::string();
        }));
        const Verdict told = fitting ? Verdict::yes : Verdict::no;
        verdicts.push_back(isUnsure ? Verdict::contentTells : told);
    }
    return verdicts;
}

bool WantedTypes::isWanted(std::string_view name, const std::string& content) {
    const std::lock_guard lock(mutex_);
    return fits(types_.typeByName(name, [&content] { return content; }));
}

}  // namespace marrowbeck::tools
