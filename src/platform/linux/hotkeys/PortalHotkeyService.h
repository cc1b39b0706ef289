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

/// Preference, a string: the set of shortcuts that the desktop refused last.
inline constexpr std::string_view refusedPortalShortcutsKey = "refusedPortalShortcuts";

/// Hotkeys of a Wayland session, where only the desktop sees every key. The desktop is asked through its portal and
/// has the last word on the keys. Everything registered in one turn of the main loop is requested at once. The same
/// set is never requested twice, since each request may open a dialog, and a refused set is not requested at the
/// next start either. Without such a portal, keys are grabbed as under X11, which works while an X11 window has the
/// focus. Nothing here blocks. Outlives the registrations.
class PortalHotkeyService : public HotkeyService {
public:
    /// The id under which the desktop knows a hotkey, and the text that it shows to the user.
    struct Name {
        QString id;
        QString description;
    };
    using NameOf = std::function<Name(const HotkeyIdentifier&)>;
    using MakeKeyGrabs = std::function<std::unique_ptr<HotkeyService>()>;
    /// Receives the activation token of a press, before the press itself.
    using UseToken = std::function<void(const std::string& activationToken)>;

    /// `preferences` outlives it.
    PortalHotkeyService(const QDBusConnection& bus, PreferenceStore& preferences, NameOf nameOf,
                        MakeKeyGrabs makeKeyGrabs, UseToken useToken);

    void installEventHandler(Handler handler) override { handler_ = std::move(handler); }
    /// Never null, since the desktop agrees or refuses later.
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
    /// The requested set with the version of the portal. A newer portal may accept what this one does not.
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
    /// False once the portal has failed, since it would fail again.
    bool isTrusted_ = true;
    QDBusServiceWatcher watcher_;
    /// Fires after the current turn of the main loop.
    QTimer laterBinding_;
};

}  // namespace stowpocket
