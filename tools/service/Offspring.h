// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <sys/types.h>

#include <functional>
#include <optional>

#include "base/Descriptor.h"

namespace marrowbeck::tools {

/// A fork of this process, and one end of the socket through which we talk. It has nothing else of ours open, and is
/// ended when this object goes or, in whatever way, this process.
class Offspring {
  public:
    /// Its life is a call of `life` with its end of the socket. Nothing when there can be no further process. Not with
    /// other threads running.
    static std::optional<Offspring> start(const std::function<void(int socket)>& life);

    Offspring(Offspring&& other) noexcept;
    Offspring& operator=(Offspring&&) = delete;
    ~Offspring();

    pid_t process() const { return process_; }
    /// Our end, which never keeps us waiting.
    int socket() const { return socket_.Number(); }

    /// Kills it, unless it has ended already, and gives the status that wait(2) tells. Nothing when that is not to be
    /// had soon: what waits for a disk does not even die before that answers, and is left behind.
    std::optional<int> end();

  private:
    Offspring(pid_t process, base::Descriptor socket);

    pid_t process_;
    base::Descriptor socket_;
};

}  // namespace marrowbeck::tools
