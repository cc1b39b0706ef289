// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>
#include <QString>
#include <QTimer>

#include <cstddef>
#include <deque>
#include <functional>
#include <map>

namespace stowpocket {

/// The requests of other programs that wait to be carried out. Senders take turns, so that a flood from one does not
/// delay the others. A bus may accept other users, but the shelf serves its owner only. Main thread.
class BusRequests : public QObject {
public:
    using Work = std::function<void(const QDBusMessage& request)>;

    /// `refuse` gets the requests of other users.
    BusRequests(QDBusConnection bus, Work refuse);

    void add(const QDBusMessage& request);
    [[nodiscard]] std::size_t count() const;
    /// Carries out requests from now on, first those that have come already.
    void serve(Work carryOut);
    /// Forgets what came from a bus that has ended.
    void moveTo(const QDBusConnection& bus);

private:
    /// The requests of one connection, in order of arrival.
    struct Sender {
        bool isOwner = false;
        std::deque<QDBusMessage> requests;
    };

    void askForUser(const QString& sender);
    void takeTurns();

    QDBusConnection bus_;
    const Work refuse_;
    Work carryOut_;
    /// Senders with waiting requests, by unique name.
    std::map<QString, Sender> senders_;
    QTimer turns_;
};

}  // namespace stowpocket
