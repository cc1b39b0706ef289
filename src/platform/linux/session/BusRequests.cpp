// SPDX-License-Identifier: MIT
#include "platform/linux/session/BusRequests.h"

#include "platform/linux/dbus/BusCalls.h"

#include <QDBusReply>

#include <unistd.h>

namespace stowpocket {

BusRequests::BusRequests(QDBusConnection bus, Work refuse) : bus_(std::move(bus)), refuse_(std::move(refuse)) {
    turns_.setSingleShot(true);
    connect(&turns_, &QTimer::timeout, this, [this] { takeTurns(); });
}

void BusRequests::add(const QDBusMessage& request) {
    const auto [sender, isNew] = senders_.try_emplace(request.service());
    sender->second.requests.push_back(request);
    if (isNew)
        askForUser(request.service());
}

std::size_t BusRequests::count() const {
    std::size_t count = 0;
    for (const auto& [name, sender] : senders_)
        count += sender.requests.size();
    return count;
}

void BusRequests::serve(Work carryOut) {
    carryOut_ = std::move(carryOut);
    takeTurns();
}

void BusRequests::moveTo(const QDBusConnection& bus) {
    bus_ = bus;
    senders_.clear();
}

void BusRequests::askForUser(const QString& sender) {
    const QDBusMessage question = busCall(QStringLiteral("GetConnectionUnixUser"), {sender});
    callOnBus(bus_, question, *this, [this, sender](const QDBusMessage& answer) {
        const QDBusReply<uint> user = answer;
        const auto asked = senders_.find(sender);
        if (asked == senders_.end())
            return;
        if (user.isValid() && user.value() == ::geteuid()) {
            asked->second.isOwner = true;
            return takeTurns();
        }
        const Sender stranger = std::move(asked->second);
        senders_.erase(asked);
        for (const QDBusMessage& request : stranger.requests)
            refuse_(request);
    });
}

void BusRequests::takeTurns() {
    if (!carryOut_)
        return;
    // A sender is forgotten after its last request, since its name may be another's after a restart of the bus.
    bool isMoreWaiting = false;
    for (auto next = senders_.begin(); next != senders_.end();) {
        const auto sender = next++;
        if (!sender->second.isOwner)
            continue;
        const QDBusMessage request = sender->second.requests.front();
        sender->second.requests.pop_front();
        if (sender->second.requests.empty())
            senders_.erase(sender);
        else
            isMoreWaiting = true;
        carryOut_(request);
    }
    if (isMoreWaiting)
        turns_.start();
}

}  // namespace stowpocket
