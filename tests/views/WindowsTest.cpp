// SPDX-License-Identifier: MIT
#include "platform/qt/QtPopover.h"
#include "ShelfViewFixture.h"
#include "views/updates/UpdateWindow.h"

#include <QScreen>

namespace stowpocket {
namespace {

struct FakeHost : PopoverHost {
    [[nodiscard]] bool blendsWindows() const override { return blends; }
    void willShow(QWidget& window) override { wasAnnounced = !window.isVisible(); }
    void afterDrag(std::function<void()> work) override { isDragging ? pending.push_back(work) : work(); }
    void focus(QWidget& window) override { focused = &window; }

    bool isDragging = false;
    std::vector<std::function<void()>> pending;
    bool blends = false;
    QWidget* focused = nullptr;
    bool wasAnnounced = false;
};

struct PlacedButton : FakeButton<QtStatusItemButton> {
    [[nodiscard]] QRect rectOnScreen() const override { return rect; }
    [[nodiscard]] QRect barOnScreen() const override { return bar; }

    QRect bar;
    QRect rect{400, 0, 20, 22};
};

struct Content : QWidget {
    [[nodiscard]] QSize sizeHint() const override { return wanted; }
    void resizeTo(const QSize& size) {
        wanted = size;
        updateGeometry();
    }
    QSize wanted{320, 200};
};

struct PopoverTest : testing::Test {
    QWidget* window() { return content->window(); }

    FakeHost host;
    PlacedButton button;
    int made = 0;
    Content* content = nullptr;
    QtPopover popover{host, [this] {
                          ++made;
                          auto widget = std::make_unique<Content>();
                          content = widget.get();
                          return widget;
                      }};
};

TEST_F(PopoverTest, buildsItsContentOnceAndOnlyWhenShown) {
    popover.performClose();
    popover.makeKey();
    EXPECT_EQ(made, 0);
    popover.setAnimates(false);
    for (const bool blends : {false, true}) {
        host.blends = blends;
        popover.show(button);
        EXPECT_TRUE(popover.isShown() && content->isVisible() && host.wasAnnounced);
        EXPECT_EQ(window()->mask().isEmpty(), blends) << "a compositor may start meanwhile";
        popover.makeKey();
        EXPECT_EQ(host.focused, window());
        popover.performClose();
        EXPECT_FALSE(popover.isShown() || window()->isVisible());
    }
    EXPECT_EQ(made, 1);
}

TEST_F(PopoverTest, followsItsContentAndItsIcon) {
    popover.show(button);
    content->resizeTo({320, 260});
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(content->size(), QSize(320, 260));

    button.rect.translate(50, 0);
    button.moved.emit();
    EXPECT_EQ(window()->geometry().center().x(), button.rect.center().x());
    button.bar = QRect(0, 0, 800, 30);
    QScreen* const screen = window()->screen();
    Q_EMIT screen->availableGeometryChanged(screen->availableGeometry());
    QCoreApplication::sendPostedEvents();
    EXPECT_EQ(window()->y(), button.bar.bottom() + 1);
}

TEST_F(PopoverTest, asksOnceMoreForItsPlaceWhenShownElsewhere) {
    popover.show(button);
    popover.performClose();
    popover.show(button);
    const QPoint wanted = window()->pos();
    const QPoint elsewhere = wanted + QPoint(2, 22);
    window()->move(elsewhere);
    EXPECT_EQ(window()->pos(), wanted);
    window()->move(elsewhere);
    EXPECT_EQ(window()->pos(), elsewhere) << "a window manager that insists is not contradicted again";
}

TEST_F(PopoverTest, isClosedAtOnceThoughItsWindowMayStay) {
    popover.onCancel = [this] { popover.performClose(); };
    popover.show(button);
    EXPECT_TRUE(window()->close()) << "or the session could not end the program";
    EXPECT_FALSE(popover.isShown());

    host.isDragging = true;
    popover.show(button);
    popover.performClose();
    ASSERT_TRUE(window()->isVisible()) << "until the drag is over that began in it";
    host.pending.front()();
    EXPECT_FALSE(window()->isVisible());
    popover.show(button);
    host.pending.front()();
    EXPECT_TRUE(window()->isVisible()) << "shown again since";
    popover.performClose();

    host.blends = true;
    popover.show(button);
    popover.performClose();
    EXPECT_FALSE(popover.isShown());
    EXPECT_TRUE(window()->isVisible()) << "while it fades out";
    popover.setAnimates(false);
    popover.show(button);
    EXPECT_TRUE(popover.isShown());
    EXPECT_EQ(window()->windowOpacity(), 1);
}

/// The one window on the screen; null when there is none.
QWidget* window() {
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (widget->isVisible())
            return widget;
    }
    return nullptr;
}

QStringList buttons() {
    QStringList names;
    for (const Button* const button : visible<Button>(*window()))
        names.push_back(button->text());
    return names;
}

TEST(UpdateWindow, asksAnswersAndChangesWithTheUpdate) {
    QtUpdateWindow updates;
    std::vector<UpdateChoice> choices;
    const Subscription subscription =
        updates.chosen().connect([&choices](UpdateChoice choice) { choices.push_back(choice); });
    UpdateStatus status{.state = UpdateState::offered, .programName = "stowpocket", .runningVersion = "1"};
    status.item.version = "2";
    status.canInstall = true;
    updates.show(status);
    updates.bringToFront();
    EXPECT_EQ(window()->windowTitle(), QLatin1String("stowpocket 2 is available"));
    QTest::keyClick(window()->focusWidget(), Qt::Key_Return);
    QTest::keyClick(window()->focusWidget(), Qt::Key_Escape);
    window()->close();
    EXPECT_EQ(choices, (std::vector{UpdateChoice::install, UpdateChoice::later, UpdateChoice::later}));
    status.state = UpdateState::installing;
    updates.show(status);
    EXPECT_TRUE(buttons().isEmpty());
    window()->close();
    EXPECT_NE(window(), nullptr) << "it cannot be left";
    updates.close();
    EXPECT_EQ(window(), nullptr);
    EXPECT_EQ(choices.size(), 3u);
}

TEST(Alerts, sayWhatTheySayUntilTheyAreAnswered) {
    QtAlerts alerts;
    alerts.runModal({"You're up to date!", "<b>", "OK"});
    ASSERT_NE(window(), nullptr);
    EXPECT_TRUE(window()->isModal());
    QTest::keyClick(window()->focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(window(), nullptr);
}

}  // namespace
}  // namespace stowpocket
