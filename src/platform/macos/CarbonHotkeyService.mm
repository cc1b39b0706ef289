// SPDX-License-Identifier: MIT
#include "platform/macos/MacInput.h"

#import <Carbon/Carbon.h>

#include <cstdio>

namespace stowpocket {
namespace {

class CarbonHotkeyRegistration : public HotkeyRegistration {
public:
    explicit CarbonHotkeyRegistration(EventHotKeyRef hotKey) : hotKey_(hotKey) {}
    ~CarbonHotkeyRegistration() override { UnregisterEventHotKey(hotKey_); }
    CarbonHotkeyRegistration(const CarbonHotkeyRegistration&) = delete;
    CarbonHotkeyRegistration& operator=(const CarbonHotkeyRegistration&) = delete;

private:
    const EventHotKeyRef hotKey_;
};

/// The event manager calls a plain function, without user data: the handler stands here, since it stays until the
/// process ends.
HotkeyService::Handler& installedHandler() {
    static HotkeyService::Handler handler;
    return handler;
}

OSStatus hotkeyPressed(EventHandlerCallRef, EventRef event, void*) {
    if (event == nullptr)
        return installedHandler()(nullptr);
    EventHotKeyID pressed{};
    GetEventParameter(event, kEventParamDirectObject, typeEventHotKeyID, nullptr, sizeof pressed, nullptr, &pressed);
    const HotkeyIdentifier identifier{pressed.signature, pressed.id};
    return installedHandler()(&identifier);
}

class CarbonHotkeyService : public HotkeyService {
public:
    void installEventHandler(Handler handler) override {
        installedHandler() = std::move(handler);
        const EventTypeSpec hotkeyEvents{kEventClassKeyboard, kEventHotKeyPressed};
        InstallEventHandler(GetApplicationEventTarget(), &hotkeyPressed, 1, &hotkeyEvents, nullptr, &handlerRef_);
    }

    [[nodiscard]] std::unique_ptr<HotkeyRegistration> registerHotkey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                                     HotkeyIdentifier identifier) override {
        EventHotKeyRef hotKey = nullptr;
        const OSStatus status = RegisterEventHotKey(keyCode, modifiers, {identifier.signature, identifier.id},
                                                    GetApplicationEventTarget(), 0, &hotKey);
        if (hotKey != nullptr)
            return std::make_unique<CarbonHotkeyRegistration>(hotKey);
        std::fprintf(stderr, "stowpocket: the system refused hotkey %u with status %d\n", identifier.id, status);
        return nullptr;
    }

private:
    EventHandlerRef handlerRef_ = nullptr;
};

}  // namespace

std::unique_ptr<HotkeyService> makeCarbonHotkeyService() {
    return std::make_unique<CarbonHotkeyService>();
}

}  // namespace stowpocket
