// SPDX-License-Identifier: MIT
#pragma once

#include "services/Windows.h"
#include "updates/UpdateStatus.h"
#include "views/updates/UpdateView.h"

#include <memory>

namespace stowpocket {

/// Deletes a view after the event that it is currently handling.
struct DeleteViewLater {
    void operator()(UpdateView* view) const;
};

/// The update window, which exists only while it is shown.
class QtUpdateWindow : public UpdateWindow {
public:
    void show(const UpdateStatus& status) override;
    void bringToFront() override;
    void close() override { view_.reset(); }
    [[nodiscard]] Signal<UpdateChoice>& chosen() override { return chosen_; }

private:
    Signal<UpdateChoice> chosen_;
    std::unique_ptr<UpdateView, DeleteViewLater> view_;
};

/// Alerts in windows like the update window. `runModal` does not block: it returns before the answer.
class QtAlerts : public Alerts {
public:
    void runModal(const InformationalAlert& alert) override;

private:
    std::unique_ptr<UpdateView, DeleteViewLater> view_;
};

}  // namespace stowpocket
