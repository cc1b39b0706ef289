// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/PopoverPlacement.h"

#include <QPainterPath>
#include <QRect>
#include <QWidget>

#include <functional>

namespace stowpocket {

/// How the edge of the popover meets what is behind it.
enum class PopoverEdge {
    shadowed,  ///< translucent, where a compositor blends windows
    cut,       ///< cut out of the screen, where none does
};

/// The window of a popover: a rounded panel with an arrow, around one content widget. It asks for its place again
/// whenever the content wants another size.
class PopoverWindow : public QWidget {
public:
    using Place = std::function<PopoverPlacement(const QSize& content, int shadow)>;

    /// `place` answers where the window belongs with a content of that size and a shadow of that width; `cancel` runs
    /// on Escape, and when the window manager asks the window to close.
    PopoverWindow(PopoverEdge edge, Place place, std::function<void()> cancel);

    void setContent(QWidget* content);
    [[nodiscard]] PopoverEdge edge() const { return edge_; }
    /// Takes the size of the content and moves to where that belongs.
    void follow();

protected:
    void closeEvent(QCloseEvent* event) override;
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    const PopoverEdge edge_;
    const Place place_;
    const std::function<void()> cancel_;
    QWidget* content_ = nullptr;
    PopoverPlacement placement_;
    /// The panel with its arrow, in the window.
    QPainterPath outline_;
};

}  // namespace stowpocket
