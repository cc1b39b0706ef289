// SPDX-License-Identifier: MIT
#pragma once

#include "services/Pictures.h"
#include "services/Windows.h"

#include <QIcon>
#include <QPointer>
#include <QProxyStyle>
#include <QWidget>

#include <functional>
#include <memory>
#include <optional>

class QMenu;

namespace stowpocket {

/// A window that Escape and Ctrl+W close unless something inside takes these keys.
class ClosableWindow : public QWidget {
protected:
    void keyPressEvent(QKeyEvent* event) override;
};

/// A window without the desktop's frame. Dragging any part that does not take the mouse moves it.
class FramelessWindow : public ClosableWindow {
protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    /// Where the button was pressed, until the window manager takes over the movement.
    std::optional<QPoint> grab_;
};

/// An ordinary desktop window of fixed size around one view. Closing it, by any means, deletes the view; after that
/// every call does nothing.
class QtWindow : public Window {
public:
    enum class Level { normal, floating };
    enum class Frame {
        titled,
        none,  ///< only the content is shown; dragging it moves the window
    };

    QtWindow(const QString& title, const QSize& contentSize, Level level, std::unique_ptr<QWidget> content,
             Frame frame = Frame::titled);
    QtWindow(const QtWindow&) = delete;
    QtWindow& operator=(const QtWindow&) = delete;
    ~QtWindow() override { delete window_; }

    /// Makes only the part within the rounded corners visible. If `blends` is true, the content itself leaves the
    /// corners transparent; otherwise they are cut off. Call it before the window is shown.
    void roundCorners(double radius, bool blends);
    /// The icon that window lists show.
    void setIcon(const QIcon& icon) { window_->setWindowIcon(icon); }

    [[nodiscard]] bool isVisible() const override { return window_ && window_->isVisible(); }
    void center() override;
    void makeKeyAndOrderFront() override;
    void orderFrontRegardless() override;
    void close() override;

private:
    /// Owned; null once the window has been closed.
    const QPointer<QWidget> window_;
};

/// A window that is neither made nor shown until `later` says so, so that building it does not delay what the user
/// should see first.
class DeferredWindow : public Window {
public:
    using Make = std::function<std::unique_ptr<Window>()>;
    /// Runs its argument once, after the call has returned.
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
    /// Exists from the request until the window is made. Deferred work does nothing without it.
    std::shared_ptr<const Request> request_;
};

/// Shows a menu that deletes itself when it closes, once the click that asks for it has been handled: Qt sends the
/// second of two quick clicks as a double click too, which would close the menu. For a key it is shown at once. If
/// another menu is open by then, the menu is deleted.
void popUpAfterClick(QMenu& menu, const QPoint& place);

/// The running Qt application.
class QtApplication : public Application {
public:
    void activate() override;
    void terminate() override;
};

/// The primary screen of the Qt application.
class QtMainScreen : public MainScreen {
public:
    [[nodiscard]] std::optional<double> backingScaleFactor() const override;
};

/// The desktop's style without animations, for users who have asked for reduced motion.
class MotionlessStyle : public QProxyStyle {
public:
    [[nodiscard]] int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                                QStyleHintReturn* returnData) const override;
};

}  // namespace stowpocket
