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
[[nodiscard]] std::unique_ptr<EventMonitors> makeMacEventMonitors();
/// Hotkeys of the Carbon event manager, the system's only service for them.
[[nodiscard]] std::unique_ptr<HotkeyService> makeCarbonHotkeyService();

}  // namespace stowpocket
