// SPDX-License-Identifier: MIT
#pragma once

#include "services/MainBundle.h"
#include "services/RunningShelf.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QList>
#include <QString>
#include <QTimer>
#include <QVariantMap>

#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

/// The names by which the running program and its command verbs find each other on the session bus.
namespace stowpocket::shelfBus {

inline const QString service =
    QString::fromLatin1(bundleIdentifier.data(), static_cast<qsizetype>(bundleIdentifier.size()));
inline const QString path = QStringLiteral("/com/example/stowpocket");
inline const QString interface = QStringLiteral("com.example.stowpocket.Shelf1");

/// Keys of the tokens that a request carries, as org.freedesktop.Application calls them.
inline const QString activationTokenKey = QStringLiteral("activation-token");
inline const QString startupIDKey = QStringLiteral("desktop-startup-id");

/// The items that List answers with (aa{sv}), and the keys of each.
using ItemList = QList<QVariantMap>;
inline const QString idKey = QStringLiteral("id");
inline const QString urlKey = QStringLiteral("url");
inline const QString availableKey = QStringLiteral("available");
inline const QString sizeKey = QStringLiteral("size");

}  // namespace stowpocket::shelfBus

namespace stowpocket {

/// Makes this process the one program of the session: owns its name on the bus and answers the command verbs of
/// other processes there. Only the same user is answered. A bus that ends and comes back is joined again. Main
/// thread, on which it waits for the bus alone, when it asks for the name.
class BusInstance : public QDBusVirtualObject {
public:
    enum class Claim { owned, takenByAnother, noBus };

    /// A new connection of that name to the bus, which may be down.
    using Connect = std::function<QDBusConnection(const QString& name)>;

    /// `connectAgain` is used once `bus` has ended.
    BusInstance(QDBusConnection bus, std::string version, Connect connectAgain = connectToSessionBus);
    ~BusInstance() override;

    /// Asks for the name, without waiting in line. With `noBus` the program runs alone and cannot be asked anything.
    [[nodiscard]] Claim claim();
    /// From here on requests are carried out, first those that have come since the claim. `commands` outlives this.
    void serve(ShelfRequests& commands);

    [[nodiscard]] QString introspect(const QString& path) const override;
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

private:
    static QDBusConnection connectToSessionBus(const QString& name);
    void joinAgain();

    /// As the description of the interface has it.
    struct Method;
    static const std::vector<Method>& methods();

    /// The requests of one connection, in the order in which they came.
    struct Sender {
        bool isOwner = false;
        std::deque<QDBusMessage> requests;
    };

    void enqueue(const QDBusMessage& request);
    void askForUser(const QString& sender);
    /// Carries out some of the waiting requests, one of each sender in turn, so that no flood keeps others waiting.
    void takeTurns();
    [[nodiscard]] std::size_t waitingCount() const;
    void noteWeight(std::size_t names);
    void carryOut(const QDBusMessage& request);
    void answer(const QDBusMessage& request, const QVariantList& values);
    /// Answers with the outcomes and with the reason why they are not saved yet, empty when they are.
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
    /// By unique name, those whose requests wait.
    std::map<QString, Sender> senders_;
    QTimer turns_;
    /// What requests have cost since memory was last given back, which happens in a quiet moment.
    std::size_t weight_ = 0;
    QTimer quiet_;
};

}  // namespace stowpocket
