// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "views/controls/Popups.h"
#include "views/settings/SettingsView.h"

#include <QWidget>

#include <functional>
#include <string>

namespace stowpocket {

class DesktopShortcutsView;
class HotkeyRecorderView;
class SegmentedPicker;
class Text;
class Toggle;

/// The page with the user's preferences.
class GeneralPage : public QWidget {
public:
    /// Questions cover all of `window`.
    GeneralPage(const SettingsDependencies& dependencies, QWidget& window);

protected:
    void showEvent(QShowEvent* event) override;

private:
    [[nodiscard]] QWidget* general();
    [[nodiscard]] QWidget* shelf();
    [[nodiscard]] QWidget* shortcuts();

    void observe();
    void refresh();
    void showTakenHotkeys();
    void setLaunchAtLogin(bool wanted);
    void confirmClear();
    void clearShelf();

    const SettingsDependencies dependencies_;
    QWidget& window_;
    Toggle* launchAtLogin_ = nullptr;
    SegmentedPicker* capacity_ = nullptr;
    Text* itemsOnShelf_ = nullptr;
    QWidget* clearRow_ = nullptr;
    Text* shelfHotkeyTaken_ = nullptr;
    Text* quickDropTaken_ = nullptr;
    /// Null where the window system gives them.
    DesktopShortcutsView* desktopShortcuts_ = nullptr;
    QPointer<AlertView> clearConfirmation_;
    std::vector<Subscription> observations_;
};

/// The page about the program and its updates.
class AboutPage : public QWidget {
public:
    explicit AboutPage(const SettingsDependencies& dependencies);

private:
    [[nodiscard]] QWidget* updateControls(const MainBundle& bundle);
    void refresh();

    const std::shared_ptr<UpdaterController> updaterController_;
    Toggle* automaticDownloads_ = nullptr;
    const Subscription observation_;
};

/// The page about the maker's other programs.
[[nodiscard]] QWidget* utilitiesPage(const std::function<void(const std::string& url)>& openURL);

}  // namespace stowpocket
