// SPDX-License-Identifier: MIT
#pragma once

#include "views/controls/Compose.h"

#include <QScrollArea>
#include <QWidget>

#include <optional>

class QScrollBar;

namespace stowpocket {

/// A thin rounded knob without a track. It mirrors a scroll bar, can be dragged, and is visible only while there is
/// something to scroll.
class ScrollIndicator : public QWidget {
public:
    ScrollIndicator(QScrollBar& scrollBar, QWidget* parent);

    /// Moves to the right edge of its parent, above the other children.
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

/// Shows its content at full width and scrolls if the content is higher than the view. The indicator is drawn over
/// the content and takes no room.
class ScrollView : public QScrollArea {
public:
    explicit ScrollView(QLayout* stack);

    /// Adapts to a change of its content, whether the view is visible or not.
    void measureContent();
    /// The size that shows all of the content.
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, 0}; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    ScrollIndicator* const indicator_;
};

/// A form, which scrolls if it is higher than its place: sections below each other, each with a title above a rounded
/// panel of rows. Null sections and rows are skipped.
[[nodiscard]] QWidget* form(std::initializer_list<QWidget*> sections);
/// The title may be empty. Hidden rows and the lines above them take no room.
[[nodiscard]] QWidget* formSection(const QString& title, std::initializer_list<QWidget*> rows);
[[nodiscard]] QWidget* formRow(QLayout* stack);

}  // namespace stowpocket
