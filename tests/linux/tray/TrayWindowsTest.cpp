// SPDX-License-Identifier: MIT
#include "linux/drags/FakeDrops.h"
#include "platform/linux/tray/Pocket.h"
#include "platform/linux/tray/StatusItemWindow.h"
#include "platform/linux/x11/XcbSession.h"
#include "platform/qt/QtDispatch.h"
#include "support/ComesTrue.h"

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

/// A tray of another program that gives its icon one size, however that is asked for.
class FixedTray {
public:
    FixedTray() : window(xcb_generate_id(session_->raw())) {
        const std::uint32_t isUnmanaged = 1;
        xcb_create_window(session_->raw(), XCB_COPY_FROM_PARENT, window, session_->root(), 0, 0, 24, 24, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                          &isUnmanaged);
        xcb_map_window(session_->raw(), window);
        static_cast<void>(session_->serverTime());
    }
    void takeIn(xcb_window_t icon) {
        const std::array<std::uint32_t, 2> size{24, 24};
        xcb_reparent_window(session_->raw(), icon, window, 0, 0);
        xcb_configure_window(session_->raw(), icon, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size.data());
        xcb_map_window(session_->raw(), icon);
        static_cast<void>(session_->serverTime());
    }

private:
    const std::unique_ptr<XcbSession> session_ = XcbSession::open();

public:
    const xcb_window_t window;
};

TEST(TrayWindowTest, isAsLargeAsTheTrayMakesItWhateverItWishes) {
    const auto connection = X11Connection::ofApplication();
    FixedTray tray;
    StatusItemContent content;
    content.image.pointSize = 16;
    content.title.fontSize = 9;
    FakeDrops drops;
    TrayWindow icon(*connection, tray.window, content, paintNothing, drops);
    const auto wishedWidth = [&] {
        const XcbAnswer<xcb_get_property_reply_t> hints(xcb_get_property_reply(
            connection->raw(),
            xcb_get_property(connection->raw(), 0, icon.id(), XCB_ATOM_WM_NORMAL_HINTS, XCB_ATOM_WM_SIZE_HINTS, 5, 1),
            nullptr));
        return hints && xcb_get_property_value_length(hints.get()) == 4
                   ? *static_cast<const std::int32_t*>(xcb_get_property_value(hints.get()))
                   : 0;
    };
    icon.requestDock();
    tray.takeIn(icon.id());
    icon.show();
    const QSize granted(24, 24);
    ASSERT_TRUE(comesTrue([&] { return icon.size() == granted; }));

    content.title.text = " 100";
    icon.showContent();
    EXPECT_GT(wishedWidth(), granted.width()) << "trays that can give more are still told";
    EXPECT_EQ(icon.size(), granted);
    EXPECT_EQ(connection->geometryOnRoot(icon.id())->size(), granted);

    connection->setProperty(tray.window, connection->atom(X11Atom::trayOrientation), XCB_ATOM_CARDINAL, {1});
    icon.followBar();
    EXPECT_EQ(wishedWidth(), 22) << "a square in a vertical bar";
}

}  // namespace
}  // namespace stowpocket
