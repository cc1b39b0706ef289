// SPDX-License-Identifier: MIT
#pragma once

#include "services/Files.h"
#include "services/Input.h"
#include "services/MainBundle.h"
#include "services/OtherPrograms.h"
#include "services/Pictures.h"
#include "services/UpdateFramework.h"
#include "services/Windows.h"

#include <functional>
#include <memory>

// The running program and the services that it uses.
namespace stowpocket {

[[nodiscard]] std::unique_ptr<Application> makeMacApplication();
[[nodiscard]] std::unique_ptr<MainScreen> makeMacMainScreen();
/// Returns whether the user has asked for reduced motion.
[[nodiscard]] bool isMotionReduced();
[[nodiscard]] std::unique_ptr<Alerts> makeMacAlerts();

/// A subscription that ends when this object is destroyed.
class Observation {
public:
    virtual ~Observation() = default;
};
/// `reopened` runs on the main thread whenever the user opens the running program again. Called after the launch.
[[nodiscard]] std::unique_ptr<Observation> observeReopening(std::function<void()> reopened);

/// The main application's registration as a login item.
[[nodiscard]] std::unique_ptr<LoginItem> makeMacLoginItem();

/// Files opened by the workspace, previews in the system's panel.
[[nodiscard]] std::unique_ptr<FileOpener> makeMacFileOpener();

/// Runs scripts in AppleScript.
[[nodiscard]] std::unique_ptr<ScriptService> makeAppleScriptService();
[[nodiscard]] std::unique_ptr<Volumes> makeMacVolumes();
[[nodiscard]] std::unique_ptr<ChildProcess> makeMacChildProcess();
/// The system's shared URL session.
[[nodiscard]] std::unique_ptr<FeedSession> makeMacFeedSession();
/// The update framework's standard controller, started at once.
[[nodiscard]] std::unique_ptr<UpdateFramework> startStandardUpdateFramework();

class MacEventMonitors : public EventMonitors {
public:
    /// Whether a monitor of this application's key presses takes this one, which the system keeps from its windows.
    [[nodiscard]] virtual bool swallows(const KeyEvent& press) const = 0;
};
[[nodiscard]] std::unique_ptr<MacEventMonitors> makeMacEventMonitors();
/// Hotkeys of the Carbon event manager, the system's only service for them. The system makes no key press of a
/// hotkey. While a window of this application has the keyboard, `monitors` hear of it first, so that a hotkey can be
/// recorded again. They outlive the main loop.
[[nodiscard]] std::unique_ptr<HotkeyService> makeCarbonHotkeyService(const MacEventMonitors& monitors);

}  // namespace stowpocket
