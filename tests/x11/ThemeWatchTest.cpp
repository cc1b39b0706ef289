// SPDX-License-Identifier: MIT
#include "ComesTrue.h"
#include "platform/linux/input/XcbSession.h"
#include "platform/linux/x11/DesktopColorScheme.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using namespace std::string_literals;

/// A desktop that shares the name of its theme, until it ends.
class FakeSettingsManager {
public:
    FakeSettingsManager() {
        const xcb_atom_t selection = session_->atom("_XSETTINGS_S0");
        xcb_set_selection_owner(session_->raw(), session_->window(), selection, XCB_CURRENT_TIME);
        xcb_client_message_event_t event{XCB_CLIENT_MESSAGE, 32, 0, session_->root(), session_->atom("MANAGER"), {}};
        event.data.data32[1] = selection;
        xcb_send_event(session_->raw(), 0, session_->root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&event));
    }
    /// The name fills whole words of four bytes.
    void setTheme(const std::string& name) {
        const std::string bytes = "\0\0\0\0\1\0\0\0\1\0\0\0\1\0\xd\0Net/ThemeName\0\0\0\1\0\0\0"s +
                                  static_cast<char>(name.size()) + "\0\0\0"s + name;
        const xcb_atom_t property = session_->atom("_XSETTINGS_SETTINGS");
        xcb_change_property(session_->raw(), XCB_PROP_MODE_REPLACE, session_->window(), property, property, 8,
                            static_cast<std::uint32_t>(bytes.size()), bytes.data());
        xcb_flush(session_->raw());
    }

private:
    const std::unique_ptr<XcbSession> session_ = XcbSession::open();
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
        for (const auto& [theme, expected] : {std::pair("Arc-Dark", true), {"Arc.", false}, {"Arc-Dark", true}}) {
            desktop.setTheme(theme);
            EXPECT_TRUE(comesTrue([&] { return isDark == expected; }));
        }
    }
    EXPECT_TRUE(comesTrue([&] { return !isDark; })) << "it went with its desktop";
    EXPECT_EQ(changes, 4) << "told only what changed";
}

}  // namespace
}  // namespace stowpocket
