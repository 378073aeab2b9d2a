#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "tools/service/FileIdentity.h"

namespace marrowbeck::tools {

/// The readers' last answers, each by the file it is about and the question, so that a file that is asked about again
/// is not opened again. The oldest unused ones make room.
class KeptAnswers {
  public:
    /// What is kept at most: more files than a list shows at a time, and no more memory than one picture takes.
    static constexpr std::size_t mostAnswers = 4096;
    static constexpr std::size_t mostBytes = 32U << 20;

    /// `answer` is nothing for a file that makes no sense, which is worth knowing too.
    void keep(const FileIdentity& file, const std::string& question, std::optional<std::string_view> answer);

    struct Kept {
        std::optional<std::string> answer;
    };
    /// Null when nothing is known; valid until the next call.
    const Kept* find(const FileIdentity& file, const std::string& question);

  private:
    using Key = std::pair<decltype(FileIdentity::values), std::string>;
    struct Entry {
        Key key;
        Kept kept;
    };

    static std::size_t sizeOf(const Entry& entry);

    std::list<Entry> entries_;  ///< the last used first
    std::map<Key, std::list<Entry>::iterator> places_;
    std::size_t bytes_ = 0;
};

}  // namespace marrowbeck::tools
