// SPDX-License-Identifier: MIT
#pragma once

#include "services/MonitorList.h"

#include <QObject>

#include <optional>
#include <utility>

class QKeyEvent;

namespace stowpocket {

/// The key-downs of this application's windows, seen before Qt's own shortcuts. Modifier keys are none by themselves.
class KeyDownMonitors : public QObject {
public:
    using Handler = std::function<bool(const KeyEvent&)>;
    /// What a key types, by the numbers that the desktop gives to it and to the state of the modifiers.
    using Character = std::function<std::string(std::uint8_t key, std::uint32_t state)>;

    explicit KeyDownMonitors(Character character);
    [[nodiscard]] std::unique_ptr<EventMonitorToken> add(Handler handler) {
        return monitors_.add(std::move(handler));
    }

    /// For a press that does not come to a window although one of them has the keyboard: whether a monitor swallows
    /// it.
    [[nodiscard]] bool swallows(const KeyEvent& event) const;

private:
    bool eventFilter(QObject* receiver, QEvent* event) override;
    [[nodiscard]] bool swallows(const QKeyEvent& event);

    const Character character_;
    MonitorList<Handler> monitors_;
    /// The key-down whose fate was decided last, and that fate: Qt brings each of them twice.
    std::optional<std::pair<std::uint64_t, std::uint32_t>> decided_;
    bool swallowed_ = false;
};

}  // namespace stowpocket
