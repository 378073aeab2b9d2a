// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QProcess>
#include <cstdlib>

namespace marrowbeck::test {

/// A message bus of the test's own, which this process and its children then take for the session's. One in a
/// process: the toolkit keeps its first connection for good.
class PrivateBus {
  public:
    PrivateBus() {
        daemon_.start("dbus-daemon", {"--session", "--nofork", "--print-address"});
        if (!daemon_.waitForReadyRead(5000)) return;
        const QByteArray address = daemon_.readLine().trimmed();
        setenv("DBUS_SESSION_BUS_ADDRESS", address.constData(), 1);
        running_ = !address.isEmpty();
    }
    ~PrivateBus() {
        daemon_.kill();
        daemon_.waitForFinished();
    }

    bool IsRunning() const { return running_; }

  private:
    QProcess daemon_;
    bool running_ = false;
};

}  // namespace marrowbeck::test
