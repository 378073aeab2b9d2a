// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

#include "base/Descriptor.h"

namespace framework::internal {

/// A process that was started for its output. It leads a process group of its own, dies with this program, and its
/// standard error goes to ours when that is a terminal, and nowhere otherwise unless PassErrorsOn was called. Ended
/// with all its group when this object goes before it is over.
///
/// Nothing waits for a process that was killed: one that the disk holds is over only when the disk answers. It is left
/// behind, and taken off the system's list of processes at the start or end of a later one.
class ChildProcess {
  public:
    /// What its standard input is: empty, or a socket whose other end is `Input()`.
    enum class InputKind { empty, open };

    /// Who may do what with the files that it makes: as with this process's own, or nobody but their owner anything.
    enum class NewFiles { usual, ownersOnly };

    /// Starts the program at `path`. Nothing is started when the system refuses or the file is no program that it can
    /// run; errno tells why.
    static std::optional<ChildProcess> Start(const std::string& path, const std::vector<std::string>& arguments,
                                             const std::vector<std::string>& environment,
                                             const std::string& workingFolder, InputKind input = InputKind::empty,
                                             NewFiles newFiles = NewFiles::usual);

    /// From now on, for those that are started: standard error goes to ours whatever that is.
    static void PassErrorsOn();

    ChildProcess(ChildProcess&& other) noexcept;
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;
    ~ChildProcess();

    /// Its standard output and the other end of its input, neither of which ever keeps us waiting; for who talks with
    /// it while it runs.
    int Output() const { return output_.Number(); }
    int Input() const { return input_.Number(); }

    /// All that it prints until it, and whoever shares its output, has closed it; of one that a signal ends, what it
    /// has printed by then. Waits as WaitReadable does.
    std::string ReadOutput();
    /// Waits for its end, as WaitReadable does, and gives its exit status as a shell tells it: 128 plus the number for
    /// a signal.
    int Wait();
    /// Ends it with all its group, unless it is over already. Gives its status as Wait does where that shows within
    /// `patience` milliseconds. Never parks.
    std::optional<int> End(int patience = 0) noexcept;

  private:
    ChildProcess(pid_t process, base::Descriptor input, base::Descriptor output);

    bool isKilled() const;
    std::optional<int> takeStatus() noexcept;

    pid_t process_;
    /// Readable once the process is over; not open where the system refused it.
    base::Descriptor end_;
    base::Descriptor input_;
    base::Descriptor output_;
};

}  // namespace framework::internal
