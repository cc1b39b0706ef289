// SPDX-License-Identifier: MIT
#pragma once

#include "services/Windows.h"

#include <functional>
#include <memory>

namespace stowpocket {

/// A window that has to wait before it is shown, and is not made before then: what would be seen first is not kept
/// waiting by it.
class LateWindow : public Window {
public:
    using Make = std::function<std::unique_ptr<Window>()>;
    /// Runs what it is given once, later than this call.
    using Later = std::function<void(std::function<void()>)>;

    LateWindow(Later later, Make make) : later_(std::move(later)), make_(std::move(make)) {}

    [[nodiscard]] bool isVisible() const override { return window_ && window_->isVisible(); }
    void center() override;
    void makeKeyAndOrderFront() override;
    void orderFrontRegardless() override;
    void close() override;

private:
    struct Wish {};

    void appear();

    const Later later_;
    const Make make_;
    std::unique_ptr<Window> window_;
    bool isCentered_ = false;
    /// There from the request until the window is made; what runs later does nothing without it.
    std::shared_ptr<const Wish> wish_;
};

}  // namespace stowpocket
