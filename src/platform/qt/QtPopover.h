// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "presentation/Layout.h"
#include "services/StatusItem.h"
#include "services/Windows.h"

#include <QPainterPath>
#include <QPropertyAnimation>
#include <QRect>
#include <QWidget>

#include <functional>
#include <memory>

namespace stowpocket {

/// The icon as seen by the windows that are attached to it.
class QtStatusItemButton : public StatusItemButton {
public:
    /// Where attached windows should point; a corner of the screen while the icon is in no bar.
    [[nodiscard]] virtual QRect rectOnScreen() const = 0;
    /// The bar that contains the icon; empty while no such bar is known.
    [[nodiscard]] virtual QRect barOnScreen() const { return {}; }
    /// Called when a window is attached to it, and when it no longer is.
    virtual void setAttached(bool /*isAttached*/) {}
    /// Emitted when the icon has changed its size or, as far as it knows, its place.
    Signal<> moved;
};

/// A rectangle of Qt as the core counts.
[[nodiscard]] Rect rectOf(const QRect& rect);
/// The other way.
[[nodiscard]] QRectF exactRect(const Rect& rect);

/// What a popover needs from the window system beyond what Qt offers. Main thread.
class PopoverHost {
public:
    virtual ~PopoverHost() = default;
    /// Whether translucent pixels show what is behind the window. If not, they are black.
    [[nodiscard]] virtual bool blendsWindows() const = 0;
    /// Called each time just before a window is shown: requests a place above other windows and in no window list.
    virtual void willShow(QWidget& window) = 0;
    /// Called with each place that a window is to have, before it is asked for there. For window managers that do not
    /// do what windows ask for.
    virtual void willPlace(QWidget& /*window*/, const QPoint& /*corner*/) {}
    /// Whether a window that was put elsewhere may ask for its place once more.
    [[nodiscard]] virtual bool takesSecondRequests() const { return true; }
    /// Runs `work` when no drag out of this program is in progress, which may be immediately. A drag whose source
    /// window has gone would never end.
    virtual void afterDrag(std::function<void()> work) = 0;
    /// Gives a visible window the keyboard focus, even if the user last worked in another program.
    virtual void focus(QWidget& window) = 0;
};

/// How the edge of the popover meets what is behind it.
enum class PopoverEdge {
    shadowed,  ///< translucent, if a compositor blends windows
    cut,       ///< cut to its shape, if none does
};

/// The window of a popover: a rounded panel with an arrow around one content widget. It asks for its place again
/// whenever the content changes its size hint.
class PopoverWindow : public QWidget {
public:
    using Place = std::function<PopoverPlacement(const QSize& content, int shadow)>;

    /// `place` returns the window's place for a content size and a shadow width. `cancel` runs on Escape and when the
    /// window manager asks the window to close.
    PopoverWindow(PopoverEdge edge, Place place, std::function<void()> cancel);

    void setContent(QWidget* content);
    [[nodiscard]] PopoverEdge edge() const { return edge_; }
    /// Adopts the size of the content and moves to the matching place.
    void fitContent();
    /// Has the window ask for its place once more if it is shown elsewhere. i3 puts windows without a frame where
    /// their content would be inside one, and does what they ask for later.
    void insistOnce() { insists_ = true; }

protected:
    void closeEvent(QCloseEvent* event) override;
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    [[nodiscard]] bool isPlain(const QRect& area) const;
    void paintOutline(QPainter& painter) const;

    const PopoverEdge edge_;
    const Place place_;
    const std::function<void()> cancel_;
    QWidget* content_ = nullptr;
    PopoverPlacement placement_;
    bool insists_ = false;
    /// The panel without its arrow, in window coordinates.
    QRect panel_;
    /// The panel with its arrow, in window coordinates.
    QPainterPath outline_;
};

/// The popover as its own window. Its content is created when it is first shown and lives until the program ends.
/// Nothing is animated while it is hidden.
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
    /// Null while closed: a window that fades out stays where the icon was.
    QtStatusItemButton* anchor_ = nullptr;
    QRect anchorRect_;
    QRect barRect_;
    Subscription anchorMoved_;
    /// Destroying it disconnects the signals of the screens.
    std::unique_ptr<QObject> screens_;
    bool isShown_ = false;
    bool animates_ = true;
};

}  // namespace stowpocket
