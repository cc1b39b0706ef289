// SPDX-License-Identifier: MIT
#include "platform/linux/hotkeys/PortalShortcuts.h"

#include "platform/linux/dbus/BusCalls.h"
#include "services/Input.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMetaType>
#include <QDBusObjectPath>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string_view>
#include <utility>

namespace stowpocket {
namespace {

/// Codes of the Response signal. Any other code means that the request ended in another way.
constexpr uint successCode = 0;
constexpr uint cancelledCode = 1;

const QString shortcutsKey = QStringLiteral("shortcuts");

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

/// Key symbols by virtual key code, named as in xkbcommon-keysyms.h. Empty for a code without a key.
constexpr std::array<std::string_view, 128> keyNames = [] {
    std::array<std::string_view, 128> names{};
    const auto row = [&names](std::size_t at, std::initializer_list<std::string_view> keys) {
        std::copy(keys.begin(), keys.end(), names.begin() + at);
    };
    row(0, {"a", "s", "d", "f", "h", "g", "z", "x", "c", "v", "less", "b", "q", "w", "e", "r", "y", "t"});
    row(18, {"1", "2", "3", "4", "6", "5", "equal", "9", "7", "minus", "8", "0"});
    row(30, {"bracketright", "o", "u", "bracketleft", "i", "p", "Return", "l", "j", "apostrophe", "k"});
    row(41, {"semicolon", "backslash", "comma", "slash", "n", "m", "period", "Tab", "space", "grave", "BackSpace"});
    row(53, {"Escape"});
    row(64, {"F17", "KP_Decimal", "", "KP_Multiply", "", "KP_Add"});
    row(75, {"KP_Divide", "KP_Enter", "", "KP_Subtract", "F18", "F19", "KP_Equal"});
    row(82, {"KP_0", "KP_1", "KP_2", "KP_3", "KP_4", "KP_5", "KP_6", "KP_7", "F20", "KP_8", "KP_9"});
    row(96,
        {"F5", "F6", "F7", "F3", "F8", "F9", "", "F11", "", "F13", "F16", "F14", "", "F10", "", "F12", "", "F15"});
    row(114, {"Insert", "Home", "Prior", "Delete", "F4", "End", "F2", "Next", "F1", "Left", "Right", "Down", "Up"});
    return names;
}();

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

std::string shortcutTrigger(std::uint32_t keyCode, std::uint32_t carbonModifiers) {
    if (keyCode >= keyNames.size() || keyNames.at(keyCode).empty())
        return {};
    constexpr std::array<std::pair<std::uint32_t, std::string_view>, 4> modifiers{{
        {carbonModifier::controlKey, "CTRL+"},
        {carbonModifier::optionKey, "ALT+"},
        {carbonModifier::shiftKey, "SHIFT+"},
        {carbonModifier::cmdKey, "LOGO+"},
    }};
    std::string trigger;
    for (const auto& [bit, name] : modifiers) {
        if ((carbonModifiers & bit) != 0)
            trigger += name;
    }
    return trigger.append(keyNames.at(keyCode));
}

PortalShortcutEntries entriesOf(const QList<PortalShortcut>& shortcuts) {
    qDBusRegisterMetaType<PortalShortcutEntry>();
    qDBusRegisterMetaType<PortalShortcutEntries>();
    PortalShortcutEntries entries;
    for (const PortalShortcut& shortcut : shortcuts) {
        QVariantMap properties{{QStringLiteral("description"), shortcut.description}};
        if (!shortcut.trigger.isEmpty())
            properties.insert(QStringLiteral("preferred_trigger"), shortcut.trigger);
        entries.push_back({shortcut.id, properties});
    }
    return entries;
}

std::optional<QStringList> boundIds(const QVariant& shortcuts) {
    if (shortcuts.metaType() != QMetaType::fromType<QDBusArgument>())
        return std::nullopt;
    const auto argument = shortcuts.value<QDBusArgument>();
    if (argument.currentSignature() != QStringLiteral("a(sa{sv})"))
        return std::nullopt;
    QStringList ids;
    for (const PortalShortcutEntry& entry : qdbus_cast<PortalShortcutEntries>(argument))
        ids.push_back(entry.id);
    return ids;
}

QDBusArgument& operator<<(QDBusArgument& argument, const PortalShortcutEntry& entry) {
    argument.beginStructure();
    argument << entry.id << entry.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, PortalShortcutEntry& entry) {
    argument.beginStructure();
    argument >> entry.id >> entry.properties;
    argument.endStructure();
    return argument;
}

PortalShortcutSession::PortalShortcutSession(const Portal& portal, QList<PortalShortcut> shortcuts, Events events)
    : portal_(portal),
      shortcuts_(std::move(shortcuts)),
      events_(std::move(events)),
      handle_(portal_.handle(QStringLiteral("session"), token_)) {
    portal_.bus.connect(portal_.owner, handle_, portalNames::session, QStringLiteral("Closed"), this, SLOT(closed()));
    portal_.bus.connect(portal_.owner, portalNames::path, portalNames::shortcuts, QStringLiteral("Activated"), this,
                        SLOT(activated(QDBusMessage)));
    QVariantMap options{{QStringLiteral("session_handle_token"), token_}};
    // The portal of Plasma 5.27 binds what it gets here, and opens its settings when asked to bind later. In other
    // sessions it may stand in for a portal that is not installed, and what it binds there is never pressed.
    if (qgetenv("XDG_CURRENT_DESKTOP") == "KDE")
        options.insert(shortcutsKey, QVariant::fromValue(entriesOf(shortcuts_)));
    request_ = std::make_unique<PortalRequest>(portal_, call("CreateSession"), options,
                                               [this](const PortalAnswer& answer) { sessionCreated(answer); });
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

void PortalShortcutSession::sessionCreated(const PortalAnswer& answer) {
    if (answer.kind != PortalAnswer::Kind::granted)
        return end(answer);
    if (answer.results.value(QStringLiteral("session_handle")).toString() != handle_)
        return fail(QStringLiteral("the session has another name than was asked for"));
    if (areAmong(answer.results.value(shortcutsKey)))
        return events_.bound();
    bindShortcuts();
}

bool PortalShortcutSession::areAmong(const QVariant& bound) const {
    const std::optional<QStringList> ids = boundIds(bound);
    return ids && std::ranges::any_of(shortcuts_, [&](const PortalShortcut& each) { return ids->contains(each.id); });
}

void PortalShortcutSession::bindShortcuts() {
    QDBusMessage request = call("BindShortcuts");
    const QString noParentWindow;
    request << QVariant::fromValue(QDBusObjectPath(handle_)) << QVariant::fromValue(entriesOf(shortcuts_))
            << noParentWindow;
    request_ = std::make_unique<PortalRequest>(portal_, request, QVariantMap(),
                                               [this](const PortalAnswer& answer) { shortcutsAnswered(answer); });
}

void PortalShortcutSession::shortcutsAnswered(const PortalAnswer& answer) {
    if (answer.kind != PortalAnswer::Kind::granted)
        return end(answer);
    const auto shortcuts = answer.results.constFind(shortcutsKey);
    // A desktop that does not list what it bound has bound everything.
    if (shortcuts == answer.results.constEnd() || areAmong(*shortcuts))
        return events_.bound();
    if (!boundIds(*shortcuts))
        return fail(QStringLiteral("the list of bound shortcuts is malformed"));
    end({PortalAnswer::Kind::refused, {}, QStringLiteral("none was bound")});
}

/// Calls a copy, since this object may not outlive the call.
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
