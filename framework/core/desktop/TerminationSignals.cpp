// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/desktop/TerminationSignals.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <atomic>
#include <utility>

#include "base/Descriptor.h"
#include "framework/core/process/EndSignals.h"

namespace framework {
namespace {

/// What a signal handler may touch. A byte in the pipe says that a signal came: little else is allowed in a handler.
std::atomic<int> pipeEnd = -1;

void tell(int) {
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = write(pipeEnd, &byte, 1);
}

}  // namespace

class TerminationSignals::Pipe {
  public:
    Pipe(base::Descriptor reading, base::Descriptor writing, std::function<void()> onSignal)
        : reading_(std::move(reading)),
          writing_(std::move(writing)),
          notifier_(reading_.Number(), QSocketNotifier::Read) {
        pipeEnd = writing_.Number();
        QObject::connect(&notifier_, &QSocketNotifier::activated, &notifier_, [this, act = std::move(onSignal)] {
            char byte = 0;
            if (read(reading_.Number(), &byte, 1) == 1) act();
        });
        internal::HandleEndSignals(tell);
    }
    ~Pipe() {
        internal::HandleEndSignals(SIG_DFL);
        pipeEnd = -1;
    }

  private:
    base::Descriptor reading_;
    base::Descriptor writing_;
    QSocketNotifier notifier_;
};

TerminationSignals::TerminationSignals(std::function<void()> onSignal) {
    int ends[2];
    if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return;
    pipe_ = std::make_unique<Pipe>(base::Descriptor(ends[0]), base::Descriptor(ends[1]), std::move(onSignal));
}

TerminationSignals::~TerminationSignals() = default;

}  // namespace framework
