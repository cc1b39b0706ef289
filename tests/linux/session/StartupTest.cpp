// SPDX-License-Identifier: MIT
#include "platform/linux/tray/X11PopoverHost.h"
#include "platform/linux/x11/XcbSession.h"
#include "support/ComesTrue.h"

#include <QWidget>

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

/// Hears what window managers and launchers do, on a connection of its own.
struct Desktop {
    Desktop() {
        session->hearAlso(session->root(), XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY);
        session->setEventHandler([this](const xcb_generic_event_t& event) { hear(event); });
        static_cast<void>(session->serverTime());
    }
    void hear(const xcb_generic_event_t& event) {
        const auto* const message = eventAs<xcb_client_message_event_t>(event);
        if (message != nullptr && message->type == session->atom(X11Atom::activeWindow))
            activation.assign(message->data.data32, message->data.data32 + 2);
        else if (message != nullptr && message->format == 8)
            text.append(reinterpret_cast<const char*>(message->data.data8), sizeof message->data.data8);
    }
    void listen() const { session->handleEvents(); }

    const std::unique_ptr<XcbSession> session = XcbSession::open();
    std::string text;
    std::vector<std::uint32_t> activation;
};

class StartupTest : public testing::Test {
protected:
    void show() {
        host.willShow(window);
        window.show();
        host.focus(window);
    }
    bool heardEnd() {
        return comesTrue([this] { desktop.listen(); }, [this] { return desktop.text.ends_with('\0'); });
    }
    [[nodiscard]] xcb_window_t id() const { return static_cast<xcb_window_t>(window.winId()); }

    const std::unique_ptr<X11Connection> connection = X11Connection::ofApplication();
    X11FileDrag fileDrag{*connection};
    X11PopoverHost host{*connection, fileDrag};
    QWidget window;
    Desktop desktop;
};

TEST_F(StartupTest, showsTheWindowAsWhatTheUserStartedAndTellsTheLauncher) {
    show();
    // Qt learns what time it is on the server from the events of the window.
    std::vector<std::uint32_t> now;
    ASSERT_TRUE(comesTrue([this] { host.focus(window); },
                          [&] { return !(now = connection->property(id(), X11Atom::userTime)).empty(); }));
    const std::uint32_t time = now.front() + 1'000'000;
    const std::string name = "launcher-7-host stowpocket-0_TIME" + std::to_string(time);
    window.hide();
    host.startup().begin(name);
    show();
    EXPECT_EQ(connection->text(id(), X11Atom::startupId), name);
    EXPECT_EQ(connection->property(id(), X11Atom::userTime), std::vector{time});
    ASSERT_TRUE(heardEnd());
    EXPECT_EQ(desktop.text.c_str(), "remove: ID=launcher-7-host\\ stowpocket-0_TIME" + std::to_string(time));
    EXPECT_EQ(desktop.activation, (std::vector<std::uint32_t>{2, time}));

    host.startup().begin("late_TIME1");
    host.focus(window);
    EXPECT_NE(connection->property(id(), X11Atom::userTime), std::vector{1U}) << "time does not go back";
    host.focus(window);
    ASSERT_TRUE(comesTrue([this] { desktop.listen(); }, [this] { return desktop.activation.back() == 0; }))
        << "each start counts once";
}

TEST_F(StartupTest, tellsTheLauncherThoughNoWindowIsShown) {
    const std::string name(20 - std::string("remove: ID=").size(), 'x');
    host.startup().begin(std::string(2000, 'x'));
    host.startup().begin({});
    host.startup().begin(name);
    ASSERT_TRUE(heardEnd());
    EXPECT_EQ(desktop.text, "remove: ID=" + name + std::string(20, '\0')) << "a message that fills its piece";
}

TEST_F(StartupTest, staysOutOfListsOfWindowsHoweverOftenItIsShown) {
    const auto isUnlisted = [this] {
        const std::vector<std::uint32_t> state = connection->property(id(), X11Atom::windowState);
        return std::ranges::count(state, connection->atom(X11Atom::windowStateSkipTaskbar)) == 1 &&
               std::ranges::count(state, connection->atom(X11Atom::windowStateSkipPager)) == 1;
    };
    for (int showing = 0; showing < 3; ++showing) {
        show();
        ASSERT_TRUE(comesTrue([this] { return connection->parentOf(id()) != connection->root(); }));
        EXPECT_TRUE(isUnlisted()) << showing;
        window.hide();
        ASSERT_TRUE(comesTrue([&] { return connection->parentOf(id()) == connection->root() && !isUnlisted(); }))
            << "the window manager has let go of it";
    }
}

TEST(StartupIdTest, readsTheTimeAtTheEnd) {
    for (const auto& [id, time] :
         {std::pair("a_TIME12", 12u), {"_TIME4294967295", 4294967295u}, {"a_TIME1_TIME2", 2u}})
        EXPECT_EQ(startupTime(id), time) << id;
    for (const char* const id : {"a_TIME0", "a_TIME", "a_TIME-1", "a_TIME12 ", "a_TIME4294967296", "TIME12", ""})
        EXPECT_EQ(startupTime(id), std::nullopt) << id;
}

}  // namespace
}  // namespace stowpocket
