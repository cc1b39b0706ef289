// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "views/settings/SettingsServices.h"

#include <QWidget>

namespace stowpocket {

class Toggle;

/// The page about the program, with what concerns its updates.
class AboutPage : public QWidget {
public:
    explicit AboutPage(const SettingsDependencies& dependencies);

private:
    [[nodiscard]] QWidget* updateControls(const MainBundle& bundle);
    void evaluate();

    const std::shared_ptr<UpdaterController> updaterController_;
    Toggle* automaticDownloads_ = nullptr;
    const Subscription observation_;
};

}  // namespace stowpocket
