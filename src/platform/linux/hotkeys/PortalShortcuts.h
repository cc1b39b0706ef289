// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace stowpocket::portalNames {

inline const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
inline const QString shortcuts = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
inline const QString request = QStringLiteral("org.freedesktop.portal.Request");
inline const QString session = QStringLiteral("org.freedesktop.portal.Session");
/// Identifies programs that run outside of a sandbox.
inline const QString registry = QStringLiteral("org.freedesktop.host.portal.Registry");

}  // namespace stowpocket::portalNames

namespace stowpocket {

/// The portal of one desktop session, for the lifetime of the process that serves it.
struct Portal {
    QDBusConnection bus;
    /// The unique name of that process. A restarted portal has another one.
    QString owner;

    /// The object path of the request or session that this program names with `token`. `kind` is "request" or
    /// "session".
    [[nodiscard]] QString handle(const QString& kind, const QString& token) const;
};

/// A handle token that this program has not used before.
[[nodiscard]] QString nextPortalToken();

/// The outcome of a request.
struct PortalAnswer {
    enum class Kind {
        granted,
        refused,  ///< by the user
        failed,
    };
    Kind kind = Kind::failed;
    /// Set for a granted request, unchecked, as the portal sent it.
    QVariantMap results;
    /// For the log, set for any other outcome.
    QString reason;

    [[nodiscard]] static PortalAnswer failure(const QString& reason) { return {Kind::failed, {}, reason}; }
};

/// A request to the portal, from the call to the answer. The answer may take minutes, since the user is asked;
/// nothing blocks meanwhile. Destroyed before the answer, it withdraws the request and never runs `done`.
class PortalRequest : public QObject {
    Q_OBJECT

public:
    using Done = std::function<void(const PortalAnswer&)>;

    /// Calls `call`, whose last argument becomes `options` with the token of this request. `done` runs once, later;
    /// it may destroy this.
    PortalRequest(const Portal& portal, QDBusMessage call, QVariantMap options, Done done);
    ~PortalRequest() override;

private:
    Q_SLOT void responded(const QDBusMessage& response);
    void finish(const PortalAnswer& answer);

    Portal portal_;
    const QString token_ = nextPortalToken();
    /// Empty once it has run.
    Done done_;
};

/// A key combination as the freedesktop shortcuts specification writes it, such as "ALT+SHIFT+s". Keys are named by
/// what the reference keyboard has on them. Empty for a key that has no name there.
[[nodiscard]] std::string shortcutTrigger(std::uint32_t keyCode, std::uint32_t carbonModifiers);

/// A shortcut as it is requested from the desktop.
struct PortalShortcut {
    /// The same in every run, since the desktop remembers the user's choice under it.
    QString id;
    /// What the user reads.
    QString description;
    /// A proposal, as `shortcutTrigger` writes it; may be empty.
    QString trigger;

    friend bool operator==(const PortalShortcut&, const PortalShortcut&) = default;
};

/// (sa{sv}), a shortcut on the bus.
struct PortalShortcutEntry {
    QString id;
    QVariantMap properties;
};
using PortalShortcutEntries = QList<PortalShortcutEntry>;

/// The entries to send. Registers their type with D-Bus.
[[nodiscard]] PortalShortcutEntries entriesOf(const QList<PortalShortcut>& shortcuts);

/// The ids of the shortcuts that the desktop has bound. Empty when `shortcuts` is no list of shortcuts.
[[nodiscard]] std::optional<QStringList> boundIds(const QVariant& shortcuts);

QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcutEntry& entry);
const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcutEntry& entry);

}  // namespace stowpocket

Q_DECLARE_METATYPE(stowpocket::PortalShortcutEntry)

namespace stowpocket {

/// One set of shortcuts, bound for the lifetime of this object. A desktop binds once in a session, and may ask the
/// user, so another set needs another session.
class PortalShortcutSession : public QObject {
    Q_OBJECT

public:
    struct Events {
        /// The shortcuts work, as far as the user allowed them.
        std::function<void()> bound;
        /// The shortcuts do not work, or no longer; `answer` has the reason. May destroy the session.
        std::function<void(const PortalAnswer& answer)> ended;
        /// The token lets a window that is opened for the press take the focus. It may be empty.
        std::function<void(const QString& id, const QString& activationToken)> activated;
    };

    /// None of `events` runs during this call.
    PortalShortcutSession(const Portal& portal, QList<PortalShortcut> shortcuts, Events events);
    ~PortalShortcutSession() override;

private:
    Q_SLOT void activated(const QDBusMessage& signal);
    Q_SLOT void closed();
    void sessionCreated(const PortalAnswer& answer);
    void bindShortcuts();
    void shortcutsAnswered(const PortalAnswer& answer);
    /// Whether the desktop lists any of the shortcuts as bound.
    [[nodiscard]] bool areAmong(const QVariant& bound) const;
    void end(const PortalAnswer& answer) const;
    void fail(const QString& reason) const { end(PortalAnswer::failure(reason)); }
    [[nodiscard]] QDBusMessage call(const char* method) const;

    Portal portal_;
    const QList<PortalShortcut> shortcuts_;
    const Events events_;
    const QString token_ = nextPortalToken();
    const QString handle_;
    std::unique_ptr<PortalRequest> request_;
};

}  // namespace stowpocket
