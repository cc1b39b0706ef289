// SPDX-License-Identifier: MIT
#pragma once

#include <QScrollArea>
#include <QWidget>

#include <optional>

class QScrollBar;

namespace stowpocket {

/// A thin rounded knob without a track that mirrors a scroll bar, can be dragged, and is there only while there is
/// something to scroll.
class ScrollIndicator : public QWidget {
public:
    ScrollIndicator(QScrollBar& scrollBar, QWidget* parent);

    /// Takes its place at the right edge of its parent, over what is there.
    void cover();

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

/// Shows its content at full width and, when it is given less height than the content has, scrolls. The indicator
/// lies over the content, so it takes no room from it.
class ScrollView : public QScrollArea {
public:
    explicit ScrollView(QLayout* stack);

    /// Follows a change of what is in it, shown or hidden.
    void measureContent();
    /// Wishes to show all of the content.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, 0}; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    ScrollIndicator* const indicator_;
};

}  // namespace stowpocket
