// SPDX-License-Identifier: MIT
#pragma once

#include "services/OtherPrograms.h"
#include "services/StatusItem.h"
#include "services/Windows.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace stowpocket {

class FakeStatusItemButton : public StatusItemButton {
public:
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

class FakePopover : public Popover {
public:
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

class FakeWindow : public Window {
public:
    [[nodiscard]] bool isVisible() const override { return isOpen; }
    void center() override { isCentred = true; }
    void makeKeyAndOrderFront() override { isOpen = true; }
    void orderFrontRegardless() override { isInFrontOfAll = true; }
    void close() override { isOpen = false; }

    bool isOpen = false;
    bool isCentred = false;
    bool isInFrontOfAll = false;
};

class FakeViewFactory : public ViewFactory {
public:
    [[nodiscard]] std::unique_ptr<Popover> makeShelfPopover(std::shared_ptr<ShelfViewModel>,
                                                            std::function<void()> newOnOpenSettings,
                                                            std::function<void()> newOnQuit) override {
        onOpenSettings = std::move(newOnOpenSettings);
        onQuit = std::move(newOnQuit);
        return made(popover);
    }
    [[nodiscard]] std::unique_ptr<Window> makeSettingsWindow(std::shared_ptr<ShelfViewModel>,
                                                             std::shared_ptr<UpdaterController>) override {
        return made(settingsWindow);
    }
    [[nodiscard]] std::unique_ptr<Window> makeOnboardingWindow(PreferenceStore&,
                                                               std::function<void()> newOnComplete) override {
        onComplete = std::move(newOnComplete);
        return made(onboardingWindow);
    }
    std::function<void()> onOpenSettings;
    std::function<void()> onQuit;
    std::function<void()> onComplete;
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
class FakeFileOpener : public FileOpener {
public:
    void open(std::span<const FileURL> files, Completion completion) override {
        opened = namesOf(files);
        completion(hasApplications);
    }
    void showInFolder(std::span<const FileURL> files) override { shown = namesOf(files); }
    void preview(const FileURL& file) override { previewed = file.lastPathComponent(); }

    bool hasApplications = true;
    std::vector<std::string> opened;
    std::vector<std::string> shown;
    std::string previewed;

private:
    static std::vector<std::string> namesOf(std::span<const FileURL> files) {
        std::vector<std::string> names;
        for (const FileURL& file : files)
            names.push_back(file.lastPathComponent());
        return names;
    }
};

class FakeApplication : public Application {
public:
    void activate() override { isActive = true; }
    void terminate() override { isTerminated = true; }
    bool isActive = false;
    bool isTerminated = false;
};

/// A desktop's settings behind the program that reads and writes them, each key with its value as it is written.
class FakeDesktopSettings : public ChildProcess {
public:
    [[nodiscard]] std::optional<Bytes> run(const std::string& executable,
                                           const std::vector<std::string>& arguments) override {
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
