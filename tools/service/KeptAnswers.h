// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/FileIdentity.h"

namespace marrowbeck::tools {

/// The readers' last answers, each with the state in which its file was, so that a file that is asked about again
/// is not opened again. The oldest unused ones make room.
class KeptAnswers {
  public:
    /// What is kept at most: more files than a list shows at a time, and no more memory than one picture takes.
    static constexpr std::size_t mostAnswers = 4096;
    static constexpr std::size_t mostBytes = 32U << 20;

    struct Kept {
        base::FileIdentity file;
        /// Nothing for a file that makes no sense, which is worth knowing too.
        std::optional<std::string> answer;
    };

    void keep(const std::string& path, const std::string& question, Kept kept);

    /// Null when nothing is known; valid until the next call. Whether the file is still what it was is the caller's to
    /// look.
    const Kept* find(const std::string& path, const std::string& question);

  private:
    using Key = std::pair<std::string, std::string>;
    struct Entry {
        Key key;
        Kept kept;
    };

    static std::size_t sizeOf(const Entry& entry);
    void remove(std::list<Entry>::iterator entry);

    std::list<Entry> entries_;  ///< the last used first
    std::map<Key, std::list<Entry>::iterator> places_;
    std::size_t bytes_ = 0;
};

}  // namespace marrowbeck::tools
