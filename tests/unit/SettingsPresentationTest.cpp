// SPDX-License-Identifier: MIT
#include "presentation/SettingsPresentation.h"

#include "app/Preferences.h"
#include "platform/HotkeyService.h"
#include "platform/LayeredPreferenceStore.h"
#include "platform/MainBundle.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

TEST(SettingsPresentationTest, capacityIsOneOfTheChoicesOrNone) {
    struct Case {
        std::int64_t stored;
        std::optional<std::size_t> choice;
        std::string row;
    };
    LayeredPreferenceStore preferences;
    EXPECT_EQ(itemsOnShelfText(7, preferences), "7 / 20") << "nothing stored or registered";
    for (const Case& each : {Case{20, 0, "7 / 20"},
                             {50, 1, "7 / 50"},
                             {100, 2, "7 / 100"},
                             {-5, {}, "7 / 20"},
                             {0, {}, "7 / 20"},
                             {7, {}, "7 / 7"},
                             {1'000'000'000'000, {}, "7 / 1000000000000"}}) {
        preferences.setValue(shelfCapacityKey, each.stored);
        EXPECT_EQ(chosenCapacity(preferences), each.choice) << each.stored;
        EXPECT_EQ(itemsOnShelfText(7, preferences), each.row);
    }
    preferences.setValue(shelfCapacityKey, "50");
    EXPECT_EQ(chosenCapacity(preferences), std::nullopt) << "a text is no number";
}

TEST(SettingsPresentationTest, onlyShortcutsThatAreNotGrabbedNeedWords) {
    EXPECT_EQ(hotkeySourceText(HotkeySource::windowSystem), "");
    EXPECT_NE(hotkeySourceText(HotkeySource::portal).find("desktop manages"), std::string_view::npos);
    EXPECT_NE(hotkeySourceText(HotkeySource::none).find("\"stowpocket toggle\""), std::string_view::npos);
}

TEST(SettingsPresentationTest, theVersionIsTheBundlesOrElseTheFirst) {
    MainBundle bundle{*FileURL::fromPath("/usr/bin/stowpocket"), std::nullopt};
    EXPECT_EQ(versionText(bundle), "Version 1.0");
    bundle.infoDictionary.emplace();
    EXPECT_EQ(versionText(bundle), "Version 1.0");
    bundle.infoDictionary->insert_or_assign(std::string(infoKey::bundleShortVersionString), 2);
    EXPECT_EQ(versionText(bundle), "Version 1.0") << "no text";
    bundle.infoDictionary->insert_or_assign(std::string(infoKey::bundleShortVersionString), "2.3");
    EXPECT_EQ(versionText(bundle), "Version 2.3");
}

}  // namespace
}  // namespace stowpocket
