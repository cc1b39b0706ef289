// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

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

}  // namespace stowpocket
