// SPDX-License-Identifier: MIT
#pragma once

#include "services/Windows.h"

#include <QIcon>
#include <QPointer>
#include <QWidget>

#include <memory>

namespace stowpocket {

/// A window of the desktop's window manager around one view, of a fixed size. Once closed, by whomever, it is gone
/// with its view and does nothing any more.
class QtWindow : public Window {
public:
    enum class Level { normal, floating };
    enum class Frame {
        titled,
        none,  ///< the content is all there is; it moves the window, and Escape closes it
    };

    QtWindow(const QString& title, const QSize& contentSize, Level level, std::unique_ptr<QWidget> content,
             Frame frame = Frame::titled);
    QtWindow(const QtWindow&) = delete;
    QtWindow& operator=(const QtWindow&) = delete;
    ~QtWindow() override { delete window_; }

    /// Only what lies within the rounded corners is seen: where translucent pixels show what is behind the window the
    /// content leaves the corners free, elsewhere they are cut off. Before the window is shown.
    void roundCorners(double radius, bool blends);
    /// For lists of windows.
    void setIcon(const QIcon& icon) { window_->setWindowIcon(icon); }

    [[nodiscard]] bool isVisible() const override { return window_ && window_->isVisible(); }
    void center() override;
    void makeKeyAndOrderFront() override;
    void orderFrontRegardless() override;
    void close() override;

private:
    /// Its own; null once it was closed.
    const QPointer<QWidget> window_;
};

}  // namespace stowpocket
