// SPDX-License-Identifier: MIT
#include "platform/linux/appearance/DesktopSettings.h"
#include "support/FakePortal.h"
#include "support/PrivateBus.h"

#include <gtest/gtest.h>

#include <string>

namespace stowpocket {
namespace {

TEST(PortalColorSchemeTest, followsThePortalAndTakesNothingElseForAPreference) {
    PrivateBus bus;
    std::vector<ColorScheme> answers;
    const auto heard = [&](ColorScheme scheme) { answers.push_back(scheme); };
    const auto next = [&] {
        const std::size_t before = answers.size();
        bus.waitUntil([&] { return answers.size() > before; });
        return answers.back();
    };
    {
        const PortalColorScheme withoutPortal(bus.connection(QStringLiteral("alone")), heard);
        EXPECT_TRUE(answers.empty()) << "never during the call";
        EXPECT_EQ(next(), ColorScheme::noPreference);
    }
    FakePortal portal(bus.connection(QStringLiteral("portal")));
    portal.colorScheme = QVariant::fromValue(QDBusVariant(1U));
    const PortalColorScheme scheme(bus.connection(QStringLiteral("program")), heard);
    EXPECT_EQ(next(), ColorScheme::dark) << "wrapped twice, as portals do";
    for (const auto& [value, expected] : std::vector<std::pair<QVariant, ColorScheme>>{
             {2U, ColorScheme::light},
             {1U, ColorScheme::dark},
             {0U, ColorScheme::noPreference},
             {QStringLiteral("dark"), ColorScheme::noPreference},
             {QVariantMap{{QStringLiteral("a"), 1U}}, ColorScheme::noPreference}}) {
        portal.setColorScheme(value);
        EXPECT_EQ(next(), expected) << value.toString().toStdString();
    }
}

using namespace std::string_literals;

/// A colour, a text and two numbers, as a program of little-endian byte order writes them.
const std::string littleEndian = "\0\0\0\0\7\0\0\0\4\0\0\0"
                                 "\2\0\1\0C\0\0\0\1\0\0\0\1\2\3\4\5\6\7\x8"
                                 "\1\0\3\0Txt\0\1\0\0\0\5\0\0\0hello\0\0\0"
                                 "\0\0\4\0Anim\1\0\0\0\0\0\0\0"
                                 "\0\0\5\0Minus\0\0\0\1\0\0\0\xfe\xff\xff\xff"s;

TEST(XSettingsTest, findsNumbersAmongOtherSettings) {
    EXPECT_EQ(integerXSetting(littleEndian, "Anim"), 0);
    EXPECT_EQ(integerXSetting(littleEndian, "Minus"), -2);
    EXPECT_EQ(integerXSetting(littleEndian, "Txt"), std::nullopt);
    EXPECT_EQ(textXSetting(littleEndian, "Txt"), "hello");
}

TEST(XSettingsTest, darkThemesAreKnownByTheirNames) {
    for (const char* const name : {"Adwaita-dark", "Arc-Dark", "Orchis-Dark-Compact"})
        EXPECT_TRUE(isDarkThemeName(name)) << name;
    for (const char* const name : {"", "Adwaita", "-darkness", "Dark", "Arc-Darker", "-dar"})
        EXPECT_FALSE(isDarkThemeName(name)) << name;
}

}  // namespace
}  // namespace stowpocket
