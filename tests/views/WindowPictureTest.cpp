// SPDX-License-Identifier: MIT
#include "OnboardingFixture.h"
#include "ReferencePicture.h"
#include "SettingsViewFixture.h"

#include <gtest/gtest.h>

#include <QTest>

namespace stowpocket {
namespace {

TEST(WindowPictureTest, everyTabOfTheSettingsLooksAsItShould) {
    for (const auto& [appearance, suffix] : {std::pair(Appearance::light, "-light"), {Appearance::dark, "-dark"}}) {
        const FixedLook look(appearance);
        SettingsViewFixture window;
        window.bundle.infoDictionary =
            PropertyValue::Dictionary{{std::string(infoKey::bundleShortVersionString), "2.3"}};
        window.addThreeFiles();
        window.openSettings(window.viewModel);
        for (const auto& [tab, name] :
             {std::pair("General", "general"), {"About", "about"}, {"More Larkfield", "more"}}) {
            QTest::mouseClick(named<PaintedButton>(*window.settings, QLatin1String(tab)), Qt::LeftButton);
            window.settings->setFocus();
            expectLooksLike(window.host, (std::string("settings-") + name + suffix).c_str());
        }
    }
}

/// Its colours are its own: a light desktop shows best where they are not.
TEST(WindowPictureTest, theFirstRunLooksAsItShould) {
    const FixedLook look(Appearance::light);
    OnboardingFixture moving;
    moving.clock->advance(Seconds(1.2));
    expectLooksLike(moving.view, "onboarding-welcome");

    OnboardingFixture still(OnboardingView::MotionWish::reduced);
    still.button("Get Started")->click();
    expectLooksLike(still.view, "onboarding-closing");
}

}  // namespace
}  // namespace stowpocket
