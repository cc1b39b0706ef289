// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/hotkeys/PortalShortcuts.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QDBusVirtualObject>

#include <optional>
#include <string>

namespace stowpocket {

/// A desktop portal that tells no colour scheme and binds every shortcut it is asked for, unless the test has it
/// answer otherwise.
struct FakePortal : QDBusVirtualObject {
    explicit FakePortal(const QDBusConnection& bus) : bus_(bus) {
        bus_.registerVirtualObject(portalNames::path, this, QDBusConnection::SubPath);
        bus_.registerService(portalNames::service);
    }

    QVariant colorScheme;
    /// The program, the shortcuts that were asked for last, and how often: each time the user may see a dialog.
    QString application;
    std::string shortcuts;
    int dialogs = 0;
    /// Those that are open.
    int sessions = 0;
    QVariant version{2U};
    /// The arguments of the answers to a new session and to its shortcuts; none: as it should be.
    std::optional<QVariantList> created;
    std::optional<QVariantList> bound;
    /// Binds the shortcuts that come with a session, as that of Plasma 5.27.
    bool bindsAtOnce = false;
    /// Leaves the user's answer to a set of shortcuts open.
    bool isSilent = false;

    void setColorScheme(const QVariant& scheme) {
        colorScheme = scheme;
        signal(portalNames::path, "Settings", "SettingChanged",
               {appearance, schemeKey, QVariant::fromValue(QDBusVariant(scheme))});
    }
    void activate(const QVariantList& arguments) {
        signal(portalNames::path, "GlobalShortcuts", "Activated", arguments);
    }
    void press(const QString& id, const QString& token = {}) {
        activate({QVariant::fromValue(QDBusObjectPath(session_)), id, qulonglong{1},
                  QVariantMap{{QStringLiteral("activation_token"), token}}});
    }
    void closeSession() { signal(session_, "Session", "Closed", {QVariantMap()}); }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override {
        const QVariantList arguments = message.arguments();
        const QString member = message.member();
        if (member == QStringLiteral("Get"))
            return bus_.send(message.createReply(QVariant::fromValue(QDBusVariant(version))));
        if (member == QStringLiteral("Read"))
            return bus_.send(arguments == QVariantList{appearance, schemeKey} && colorScheme.isValid()
                                 ? message.createReply(QVariant::fromValue(QDBusVariant(colorScheme)))
                                 : message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("none")));
        const QVariantMap options = qdbus_cast<QVariantMap>(arguments.value(arguments.size() - 1));
        if (member == QStringLiteral("CreateSession")) {
            ++sessions;
            session_ = handle(message, "session", options.value(QStringLiteral("session_handle_token")));
            QVariantMap answer{{QStringLiteral("session_handle"), session_}};
            if (bindsAtOnce && options.contains(QStringLiteral("shortcuts")))
                answer.insert(QStringLiteral("shortcuts"), options.value(QStringLiteral("shortcuts")));
            respond(message, options, created, answer);
        } else if (member == QStringLiteral("BindShortcuts")) {
            bind(message, options);
        } else if (member == QStringLiteral("Close")) {
            sessions -= message.path().contains(QStringLiteral("/session/")) ? 1 : 0;
        } else if (member == QStringLiteral("Register")) {
            application = arguments.value(0).toString();
            bus_.send(message.createReply());
        }
        return true;
    }

private:
    const QString appearance = QStringLiteral("org.freedesktop.appearance");
    const QString schemeKey = QStringLiteral("color-scheme");

    static QString handle(const QDBusMessage& call, const char* kind, const QVariant& token) {
        return QStringLiteral("%1/%2/%3/%4")
            .arg(portalNames::path, QString::fromUtf8(kind), call.service().mid(1).replace(u'.', u'_'),
                 token.toString());
    }
    void bind(const QDBusMessage& call, const QVariantMap& options) {
        const auto entries = qdbus_cast<PortalShortcutEntries>(call.arguments().at(1));
        ++dialogs;
        shortcuts.clear();
        for (const PortalShortcutEntry& entry : entries)
            shortcuts += entry.id.toStdString() + ' ' +
                         entry.properties.value(QStringLiteral("preferred_trigger")).toString().toStdString() + ' ';
        if (!isSilent)
            respond(call, options, bound, {{QStringLiteral("shortcuts"), QVariant::fromValue(entries)}});
    }
    void respond(const QDBusMessage& call, const QVariantMap& options, const std::optional<QVariantList>& wanted,
                 const QVariantMap& proper) {
        const QString request = handle(call, "request", options.value(QStringLiteral("handle_token")));
        bus_.send(call.createReply(QVariant::fromValue(QDBusObjectPath(request))));
        signal(request, "Request", "Response", wanted.value_or(QVariantList{0U, proper}));
    }
    void signal(const QString& path, const char* interface, const char* name, const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createSignal(
            path, QStringLiteral("org.freedesktop.portal.") + QString::fromUtf8(interface), QString::fromUtf8(name));
        message.setArguments(arguments);
        bus_.send(message);
    }

    QDBusConnection bus_;
    QString session_;
};

}  // namespace stowpocket
