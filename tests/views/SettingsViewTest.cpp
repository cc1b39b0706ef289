// SPDX-License-Identifier: MIT
#include "WindowFixtures.h"

#include <QAccessible>

namespace stowpocket {
namespace {

struct SettingsViewTest : testing::Test, SettingsViewFixture {
    [[nodiscard]] Toggle* toggle(const char* name) { return named<Toggle>(host, name); }
    [[nodiscard]] ChoiceButton* choice(const char* name) { return named<ChoiceButton>(host, name); }
    [[nodiscard]] static QAccessibleInterface& accessible(QWidget* widget) {
        return *QAccessible::queryAccessibleInterface(widget);
    }
};

TEST_F(SettingsViewTest, theShelfSectionFollowsTheShelf) {
    openSettings(nullptr);
    EXPECT_FALSE(shows("Shelf") || shows("Items on shelf") || shows("Clear Shelf"));

    openSettings(viewModel);
    addFiles(7);
    EXPECT_TRUE(shows("7 / 20"));
    click(choice("50"));
    EXPECT_TRUE(shows("7 / 50"));
    preferences.setValue(shelfCapacityKey, 7);
    EXPECT_FALSE(accessible(choice("50")).state().checked) << "as somebody else stored it";
    choice("50")->setFocus();
    press(Qt::Key_Space);
    press(Qt::Key_Right);
    EXPECT_EQ(preferences.integer(shelfCapacityKey), 100);

    viewModel->setCapacityMessage("Added 2 of 5 files - shelf is full");
    for (const char* const answer : {"Cancel", "Clear All"}) {
        EXPECT_EQ(manager->items().size(), 7U);
        click(named(host, "Clear Shelf"));
        click(named(host, answer));
    }
    EXPECT_FALSE(viewModel->capacityMessage() || shows("Clear Shelf"));
}

TEST_F(SettingsViewTest, launchAtLoginSnapsBackWhenItCannot) {
    preferences.setValue(preferenceKey::launchAtLogin, false);
    openSettings(viewModel);
    loginItem.fails = true;
    click(toggle("Launch at login"));
    EXPECT_FALSE(toggle("Launch at login")->isChecked() || preferences.boolean(preferenceKey::launchAtLogin));
    preferences.setValue(preferenceKey::launchAtLogin, true);
    EXPECT_TRUE(accessible(toggle("Launch at login")).state().checked) << "changed elsewhere";
}

TEST_F(SettingsViewTest, shortcutsAreRecordedFromButtonAndKeyboard) {
    constexpr std::int64_t optionShift = 0xA0000;
    openSettings(viewModel);
    click(&shortcut(1));
    monitors.press(1, optionShift, "S");
    EXPECT_EQ(shortcut(1).accessibleName(), QStringLiteral("Quick Drop, Alt+Shift+S"));
    EXPECT_EQ(shownTexts(host).count(QStringLiteral("Conflicts with the other shortcut")), 2);
    click(named(host, "Clear Quick Drop shortcut"));
    EXPECT_EQ(shortcut(1).text(), QStringLiteral("None - click to set"));

    shortcut(0).setFocus();
    press(Qt::Key_Return);
    openSettings(viewModel);
    monitors.press(40, optionShift, "K");
    EXPECT_EQ(shortcut(0).text(), QStringLiteral("Alt+Shift+K")) << "what was left recording still does";
    preferences.setValue(preferenceKey::shelfHotkeyKeyChar, std::string(300, 'x'));
    QApplication::processEvents();
    EXPECT_LE(shortcut(0).mapTo(&host, shortcut(0).rect().topRight()).x(), 417) << "stays in its row";
}

TEST_F(SettingsViewTest, whereShortcutsComeFromIsToldWhenTheyAreNotGrabbed) {
    openSettings(viewModel);
    shortcutDesktop = ShortcutDesktop::sway;
    openSettings(viewModel);
    click(named(host, "Copy bindsym Mod1+Shift+d exec stowpocket quick-drop"));
    EXPECT_EQ(clipboard.text, "bindsym Mod1+Shift+d exec stowpocket quick-drop");
    EXPECT_TRUE(shows("Copied"));
    hotkeySource = HotkeySource::portal;
    openTab("About");
    openTab("General");
    EXPECT_FALSE(shows("Copied") || shows("Copy"));

    hotkeySource = HotkeySource::none;
    shortcutDesktop = ShortcutDesktop::gnome;
    desktopSettings->values["org.gnome.settings-daemon.plugins.media-keys custom-keybindings"] = "@as []";
    openSettings(viewModel);
    dispatch.runAll();
    click(toggle("Use GNOME's custom shortcuts"));
    dispatch.runAll();
    EXPECT_TRUE(shows("They are among the custom shortcuts in GNOME's keyboard settings."));
    desktopSettings->values.clear();
    settings->hide();
    settings->show();
    dispatch.runAll();
    EXPECT_TRUE(shows("stowpocket toggle"));
}

TEST_F(SettingsViewTest, aboutShowsTheVersionAndKeepsUpdatesInStep) {
    for (const char* const version : {"Version 1.0", "Version 2.3"}) {  // without a number it is the first
        openSettings(viewModel);
        openTab("About");
        EXPECT_TRUE(shows(version));
        bundle.infoDictionary = PropertyValue::Dictionary{{std::string(infoKey::bundleShortVersionString), "2.3"}};
    }
    Toggle* const downloads = toggle("Automatically download updates");
    click(downloads);
    EXPECT_FALSE(preferences.boolean(automaticallyUpdateKey));
    updater->setAutomaticallyDownloadsUpdates(true);
    EXPECT_TRUE(downloads->isChecked());
    click(named(host, "Check for Updates…"));
    EXPECT_EQ(alerts.shown.size(), 1U) << "without a feed";
    for (LinkButton* const link : visible<LinkButton>(host)) {
        opened.clear();
        QTest::keyClick(link, Qt::Key_Return);
        EXPECT_TRUE(QString::fromStdString(opened).endsWith(QLatin1String(".example/"))) << opened;
        EXPECT_EQ(accessible(link).role(), QAccessible::Link);
    }
}

TEST_F(SettingsViewTest, theKeyboardGoesThroughTabsAndControlsAsTheyLie) {
    addFiles(1);
    openSettings(viewModel);
    QStringList reached;
    for (int presses = 0; presses < 8; ++presses) {
        press(Qt::Key_Tab);
        const auto* const focused = qobject_cast<QAbstractButton*>(QApplication::focusWidget());
        reached.append(focused->accessibleName().isEmpty() ? focused->text() : focused->accessibleName());
    }
    EXPECT_EQ(reached.join(QLatin1Char('|')),
              QStringLiteral("General|Launch at login|20|Clear Shelf|Open/Close Shelf, Alt+Shift+S|"
                             "Clear Open/Close Shelf shortcut|Quick Drop, Alt+Shift+D|Clear Quick Drop shortcut"));
    choice("General")->setFocus();
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    EXPECT_FALSE(accessible(choice("General")).state().selected);
    EXPECT_TRUE(accessible(choice("More Larkfield")).state().selected);
}

}  // namespace
}  // namespace stowpocket
