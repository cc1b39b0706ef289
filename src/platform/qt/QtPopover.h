// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "platform/qt/QtStatusItemButton.h"
#include "presentation/Layout.h"
#include "services/Windows.h"

#include <QPainterPath>
#include <QPropertyAnimation>
#include <QRect>
#include <QWidget>

#include <functional>
#include <memory>

namespace stowpocket {

/// What a popover asks of the window system beyond what Qt does. Main thread.
class PopoverHost {
public:
    virtual ~PopoverHost() = default;
    /// Whether translucent pixels show what is behind a window; otherwise they are black.
    [[nodiscard]] virtual bool blendsWindows() const = 0;
    /// Just before a window is shown, every time: asks for a place above the others and in no list of windows.
    virtual void willShow(QWidget& window) = 0;
    /// Runs `work` once no drag out of this program is on any more; at once where none is. Without the window that it
    /// came from a drag would never end.
    virtual void afterDrag(std::function<void()> work) = 0;
    /// Gives a shown window the keyboard, though the user may have worked elsewhere last.
    virtual void focus(QWidget& window) = 0;
};

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
    void fitContent();

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

/// The popover as a window of its own. Its content is made when it is first shown and stays, hidden, until the end;
/// nothing moves or ticks while it is hidden.
class QtPopover : public Popover {
public:
    using MakeContent = std::function<std::unique_ptr<QWidget>()>;

    /// `host` outlives the popover.
    QtPopover(PopoverHost& host, MakeContent makeContent) : host_(host), makeContent_(std::move(makeContent)) {}

    [[nodiscard]] bool isShown() const override { return isShown_; }
    void setAnimates(bool animates) override { animates_ = animates; }
    /// `anchor` is a QtStatusItemButton that lives until the popover is closed.
    void show(StatusItemButton& anchor) override;
    void makeKey() override;
    void performClose() override;

private:
    void prepareWindow();
    void hide();
    [[nodiscard]] PopoverPlacement placementFor(const QSize& content, int shadow);
    void watchScreens();
    [[nodiscard]] bool fades() const;
    void fade(double from, double to);

    PopoverHost& host_;
    const MakeContent makeContent_;
    QWidget* content_ = nullptr;
    std::unique_ptr<PopoverWindow> window_;
    std::unique_ptr<QPropertyAnimation> fade_;
    /// Null while closed; the window that fades out then stays where the icon was.
    const QtStatusItemButton* anchor_ = nullptr;
    QRect anchorRect_;
    QRect barRect_;
    Subscription anchorMoved_;
    /// Ends what was heard of screens that changed or went.
    std::unique_ptr<QObject> screens_;
    bool isShown_ = false;
    bool animates_ = true;
};

}  // namespace stowpocket
