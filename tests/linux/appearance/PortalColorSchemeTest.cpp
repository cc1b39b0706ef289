// SPDX-License-Identifier: MIT
#include "platform/linux/appearance/ColorScheme.h"
#include "support/FakePortal.h"
#include "support/PrivateBus.h"

#include <gtest/gtest.h>

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
             {77U, ColorScheme::noPreference},
             {QStringLiteral("dark"), ColorScheme::noPreference},
             {QVariantMap{{QStringLiteral("a"), 1U}}, ColorScheme::noPreference}}) {
        portal.setColorScheme(value);
        EXPECT_EQ(next(), expected) << value.toString().toStdString();
    }
}

}  // namespace
}  // namespace stowpocket
