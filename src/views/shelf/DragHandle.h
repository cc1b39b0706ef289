// SPDX-License-Identifier: MIT
#pragma once

#include <QLayout>
#include <QWidget>

#include <functional>
#include <optional>

namespace stowpocket {

/// A stack of views by which something can be dragged.
class DragHandle : public QWidget {
public:
    /// `startDrag` runs while the main button is held and the pointer has moved far enough.
    DragHandle(QLayout* stack, std::function<void(QWidget& handle)> startDrag);

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    const std::function<void(QWidget& handle)> startDrag_;
    std::optional<QPoint> pressedAt_;
};

}  // namespace stowpocket
