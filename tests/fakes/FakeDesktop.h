// SPDX-License-Identifier: MIT
#pragma once

#include "services/StatusItem.h"
#include "services/Views.h"
#include "services/Windows.h"

#include <string>
#include <vector>

namespace stowpocket {

/// What happened on the desktop, call by call, in order.
using CallLog = std::vector<std::string>;

/// A fake that notes its calls there.
class Logging {
public:
    explicit Logging(CallLog& log) : log_(log) {}

protected:
    CallLog& log_;
};

class FakePasteboard : public DraggingPasteboard {
public:
    [[nodiscard]] std::vector<PasteboardItem> items() override { return content; }
    [[nodiscard]] std::vector<std::shared_ptr<FilePromiseReceiver>> filePromiseReceivers() override {
        return receivers;
    }
    void addFileURL(const std::string& text) { content.push_back({{{std::string(pasteboardType::fileURL), text}}}); }
    std::vector<PasteboardItem> content;
    std::vector<std::shared_ptr<FilePromiseReceiver>> receivers;
};

/// A promise whose files arrive when the test says so.
class FakePromiseReceiver : public FilePromiseReceiver {
public:
    void receivePromisedFiles(const FileURL& folder, Reader newReader) override {
        destination = folder;
        reader = std::move(newReader);
    }
    void arrive(const std::string& name) { reader(destination->appending(name)); }

    std::optional<FileURL> destination;
    Reader reader;
};

class FakeStatusItemButton : public StatusItemButton {
public:
    void setImage(const StatusItemImage& newImage) override { image = newImage; }
    void setTitle(const StatusItemTitle& newTitle) override { title = newTitle; }
    void setAction(std::function<void()> newAction) override { action = std::move(newAction); }
    void addDropView(std::shared_ptr<DraggingDestination> newDropView) override { dropView = std::move(newDropView); }

    StatusItemImage image;
    StatusItemTitle title;
    std::function<void()> action;
    std::shared_ptr<DraggingDestination> dropView;
};

class FakeStatusBar : public StatusBar {
public:
    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem() override { return std::make_unique<Item>(button); }
    /// Null for a bar without room.
    std::shared_ptr<FakeStatusItemButton> button = std::make_shared<FakeStatusItemButton>();

private:
    class Item : public StatusItem {
    public:
        explicit Item(std::shared_ptr<StatusItemButton> button) : button_(std::move(button)) {}
        [[nodiscard]] std::shared_ptr<StatusItemButton> button() override { return button_; }

    private:
        std::shared_ptr<StatusItemButton> button_;
    };
};

class FakePopover : public Popover, Logging {
public:
    using Logging::Logging;
    [[nodiscard]] bool isShown() const override { return shown_; }
    void setAnimates(bool animates) override { log_.push_back(animates ? "animates" : "no animation"); }
    void show(StatusItemButton&) override {
        if (!hasPlace)
            return;
        shown_ = true;
        log_.push_back("show");
    }
    void makeKey() override { log_.push_back("key"); }
    void performClose() override {
        shown_ = false;
        log_.push_back("close");
    }

    bool hasPlace = true;

private:
    bool shown_ = false;
};

class FakeWindow : public Window, Logging {
public:
    FakeWindow(CallLog& log, std::string name) : Logging(log), name_(std::move(name)) {}
    ~FakeWindow() override { log_.push_back(name_ + " gone"); }
    [[nodiscard]] bool isVisible() const override { return visible_; }
    void center() override { log_.push_back(name_ + " center"); }
    void makeKeyAndOrderFront() override {
        visible_ = true;
        log_.push_back(name_ + " front");
    }
    void orderFrontRegardless() override { log_.push_back(name_ + " front of all"); }
    void close() override {
        visible_ = false;
        log_.push_back(name_ + " close");
    }

private:
    const std::string name_;
    bool visible_ = false;
};

class FakeViewFactory : public ViewFactory, Logging {
public:
    using Logging::Logging;
    [[nodiscard]] std::unique_ptr<Popover> makeShelfPopover(std::shared_ptr<ShelfViewModel> viewModel,
                                                            std::function<void()> newOnOpenSettings,
                                                            std::function<void()> newOnQuit) override {
        shelfViewModel = std::move(viewModel);
        onOpenSettings = std::move(newOnOpenSettings);
        onQuit = std::move(newOnQuit);
        log_.push_back("popover");
        auto made = std::make_unique<FakePopover>(log_);
        popover = made.get();
        return made;
    }
    [[nodiscard]] std::unique_ptr<Window> makeSettingsWindow(std::shared_ptr<ShelfViewModel>,
                                                             std::shared_ptr<UpdaterController>) override {
        auto window = std::make_unique<FakeWindow>(log_, "settings");
        settingsWindow = window.get();
        return window;
    }
    [[nodiscard]] std::unique_ptr<Window> makeOnboardingWindow(PreferenceStore&,
                                                               std::function<void()> newOnComplete) override {
        onComplete = std::move(newOnComplete);
        return std::make_unique<FakeWindow>(log_, "onboarding");
    }
    std::shared_ptr<ShelfViewModel> shelfViewModel;
    std::function<void()> onOpenSettings;
    std::function<void()> onQuit;
    std::function<void()> onComplete;
    FakePopover* popover = nullptr;
    FakeWindow* settingsWindow = nullptr;
};

class FakeApplication : public Application, Logging {
public:
    using Logging::Logging;
    void activate() override { log_.push_back("activate"); }
    void terminate() override { log_.push_back("terminate"); }
};

}  // namespace stowpocket
