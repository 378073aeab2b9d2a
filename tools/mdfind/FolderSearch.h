// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "tools/mdfind/FolderLook.h"

namespace marrowbeck::tools {

/// Finds every regular file of a type below a folder. Hidden files and folders (a leading dot) are left out, links are
/// not followed, and subfolders that cannot be read are skipped and told, as is what lies so deep that no path can name
/// it. What the system does not let us look at goes for a file. The folder itself may be a link or hidden; the paths
/// begin with it as it stands, without its trailing slashes.
///
/// Folders and files are asked about many at a time and passed on in the byte order of the paths. Kept are the names of
/// the folders in hand, of those on the way down, and what was found or told out of turn.
///
/// Threads that the disk holds may use this for as long as the process lives: it must never go.
class FolderSearch {
  public:
    /// `type` such as "image/jpeg", or empty for every image. Where nothing is left out unsaid (`isStrict`), files that
    /// may not be read are found like others, and told where only their content could have told the type. What has
    /// given no answer for as long as `patience` gives none: a folder is skipped and told, a file goes for one that may
    /// be read.
    FolderSearch(std::string_view type, bool isStrict, char ending,
                 std::chrono::milliseconds patience = std::chrono::seconds(30));
    FolderSearch(const FolderSearch&) = delete;
    FolderSearch& operator=(const FolderSearch&) = delete;

    /// Paths, an ending behind each, and lines about what was skipped, as they come. Either may be empty.
    using Take = std::function<void(std::string_view found, std::string_view told)>;

    /// Begins below `folder`, which is absolute. Other work may be done meanwhile.
    void begin(const std::string& folder);

    /// Goes on to the end. 0, or the `errno` that says why the folder cannot be read.
    int run(const Take& take);

  private:
    /// A folder that is searched or was, as long as not all that lies in it is passed on.
    struct Node {
        std::string path;
        FolderFindings findings;
        bool isOver = false;
        std::size_t begun = 0;   ///< of the folders in it
        std::size_t passed = 0;  ///< of them, on the way
        std::size_t found = 0;   ///< passed on, in bytes
        std::size_t told = 0;
        std::vector<std::unique_ptr<Node>> below;
    };

    using Clock = FolderLook::Clock;

    void beginOne(Node& node, bool mayBeLink);
    void beginSome();
    void wait();
    void settle(Node& node);
    void sweep();
    void passOn(const Take& take);

    SearchTerms terms_;
    const std::chrono::milliseconds patience_;
    std::mutex mutex_;
    std::condition_variable isOver_;
    std::vector<Node*> over_;

    // Of the thread that runs the search.
    Node top_;
    std::unordered_map<Node*, std::shared_ptr<FolderLook>> looks_;
    std::vector<DiskPool::Task> tasks_;
    std::vector<Node*> waiting_;  ///< folders with some in them that are not begun; the last is the next
    std::vector<Node*> way_;      ///< from the top to the folder that is passed on
    std::string found_;
    std::string told_;
    std::size_t held_ = 0;                ///< looks that wait for long
    bool isGone_ = false;                 ///< no thread is left that the disk does not hold
    std::atomic<bool> isProbed_ = false;  ///< a task waits to be begun, which tells whether one is left
    Clock::time_point probedAt_;
    Clock::time_point awakeSince_;
    Clock::time_point lastSweep_;
};

}  // namespace marrowbeck::tools
