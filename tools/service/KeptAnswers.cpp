// SPDX-License-Identifier: GPL-2.0-or-later
#include "tools/service/KeptAnswers.h"

namespace marrowbeck::tools {

std::size_t KeptAnswers::sizeOf(const Entry& entry) {
    const std::size_t answer = entry.kept.answer ? entry.kept.answer->size() : 0;
    return sizeof entry + entry.key.first.size() + entry.key.second.size() + answer;
}

void KeptAnswers::remove(std::list<Entry>::iterator entry) {
    bytes_ -= sizeOf(*entry);
    places_.erase(entry->key);
    entries_.erase(entry);
}

void KeptAnswers::keep(const std::string& path, const std::string& question, Kept kept) {
    Key key(path, question);
    if (const auto old = places_.find(key); old != places_.end()) remove(old->second);
    entries_.push_front({key, std::move(kept)});
    places_.emplace(std::move(key), entries_.begin());
    bytes_ += sizeOf(entries_.front());
    while (entries_.size() > mostAnswers || (bytes_ > mostBytes && entries_.size() > 1)) remove(--entries_.end());
}

const KeptAnswers::Kept* KeptAnswers::find(const std::string& path, const std::string& question) {
    const auto place = places_.find(Key(path, question));
    if (place == places_.end()) return nullptr;
    entries_.splice(entries_.begin(), entries_, place->second);
    return &place->second->kept;
}

}  // namespace marrowbeck::tools
