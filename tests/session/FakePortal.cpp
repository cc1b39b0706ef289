// SPDX-License-Identifier: MIT
#include "session/FakePortal.h"

#include "platform/linux/portal/PortalNames.h"
#include "platform/linux/portal/PortalShortcut.h"

#include <QDBusObjectPath>
#include <QDBusVariant>

namespace stowpocket {
namespace {

QString handle(const QDBusMessage& call, const char* kind, const QVariant& token) {
    return QStringLiteral("%1/%2/%3/%4")
        .arg(portalNames::path, QString::fromLatin1(kind), call.service().mid(1).replace(u'.', u'_'),
             token.toString());
}

}  // namespace

FakePortal::FakePortal(const QDBusConnection& bus) : bus_(bus) {
    bus_.registerVirtualObject(portalNames::path, this, QDBusConnection::SubPath);
    bus_.registerService(portalNames::service);
}

FakePortal::~FakePortal() {
    bus_.unregisterObject(portalNames::path, QDBusConnection::UnregisterTree);
    bus_.unregisterService(portalNames::service);
}

bool FakePortal::handleMessage(const QDBusMessage& message, const QDBusConnection&) {
    const QVariantList arguments = message.arguments();
    const QVariantMap options = qdbus_cast<QVariantMap>(arguments.value(arguments.size() - 1));
    if (message.member() == QStringLiteral("Get"))
        return bus_.send(message.createReply(QVariant::fromValue(QDBusVariant(version))));
    calls.push_back(message.member().toStdString());
    if (message.member() == QStringLiteral("CreateSession"))
        open(message, options);
    else if (message.member() == QStringLiteral("BindShortcuts"))
        bind(message, options);
    else if (message.member() == QStringLiteral("Close"))
        calls.back() += message.path().contains(QStringLiteral("/session/")) ? " session" : " request";
    else
        introduce(message);
    return true;
}

void FakePortal::introduce(const QDBusMessage& call) {
    calls.back() += ' ' + call.arguments().value(0).toString().toStdString();
    bus_.send(call.createReply());
}

void FakePortal::open(const QDBusMessage& call, const QVariantMap& options) {
    session_ = handle(call, "session", options.value(QStringLiteral("session_handle_token")));
    respond(call, options,
            created.value_or(QVariantList{0U, QVariantMap{{QStringLiteral("session_handle"), session_}}}));
}

void FakePortal::bind(const QDBusMessage& call, const QVariantMap& options) {
    const auto entries = qdbus_cast<PortalShortcutEntries>(call.arguments().at(1));
    for (const PortalShortcutEntry& entry : entries)
        calls.back() += ' ' + entry.id.toStdString() + ' ' +
                        entry.properties.value(QStringLiteral("preferred_trigger")).toString().toStdString();
    if (onBind)
        return onBind();
    const QVariantMap results{{QStringLiteral("shortcuts"), QVariant::fromValue(entries)}};
    respond(call, options, bound.value_or(QVariantList{0U, results}));
}

void FakePortal::respond(const QDBusMessage& call, const QVariantMap& options, const QVariantList& arguments) {
    const QString request = handle(call, "request", options.value(QStringLiteral("handle_token")));
    bus_.send(call.createReply(QVariant::fromValue(QDBusObjectPath(request))));
    signal(request, "org.freedesktop.portal.Request", "Response", arguments);
}

void FakePortal::signal(const QString& path, const char* interface, const char* name, const QVariantList& arguments) {
    QDBusMessage message =
        QDBusMessage::createSignal(path, QString::fromLatin1(interface), QString::fromLatin1(name));
    message.setArguments(arguments);
    bus_.send(message);
}

void FakePortal::activate(const QVariantList& arguments) {
    signal(portalNames::path, "org.freedesktop.portal.GlobalShortcuts", "Activated", arguments);
}

void FakePortal::press(const QString& id, const QString& token) {
    activate({QVariant::fromValue(QDBusObjectPath(session_)), id, qulonglong{1},
              QVariantMap{{QStringLiteral("activation_token"), token}}});
}

void FakePortal::closeSession() {
    signal(session_, "org.freedesktop.portal.Session", "Closed", {QVariantMap()});
}

}  // namespace stowpocket
