// SPDX-License-Identifier: MIT
#include "app/DesktopShortcuts.h"

#include "app/AppDelegate.h"
#include "fakes/FakeCore.h"
#include "fakes/FakeDesktop.h"
#include "fakes/FakeDragging.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

const std::string schema = "org.gnome.settings-daemon.plugins.media-keys";
const std::string folder = "/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/";
const std::string toggleEntry = schema + ".custom-keybinding:" + folder + "stowpocket-toggle/ ";
const std::string dropEntry = schema + ".custom-keybinding:" + folder + "stowpocket-quick-drop/ ";
const std::string toggles = '\'' + folder + "stowpocket-toggle/'";
const std::string drops = '\'' + folder + "stowpocket-quick-drop/'";
/// Somebody else's entries, one with a quote in its name.
const std::string theirs = R"("/it's/", '/a\'\\b/')";

struct DesktopShortcutsTest : testing::Test, FakeCore {
    DesktopShortcutsTest() { registerPreferenceDefaults(preferences); }

    void open(ShortcutDesktop desktop) {
        shortcuts = DesktopShortcuts::make({core, clipboard, settings, [this] { return source; },
                                            [](std::uint32_t key) {
                                                return std::string(key == 1 ? "s" : key == 2 ? "d" : "");
                                            },
                                            desktop, "stowpocket"});
        shortcuts->look();
        dispatch.runAll();
    }
    void setAdded(bool wanted) {
        shortcuts->setAdded(wanted);
        dispatch.runAll();
    }
    void record(std::string_view key, std::int64_t keyCode) {
        preferences.setValue(key, keyCode);
        notifications.post(shortcutChangedNotification);
        dispatch.runAll();
    }
    [[nodiscard]] std::optional<bool> isAdded() const { return shortcuts->shown().isAdded; }
    [[nodiscard]] const std::string& list() const { return settings->values.at(schema + " custom-keybindings"); }
    void setList(const std::string& list) { settings->values[schema + " custom-keybindings"] = list; }

    HotkeySource source = HotkeySource::none;
    FakeClipboard clipboard;
    std::shared_ptr<FakeDesktopSettings> settings = std::make_shared<FakeDesktopSettings>();
    std::shared_ptr<DesktopShortcuts> shortcuts;
};

TEST_F(DesktopShortcutsTest, entriesJoinTheUsersOwnAndGoAgain) {
    setList('[' + theirs + ']');
    open(ShortcutDesktop::gnome);
    EXPECT_EQ(settings->values.size(), 1U) << "nothing is written before the user asks";
    setAdded(true);
    setAdded(true);
    EXPECT_EQ(list(), '[' + theirs + ", " + toggles + ", " + drops + ']');
    EXPECT_EQ(settings->values[toggleEntry + "command"], "'stowpocket toggle'");
    EXPECT_EQ(settings->values[toggleEntry + "binding"], "'<Alt><Shift>s'");
    EXPECT_EQ(settings->values[toggleEntry + "name"], "'stowpocket: Open/Close Shelf'");

    preferences.setValue(preferenceKey::shelfHotkeyModifiers, modifierFlag::command | modifierFlag::control);
    record(preferenceKey::shelfHotkeyKeyCode, 2);
    EXPECT_EQ(settings->values[toggleEntry + "binding"], "'<Super><Control>d'");
    record(preferenceKey::shelfHotkeyKeyCode, -1);
    EXPECT_EQ(list(), '[' + theirs + ", " + drops + ']');
    EXPECT_FALSE(settings->values.contains(toggleEntry + "binding"));
    source = HotkeySource::portal;
    EXPECT_EQ(isAdded(), true) << "they can be taken away, whatever gives shortcuts now";
    setAdded(false);
    EXPECT_EQ(list(), '[' + theirs + ']');
    source = HotkeySource::none;
    record(preferenceKey::shelfHotkeyKeyCode, 1);
    EXPECT_EQ(list(), '[' + theirs + ']') << "what is not there does not follow";
    record(preferenceKey::shelfHotkeyKeyCode, -1);
    record(preferenceKey::quickDropKeyCode, -1);
    EXPECT_EQ(isAdded(), std::nullopt) << "without a key there is nothing to add";
}

TEST_F(DesktopShortcutsTest, aListThatCannotBeReadIsNotWritten) {
    for (const std::string list :
         {"", "[", "['a'", "['a',]", "['a' 'b']", "[1]", "[('a', 'b')]", "['a\n']", "['a\\']", "['a'] x", "'a'"}) {
        setList(list);
        open(ShortcutDesktop::gnome);
        EXPECT_EQ(shortcuts->shown().lines, (Names{"stowpocket toggle", "stowpocket quick-drop"}));
        setAdded(true);
        EXPECT_EQ(settings->values.size(), 1U) << list;
    }
    EXPECT_FALSE(gvariantStringsIn('[' + std::string(100'000, ' ') + ']'));
}

TEST_F(DesktopShortcutsTest, aChangeThatDoesNotArriveIsTold) {
    setList("@as []");
    open(ShortcutDesktop::gnome);
    settings->isReadOnly = true;
    shortcuts->setAdded(true);
    EXPECT_EQ(isAdded(), true) << "until it turns out otherwise";
    shortcuts->setAdded(false);
    shortcuts->setAdded(true);
    shortcuts->look();  // waits for none of them
    dispatch.runAll();
    EXPECT_EQ(isAdded(), false);
    EXPECT_EQ(shortcuts->shown().explanation, "GNOME's settings did not take the change.");
}

TEST_F(DesktopShortcutsTest, otherDesktopsGetTheLinesToBind) {
    EXPECT_EQ(shortcutDesktopOf("ubuntu:GNOME"), ShortcutDesktop::gnome);
    EXPECT_EQ(shortcutDesktopOf(":sway"), ShortcutDesktop::sway);
    EXPECT_EQ(shortcutDesktopOf("GNOME-Flashback"), ShortcutDesktop::another);
    open(ShortcutDesktop::sway);
    EXPECT_EQ(shortcuts->shown().lines, (Names{"bindsym Mod1+Shift+s exec stowpocket toggle",
                                               "bindsym Mod1+Shift+d exec stowpocket quick-drop"}));
    record(preferenceKey::shelfHotkeyKeyCode, -1);
    shortcuts->copyLine(0);
    EXPECT_EQ(clipboard.text, "bindsym Mod1+Shift+d exec stowpocket quick-drop");
    shortcuts->copyLine(1);  // is gone by now
    open(ShortcutDesktop::plasma);
    source = HotkeySource::portal;
    EXPECT_EQ(shortcuts->shown().explanation, "Your desktop manages these shortcuts.");
}

}  // namespace
}  // namespace stowpocket
