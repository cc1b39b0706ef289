// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Window.h"

#include <QWidget>

#include <memory>

namespace stowpocket {

/// A window of the desktop's window manager around one view, of a fixed size.
class QtWindow : public Window {
public:
    enum class Level { normal, floating };
    enum class Frame {
        titled,
        none,  ///< the content is all there is; it moves the window, and Escape closes it
    };

    QtWindow(const QString& title, const QSize& contentSize, Level level, std::unique_ptr<QWidget> content,
             Frame frame = Frame::titled);

    [[nodiscard]] bool isVisible() const override { return window_->isVisible(); }
    void center() override;
    void makeKeyAndOrderFront() override;
    void orderFrontRegardless() override { window_->raise(); }
    void close() override { window_->close(); }

private:
    const std::unique_ptr<QWidget> window_;
};

}  // namespace stowpocket
