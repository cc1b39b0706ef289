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

/// What the settings window shows: a row of tabs above the page of the one that is selected. A page is built when it
/// is first selected. Whatever is set there is in force at once.
class SettingsView : public QWidget {
public:
    explicit SettingsView(SettingsDependencies dependencies);

    /// The height that it is drawn for; in a higher window the page gets what is left over.
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
