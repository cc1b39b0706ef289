// SPDX-License-Identifier: MIT
#include "SettingsViewFixture.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QTest>

namespace stowpocket {
namespace {

class SettingsViewTest : public testing::Test, protected SettingsViewFixture {
protected:
    [[nodiscard]] bool shows(const char* text) const {
        return shownTexts(*settings).contains(QString::fromUtf8(text));
    }
    void click(QWidget* widget) {
        ASSERT_NE(widget, nullptr);
        QTest::mouseClick(widget, Qt::LeftButton);
        QApplication::processEvents();
    }
    void openTab(const char* name) { click(named<ChoiceButton>(*settings, QLatin1String(name))); }
    [[nodiscard]] std::vector<ShortcutButton*> shortcuts() const { return visible<ShortcutButton>(*settings); }
    [[nodiscard]] static QAccessible::State stateOf(QWidget* widget) {
        return QAccessible::queryAccessibleInterface(widget)->state();
    }
    [[nodiscard]] static QAccessible::Role roleOf(QWidget* widget) {
        return QAccessible::queryAccessibleInterface(widget)->role();
    }
};

TEST_F(SettingsViewTest, theShelfSectionFollowsTheShelf) {
    openSettings(nullptr);
    EXPECT_TRUE(shows("General") && shows("Keyboard Shortcuts"));
    EXPECT_FALSE(shows("Shelf") || shows("Items on shelf") || shows("Clear Shelf"));

    openSettings(viewModel);
    EXPECT_TRUE(shows("0 / 20"));
    EXPECT_EQ(button(*settings, "Clear Shelf"), nullptr);
    addFiles(7);
    EXPECT_TRUE(shows("7 / 20"));
    const auto choice = [this](const char* text) { return named<ChoiceButton>(*settings, QLatin1String(text)); };
    click(choice("50"));
    EXPECT_EQ(manager->capacity(), 50);
    EXPECT_TRUE(shows("7 / 50"));
    preferences.setValue(shelfCapacityKey, 7);
    EXPECT_FALSE(stateOf(choice("50")).checked) << "as somebody else stored it";
    choice("50")->setFocus();
    QTest::keyClick(choice("50"), Qt::Key_Space);
    QTest::keyClick(choice("50"), Qt::Key_Right);
    EXPECT_EQ(preferences.integer(shelfCapacityKey), 100);

    viewModel->setCapacityMessage("Added 2 of 5 files - shelf is full");
    for (const char* const answer : {"Cancel", "Clear All"}) {
        EXPECT_EQ(manager->items().size(), 7U);
        click(button(*settings, "Clear Shelf"));
        EXPECT_TRUE(shows("Remove all items from the shelf?"));
        click(button(*settings, answer));
    }
    EXPECT_TRUE(manager->items().empty());
    EXPECT_FALSE(viewModel->capacityMessage());
    EXPECT_EQ(button(*settings, "Clear Shelf"), nullptr);
}

TEST_F(SettingsViewTest, launchAtLoginSnapsBackWhenItCannot) {
    preferences.setValue(preferenceKey::launchAtLogin, false);
    openSettings(viewModel);
    Toggle* const toggle = named<Toggle>(*settings, QStringLiteral("Launch at login"));
    loginItem.fails = true;
    click(toggle);
    EXPECT_FALSE(toggle->isChecked());
    EXPECT_FALSE(preferences.boolean(preferenceKey::launchAtLogin));
    preferences.setValue(preferenceKey::launchAtLogin, true);
    EXPECT_TRUE(stateOf(toggle).checked) << "changed elsewhere";
}

TEST_F(SettingsViewTest, shortcutsAreRecordedFromButtonAndKeyboard) {
    constexpr std::int64_t optionShift = 0xA0000;
    openSettings(viewModel);
    click(shortcuts()[1]);
    EXPECT_EQ(shortcuts()[1]->text(), QStringLiteral("Press shortcut…"));
    monitors.press(1, optionShift, "S");
    EXPECT_EQ(shortcuts()[1]->accessibleName(), QStringLiteral("Quick Drop, Alt+Shift+S"));
    EXPECT_EQ(shownTexts(*settings).count(QStringLiteral("Conflicts with the other shortcut")), 2);
    click(button(*settings, "Clear Quick Drop shortcut"));
    EXPECT_EQ(shortcuts()[1]->text(), QStringLiteral("None - click to set"));
    EXPECT_EQ(button(*settings, "Clear Quick Drop shortcut"), nullptr);
    EXPECT_FALSE(shows("Conflicts with the other shortcut"));

    shortcuts()[0]->setFocus();
    QTest::keyClick(shortcuts()[0], Qt::Key_Return);
    openSettings(viewModel);
    EXPECT_EQ(shortcuts()[0]->text(), QStringLiteral("Alt+Shift+S")) << "a new window records nothing";
    monitors.press(40, optionShift, "K");
    EXPECT_EQ(shortcuts()[0]->text(), QStringLiteral("Alt+Shift+K")) << "what was left recording still does";
    preferences.setValue(preferenceKey::shelfHotkeyKeyChar, std::string(300, 'x'));
    QApplication::processEvents();
    EXPECT_LE(shortcuts()[0]->mapTo(&host, QPoint()).x() + shortcuts()[0]->width(), 418) << "stays in its row";
}

TEST_F(SettingsViewTest, whereShortcutsComeFromIsToldWhenTheyAreNotGrabbed) {
    openSettings(viewModel);
    EXPECT_FALSE(shownTexts(*settings).contains(QString()));
    shortcutDesktop = ShortcutDesktop::sway;
    openSettings(viewModel);
    click(named<Button>(*settings, QStringLiteral("Copy bindsym Mod1+Shift+d exec stowpocket quick-drop")));
    EXPECT_EQ(clipboard.text, "bindsym Mod1+Shift+d exec stowpocket quick-drop");
    EXPECT_TRUE(shows("Copied"));
    hotkeySource = HotkeySource::portal;
    openTab("About");
    openTab("General");
    EXPECT_TRUE(shows("Your desktop manages these shortcuts."));
    EXPECT_FALSE(shows("Copied") || shows("Copy"));

    hotkeySource = HotkeySource::none;
    shortcutDesktop = ShortcutDesktop::gnome;
    desktopSettings->values["org.gnome.settings-daemon.plugins.media-keys custom-keybindings"] = "@as []";
    openSettings(viewModel);
    dispatch.runAll();
    auto* const toggle = named<Toggle>(*settings, QStringLiteral("Use GNOME's custom shortcuts"));
    EXPECT_FALSE(toggle->isChecked());
    click(toggle);
    dispatch.runAll();
    EXPECT_TRUE(shows("They are among the custom shortcuts in GNOME's keyboard settings."));
    desktopSettings->values.clear();
    settings->hide();
    settings->show();
    dispatch.runAll();
    EXPECT_FALSE(toggle->isVisible());
    EXPECT_TRUE(shows("stowpocket toggle"));
}

TEST_F(SettingsViewTest, aboutShowsTheVersionAndKeepsUpdatesInStep) {
    for (const char* const version : {"1.0", "2.3"}) {  // without a number it is the first
        openSettings(viewModel);
        openTab("About");
        EXPECT_TRUE(shows((std::string("Version ") + version).c_str()));
        bundle.infoDictionary = PropertyValue::Dictionary{{std::string(infoKey::bundleShortVersionString), "2.3"}};
    }
    Toggle* const downloads = named<Toggle>(*settings, QStringLiteral("Automatically download updates"));
    EXPECT_TRUE(downloads->isChecked());
    click(downloads);
    EXPECT_FALSE(preferences.boolean(automaticallyUpdateKey));
    updater->setAutomaticallyDownloadsUpdates(true);
    EXPECT_TRUE(downloads->isChecked());
    click(named<Button>(*settings, QStringLiteral("Check for Updates…")));
    EXPECT_EQ(alerts.shown.size(), 1U) << "without a feed";
    for (LinkButton* const link : visible<LinkButton>(*settings)) {
        opened.clear();
        QTest::keyClick(link, Qt::Key_Return);
        EXPECT_TRUE(QString::fromStdString(opened).endsWith(QLatin1String(".example/"))) << opened;
        EXPECT_EQ(roleOf(link), QAccessible::Link);
    }
}

TEST_F(SettingsViewTest, theKeyboardGoesThroughTabsAndControlsAsTheyLie) {
    addFiles(1);
    openSettings(viewModel);
    QStringList reached;
    for (int presses = 0; presses < 8; ++presses) {
        QTest::keyClick(host.window()->focusWidget(), Qt::Key_Tab);
        const auto* const focused = qobject_cast<QAbstractButton*>(QApplication::focusWidget());
        reached.append(focused->accessibleName().isEmpty() ? focused->text() : focused->accessibleName());
    }
    EXPECT_EQ(reached.join(QLatin1Char('|')),
              QStringLiteral("General|Launch at login|20|Clear Shelf|Open/Close Shelf, Alt+Shift+S|"
                             "Clear Open/Close Shelf shortcut|Quick Drop, Alt+Shift+D|Clear Quick Drop shortcut"));
    auto* const general = named<ChoiceButton>(*settings, QStringLiteral("General"));
    general->setFocus();
    QTest::keyClick(general, Qt::Key_Right);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    EXPECT_TRUE(shows("Explore the full family of panel utilities."));
    EXPECT_EQ(roleOf(general), QAccessible::PageTab);
    EXPECT_FALSE(stateOf(general).selected);
    EXPECT_TRUE(stateOf(named<ChoiceButton>(*settings, QStringLiteral("More Larkfield"))).selected);
    EXPECT_EQ(visible<LinkButton>(*settings).size(), 6U);
}

}  // namespace
}  // namespace stowpocket
