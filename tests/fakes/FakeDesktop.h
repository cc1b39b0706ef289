// SPDX-License-Identifier: MIT
#pragma once

#include "fakes/FakeFiles.h"
#include "services/OtherPrograms.h"
#include "services/StatusItem.h"
#include "services/Windows.h"

#include <map>

namespace stowpocket {

template <class Button>
struct FakeButton : Button {
    void setImage(const StatusItemImage& newImage) override { image = newImage; }
    void setTitle(const StatusItemTitle& newTitle) override { title = newTitle; }
    void setAction(std::function<void()> newAction) override { action = std::move(newAction); }
    void setMenu(StatusItemMenu newMenu) override { menu = std::move(newMenu); }
    void addDropView(std::shared_ptr<DraggingDestination> newDropView) override { dropView = std::move(newDropView); }

    void setDragSource(IconDragSource newSource) override { dragSource = std::move(newSource); }

    StatusItemImage image;
    StatusItemTitle title;
    std::function<void()> action;
    IconDragSource dragSource;
    StatusItemMenu menu;
    std::shared_ptr<DraggingDestination> dropView;
};
using FakeStatusItemButton = FakeButton<StatusItemButton>;

struct FakeStatusBar : StatusBar {
    struct Item : StatusItem {
        explicit Item(std::shared_ptr<StatusItemButton> itsButton) : shown(std::move(itsButton)) {}
        [[nodiscard]] std::shared_ptr<StatusItemButton> button() override { return shown; }
        const std::shared_ptr<StatusItemButton> shown;
    };

    [[nodiscard]] std::unique_ptr<StatusItem> makeStatusItem() override { return std::make_unique<Item>(button); }
    /// Null for a bar without room.
    std::shared_ptr<FakeStatusItemButton> button = std::make_shared<FakeStatusItemButton>();
};

struct FakePopover : Popover {
    [[nodiscard]] bool isShown() const override { return isOpen; }
    void setAnimates(bool newAnimates) override { animates = newAnimates; }
    void show(StatusItemButton&) override {
        isOpen = hasPlace;
        wasAnimated = animates;
    }
    void makeKey() override { isKey = true; }
    void performClose() override { isOpen = isKey = false; }

    bool hasPlace = true;
    bool isOpen = false;
    bool isKey = false;
    bool animates = true;
    bool wasAnimated = false;
};

struct FakeWindow : Window {
    [[nodiscard]] bool isVisible() const override { return isOpen; }
    void center() override { isCentred = true; }
    void makeKeyAndOrderFront() override { isOpen = true; }
    void orderFrontRegardless() override { isInFrontOfAll = true; }
    void close() override { isOpen = false; }

    bool isOpen = false;
    bool isCentred = false;
    bool isInFrontOfAll = false;
};

struct FakeViewFactory : ViewFactory {
    using Action = std::function<void()>;
    using Model = std::shared_ptr<ShelfViewModel>;

    std::unique_ptr<Popover> makeShelfPopover(Model, Action newOnOpenSettings, Action newOnQuit) override {
        onOpenSettings = std::move(newOnOpenSettings);
        onQuit = std::move(newOnQuit);
        return made(popover);
    }
    std::unique_ptr<Window> makeSettingsWindow(Model, std::shared_ptr<UpdaterController>) override {
        return made(settingsWindow);
    }
    std::unique_ptr<Window> makeOnboardingWindow(PreferenceStore&, Action newOnComplete) override {
        onComplete = std::move(newOnComplete);
        return made(onboardingWindow);
    }
    Action onOpenSettings;
    Action onQuit;
    Action onComplete;
    /// The latest of each kind, which its owner may have destroyed.
    FakePopover* popover = nullptr;
    FakeWindow* settingsWindow = nullptr;
    FakeWindow* onboardingWindow = nullptr;

private:
    template <class View>
    static std::unique_ptr<View> made(View*& latest) {
        auto view = std::make_unique<View>();
        latest = view.get();
        return view;
    }
};

/// Keeps what it was last asked for, as the names of files.
struct FakeFileOpener : FileOpener {
    void open(std::span<const FileURL> files, Completion completion) override {
        opened = namesOf(files, &FileURL::lastPathComponent);
        completion(hasApplications);
    }
    void showInFolder(std::span<const FileURL> files) override {
        shown = namesOf(files, &FileURL::lastPathComponent);
    }
    void preview(const FileURL& file) override { previewed = file.lastPathComponent(); }

    bool hasApplications = true;
    Names opened;
    Names shown;
    std::string previewed;
};

struct FakeApplication : Application {
    void activate() override { isActive = true; }
    void terminate() override { isTerminated = true; }
    bool isActive = false;
    bool isTerminated = false;
};

/// A desktop's settings behind the program that reads and writes them, each key with its value as it is written.
struct FakeDesktopSettings : ChildProcess {
    std::optional<Bytes> run(const std::string& executable, const Names& arguments) override {
        if (executable != "gsettings")
            return std::nullopt;
        if (arguments.at(0) == "reset-recursively") {
            std::erase_if(values, [&](const auto& entry) { return entry.first.starts_with(arguments.at(1) + ' '); });
            return Bytes{};
        }
        const std::string key = arguments.at(1) + ' ' + arguments.at(2);
        if (arguments.at(0) == "set" && !isReadOnly)
            values[key] = arguments.at(3);
        const std::string output = arguments.at(0) == "get" && values.contains(key) ? values.at(key) + '\n' : "";
        return Bytes(output.begin(), output.end());
    }

    std::map<std::string, std::string> values;
    bool isReadOnly = false;
};

}  // namespace stowpocket
