// SPDX-License-Identifier: MIT
#include "platform/linux/hotkeys/PortalRequest.h"

#include "platform/linux/dbus/BusCalls.h"

#include <QDBusArgument>
#include <QDBusError>

#include <utility>

namespace stowpocket {
namespace {

/// Codes of the Response signal. Any other code means that the request ended in another way.
constexpr uint successCode = 0;
constexpr uint cancelledCode = 1;

PortalAnswer answerOf(const QDBusMessage& response) {
    if (response.signature() != QStringLiteral("ua{sv}"))
        return PortalAnswer::failure(QStringLiteral("its answer is malformed"));
    switch (response.arguments().at(0).toUInt()) {
    case successCode:
        return {PortalAnswer::Kind::granted, qdbus_cast<QVariantMap>(response.arguments().at(1)), {}};
    case cancelledCode:
        return {PortalAnswer::Kind::refused, {}, QStringLiteral("the user said no")};
    default:
        return PortalAnswer::failure(QStringLiteral("it ended the request"));
    }
}

}  // namespace

QString Portal::handle(const QString& kind, const QString& token) const {
    const QString sender = bus.baseService().mid(1).replace(u'.', u'_');
    return QStringLiteral("%1/%2/%3/%4").arg(portalNames::path, kind, sender, token);
}

QString nextPortalToken() {
    static int count = 0;
    return QStringLiteral("stowpocket%1").arg(++count);
}

PortalRequest::PortalRequest(const Portal& portal, QDBusMessage call, QVariantMap options, Done done)
    : portal_(portal), done_(std::move(done)) {
    // Connected before the call, so that the answer cannot be missed.
    portal_.bus.connect(portal_.owner, portal_.handle(QStringLiteral("request"), token_), portalNames::request,
                        QStringLiteral("Response"), this, SLOT(responded(QDBusMessage)));
    options.insert(QStringLiteral("handle_token"), token_);
    call << options;
    callOnBus(portal_.bus, call, *this, [this](const QDBusMessage& answer) {
        if (answer.type() == QDBusMessage::ErrorMessage)
            finish(PortalAnswer::failure(answer.errorMessage()));
    });
}

PortalRequest::~PortalRequest() {
    if (!done_)
        return;
    portal_.bus.call(QDBusMessage::createMethodCall(portal_.owner, portal_.handle(QStringLiteral("request"), token_),
                                                    portalNames::request, QStringLiteral("Close")),
                     QDBus::NoBlock);
}

void PortalRequest::responded(const QDBusMessage& response) {
    finish(answerOf(response));
}

void PortalRequest::finish(const PortalAnswer& answer) {
    if (const Done done = std::exchange(done_, {}))
        done(answer);
}

}  // namespace stowpocket
