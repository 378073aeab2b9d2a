// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QEventLoop>
#include <QFileSystemWatcher>
#include <QTimer>
#include <filesystem>

namespace marrowbeck::test {

/// Serves events until `condition` holds, which is asked after each round of them, or until the time is up. Whether it
/// came to hold. Rests while nothing happens: so the condition must come about through an event.
template <class Condition>
bool ServeEvents(Condition condition, int milliseconds) {
    bool timeIsUp = false;
    QTimer limit;
    limit.setSingleShot(true);
    limit.setTimerType(Qt::PreciseTimer);
    limit.callOnTimeout([&timeIsUp] { timeIsUp = true; });
    limit.start(milliseconds);
    // The form of processEvents that takes a time would not wait.
    QEventLoop loop;
    while (!condition()) {
        if (timeIsUp) return false;
        loop.processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

/// Serves events until `condition` holds. Gives up after a minute, which no loaded machine needs: False then.
template <class Condition>
bool RunUntil(Condition condition) {
    constexpr int kGiveUp = 60'000;
    return ServeEvents(condition, kGiveUp);
}

/// The same until the file is there, which may be another process's doing. Its folder must exist.
inline bool RunUntilThere(const std::filesystem::path& file) {
    const QFileSystemWatcher wake({QString::fromStdString(file.parent_path().string())});
    return RunUntil([&file] { return std::filesystem::exists(file); });
}

/// Serves events for some time.
inline void RunFor(int milliseconds) {
    ServeEvents([] { return false; }, milliseconds);
}

}  // namespace marrowbeck::test
