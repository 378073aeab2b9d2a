// SPDX-License-Identifier: GPL-2.0-or-later
#include <cstdint>

#include "net/HTTPSocket.h"

namespace marrowbeck {

namespace {

/// How long the loop rests when a pass brought nothing: short beside any answer over a wire, and long enough to leave
/// the processor to others.
constexpr int kRestMilliseconds = 1;

}  // namespace

void HTTPSocket::WaitForPage() {
    const Ref<Application> application = Application::Current();
    _pageComplete = false;
    mErrorCode = 0;
    const auto newDeadline = [this] { return std::int64_t{Ticks()} + std::int64_t{timeoutSeconds} * 60; };
    std::int64_t deadline = newDeadline();
    bool connected = false;
    int length = 0;
    while (!_pageComplete && mErrorCode == 0) {
        const int received = _currentLength;
        Poll();
        if (Yield) application->DoEvents(-1);
        if (_connectionValid != connected) {
            connected = _connectionValid;
            deadline = newDeadline();
        } else if (Len(_pageBuffer) != length) {
            length = Len(_pageBuffer);
            deadline = newDeadline();
        }
        if (timeoutSeconds > 0 && deadline < Ticks()) {
            Close();
            SetError(TimedOut);
            break;
        }
        if (_currentLength == received) Pause(kRestMilliseconds);
        LoopYield();
    }
}

}  // namespace marrowbeck
