#include "tools/service/KeptAnswers.h"

namespace marrowbeck::tools {

std::size_t KeptAnswers::sizeOf(const Entry& entry) {
    return sizeof entry + entry.key.second.size() + (entry.kept.answer ? entry.kept.answer->size() : 0);
}

void KeptAnswers::keep(const FileIdentity& file, const std::string& question, std::optional<std::string_view> answer) {
    Key key(file.values, question);
    if (places_.contains(key)) return;
    entries_.push_front({key, {answer ? std::optional<std::string>(*answer) : std::nullopt}});
    places_.emplace(std::move(key), entries_.begin());
    bytes_ += sizeOf(entries_.front());
    while (entries_.size() > mostAnswers || (bytes_ > mostBytes && entries_.size() > 1)) {
        bytes_ -= sizeOf(entries_.back());
        places_.erase(entries_.back().key);
        entries_.pop_back();
    }
}

const KeptAnswers::Kept* KeptAnswers::find(const FileIdentity& file, const std::string& question) {
    const auto place = places_.find(Key(file.values, question));
    if (place == places_.end()) return nullptr;
    entries_.splice(entries_.begin(), entries_, place->second);
    return &place->second->kept;
}

}  // namespace marrowbeck::tools
