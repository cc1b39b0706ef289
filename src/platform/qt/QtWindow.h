// SPDX-License-Identifier: MIT
#pragma once

#include "services/Windows.h"

#include <QIcon>
#include <QPointer>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

namespace stowpocket {

/// A window without a frame of the desktop's: it is moved by dragging whatever in it does not take the mouse, and
/// closed by Escape as by the desktop's own ways.
class FramelessWindow : public QWidget {
protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    /// Where the pressed button went down, until the window manager takes the movement over.
    std::optional<QPoint> grab_;
};

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

/// A window that has to wait before it is shown, and is not made before then: what would be seen first is not kept
/// waiting by it.
class DeferredWindow : public Window {
public:
    using Make = std::function<std::unique_ptr<Window>()>;
    /// Runs what it is given once, later than this call.
    using Later = std::function<void(std::function<void()>)>;

    DeferredWindow(Later later, Make make) : later_(std::move(later)), make_(std::move(make)) {}

    [[nodiscard]] bool isVisible() const override { return window_ && window_->isVisible(); }
    void center() override;
    void makeKeyAndOrderFront() override;
    void orderFrontRegardless() override;
    void close() override;

private:
    struct Request {};

    void appear();

    const Later later_;
    const Make make_;
    std::unique_ptr<Window> window_;
    bool isCentered_ = false;
    /// There from the request until the window is made; what runs later does nothing without it.
    std::shared_ptr<const Request> request_;
};

}  // namespace stowpocket
