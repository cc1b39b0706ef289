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

}  // namespace stowpocket
