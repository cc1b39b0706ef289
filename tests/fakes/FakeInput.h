// SPDX-License-Identifier: MIT
#pragma once

#include "fakes/FakeDesktop.h"
#include "services/Input.h"
#include "services/MainBundle.h"
#include "services/OtherPrograms.h"

#include <list>

namespace stowpocket {

/// Takes the last value of a list out again at its end.
template <class Token, class Value>
struct ListedToken : Token {
    explicit ListedToken(std::list<Value>& list) : list_(list), mine_(std::prev(list.end())) {}
    ~ListedToken() override { list_.erase(mine_); }

private:
    std::list<Value>& list_;
    typename std::list<Value>::iterator mine_;
};

struct FakeEventMonitors : EventMonitors {
    using KeyHandler = std::function<bool(const KeyEvent&)>;
    using ClickHandler = std::function<void()>;
    [[nodiscard]] std::unique_ptr<EventMonitorToken> addLocalKeyDownMonitor(KeyHandler handler) override {
        keyHandlers.push_back(std::move(handler));
        return std::make_unique<ListedToken<EventMonitorToken, KeyHandler>>(keyHandlers);
    }
    [[nodiscard]] std::unique_ptr<EventMonitorToken> addGlobalMouseDownMonitor(ClickHandler handler) override {
        clickHandlers.push_back(std::move(handler));
        return std::make_unique<ListedToken<EventMonitorToken, ClickHandler>>(clickHandlers);
    }
    [[nodiscard]] std::uint32_t pressedMouseButtons() const override { return pressed; }

    /// Whether a monitor swallowed the event.
    bool press(std::uint16_t keyCode, std::int64_t flags, const std::string& characters = {}) {
        const std::vector present(keyHandlers.rbegin(), keyHandlers.rend());  // a handler may remove itself
        return std::ranges::any_of(present, [&](const auto& handler) {
            return handler({keyCode, flags, characters});
        });
    }
    void clickElsewhere() {
        for (const auto& handler : clickHandlers)
            handler();
    }

    std::list<KeyHandler> keyHandlers;
    std::list<ClickHandler> clickHandlers;
    std::uint32_t pressed = 0;
};

struct FakeHotkeyService : HotkeyService {
    struct Registered {
        std::uint32_t keyCode;
        std::uint32_t modifiers;
        HotkeyIdentifier identifier;
        friend bool operator==(const Registered&, const Registered&) = default;
    };

    void installEventHandler(Handler newHandler) override { handler = std::move(newHandler); }
    std::unique_ptr<HotkeyRegistration> registerHotkey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                       HotkeyIdentifier identifier) override {
        if (refuses)
            return nullptr;
        registered.push_back({keyCode, modifiers, identifier});
        mostAtOnce = std::max(mostAtOnce, registered.size());
        return std::make_unique<ListedToken<HotkeyRegistration, Registered>>(registered);
    }
    void press(std::uint32_t keyCode, std::uint32_t modifiers) {
        const auto pressed = std::ranges::find_if(registered, [&](const Registered& hotkey) {
            return hotkey.keyCode == keyCode && hotkey.modifiers == modifiers;
        });
        if (pressed != registered.end())
            handler(&pressed->identifier);
    }

    Handler handler;
    std::list<Registered> registered;
    std::size_t mostAtOnce = 0;
    bool refuses = false;
};

struct FakeLoginItem : LoginItem {
    [[nodiscard]] Status status() const override { return current; }
    [[nodiscard]] bool registerItem() override { return change(Status::enabled); }
    [[nodiscard]] bool unregisterItem() override { return change(Status::notRegistered); }

    Status current = Status::notRegistered;
    int changes = 0;
    bool fails = false;

private:
    bool change(Status status) {
        ++changes;
        if (!fails)
            current = status;
        return !fails;
    }
};

struct FakeSelection : FileManagerSelection {
    [[nodiscard]] bool isKnown() const override { return known; }
    void read(Completion completion) override { completion(files); }
    std::vector<FileURL> files;
    bool known = true;
};

struct FakeVolumes : Volumes {
    [[nodiscard]] Signal<>& didMount() override { return mounted; }
    [[nodiscard]] Signal<>& didUnmount() override { return unmounted; }
    Signal<> mounted;
    Signal<> unmounted;
};

}  // namespace stowpocket
