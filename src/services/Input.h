// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace stowpocket {

/// The device-independent modifier bits of key events, as shortcuts store them.
namespace modifierFlag {
inline constexpr std::int64_t shift = 0x20000;
inline constexpr std::int64_t control = 0x40000;
inline constexpr std::int64_t option = 0x80000;
inline constexpr std::int64_t command = 0x100000;
/// All but the low 16 bits, which tell left from right keys and the like.
inline constexpr std::int64_t deviceIndependent = ~std::int64_t{0xFFFF};
}  // namespace modifierFlag

/// A key press. Key codes are the virtual key codes of macOS on every platform.
struct KeyEvent {
    std::uint16_t keyCode = 0;
    /// Device-independent flags in the high bits, device-dependent ones in the low 16.
    std::int64_t modifierFlags = 0;
    /// What the key types without modifiers in the current keyboard layout, in upper case and in UTF-8. For a key
    /// that types nothing visible, the label of the key; empty if it has none.
    std::string capitals = {};
};

/// Keeps a monitor installed until destroyed. Its own handler may destroy it.
class EventMonitorToken {
public:
    virtual ~EventMonitorToken() = default;
};

/// Observes input events of this application and of others. Main thread only, handlers included.
class EventMonitors {
public:
    virtual ~EventMonitors() = default;

    /// `handler` gets the key presses of this application while it is active, and returns true to swallow one. The
    /// monitor added last is called first.
    [[nodiscard]] virtual std::unique_ptr<EventMonitorToken>
    addLocalKeyDownMonitor(std::function<bool(const KeyEvent&)> handler) = 0;
    /// `handler` runs when the left or right mouse button is pressed in another application.
    [[nodiscard]] virtual std::unique_ptr<EventMonitorToken>
    addGlobalMouseDownMonitor(std::function<void()> handler) = 0;
    /// The mouse buttons that are pressed now, in any application: bit 0 left, bit 1 right, bit 2 middle.
    [[nodiscard]] virtual std::uint32_t pressedMouseButtons() const = 0;
};

/// Identifies a hotkey to the system: four characters that the application has chosen, and a number.
struct HotkeyIdentifier {
    std::uint32_t signature = 0;
    std::uint32_t id = 0;
    friend bool operator==(const HotkeyIdentifier&, const HotkeyIdentifier&) = default;
};

/// Keeps a hotkey registered until destroyed.
class HotkeyRegistration {
public:
    virtual ~HotkeyRegistration() = default;
};

/// The modifier bits that registrations take, as the Carbon event manager numbers them.
namespace carbonModifier {
inline constexpr std::uint32_t cmdKey = 0x100;
inline constexpr std::uint32_t shiftKey = 0x200;
inline constexpr std::uint32_t optionKey = 0x800;
inline constexpr std::uint32_t controlKey = 0x1000;
}  // namespace carbonModifier

/// Where hotkeys come from on this desktop.
enum class HotkeySource {
    windowSystem,  ///< keys are taken from the window system itself
    portal,        ///< the desktop gives them, and its settings say which keys they are
    none,  ///< nothing does; a command bound in the desktop's settings, `stowpocket toggle`, takes their place
};

/// System-wide hotkeys, which work whatever application is active. Main thread only.
class HotkeyService {
public:
    /// Gets the pressed hotkey, or null for an event without one. Returns a status of the event manager.
    using Handler = std::function<std::int32_t(const HotkeyIdentifier*)>;

    virtual ~HotkeyService() = default;
    /// Called once; the handler stays until the process ends.
    virtual void installEventHandler(Handler handler) = 0;
    /// `keyCode` is a virtual key code, `modifiers` are `carbonModifier` bits. Returns null if the system refuses,
    /// for example because another program has the combination; the adapter logs it.
    [[nodiscard]] virtual std::unique_ptr<HotkeyRegistration>
    registerHotkey(std::uint32_t keyCode, std::uint32_t modifiers, HotkeyIdentifier identifier) = 0;
    /// For the settings window. May change at any time: the user is asked, desktops restart.
    [[nodiscard]] virtual HotkeySource source() const { return HotkeySource::windowSystem; }
};

/// The monitors of one kind. A handler may add and remove monitors, itself included, and may own its token. Tokens
/// may outlive the list. `changed` runs after the first monitor is added and after the last one is removed.
template <class Handler>
class MonitorList {
public:
    explicit MonitorList(std::function<void()> changed = [] {}) : changed_(std::move(changed)) {}

    MonitorList(const MonitorList&) = delete;
    MonitorList& operator=(const MonitorList&) = delete;
    ~MonitorList() {
        // A handler may own its own token, so that neither would ever be destroyed.
        const Monitors last = *monitors_;
        for (const std::shared_ptr<Monitor>& monitor : last)
            monitor->handler = nullptr;
    }

    [[nodiscard]] bool isEmpty() const { return monitors_->empty(); }

    [[nodiscard]] std::unique_ptr<EventMonitorToken> add(Handler handler) {
        monitors_->push_back(std::make_shared<Monitor>(std::move(handler)));
        if (monitors_->size() == 1)
            changed_();
        return std::make_unique<Token>(*this, monitors_->back());
    }

    /// Calls `call` with one handler after the other, the last one added first, until it returns true. Returns
    /// whether it did.
    template <class Call>
    [[nodiscard]] bool anyOf(Call call) const {
        const Monitors present(monitors_->rbegin(), monitors_->rend());
        return std::ranges::any_of(present, [&call](const std::shared_ptr<Monitor>& monitor) {
            return monitor->installed && call(monitor->handler);
        });
    }

private:
    struct Monitor {
        explicit Monitor(Handler newHandler) : handler(std::move(newHandler)) {}
        Handler handler;
        bool installed = true;
    };
    using Monitors = std::vector<std::shared_ptr<Monitor>>;

    class Token : public EventMonitorToken {
    public:
        Token(MonitorList& list, std::shared_ptr<Monitor> monitor)
            : list_(list), monitors_(list.monitors_), monitor_(std::move(monitor)) {}
        Token(const Token&) = delete;
        Token& operator=(const Token&) = delete;
        ~Token() override {
            monitor_->installed = false;
            const auto monitors = monitors_.lock();
            if (!monitors)
                return;
            std::erase(*monitors, monitor_);
            if (monitors->empty())
                list_.changed_();
        }

    private:
        MonitorList& list_;  ///< there as long as `monitors_` is
        const std::weak_ptr<Monitors> monitors_;
        const std::shared_ptr<Monitor> monitor_;
    };

    const std::function<void()> changed_;
    const std::shared_ptr<Monitors> monitors_ = std::make_shared<Monitors>();
};

}  // namespace stowpocket
