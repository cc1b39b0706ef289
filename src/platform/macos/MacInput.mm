// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"
#include "platform/macos/MacSystem.h"
#include "services/Input.h"

#import <AppKit/AppKit.h>
#import <Carbon/Carbon.h>
#import <CoreGraphics/CoreGraphics.h>

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <list>
#include <map>
#include <optional>

namespace stowpocket {
namespace {

/// Removes a monitor of the system when it goes.
class SystemMonitor {
public:
    /// `monitor` is null when the system has refused it.
    explicit SystemMonitor(id monitor) : monitor_(monitor) {}
    ~SystemMonitor() {
        if (monitor_ != nil)
            [NSEvent removeMonitor:monitor_];
    }
    SystemMonitor(const SystemMonitor&) = delete;
    SystemMonitor& operator=(const SystemMonitor&) = delete;

private:
    const id monitor_;
};

KeyEvent keyEventOf(NSEvent* event) {
    return {.keyCode = event.keyCode,
            .modifierFlags = static_cast<std::int64_t>(event.modifierFlags),
            .capitals = utf8(event.charactersIgnoringModifiers.uppercaseString).value_or(std::string())};
}

/// Keeps one monitor of each kind, because the system does not define in which order it calls several.
class SystemEventMonitors : public MacEventMonitors {
public:
    [[nodiscard]] std::unique_ptr<EventMonitorToken>
    addLocalKeyDownMonitor(std::function<bool(const KeyEvent&)> handler) override {
        return keyDowns_.add(std::move(handler));
    }
    [[nodiscard]] std::unique_ptr<EventMonitorToken>
    addGlobalMouseDownMonitor(std::function<void()> handler) override {
        return mouseDowns_.add(std::move(handler));
    }
    [[nodiscard]] std::uint32_t pressedMouseButtons() const override {
        return static_cast<std::uint32_t>(NSEvent.pressedMouseButtons);
    }
    [[nodiscard]] bool swallows(const KeyEvent& press) const override {
        return keyDowns_.anyOf([&press](const auto& handler) { return handler(press); });
    }

private:
    void followKeyDowns() {
        keyDownMonitor_.reset();
        if (keyDowns_.isEmpty())
            return;
        keyDownMonitor_.emplace([NSEvent addLocalMonitorForEventsMatchingMask:NSEventMaskKeyDown
                                                                      handler:^NSEvent*(NSEvent* event) {
                                                                        return swallows(keyEventOf(event)) ? nil
                                                                                                           : event;
                                                                      }]);
    }

    void followMouseDowns() {
        mouseDownMonitor_.reset();
        if (mouseDowns_.isEmpty())
            return;
        constexpr NSEventMask presses = NSEventMaskLeftMouseDown | NSEventMaskRightMouseDown;
        mouseDownMonitor_.emplace([NSEvent addGlobalMonitorForEventsMatchingMask:presses
                                                                         handler:^(NSEvent*) {
                                                                           tellMouseDown();
                                                                         }]);
    }

    void tellMouseDown() const {
        static_cast<void>(mouseDowns_.anyOf([](const std::function<void()>& handler) {
            handler();
            return false;
        }));
    }

    std::optional<SystemMonitor> keyDownMonitor_;
    std::optional<SystemMonitor> mouseDownMonitor_;
    MonitorList<std::function<bool(const KeyEvent&)>> keyDowns_{[this] { followKeyDowns(); }};
    MonitorList<std::function<void()>> mouseDowns_{[this] { followMouseDowns(); }};
};

/// The event manager calls a plain function without user data. This is global because the function stays installed
/// until the process ends.
struct InstalledHandler {
    HotkeyService::Handler handler;
    const MacEventMonitors* monitors = nullptr;
    /// By the numbers of the hotkeys.
    std::map<std::uint32_t, std::uint32_t> keyCodes;
};
InstalledHandler& installed() {
    static InstalledHandler only;
    return only;
}

/// The key press that the system does not make of a hotkey, with the modifiers that are held.
std::optional<KeyEvent> pressOf(std::uint32_t keyCode) {
    const CGEventRef made = CGEventCreateKeyboardEvent(nullptr, static_cast<CGKeyCode>(keyCode), true);
    if (made == nullptr)
        return std::nullopt;
    CGEventSetFlags(made, static_cast<CGEventFlags>(NSEvent.modifierFlags));
    NSEvent* const press = [NSEvent eventWithCGEvent:made];
    CFRelease(made);
    return press == nil ? std::nullopt : std::optional(keyEventOf(press));
}

bool ownWindowsTake(const HotkeyIdentifier& pressed) {
    const auto keyCode = installed().keyCodes.find(pressed.id);
    if (keyCode == installed().keyCodes.end() || NSApplication.sharedApplication.keyWindow == nil)
        return false;
    const std::optional<KeyEvent> press = pressOf(keyCode->second);
    return press && installed().monitors->swallows(*press);
}

OSStatus hotkeyPressed(EventHandlerCallRef, EventRef event, void*) {
    if (event == nullptr)
        return installed().handler(nullptr);
    EventHotKeyID pressed{};
    GetEventParameter(event, kEventParamDirectObject, typeEventHotKeyID, nullptr, sizeof pressed, nullptr, &pressed);
    const HotkeyIdentifier identifier{pressed.signature, pressed.id};
    return ownWindowsTake(identifier) ? OSStatus{noErr} : installed().handler(&identifier);
}

class CarbonHotkeyService : public HotkeyService {
public:
    explicit CarbonHotkeyService(const MacEventMonitors& monitors) { installed().monitors = &monitors; }

    void installEventHandler(Handler handler) override {
        installed().handler = std::move(handler);
        const EventTypeSpec hotkeyEvents{kEventClassKeyboard, kEventHotKeyPressed};
        InstallEventHandler(GetApplicationEventTarget(), &hotkeyPressed, 1, &hotkeyEvents, nullptr, &handlerRef_);
    }

    [[nodiscard]] std::unique_ptr<HotkeyRegistration> registerHotkey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                                     HotkeyIdentifier identifier) override {
        installed().keyCodes[identifier.id] = keyCode;
        hotkeys_.push_back({keyCode, modifiers, identifier});
        const OSStatus status = take(hotkeys_.back());
        if (status == noErr || isOwn(hotkeys_.back()))
            return std::make_unique<Registration>(*this);
        hotkeys_.pop_back();
        std::fprintf(stderr, "stowpocket: the system refused hotkey %u with status %d\n", identifier.id, status);
        return nullptr;
    }

private:
    struct Hotkey {
        std::uint32_t keyCode = 0;
        std::uint32_t modifiers = 0;
        HotkeyIdentifier identifier;
        /// Null while an equal one of this program has the keys: the system gives them once.
        EventHotKeyRef taken = nullptr;
    };

    class Registration : public HotkeyRegistration {
    public:
        explicit Registration(CarbonHotkeyService& service)
            : service_(service), mine_(std::prev(service.hotkeys_.end())) {}
        ~Registration() override {
            if (mine_->taken != nullptr)
                UnregisterEventHotKey(mine_->taken);
            service_.hotkeys_.erase(mine_);
            for (Hotkey& waiting : service_.hotkeys_) {
                if (waiting.taken == nullptr)
                    take(waiting);
            }
        }
        Registration(const Registration&) = delete;
        Registration& operator=(const Registration&) = delete;

    private:
        CarbonHotkeyService& service_;
        const std::list<Hotkey>::iterator mine_;
    };

    static OSStatus take(Hotkey& hotkey) {
        const EventHotKeyID identifier{hotkey.identifier.signature, hotkey.identifier.id};
        return RegisterEventHotKey(hotkey.keyCode, hotkey.modifiers, identifier, GetApplicationEventTarget(), 0,
                                   &hotkey.taken);
    }
    [[nodiscard]] bool isOwn(const Hotkey& wanted) const {
        return std::ranges::any_of(hotkeys_, [&](const Hotkey& other) {
            return other.taken != nullptr && other.keyCode == wanted.keyCode && other.modifiers == wanted.modifiers;
        });
    }

    EventHandlerRef handlerRef_ = nullptr;
    std::list<Hotkey> hotkeys_;
};

}  // namespace

std::unique_ptr<MacEventMonitors> makeMacEventMonitors() {
    return std::make_unique<SystemEventMonitors>();
}

std::unique_ptr<HotkeyService> makeCarbonHotkeyService(const MacEventMonitors& monitors) {
    return std::make_unique<CarbonHotkeyService>(monitors);
}

}  // namespace stowpocket
