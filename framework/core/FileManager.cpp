#include "framework/core/FileManager.h"

#include <fcntl.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusUnixFileDescriptor>
#include <QStringList>
#include <QVariantMap>

#include "framework/core/Waiting.h"

namespace framework {
namespace {

/// How long each way may take to answer before the next one is tried, in milliseconds.
constexpr int kPatience = 3000;

bool succeeds(const QDBusMessage& call) {
    const QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return false;
    QDBusPendingCallWatcher watcher(bus.asyncCall(call, kPatience));
    Completion answered;
    QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, &watcher, [&answered] { answered.Complete(); });
    answered.Wait();
    return watcher.isFinished() && !watcher.isError();
}

bool askFileManager(const Ref<FolderItem>& item) {
    auto call = QDBusMessage::createMethodCall("org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                                               "org.freedesktop.FileManager1", "ShowItems");
    call << QStringList(QString::fromUtf8(item->URLPath().CString())) << QString();
    return succeeds(call);
}

bool askPortal(const Ref<FolderItem>& item) {
    const int descriptor = open(item->AbsolutePath().CString(), O_PATH | O_CLOEXEC);
    if (descriptor < 0) return false;
    QDBusUnixFileDescriptor file(descriptor);
    close(descriptor);
    auto call = QDBusMessage::createMethodCall("org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
                                               "org.freedesktop.portal.OpenURI", "OpenDirectory");
    call << QString() << QVariant::fromValue(file) << QVariantMap();
    return succeeds(call);
}

}  // namespace

bool RevealInFileManager(const Ref<FolderItem>& item) {
    if (askFileManager(item) || askPortal(item)) return true;
    const Ref<FolderItem> folder = item->Parent();
    return folder && folder->Launch();
}

}  // namespace framework
