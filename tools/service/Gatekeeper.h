// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <linux/seccomp.h>
#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/Descriptor.h"

namespace marrowbeck::tools {

/// The supervisor's answers to what a reader asks the system for and a filter, which sees nothing but numbers, cannot
/// decide: files, by their names, and further threads, by how many there are. The reader itself opens nothing and looks
/// at nothing: what lies in one of the folders is opened and looked at for it, and of all else it is not even told
/// whether it is there. For the supervisor's one thread.
class Gatekeeper {
  public:
    /// Threads of a reader at a time: far more than its libraries start, which is one or two a processor.
    static std::size_t mostThreads();

    /// `questions` is what `confine` has given the reader, a child of this process. `folders` are whole paths, of
    /// folders and of single files, of which the supervisor has read itself already; they must outlive this.
    Gatekeeper(base::Descriptor questions, pid_t reader, const std::vector<std::string>& folders);

    /// Readable when the reader asks.
    int descriptor() const { return questions_.Number(); }

    /// Answers what was asked; waits for nothing.
    void answer();

  private:
    /// Where the arguments of a call stand that is about a path; 6 for those that it does not have.
    struct PathCall {
        int number;
        unsigned path;
        unsigned flags;
        unsigned status;
    };

    void answer(const seccomp_notif& asked);
    std::optional<int> open(const seccomp_notif& asked, const PathCall& call);
    int look(const seccomp_notif& asked, const PathCall& call) const;
    std::optional<struct statx> statusOf(const seccomp_notif& asked, const PathCall& call, int& failure) const;
    bool mayHaveThread() const;
    std::string pathAt(std::uint64_t address) const;
    bool isIn(std::string_view path) const;

    base::Descriptor questions_;
    pid_t reader_;
    const std::vector<std::string>& folders_;
    /// The files that were opened last, by their numbers in the reader: about an open file the C library likes to ask
    /// by a call that could ask about a path.
    std::deque<std::pair<int, struct statx>> opened_;
};

}  // namespace marrowbeck::tools
