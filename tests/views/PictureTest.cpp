// SPDX-License-Identifier: MIT
#include "OnboardingFixture.h"
#include "ReferencePicture.h"
#include "SettingsViewFixture.h"

#include <gtest/gtest.h>

#include <QTest>

namespace stowpocket {
namespace {

constexpr std::pair<Appearance, const char*> appearances[] = {{Appearance::light, "-light"},
                                                              {Appearance::dark, "-dark"}};

TEST(PictureTest, theShelfLooksAsItShould) {
    using Scene = std::function<void(ShelfViewFixture & shelf)>;
    const std::pair<std::string, Scene> scenes[] = {
        {"empty", [](ShelfViewFixture&) {}},
        {"three", [](ShelfViewFixture& shelf) { shelf.addThreeFiles(); }},
        {"missing",
         [](ShelfViewFixture& shelf) {
             shelf.addThreeFiles();
             shelf.loseFile(1);
         }},
        {"full",
         [](ShelfViewFixture& shelf) {
             shelf.room = 420;
             shelf.addThreeFiles();
             shelf.addFiles(15);
             shelf.viewModel->addFileURLs(shelf.makeFiles(5, 100));
         }},
    };
    for (const auto& [appearance, suffix] : appearances) {
        const FixedLook look(appearance);
        for (const auto& [name, scene] : scenes) {
            ShelfViewFixture shelf;
            scene(shelf);
            shelf.open();
            expectLooksLike(shelf.host, "shelf-" + name + suffix);
        }
    }
}

TEST(PictureTest, everyTabOfTheSettingsLooksAsItShould) {
    for (const auto& [appearance, suffix] : appearances) {
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
            expectLooksLike(window.host, std::string("settings-") + name + suffix);
        }
    }
}

/// Its colours are its own: a light desktop shows best where they are not.
TEST(PictureTest, theFirstRunLooksAsItShould) {
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
