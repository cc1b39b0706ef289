// SPDX-License-Identifier: MIT
#pragma once

#include "fakes/FakeDesktop.h"
#include "platform/EventMonitors.h"
#include "platform/FileManagerSelection.h"
#include "platform/HotkeyService.h"
#include "platform/LoginItem.h"
#include "platform/Volumes.h"

#include <algorithm>
#include <list>

namespace stowpocket {

class FakeEventMonitors : public EventMonitors {
public:
    [[nodiscard]] std::unique_ptr<EventMonitorToken>
    addLocalKeyDownMonitor(std::function<bool(const KeyEvent&)> handler) override {
        keyHandlers.push_back(std::move(handler));
        return std::make_unique<Token<std::function<bool(const KeyEvent&)>>>(keyHandlers);
    }
    [[nodiscard]] std::unique_ptr<EventMonitorToken>
    addGlobalMouseDownMonitor(std::function<void()> handler) override {
        clickHandlers.push_back(std::move(handler));
        return std::make_unique<Token<std::function<void()>>>(clickHandlers);
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

    std::list<std::function<bool(const KeyEvent&)>> keyHandlers;
    std::list<std::function<void()>> clickHandlers;
    std::uint32_t pressed = 0;

private:
    template <class Handler>
    class Token : public EventMonitorToken {
    public:
        explicit Token(std::list<Handler>& handlers) : handlers_(handlers), mine_(std::prev(handlers.end())) {}
        ~Token() override { handlers_.erase(mine_); }

    private:
        std::list<Handler>& handlers_;
        typename std::list<Handler>::iterator mine_;
    };
};

class FakeHotkeyService : public HotkeyService {
public:
    struct Registered {
        std::uint32_t keyCode;
        std::uint32_t modifiers;
        HotkeyIdentifier identifier;
        friend bool operator==(const Registered&, const Registered&) = default;
    };

    explicit FakeHotkeyService(CallLog& log) : log_(log) {}
    void installEventHandler(Handler newHandler) override { handler = std::move(newHandler); }
    [[nodiscard]] std::unique_ptr<HotkeyRegistration> registerHotkey(std::uint32_t keyCode, std::uint32_t modifiers,
                                                                     HotkeyIdentifier identifier) override {
        log_.push_back("hotkey " + std::to_string(identifier.id));
        if (refuses)
            return nullptr;
        registered.push_back({keyCode, modifiers, identifier});
        return std::make_unique<Registration>(registered);
    }
    [[nodiscard]] HotkeySource source() const override { return currentSource; }

    Handler handler;
    std::list<Registered> registered;
    bool refuses = false;
    HotkeySource currentSource = HotkeySource::windowSystem;

private:
    class Registration : public HotkeyRegistration {
    public:
        explicit Registration(std::list<Registered>& list) : list_(list), mine_(std::prev(list.end())) {}
        ~Registration() override { list_.erase(mine_); }

    private:
        std::list<Registered>& list_;
        std::list<Registered>::iterator mine_;
    };
    CallLog& log_;
};

class FakeLoginItem : public LoginItem {
public:
    explicit FakeLoginItem(CallLog& log) : log_(log) {}
    [[nodiscard]] Status status() const override { return current; }
    [[nodiscard]] bool registerItem() override { return change("login item on", Status::enabled); }
    [[nodiscard]] bool unregisterItem() override { return change("login item off", Status::notRegistered); }

    Status current = Status::notRegistered;
    bool fails = false;

private:
    bool change(const std::string& call, Status status) {
        log_.push_back(call);
        if (!fails)
            current = status;
        return !fails;
    }
    CallLog& log_;
};

class FakeSelection : public FileManagerSelection {
public:
    void read(Completion completion) override { completion(files); }
    std::vector<FileURL> files;
};

class FakeVolumes : public Volumes {
public:
    [[nodiscard]] Signal<>& didMount() override { return mounted; }
    [[nodiscard]] Signal<>& didUnmount() override { return unmounted; }
    Signal<> mounted;
    Signal<> unmounted;
};

}  // namespace stowpocket
