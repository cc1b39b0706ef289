// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "platform/qt/PopoverHost.h"
#include "platform/qt/PopoverWindow.h"
#include "platform/qt/QtStatusItemButton.h"
#include "services/Windows.h"

#include <QPropertyAnimation>

#include <functional>
#include <memory>

namespace stowpocket {

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
    void followScreens();
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
