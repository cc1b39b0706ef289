// SPDX-License-Identifier: MIT
#include "ComesTrue.h"
#include "platform/linux/x11/DesktopColorScheme.h"

#include <gtest/gtest.h>

#include <string>

namespace stowpocket {
namespace {

/// A desktop that shares the name of its theme, until it ends.
class FakeSettingsManager {
public:
    FakeSettingsManager() {
        window_ = xcb_generate_id(connection_);
        const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, root, -10, -10, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        xcb_set_selection_owner(connection_, window_, atom("_XSETTINGS_S0"), XCB_CURRENT_TIME);
        xcb_client_message_event_t event{};
        event.response_type = XCB_CLIENT_MESSAGE;
        event.format = 32;
        event.window = root;
        event.type = atom("MANAGER");
        event.data.data32[1] = atom("_XSETTINGS_S0");
        xcb_send_event(connection_, 0, root, XCB_EVENT_MASK_STRUCTURE_NOTIFY, reinterpret_cast<const char*>(&event));
        xcb_flush(connection_);
    }
    FakeSettingsManager(const FakeSettingsManager&) = delete;
    FakeSettingsManager& operator=(const FakeSettingsManager&) = delete;
    ~FakeSettingsManager() { xcb_disconnect(connection_); }

    /// The name fills whole words of four bytes.
    void setTheme(const std::string& name) {
        using namespace std::string_literals;
        const std::string bytes = "\0\0\0\0\1\0\0\0\1\0\0\0\1\0\xd\0Net/ThemeName\0\0\0\1\0\0\0"s +
                                  static_cast<char>(name.size()) + "\0\0\0"s + name;
        xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, window_, atom("_XSETTINGS_SETTINGS"),
                            atom("_XSETTINGS_SETTINGS"), 8, static_cast<std::uint32_t>(bytes.size()), bytes.data());
        xcb_flush(connection_);
    }

private:
    xcb_atom_t atom(const std::string& name) {
        const auto cookie = xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data());
        return XcbAnswer<xcb_intern_atom_reply_t>(xcb_intern_atom_reply(connection_, cookie, nullptr))->atom;
    }

    xcb_connection_t* const connection_ = xcb_connect(nullptr, nullptr);
    xcb_window_t window_ = x11None;
};

TEST(ThemeWatchTest, followsTheThemeOfADesktopThatComesAndGoes) {
    const auto connection = X11Connection::ofApplication();
    bool isDark = false;
    int changes = 0;
    const DesktopColorScheme scheme(QDBusConnection::sessionBus(), *connection, [&](bool dark) {
        isDark = dark;
        ++changes;
    });
    {
        FakeSettingsManager desktop;
        desktop.setTheme("Arc-Dark");
        EXPECT_TRUE(comesTrue([] {}, [&] { return isDark; }));
        desktop.setTheme("Arc.");
        EXPECT_TRUE(comesTrue([] {}, [&] { return !isDark; }));
        desktop.setTheme("Arc-Dark");
        EXPECT_TRUE(comesTrue([] {}, [&] { return isDark; }));
    }
    EXPECT_TRUE(comesTrue([] {}, [&] { return !isDark; })) << "it went with its desktop";
    EXPECT_EQ(changes, 4) << "told only what changed";
}

}  // namespace
}  // namespace stowpocket
