// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <functional>
#include <memory>

namespace framework {

/// Lets the end of a session, or of the terminal that the program was started in, be an orderly end of the program: the
/// first SIGTERM, SIGINT or SIGHUP reaches `onSignal` from the event loop. A second one of a kind ends the process at
/// once, should it hang. One instance at a time, on the main thread.
class TerminationSignals {
  public:
    explicit TerminationSignals(std::function<void()> onSignal);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

  private:
    class Pipe;
    std::unique_ptr<Pipe> pipe_;
};

}  // namespace framework
