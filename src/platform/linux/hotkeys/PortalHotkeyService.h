// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/hotkeys/PortalShortcuts.h"
#include "services/Input.h"

#include <QDBusServiceWatcher>
#include <QTimer>

#include <list>
#include <memory>

namespace stowpocket {

class PreferenceStore;

/// Preference: the set of shortcuts that the desktop refused when it was asked last, a string.
inline constexpr std::string_view refusedPortalShortcutsKey = "refusedPortalShortcuts";

/// Hotkeys of a Wayland session, where only the desktop hears every key: it is asked through its portal, and has the
/// last word on the keys. All that is registered in one turn of the main loop is asked for at once, and the same set
/// never twice, since every question may open a dialog; nor again at the next start where it was refused. Where there
/// is no such portal, keys are grabbed meanwhile as they were under X11, which hear what is typed into X11 windows.
/// Nothing here waits. Lives as long as the registrations.
class PortalHotkeyService : public HotkeyService {
public:
    /// How the desktop knows a hotkey and shows it to the user.
    struct Name {
        QString id;
        QString description;
    };
    using NameOf = std::function<Name(const HotkeyIdentifier&)>;
    using MakeKeyGrabs = std::function<std::unique_ptr<HotkeyService>()>;
    /// Gets the token that comes with a press, before the press.
    using UseToken = std::function<void(const std::string& activationToken)>;

    /// `preferences` outlives it.
    PortalHotkeyService(const QDBusConnection& bus, PreferenceStore& preferences, NameOf nameOf,
                        MakeKeyGrabs makeKeyGrabs, UseToken useToken);

    void installEventHandler(Handler handler) override { handler_ = std::move(handler); }
    /// Never null: whether the desktop agrees comes out later.
    [[nodiscard]] std::unique_ptr<HotkeyRegistration> registerHotkey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                                     HotkeyIdentifier identifier) override;
    [[nodiscard]] HotkeySource source() const override;

private:
    enum class State {
        asking,   ///< for a portal that has shortcuts
        absent,   ///< there is none, or none that works
        ready,    ///< there is one, and nothing is bound
        binding,  ///< the desktop has not answered yet
        bound,
        refused,  ///< by the user, who is not asked again for the same set
    };
    struct Hotkey {
        std::uint32_t keyCode;
        std::uint32_t modifiers;
        HotkeyIdentifier identifier;
        std::unique_ptr<HotkeyRegistration> grab;
    };
    class Registration;

    void ownerChanged(const QString& owner);
    void findPortal();
    void askVersion();
    void versionAnswered(const QDBusMessage& answer);
    void bindWanted();
    void bindShortcuts(const QList<PortalShortcut>& shortcuts);
    void grabKeys();
    void sessionEnded(const PortalAnswer& answer);
    void hotkeyActivated(const QString& id, const QString& token) const;
    [[nodiscard]] QList<PortalShortcut> wanted() const;
    /// What was asked for, and of which kind of portal: a newer one may do what this one does not.
    [[nodiscard]] std::string question() const;

    QDBusConnection bus_;
    PreferenceStore& preferences_;
    const NameOf nameOf_;
    const MakeKeyGrabs makeKeyGrabs_;
    const UseToken useToken_;
    Handler handler_;
    /// Null until keys are grabbed for the first time.
    std::unique_ptr<HotkeyService> keyGrabs_;
    std::list<Hotkey> hotkeys_;
    State state_ = State::asking;
    QString owner_;
    uint version_ = 0;
    QList<PortalShortcut> asked_;
    std::unique_ptr<PortalShortcutSession> session_;
    /// A portal that fails once would do so again.
    bool isTrusted_ = true;
    QDBusServiceWatcher watcher_;
    /// Fires once the present turn of the main loop is over.
    QTimer laterBinding_;
};

}  // namespace stowpocket
