// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <functional>

namespace stowpocket::portalNames {

inline const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
inline const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
inline const QString shortcuts = QStringLiteral("org.freedesktop.portal.GlobalShortcuts");
inline const QString request = QStringLiteral("org.freedesktop.portal.Request");
inline const QString session = QStringLiteral("org.freedesktop.portal.Session");
/// Where programs outside of a sandbox say who they are.
inline const QString registry = QStringLiteral("org.freedesktop.host.portal.Registry");

}  // namespace stowpocket::portalNames

namespace stowpocket {

/// The portal of one desktop session, while the process that serves it lives.
struct Portal {
    QDBusConnection bus;
    /// The unique name of that process: a portal that was restarted is another one.
    QString owner;

    /// The path at which the portal serves what this program names with `token`; `kind` is "request" or "session".
    [[nodiscard]] QString handle(const QString& kind, const QString& token) const;
};

/// A name for a handle that this program has not used before.
[[nodiscard]] QString nextPortalToken();

/// What became of a request.
struct PortalAnswer {
    enum class Kind {
        granted,
        refused,  ///< by the user
        failed,
    };
    Kind kind = Kind::failed;
    /// Of a granted request. As the portal sent it: nothing in it is checked.
    QVariantMap results;
    /// Of one that is not, for the log.
    QString reason;

    [[nodiscard]] static PortalAnswer failure(const QString& reason) { return {Kind::failed, {}, reason}; }
};

/// A request to the portal, from the call to the answer. That may take minutes, since the user is asked; nothing
/// waits for it. Destroyed before the answer, it takes back the question and says nothing more.
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

}  // namespace stowpocket
