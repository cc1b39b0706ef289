// SPDX-License-Identifier: MIT
#include "platform/linux/hotkeys/PortalShortcutSession.h"

#include "platform/linux/hotkeys/PortalNames.h"

#include <QDBusObjectPath>

#include <algorithm>
#include <utility>

namespace stowpocket {

PortalShortcutSession::PortalShortcutSession(const Portal& portal, QList<PortalShortcut> shortcuts, Events events)
    : portal_(portal),
      shortcuts_(std::move(shortcuts)),
      events_(std::move(events)),
      handle_(portal_.handle(QStringLiteral("session"), token_)) {
    portal_.bus.connect(portal_.owner, handle_, portalNames::session, QStringLiteral("Closed"), this, SLOT(closed()));
    portal_.bus.connect(portal_.owner, portalNames::path, portalNames::shortcuts, QStringLiteral("Activated"), this,
                        SLOT(activated(QDBusMessage)));
    request_ = std::make_unique<PortalRequest>(portal_, call("CreateSession"),
                                               QVariantMap{{QStringLiteral("session_handle_token"), token_}},
                                               [this](const PortalAnswer& answer) { created(answer); });
}

PortalShortcutSession::~PortalShortcutSession() {
    request_.reset();
    portal_.bus.call(
        QDBusMessage::createMethodCall(portal_.owner, handle_, portalNames::session, QStringLiteral("Close")),
        QDBus::NoBlock);
}

QDBusMessage PortalShortcutSession::call(const char* method) const {
    return QDBusMessage::createMethodCall(portal_.owner, portalNames::path, portalNames::shortcuts,
                                          QString::fromLatin1(method));
}

void PortalShortcutSession::created(const PortalAnswer& answer) {
    if (answer.kind != PortalAnswer::Kind::granted)
        return end(answer);
    if (answer.results.value(QStringLiteral("session_handle")).toString() != handle_)
        return fail(QStringLiteral("the session has another name than was asked for"));
    bind();
}

void PortalShortcutSession::bind() {
    QDBusMessage request = call("BindShortcuts");
    const QString noParentWindow;
    request << QVariant::fromValue(QDBusObjectPath(handle_)) << QVariant::fromValue(entriesOf(shortcuts_))
            << noParentWindow;
    request_ = std::make_unique<PortalRequest>(portal_, request, QVariantMap(),
                                               [this](const PortalAnswer& answer) { answered(answer); });
}

void PortalShortcutSession::answered(const PortalAnswer& answer) {
    if (answer.kind != PortalAnswer::Kind::granted)
        return end(answer);
    const auto shortcuts = answer.results.constFind(QStringLiteral("shortcuts"));
    // Desktops that do not say what they bound have bound it all.
    if (shortcuts == answer.results.constEnd())
        return events_.bound();
    const std::optional<QStringList> ids = boundIds(*shortcuts);
    if (!ids)
        return fail(QStringLiteral("the list of bound shortcuts is malformed"));
    if (std::ranges::none_of(shortcuts_, [&](const PortalShortcut& each) { return ids->contains(each.id); }))
        return end({PortalAnswer::Kind::refused, {}, QStringLiteral("none was bound")});
    events_.bound();
}

/// From a copy, since this may not outlive the call.
void PortalShortcutSession::end(const PortalAnswer& answer) const {
    const auto ended = events_.ended;
    ended(answer);
}

void PortalShortcutSession::activated(const QDBusMessage& signal) {
    if (signal.signature() != QStringLiteral("osta{sv}") ||
        signal.arguments().at(0).value<QDBusObjectPath>().path() != handle_)
        return;
    const auto options = qdbus_cast<QVariantMap>(signal.arguments().at(3));
    events_.activated(signal.arguments().at(1).toString(),
                      options.value(QStringLiteral("activation_token")).toString());
}

void PortalShortcutSession::closed() {
    request_.reset();
    end({PortalAnswer::Kind::refused, {}, QStringLiteral("they were taken back")});
}

}  // namespace stowpocket
