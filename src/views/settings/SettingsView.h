// SPDX-License-Identifier: MIT
#pragma once

#include "views/settings/SettingsServices.h"

#include <QWidget>

#include <array>

class QStackedWidget;

namespace stowpocket {

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
