// SPDX-License-Identifier: MIT
#include "linux/drags/FakeDrops.h"
#include "platform/linux/tray/Pocket.h"
#include "platform/qt/QtDispatch.h"

#include <QGuiApplication>
#include <QWindow>

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

const SymbolPainter paintNothing = [](const StatusItemImage&, const QColor&, int) { return QImage(); };

TEST(PocketTest, standsInTheCornerOnceTheIconIsNowhereElse) {
    const QRect icon{400, 300, 31, 22};
    const auto connection = X11Connection::ofApplication();
    const StatusItemContent content;
    FakeDrops drops;
    QtDispatch dispatch;
    const WaylandSupport wayland{dispatch, {}, {}};
    Pocket pocket(*connection, content, paintNothing, drops, wayland, [] {});
    pocket.setResident(true);
    const std::optional<QRect> corner = pocket.rectOnScreen();
    const QWindowList windows = QGuiApplication::topLevelWindows();
    const auto shown = std::ranges::find_if(windows, &QWindow::isVisible);
    ASSERT_NE(shown, windows.end());
    EXPECT_EQ(connection->property(static_cast<xcb_window_t>((*shown)->winId()), X11Atom::windowManaged),
              (std::vector<std::uint32_t>{1, 0}))
        << "Java looks for it";
    for (const bool hasDragEnded : {true, false}) {
        pocket.setResident(false);
        pocket.dragBegan(DragOrigin::x11, icon);
        ASSERT_EQ(pocket.rectOnScreen(), icon);
        if (hasDragEnded)
            pocket.dragEnded(DragEnd::sourceGone);
        pocket.setResident(true);
        EXPECT_EQ(pocket.rectOnScreen(), corner) << hasDragEnded;
    }
}

TEST(PocketPresence, waitsForADropThatIsLateUnlessItsSourceHasGone) {
    PocketPresence presence;
    presence.dragBegan();
    presence.setHovered(true);
    presence.dragEnded(DragEnd::released);
    EXPECT_TRUE(presence.isShown());
    presence.dragEnded(DragEnd::sourceGone);
    EXPECT_FALSE(presence.isShown());
}

}  // namespace
}  // namespace stowpocket
