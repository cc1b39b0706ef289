// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/X11Connection.h"

#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QSocketNotifier>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <string>

namespace stowpocket {

/// Puts a window where it is to be under sway, which centres floating windows whatever they ask for, and again when
/// they grow, but does what its users' commands say. Answers are not waited for: a sway that hangs leaves the window
/// where it is. Main thread.
class SwayPlacing : private QObject {
public:
    /// `connection` outlives it. `socket` is where sway takes commands.
    SwayPlacing(const X11Connection& connection, std::string socket);
    ~SwayPlacing() override { closeSocket(); }
    /// Null outside of sway.
    [[nodiscard]] static std::unique_ptr<SwayPlacing> ofSession(const X11Connection& connection);

    /// Called before the window is shown there, and before each change of its place.
    void place(QWidget& window, const QPoint& corner);

private:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void watch();
    void look();
    void command(const std::string& text);
    [[nodiscard]] bool openSocket();
    void closeSocket();
    void discardAnswers();

    const X11Connection& connection_;
    const std::string socket_;
    int descriptor_ = -1;
    std::unique_ptr<QSocketNotifier> answers_;
    QPointer<QWidget> window_;
    /// In pixels.
    QPoint corner_;
    /// How often sway has been told since the window was to be there.
    int corrections_ = 0;
    /// Runs for a moment after each change. How often it has looked in that time.
    QTimer looking_;
    int looks_ = 0;
};

}  // namespace stowpocket
