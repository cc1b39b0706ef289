// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/session/BusRequests.h"
#include "services/MainBundle.h"
#include "services/RunningShelf.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QList>
#include <QString>
#include <QTimer>
#include <QVariantMap>

#include <functional>
#include <string>
#include <vector>

/// The names through which the running program and its command verbs meet on the session bus.
namespace stowpocket::shelfBus {

inline const QString service =
    QString::fromLatin1(bundleIdentifier.data(), static_cast<qsizetype>(bundleIdentifier.size()));
inline const QString path = QStringLiteral("/com/example/stowpocket");
inline const QString interface = QStringLiteral("com.example.stowpocket.Shelf1");

/// Keys of the tokens in a request, as in org.freedesktop.Application.
inline const QString activationTokenKey = QStringLiteral("activation-token");
inline const QString startupIDKey = QStringLiteral("desktop-startup-id");

/// The items that List returns (aa{sv}), and the keys of each.
using ItemList = QList<QVariantMap>;
inline const QString idKey = QStringLiteral("id");
inline const QString urlKey = QStringLiteral("url");
inline const QString availableKey = QStringLiteral("available");
inline const QString sizeKey = QStringLiteral("size");

}  // namespace stowpocket::shelfBus

namespace stowpocket {

/// Makes this process the only program of the session: owns its name on the bus and serves the command verbs of
/// other processes there, for the same user only. A bus that ends and comes back is joined again. Main thread; waits
/// for nothing but the bus when it claims the name.
class BusInstance : public QDBusVirtualObject {
public:
    enum class Claim { owned, takenByAnother, noBus };

    /// Opens a new connection of that name to the bus, which may be down.
    using Connect = std::function<QDBusConnection(const QString& name)>;

    /// `connectAgain` is used after `bus` has ended.
    BusInstance(QDBusConnection bus, std::string version, Connect connectAgain = connectToSessionBus);
    ~BusInstance() override;

    /// Claims the name, without queuing for it. With `noBus` the program runs but cannot be reached.
    [[nodiscard]] Claim claim();
    /// Carries out requests from now on, first those that have come since the claim. `commands` outlives this
    /// object.
    void serve(ShelfRequests& commands);

    [[nodiscard]] QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    static QDBusConnection connectToSessionBus(const QString& name);
    void joinAgain();

    /// A method of the interface's description.
    struct Method;
    static const std::vector<Method>& methods();

    void noteWeight(std::size_t names);
    void carryOut(const QDBusMessage& request);
    void answer(const QDBusMessage& request, const QVariantList& values);
    /// Answers with the outcomes and the reason why they are not saved yet, which is empty once they are.
    template <class Outcome>
    [[nodiscard]] ShelfRequests::Completion<Outcome> answerTo(const QDBusMessage& request);
    void refuse(const QDBusMessage& request, QDBusError::ErrorType error, const QString& reason);
    void perform(ShelfAction action, const QDBusMessage& request);

    void add(const QDBusMessage& request);
    void list(const QDBusMessage& request);
    void remove(const QDBusMessage& request);

    QDBusConnection bus_;
    const std::string version_;
    const Connect connect_;
    /// Runs while the bus is down.
    QTimer joining_;
    ShelfRequests* commands_ = nullptr;
    BusRequests requests_;
    /// What requests have cost since memory was last returned to the system, which happens in a quiet moment.
    std::size_t weight_ = 0;
    QTimer quiet_;
};

}  // namespace stowpocket
