#pragma once

#include <QCoreApplication>
#include <QElapsedTimer>

namespace marrowbeck::test {

/// Serves events until `condition` holds, for ten seconds at most. Whether it came to hold.
template <class Condition>
bool RunUntil(Condition condition) {
    QElapsedTimer clock;
    clock.start();
    while (!condition()) {
        if (clock.elapsed() > 10'000) return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 20);
    }
    return true;
}

/// Serves events for some time.
inline void RunFor(int milliseconds) {
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < milliseconds) QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
}

}  // namespace marrowbeck::test
