// SPDX-License-Identifier: MIT
#pragma once

#include "services/StatusItem.h"

#include <functional>
#include <memory>
#include <string>

namespace stowpocket {

class PreferenceStore;
class ShelfViewModel;
class UpdaterController;

/// The running program as the desktop sees it. Main thread.
class Application {
public:
    virtual ~Application() = default;
    /// Activates this application, which takes the keyboard focus from the previous one.
    virtual void activate() = 0;
    /// Ends the main loop. The call returns; the program ends afterwards.
    virtual void terminate() = 0;
};

/// An ordinary window with a view inside. Destroying it takes it off the screen. Main thread.
class Window {
public:
    virtual ~Window() = default;
    [[nodiscard]] virtual bool isVisible() const = 0;
    virtual void center() = 0;
    /// Shows it in front of this application's windows and gives it the keyboard focus.
    virtual void makeKeyAndOrderFront() = 0;
    /// Raises it above the windows of all applications.
    virtual void orderFrontRegardless() = 0;
    virtual void close() = 0;
};

/// A small window below the menu-bar icon. It never closes by itself. Main thread.
class Popover {
public:
    virtual ~Popover() = default;
    [[nodiscard]] virtual bool isShown() const = 0;
    /// Whether the next show and close are animated; at first they are.
    virtual void setAnimates(bool animates) = 0;
    /// Opens below `anchor`, within the screen and as large as its content. Stays closed if the anchor is not on a
    /// screen.
    virtual void show(StatusItemButton& anchor) = 0;
    /// Gives its window the keyboard focus.
    virtual void makeKey() = 0;
    virtual void performClose() = 0;

    /// Runs when the user presses Escape and no control inside handles it, or closes the popover through the system.
    std::function<void()> onCancel = [] {};
};

/// A message for the user, with one button.
struct InformationalAlert {
    std::string messageText;
    std::string informativeText;
    std::string buttonTitle;
    friend bool operator==(const InformationalAlert&, const InformationalAlert&) = default;
};

/// Main thread.
class Alerts {
public:
    virtual ~Alerts() = default;
    /// Shows the alert in front, modal to the whole program. May return before it is answered.
    virtual void runModal(const InformationalAlert& alert) = 0;
};

/// Makes the windows of the program with their views inside. Nothing heavy is built before its window is first
/// shown. Main thread.
class ViewFactory {
public:
    virtual ~ViewFactory() = default;
    [[nodiscard]] virtual std::unique_ptr<Popover> makeShelfPopover(std::shared_ptr<ShelfViewModel> viewModel,
                                                                    std::function<void()> onOpenSettings,
                                                                    std::function<void()> onQuit) = 0;
    /// Titled "stowpocket Settings", closable, of a fixed content size of 450 by 520 points.
    [[nodiscard]] virtual std::unique_ptr<Window>
    makeSettingsWindow(std::shared_ptr<ShelfViewModel> viewModel,
                       std::shared_ptr<UpdaterController> updaterController) = 0;
    /// Without a visible title bar but closable, movable by its background, floating above other windows, of a fixed
    /// content size of 520 by 420 points. The view stores by itself that it was seen, before it calls `onComplete`.
    [[nodiscard]] virtual std::unique_ptr<Window> makeOnboardingWindow(PreferenceStore& preferences,
                                                                       std::function<void()> onComplete) = 0;
};

}  // namespace stowpocket
