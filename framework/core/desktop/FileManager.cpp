// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/desktop/FileManager.h"

#include <fcntl.h>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusUnixFileDescriptor>
#include <QStringList>
#include <QVariantMap>
#include <optional>

#include "base/Descriptor.h"
#include "framework/core/desktop/FolderOpener.h"
#include "framework/core/process/ActivationToken.h"
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

/// What is to be shown, and by what right it comes to the front.
struct Wish {
    Ref<FolderItem> item;
    String token;
};

bool askFileManager(const Wish& wish) {
    auto call = QDBusMessage::createMethodCall("org.freedesktop.FileManager1", "/org/freedesktop/FileManager1",
                                               "org.freedesktop.FileManager1", "ShowItems");
    call << QStringList(QString::fromUtf8(wish.item->URLPath().CString())) << QString::fromUtf8(wish.token.CString());
    return succeeds(call);
}

bool askPortal(const Wish& wish) {
    const base::Descriptor place = base::Descriptor::Open(wish.item->AbsolutePath().CString(), O_PATH);
    if (!place.IsOpen()) return false;
    const QDBusUnixFileDescriptor file(place.Number());
    auto call = QDBusMessage::createMethodCall("org.freedesktop.portal.Desktop", "/org/freedesktop/portal/desktop",
                                               "org.freedesktop.portal.OpenURI", "OpenDirectory");
    QVariantMap options;
    if (!wish.token.IsEmpty()) options["activation_token"] = QString::fromUtf8(wish.token.CString());
    call << QString() << QVariant::fromValue(file) << options;
    return succeeds(call);
}

}  // namespace

bool RevealInFileManager(const Ref<FolderItem>& item) {
    // Whom the wait seems long presses again. All of that is one wish, the last one.
    static std::optional<Wish> wanted;
    const bool asking = wanted.has_value();
    wanted = {item, internal::ActivationToken()};
    if (asking) return true;
    struct Fulfilled {
        ~Fulfilled() { wanted.reset(); }
    } const atEnd;

    bool shown = false;
    for (Ref<FolderItem> asked; !asked || !wanted->item->AbsolutePath().SameBytes(asked->AbsolutePath());) {
        const Wish wish = *wanted;
        asked = wish.item;
        shown = askFileManager(wish) || askPortal(wish);
    }
    const Ref<FolderItem> folder = wanted->item->Parent();
    return shown || (folder && internal::OpenFolderElsewhere(folder, wanted->token));
}

}  // namespace framework
