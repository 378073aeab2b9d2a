// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

namespace marrowbeck::tools {

/// Carries out tasks that ask the disk, in the order in which they were given but side by side where that helps. While
/// the disk answers at once, `whilePrompt` threads do them all: one, unless a task is worth a processor, since to wake
/// another costs more than such an answer. Once a task is seen to wait, others are begun beside it, `sideBySide` at a
/// time, however many processors there are. What waits for more than a second is left behind: it counts no longer, so
/// that those after it come along, until `most` threads are held up.
///
/// A process in which a task may be left behind is not over until the disk answers, whoever ends it: nobody may wait
/// for its end, and what it holds open for others it has to close itself.
///
/// All functions may be called by any thread. When this goes, tasks not yet begun are dropped; those in hand go on, so
/// that what a task uses has to outlive it.
class DiskPool {
  public:
    using Task = std::function<void()>;

    explicit DiskPool(std::size_t sideBySide = 32, std::size_t most = 256, std::size_t whilePrompt = 1);
    ~DiskPool();
    DiskPool(const DiskPool&) = delete;
    DiskPool& operator=(const DiskPool&) = delete;

    void add(Task task);
    /// All at once, which wakes nobody twice.
    void add(std::vector<Task> tasks);

  private:
    class Crew;
    std::shared_ptr<Crew> crew_;
};

}  // namespace marrowbeck::tools
