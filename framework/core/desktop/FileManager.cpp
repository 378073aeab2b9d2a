// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/desktop/FileManager.h"

#include <fcntl.h>
#include <unistd.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusUnixFileDescriptor>
#include <QStringList>
#include <QVariantMap>

#include "framework/core/desktop/FolderOpener.h"
#include "framework/core/threads/Waiting.h"

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
    // Whom the wait seems long presses again. All of that is one wish, the last one.
    static Ref<FolderItem> wanted;
    const bool asking = wanted != Nil;
    wanted = item;
    if (asking) return true;
    struct Fulfilled {
        ~Fulfilled() { wanted = Nil; }
    } const atEnd;

    bool shown = false;
    for (Ref<FolderItem> asked; !asked || wanted->AbsolutePath() != asked->AbsolutePath();) {
        asked = wanted;
        shown = askFileManager(asked) || askPortal(asked);
    }
    const Ref<FolderItem> folder = wanted->Parent();
    return shown || (folder && internal::OpenFolderElsewhere(folder));
}

}  // namespace framework
