// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

#include <optional>

class QScrollBar;

namespace stowpocket {

/// A thin rounded knob without a track that mirrors a scroll bar, can be dragged, and is there only while there is
/// something to scroll.
class ScrollIndicator : public QWidget {
public:
    static constexpr int width = 9;

    ScrollIndicator(QScrollBar& scrollBar, QWidget* parent);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    struct Grab {
        double y;
        int value;
    };

    [[nodiscard]] QRectF knob() const;

    QScrollBar& scrollBar_;
    std::optional<Grab> grab_;
};

}  // namespace stowpocket
