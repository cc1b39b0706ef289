// SPDX-License-Identifier: MIT
#include "platform/linux/hotkeys/PortalHotkeyService.h"

#include "platform/linux/dbus/BusCalls.h"
#include "platform/linux/hotkeys/PortalShortcuts.h"
#include "services/MainBundle.h"
#include "services/Preferences.h"

#include <QDBusVariant>
#include <QLoggingCategory>

#include <algorithm>

namespace stowpocket {
namespace {

Q_LOGGING_CATEGORY(hotkeyLog, "stowpocket.hotkeys")

/// 0 without such an interface.
uint versionIn(const QDBusMessage& answer) {
    return answer.signature() == QStringLiteral("v")
               ? answer.arguments().constFirst().value<QDBusVariant>().variant().toUInt()
               : 0;
}

}  // namespace

class PortalHotkeyService::Registration : public HotkeyRegistration {
public:
    explicit Registration(PortalHotkeyService& service)
        : service_(service), mine_(std::prev(service.hotkeys_.end())) {}
    Registration(const Registration&) = delete;
    Registration& operator=(const Registration&) = delete;
    ~Registration() override {
        service_.hotkeys_.erase(mine_);
        service_.laterBinding_.start();
    }

private:
    PortalHotkeyService& service_;
    const std::list<Hotkey>::iterator mine_;
};

PortalHotkeyService::PortalHotkeyService(const QDBusConnection& bus, PreferenceStore& preferences, NameOf nameOf,
                                         MakeKeyGrabs makeKeyGrabs, UseToken useToken)
    : bus_(bus),
      preferences_(preferences),
      nameOf_(std::move(nameOf)),
      makeKeyGrabs_(std::move(makeKeyGrabs)),
      useToken_(std::move(useToken)),
      watcher_(portalNames::service, bus, QDBusServiceWatcher::WatchForOwnerChange) {
    laterBinding_.setSingleShot(true);
    laterBinding_.setInterval(0);
    QObject::connect(&laterBinding_, &QTimer::timeout, &laterBinding_, [this] { bindWanted(); });
    QObject::connect(&watcher_, &QDBusServiceWatcher::serviceOwnerChanged, &laterBinding_,
                     [this](const QString&, const QString&, const QString& owner) { ownerChanged(owner); });
    findPortal();
}

std::unique_ptr<HotkeyRegistration>
PortalHotkeyService::registerHotkey(std::uint32_t keyCode, std::uint32_t modifiers, HotkeyIdentifier identifier) {
    hotkeys_.push_back({keyCode, modifiers, identifier, nullptr});
    laterBinding_.start();
    return std::make_unique<Registration>(*this);
}

HotkeySource PortalHotkeyService::source() const {
    const bool hasNoWish = state_ == State::ready && hotkeys_.empty();
    return state_ == State::bound || hasNoWish ? HotkeySource::portal : HotkeySource::none;
}

/// Identifies this program, which newer desktops require first. An older desktop answers with an error, which is
/// ignored.
void PortalHotkeyService::findPortal() {
    state_ = State::asking;
    QDBusMessage introduction = QDBusMessage::createMethodCall(portalNames::service, portalNames::path,
                                                               portalNames::registry, QStringLiteral("Register"));
    introduction << QString::fromLatin1(bundleIdentifier.data(), qsizetype(bundleIdentifier.size())) << QVariantMap();
    callOnBus(bus_, introduction, laterBinding_, [this](const QDBusMessage&) { askVersion(); });
}

void PortalHotkeyService::askVersion() {
    const QDBusMessage question =
        propertyCall(portalNames::service, portalNames::path, portalNames::shortcuts, QStringLiteral("version"));
    callOnBus(bus_, question, laterBinding_, [this](const QDBusMessage& answer) { versionAnswered(answer); });
}

void PortalHotkeyService::versionAnswered(const QDBusMessage& answer) {
    version_ = versionIn(answer);
    if (version_ == 0) {
        state_ = State::absent;
        qCInfo(hotkeyLog, "the desktop offers no global shortcuts; they work in X11 windows only");
    } else {
        state_ = State::ready;
        owner_ = answer.service();
        asked_.clear();
        for (Hotkey& hotkey : hotkeys_)
            hotkey.grab.reset();
    }
    bindWanted();
}

void PortalHotkeyService::ownerChanged(const QString& owner) {
    if (owner == owner_ || state_ == State::asking || state_ == State::refused)
        return;
    if (state_ != State::absent) {
        isTrusted_ = state_ != State::binding;
        session_.reset();
        state_ = State::absent;
        qCInfo(hotkeyLog, "the desktop's portal has ended, and the global shortcuts with it");
    }
    owner_.clear();
    if (!owner.isEmpty() && isTrusted_)
        findPortal();
    bindWanted();
}

void PortalHotkeyService::bindWanted() {
    if (state_ == State::asking)
        return;
    if (state_ == State::absent)
        return grabKeys();
    const QList<PortalShortcut> shortcuts = wanted();
    if (shortcuts == asked_)
        return;
    if (state_ == State::refused)
        return findPortal();  // which may be another one by now
    session_.reset();
    asked_ = shortcuts;
    state_ = State::ready;
    if (shortcuts.isEmpty())
        return;
    const std::optional<PropertyValue> refused = preferences_.value(refusedPortalShortcutsKey);
    if (refused == PropertyValue(question()))
        state_ = State::refused;
    else
        bindShortcuts(shortcuts);
}

void PortalHotkeyService::bindShortcuts(const QList<PortalShortcut>& shortcuts) {
    state_ = State::binding;
    session_ = std::make_unique<PortalShortcutSession>(
        Portal{bus_, owner_}, shortcuts,
        PortalShortcutSession::Events{
            .bound = [this] { state_ = State::bound; },
            .ended = [this](const PortalAnswer& answer) { sessionEnded(answer); },
            .activated = [this](const QString& id, const QString& token) { hotkeyActivated(id, token); },
        });
}

void PortalHotkeyService::grabKeys() {
    if (!keyGrabs_) {
        keyGrabs_ = makeKeyGrabs_();
        keyGrabs_->installEventHandler(handler_);
    }
    for (Hotkey& hotkey : hotkeys_) {
        if (!hotkey.grab)
            hotkey.grab = keyGrabs_->registerHotkey(hotkey.keyCode, hotkey.modifiers, hotkey.identifier);
    }
}

void PortalHotkeyService::sessionEnded(const PortalAnswer& answer) {
    qCWarning(hotkeyLog, "no global shortcuts from the desktop's portal: %s", qUtf8Printable(answer.reason));
    if (state_ == State::binding && answer.kind == PortalAnswer::Kind::refused)
        preferences_.setValue(refusedPortalShortcutsKey, question());
    session_.reset();
    isTrusted_ = answer.kind != PortalAnswer::Kind::failed;
    state_ = isTrusted_ ? State::refused : State::absent;
    bindWanted();
}

void PortalHotkeyService::hotkeyActivated(const QString& id, const QString& token) const {
    const auto pressed =
        std::ranges::find_if(hotkeys_, [&](const Hotkey& each) { return nameOf_(each.identifier).id == id; });
    if (pressed == hotkeys_.end() || !handler_)
        return;
    if (!token.isEmpty())
        useToken_(token.toStdString());
    const HotkeyIdentifier identifier = pressed->identifier;
    handler_(&identifier);
}

QList<PortalShortcut> PortalHotkeyService::wanted() const {
    QList<PortalShortcut> shortcuts;
    for (const Hotkey& hotkey : hotkeys_) {
        const Name name = nameOf_(hotkey.identifier);
        shortcuts.push_back(
            {name.id, name.description, QString::fromStdString(shortcutTrigger(hotkey.keyCode, hotkey.modifiers))});
    }
    // Registered anew they come in another order.
    std::ranges::sort(shortcuts, {}, &PortalShortcut::id);
    return shortcuts;
}

std::string PortalHotkeyService::question() const {
    QString question = QString::number(version_);
    for (const PortalShortcut& shortcut : asked_)
        question += QStringLiteral(" %1=%2").arg(shortcut.id, shortcut.trigger);
    return question.toStdString();
}

}  // namespace stowpocket
