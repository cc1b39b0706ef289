// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"
#include "platform/macos/MacInput.h"

#import <AppKit/AppKit.h>

namespace stowpocket {
namespace {

class MonitorToken : public EventMonitorToken {
public:
    /// The system may refuse a monitor, which then never tells anything.
    explicit MonitorToken(id monitor) : monitor_(monitor) {}
    ~MonitorToken() override {
        if (monitor_ != nil)
            [NSEvent removeMonitor:monitor_];
    }
    MonitorToken(const MonitorToken&) = delete;
    MonitorToken& operator=(const MonitorToken&) = delete;

private:
    const id monitor_;
};

KeyEvent keyEventOf(NSEvent* event) {
    return {.keyCode = event.keyCode,
            .modifierFlags = static_cast<std::int64_t>(event.modifierFlags),
            .charactersIgnoringModifiers = utf8(event.charactersIgnoringModifiers).value_or(std::string())};
}

class MacEventMonitors : public EventMonitors {
public:
    [[nodiscard]] std::unique_ptr<EventMonitorToken>
    addLocalKeyDownMonitor(std::function<bool(const KeyEvent&)> handler) override {
        return std::make_unique<MonitorToken>([NSEvent
            addLocalMonitorForEventsMatchingMask:NSEventMaskKeyDown
                                         handler:^NSEvent*(NSEvent* event) {
                                           const auto run = handler;  // it may remove this very monitor
                                           return run(keyEventOf(event)) ? nil : event;
                                         }]);
    }

    [[nodiscard]] std::unique_ptr<EventMonitorToken>
    addGlobalMouseDownMonitor(std::function<void()> handler) override {
        return std::make_unique<MonitorToken>([NSEvent
            addGlobalMonitorForEventsMatchingMask:NSEventMaskLeftMouseDown | NSEventMaskRightMouseDown
                                          handler:^(NSEvent*) {
                                            const auto run = handler;  // it may remove this very monitor
                                            run();
                                          }]);
    }

    [[nodiscard]] std::uint32_t pressedMouseButtons() const override {
        return static_cast<std::uint32_t>(NSEvent.pressedMouseButtons);
    }
};

}  // namespace

std::unique_ptr<EventMonitors> makeMacEventMonitors() {
    return std::make_unique<MacEventMonitors>();
}

}  // namespace stowpocket
