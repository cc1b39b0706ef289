// SPDX-License-Identifier: MIT
#include "app/Preferences.h"
#include "platform/LayeredPreferenceStore.h"
#include "presentation/ShortcutText.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

TEST(PreferencesTest, everySettingHasItsRegisteredAnswer) {
    LayeredPreferenceStore preferences;
    registerPreferenceDefaults(preferences);
    EXPECT_EQ(preferences.value("launchAtLogin"), PropertyValue(true));
    EXPECT_EQ(preferences.value("shelfCapacity"), PropertyValue(20));
    EXPECT_EQ(preferences.value("shelfHotkeyKeyCode"), PropertyValue(1));
    EXPECT_EQ(preferences.value("shelfHotkeyModifiers"), PropertyValue(0xA0000));
    EXPECT_EQ(preferences.value("shelfHotkeyKeyChar"), PropertyValue("S"));
    EXPECT_EQ(preferences.value("quickDropKeyCode"), PropertyValue(2));
    EXPECT_EQ(preferences.value("quickDropModifiers"), PropertyValue(0xA0000));
    EXPECT_EQ(preferences.value("quickDropKeyChar"), PropertyValue("D"));
    EXPECT_EQ(preferences.value("onboardingShown"), PropertyValue(false));
    EXPECT_FALSE(preferences.value("shelfBookmarks"));
}

TEST(PreferencesTest, aStoredCapacityBelowOneMeansTheDefault) {
    LayeredPreferenceStore preferences;
    EXPECT_EQ(shelfCapacity(preferences), 20);
    for (const std::int64_t stored : {std::int64_t{0}, std::int64_t{-5}}) {
        preferences.setValue(shelfCapacityKey, stored);
        EXPECT_EQ(shelfCapacity(preferences), 20);
    }
    preferences.setValue(shelfCapacityKey, std::int64_t{1'000'000'000'000});
    EXPECT_EQ(shelfCapacity(preferences), 1'000'000'000'000);
    preferences.setValue(shelfCapacityKey, "50");
    EXPECT_EQ(shelfCapacity(preferences), 20) << "of another type";
}

TEST(ShortcutTextTest, putsTheModifiersInTheCustomaryOrder) {
    EXPECT_EQ(shortcutDisplayText(0xA0000, "S"), "⌥⇧S");
    EXPECT_EQ(shortcutDisplayText(0x1E0000, "K"), "⌃⌥⇧⌘K");
    EXPECT_EQ(shortcutDisplayText(0x1E0000, ""), "");
    EXPECT_EQ(shortcutDisplayText(0x810000, "F1"), "F1") << "Caps Lock and the function flag have no glyph";
}

TEST(ShortcutTextDeathTest, negativeModifiersAreABrokenInvariant) {
    EXPECT_DEATH(static_cast<void>(shortcutDisplayText(-1, "")), "modifier flags");
}

}  // namespace
}  // namespace stowpocket
