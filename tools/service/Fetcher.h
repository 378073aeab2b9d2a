// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/ByteQueue.h"
#include "base/Frames.h"
#include "tools/service/FileNote.h"
#include "tools/service/Offspring.h"

namespace marrowbeck::tools {

/// The supervisor's end of the process that opens files (see FetcherProcess.h), which is ended with this object. What
/// it is told gathers until `flush`. Waits for nothing but, in `introduce`, for a process that takes nothing: for a
/// second, and that one counts as dead then. For the supervisor's one thread.
class Fetcher {
  public:
    /// Null when there can be no further process.
    static std::unique_ptr<Fetcher> start();

    /// A reader, by a number of the caller's, above 0, and our end of its socket.
    void introduce(std::uint32_t reader, int socket);
    void forget(std::uint32_t reader);

    /// Has the file opened, and handed with the question to the reader. An empty path hands over the question alone.
    void open(std::uint32_t id, std::uint32_t reader, const std::string& path, const std::string& question);
    /// Has the file looked at.
    void look(std::uint32_t id, const std::string& path);
    /// The file is of no interest any more.
    void cancel(std::uint32_t id);

    /// Sends what was said. False when nobody is there to hear it.
    bool flush();
    /// Whether more is to be sent once `descriptor()` takes it.
    bool isBehind() const { return !unsent_.IsEmpty(); }

    /// Readable when notes have come, or when the process has died.
    int descriptor() const { return process_.socket(); }
    /// The notes that have come; nothing when the process has died.
    std::optional<std::vector<FileNote>> receive();

  private:
    explicit Fetcher(Offspring process);

    void tell(char letter, std::uint32_t number, std::string_view rest = {});

    Offspring process_;
    base::ByteQueue unsent_;
    base::FrameStream notes_;
    bool isDead_ = false;
};

}  // namespace marrowbeck::tools
