// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/hotkeys/PortalRequest.h"
#include "platform/linux/hotkeys/PortalShortcut.h"

#include <memory>

namespace stowpocket {

/// One set of shortcuts, bound as long as this lives. Desktops bind once in a session, and may ask the user: another
/// set needs another session.
class PortalShortcutSession : public QObject {
    Q_OBJECT

public:
    struct Events {
        /// The shortcuts work, as far as the user let them.
        std::function<void()> bound;
        /// They do not, or not any longer, for the reason in `answer`; may destroy the session.
        std::function<void(const PortalAnswer& answer)> ended;
        /// The token lets a window opened for it take the focus; may be empty.
        std::function<void(const QString& id, const QString& activationToken)> activated;
    };

    /// None of `events` runs during this call.
    PortalShortcutSession(const Portal& portal, QList<PortalShortcut> shortcuts, Events events);
    ~PortalShortcutSession() override;

private:
    Q_SLOT void activated(const QDBusMessage& signal);
    Q_SLOT void closed();
    void created(const PortalAnswer& answer);
    void bind();
    void answered(const PortalAnswer& answer);
    void end(const PortalAnswer& answer) const;
    void fail(const QString& reason) const { end(PortalAnswer::failure(reason)); }
    [[nodiscard]] QDBusMessage call(const char* method) const;

    Portal portal_;
    const QList<PortalShortcut> shortcuts_;
    const Events events_;
    const QString token_ = nextPortalToken();
    const QString handle_;
    std::unique_ptr<PortalRequest> request_;
};

}  // namespace stowpocket
