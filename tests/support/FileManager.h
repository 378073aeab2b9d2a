// SPDX-License-Identifier: GPL-2.0-or-later
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <functional>
#include <utility>

namespace marrowbeck::test {

/// The desktop's file manager, on the bus that is the session's by then. Notes what it is to show, or refuses
/// everything. Before it answers it does what a test wants.
class FileManager : public QDBusVirtualObject {
  public:
    FileManager() {
        QDBusConnection bus = QDBusConnection::sessionBus();
        running_ = bus.registerVirtualObject("/org/freedesktop/FileManager1", this) &&
                   bus.registerService("org.freedesktop.FileManager1");
    }

    bool IsRunning() const { return running_; }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (const auto act = std::exchange(beforeAnswer, nullptr)) act();
        if (refuses) {
            ++refused;
            connection.send(message.createErrorReply(QDBusError::Failed, "no"));
        } else {
            shown += message.arguments().first().toStringList();
            tokens += message.arguments().at(1).toString();
            connection.send(message.createReply());
        }
        return true;
    }

    QStringList shown;
    QStringList tokens;
    bool refuses = false;
    int refused = 0;
    std::function<void()> beforeAnswer;

  private:
    bool running_ = false;
};

}  // namespace marrowbeck::test
