// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "views/controls/AlertView.h"
#include "views/settings/SettingsServices.h"

namespace stowpocket {

class HotkeyRecorderView;
class SegmentedPicker;
class Text;
class Toggle;

/// The page with the user's preferences.
class GeneralPage : public QWidget {
public:
    /// Questions lie over all of `window`.
    GeneralPage(const SettingsDependencies& dependencies, QWidget& window);

protected:
    void showEvent(QShowEvent* event) override;

private:
    [[nodiscard]] QWidget* general();
    [[nodiscard]] QWidget* shelf();
    [[nodiscard]] QWidget* shortcuts();

    void observe();
    void evaluate();
    void showHotkeySource();
    void setLaunchAtLogin(bool wanted);
    void confirmClear();
    void clearShelf();

    const SettingsDependencies dependencies_;
    QWidget& window_;
    Toggle* launchAtLogin_ = nullptr;
    SegmentedPicker* capacity_ = nullptr;
    Text* itemsOnShelf_ = nullptr;
    QWidget* clearRow_ = nullptr;
    Text* hotkeySource_ = nullptr;
    QWidget* hotkeySourceRow_ = nullptr;
    QPointer<AlertView> clearConfirmation_;
    std::vector<Subscription> observations_;
};

}  // namespace stowpocket
