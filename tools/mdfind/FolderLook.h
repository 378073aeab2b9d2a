// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <sys/types.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "base/Descriptor.h"
#include "tools/disk/DiskPool.h"
#include "tools/mdfind/WantedTypes.h"

namespace marrowbeck::tools {

/// What a folder was found to hold, in the order of the paths' bytes.
struct FolderFindings {
    /// A folder in it, and how much of what was found and told stands before what lies in that.
    struct Below {
        std::string name;
        std::size_t found = 0;
        std::size_t told = 0;
    };

    std::string found;  ///< paths of files, an ending behind each
    std::string told;   ///< lines about what could not be looked into
    std::vector<Below> below;
    int failure = 0;  ///< the `errno` that says why the folder itself was not read to its end
};

/// What all folders of a search have in common.
struct SearchTerms {
    WantedTypes types;
    /// Files that may not be read are found too, and told where their content is needed.
    bool isStrict = false;
    char ending = '\n';
    uid_t user;  ///< who asks
    /// When a thread last began with a question, in ticks of the clock.
    std::atomic<std::chrono::steady_clock::rep> lastBegin = 0;
    DiskPool pool;
};

/// One folder on its way through the threads that ask the disk: its entries are read, and those about which there is a
/// question are looked at side by side.
///
/// Of each file of whose name something is wanted the disk is asked one thing where one is enough. Nobody waits for a
/// thread that gets no answer: what it was to find out is made up by `giveUp`, and what it brings later is dropped.
class FolderLook : public std::enable_shared_from_this<FolderLook> {
  public:
    using Clock = std::chrono::steady_clock;

    /// `path` ends in a slash. `over` is called once, by any thread, when the findings are there.
    FolderLook(SearchTerms& terms, std::string path, std::function<void()> over);

    /// Begins; a link is followed if the folder is the one that was asked for. On a thread of the pool.
    void read(bool mayBeLink);

    /// Does without the answers that have been waited for since `limit` or longer: a folder is told as unreadable, a
    /// file counts as one that may be read, without a content. With `evenUnasked` also without those to questions that
    /// no thread has come to. For any thread.
    void giveUp(Clock::time_point limit, bool evenUnasked);

    /// Does without the answers on files of a wanted name that are missing when all have been asked for and none has
    /// come since `limit`: whether such a file may be read, whoever asks for more will see. For any thread.
    void giveUpStragglers(Clock::time_point limit);

    /// Whether a question has been without an answer since `limit` or longer. For any thread.
    bool isHeld(Clock::time_point limit) const;

    /// Sees to it that files behind one that has been without an answer since `limit` are looked at. For any thread.
    void lookPast(Clock::time_point limit);

    /// Once it is over.
    FolderFindings takeFindings() { return std::move(findings_); }

  private:
    enum class Stage : unsigned char { waiting, reading, looking, over };
    enum class Kind : unsigned char { unknown, file, folder };
    enum class Outcome : unsigned char { open, left, found, below, refused, tooLong, unanswered };
    using Verdict = WantedTypes::Verdict;

    /// What becomes of something in the folder.
    struct Entry {
        std::size_t start = 0;  ///< of the name, behind which there is a NUL, or the slash of a folder
        std::size_t length = 0;
        Kind kind = Kind::unknown;
        Verdict verdict = Verdict::no;
        std::atomic<Outcome> outcome = Outcome::open;
        std::atomic<Clock::rep> askedAt = 0;
    };

    int readEntries(bool mayBeLink);
    void judge();

    std::string_view name(const Entry& entry) const {
        return std::string_view(names_).substr(entry.start, entry.length);
    }
    std::string pathOf(const Entry& entry) const { return path_ + std::string(name(entry)); }
    std::string_view asFolder(Entry& entry);
    bool isTooLong(const Entry& entry, std::size_t more = 0) const;

    void look();
    Outcome answerOn(Entry& entry);
    Outcome answerByContent(const Entry& entry, bool isReadable);
    bool mayBeRead(const char* name, bool isLookedAt) const;
    void decide(Entry& entry, Outcome outcome);

    void sort();
    void finish();
    Outcome madeUpFor(const Entry& entry);

    SearchTerms& terms_;
    const std::string path_;
    const std::function<void()> over_;

    std::atomic<Stage> stage_ = Stage::waiting;
    std::atomic<Clock::rep> askedAt_ = 0;
    base::Descriptor folder_;
    std::atomic<bool> isNear_ = false;
    std::string names_;
    std::deque<Entry> entries_;
    std::vector<std::pair<std::string_view, Entry*>> order_;
    std::atomic<std::size_t> next_ = 0;
    std::atomic<std::size_t> undecided_ = 0;
    std::atomic<Clock::rep> lastAnswer_ = 0;
    std::mutex reasonsMutex_;
    std::unordered_map<const Entry*, std::string> reasons_;
    FolderFindings findings_;
};

}  // namespace marrowbeck::tools
