// SPDX-License-Identifier: GPL-2.0-or-later
#include "framework/core/desktop/DocumentService.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QStringList>
#include <QVariantMap>
#include <string>
#include <utility>

#include "framework/core/desktop/Application.h"
#include "framework/core/desktop/NotOpened.h"
#include "framework/core/files/Paths.h"

namespace framework {
namespace {

constexpr const char* kInterface = "org.freedesktop.Application";

/// How long the owner of the name may take to answer before it counts as hung, in milliseconds.
constexpr int kOwnerPatience = 5000;

/// The object path that belongs to a bus name: slashes for dots and underscores for what no path may hold.
QString pathOf(const QString& name) {
    return '/' + QString(name).replace('.', '/').replace('-', '_');
}

}  // namespace

/// Answers the calls that reach the owner of the name.
class DocumentService::Endpoint : public QDBusVirtualObject {
  public:
    explicit Endpoint(std::function<void()> activate) : activate_(std::move(activate)) {}

    QString introspect(const QString&) const override {
        return QStringLiteral(
            "<interface name=\"org.freedesktop.Application\">"
            "<method name=\"Activate\"><arg type=\"a{sv}\" direction=\"in\"/></method>"
            "<method name=\"Open\"><arg type=\"as\" direction=\"in\"/><arg type=\"a{sv}\" direction=\"in\"/></method>"
            "<method name=\"ActivateAction\"><arg type=\"s\" direction=\"in\"/><arg type=\"av\" direction=\"in\"/>"
            "<arg type=\"a{sv}\" direction=\"in\"/></method>"
            "</interface>");
    }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override {
        if (!message.interface().isEmpty() && message.interface() != QLatin1String(kInterface)) return false;
        const QString member = message.member();
        if (member != "Activate" && member != "Open" && member != "ActivateAction") return false;
        // Answered before it is carried out: opening may show a message, and the caller is not to wait for a person.
        connection.send(message.createReply());
        if (activate_) activate_();
        if (member == "Open" && !message.arguments().isEmpty()) open(message.arguments().first().toStringList());
        return true;
    }

  private:
    static void open(const QStringList& urls) {
        std::vector<std::string> paths;
        std::vector<std::string> foreign;
        for (const QString& url : urls) {
            const std::string text = url.toStdString();
            if (auto path = Paths::FromUrl(text)) {
                paths.push_back(*std::move(path));
            } else {
                foreign.push_back(text);
            }
        }
        if (!paths.empty()) internal::RaiseOpenDocuments(std::move(paths));
        for (const std::string& url : foreign) TellNotOpened(String(url + " is no folder of this computer."));
    }

    std::function<void()> activate_;
};

DocumentService::DocumentService(const String& name, const std::vector<std::string>& paths,
                                 std::function<void()> activate) {
    QDBusConnection bus = QDBusConnection::sessionBus();
    if (!bus.isConnected()) return;
    const QString busName = QString::fromUtf8(name.CString());

    // The object stands before the name does, so that no call finds the name without it.
    endpoint_ = std::make_unique<Endpoint>(std::move(activate));
    bus.registerVirtualObject(pathOf(busName), endpoint_.get());
    const auto answer = bus.interface()->registerService(busName, QDBusConnectionInterface::DontQueueService,
                                                         QDBusConnectionInterface::DontAllowReplacement);
    if (answer.isValid() && answer.value() == QDBusConnectionInterface::ServiceRegistered) {
        role_ = Role::First;
        return;
    }
    bus.unregisterObject(pathOf(busName));
    endpoint_.reset();

    QStringList urls;
    for (const std::string& path : paths) urls.append(QString::fromStdString(Paths::ToUrl(Paths::Absolute(path))));
    auto call =
        QDBusMessage::createMethodCall(busName, pathOf(busName), kInterface, urls.isEmpty() ? "Activate" : "Open");
    if (!urls.isEmpty()) call << urls;
    call << QVariantMap();
    if (bus.call(call, QDBus::Block, kOwnerPatience).type() == QDBusMessage::ReplyMessage) role_ = Role::HandedOver;
}

DocumentService::~DocumentService() = default;

}  // namespace framework
