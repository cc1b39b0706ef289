// SPDX-License-Identifier: MIT
#pragma once

#include "services/CoreServices.h"

#include <functional>
#include <memory>
#include <string>

namespace stowpocket {

class EventMonitors;
class LoginItem;
class ShelfViewModel;
class UpdaterController;
enum class HotkeySource;

/// What the settings change and show beside the shelf; all of it outlives their window.
struct SettingsServices {
    CoreServices core;
    EventMonitors& eventMonitors;
    LoginItem& loginItem;
    /// Shows a web page in the user's browser.
    std::function<void(const std::string& url)> openURL;
    /// What makes the shortcuts work at this moment.
    std::function<HotkeySource()> hotkeySource;
};

struct SettingsDependencies {
    SettingsServices services;
    /// Null for settings without a shelf.
    std::shared_ptr<ShelfViewModel> viewModel;
    std::shared_ptr<UpdaterController> updaterController;
};

}  // namespace stowpocket
