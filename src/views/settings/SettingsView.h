// SPDX-License-Identifier: MIT
#pragma once

#include "services/CoreServices.h"

#include <QWidget>

#include <array>
#include <functional>
#include <memory>
#include <string>

class QStackedWidget;

namespace stowpocket {

class DesktopShortcuts;
class EventMonitors;
class LoginItem;
class ShelfViewModel;
class UpdaterController;
struct HotkeyIdentifier;

/// What the settings show and change, apart from the shelf. All of it outlives the settings window.
struct SettingsServices {
    CoreServices core;
    EventMonitors& eventMonitors;
    LoginItem& loginItem;
    /// Opens a web page in the user's browser.
    std::function<void(const std::string& url)> openURL;
    /// Whether another program has the shortcut that is stored for the hotkey.
    std::function<bool(const HotkeyIdentifier&)> isHotkeyTaken = {};
    /// Given where the window system gives no shortcuts.
    std::function<std::shared_ptr<DesktopShortcuts>()> makeDesktopShortcuts = {};
};

struct SettingsDependencies {
    SettingsServices services;
    /// Null if there is no shelf.
    std::shared_ptr<ShelfViewModel> viewModel;
    std::shared_ptr<UpdaterController> updaterController;
};

/// The content of the settings window: a row of tabs above the selected page. A page is created when it is first
/// selected. Every setting takes effect immediately.
class SettingsView : public QWidget {
public:
    explicit SettingsView(SettingsDependencies dependencies);

    /// The height that the pages are designed for. In a higher window the page gets the additional room.
    [[nodiscard]] QSize sizeHint() const override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void select(int tab);
    [[nodiscard]] QWidget* makePage(int tab);

    const SettingsDependencies dependencies_;
    QStackedWidget* const pages_;
    std::array<QWidget*, 3> pageOfTab_{};
};

}  // namespace stowpocket
