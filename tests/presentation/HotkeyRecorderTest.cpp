// SPDX-License-Identifier: MIT
#include "presentation/HotkeyRecorder.h"

#include "app/AppDelegate.h"
#include "app/Settings.h"
#include "fakes/FakeCore.h"
#include "fakes/FakeInput.h"
#include "presentation/Texts.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using State = HotkeyRecorderPresentation::State;

// By their names in the user's file, which older versions wrote.
constexpr ShortcutKeys shelfShortcut{"shelfHotkeyKeyCode", "shelfHotkeyModifiers", "shelfHotkeyKeyChar"};
constexpr ShortcutKeys quickDropShortcut{"quickDropKeyCode", "quickDropModifiers", "quickDropKeyChar"};
constexpr std::int64_t optionShift = modifierFlag::option | modifierFlag::shift;
constexpr std::uint16_t escape = 53;

struct HotkeyRecorderTest : testing::Test, FakeCore {
    HotkeyRecorderTest() {
        registerPreferenceDefaults(preferences);
        recorder->clear();
        posts = 0;
    }
    void expectStored(std::int64_t keyCode, std::int64_t modifiers, const std::string& keyChar) {
        EXPECT_EQ(preferences.integer(shelfShortcut.keyCode), keyCode);
        EXPECT_EQ(preferences.integer(shelfShortcut.modifiers), modifiers);
        EXPECT_EQ(preferences.string(shelfShortcut.keyChar), keyChar);
    }
    void store(std::int64_t keyCode, std::int64_t modifiers, const std::string& keyChar) {
        preferences.setValue(shelfShortcut.keyCode, keyCode);
        preferences.setValue(shelfShortcut.modifiers, modifiers);
        preferences.setValue(shelfShortcut.keyChar, keyChar);
    }
    [[nodiscard]] State state() const { return recorder->shown().state; }

    FakeEventMonitors monitors;
    int posts = 0;
    Subscription observer = notifications.observe(shortcutChangedNotification, [this] {
        ++posts;
        shownAtPost = recorder->shown();
    });
    HotkeyRecorderPresentation shownAtPost;
    std::shared_ptr<HotkeyRecorder> recorder =
        HotkeyRecorder::make({core, monitors}, shelfShortcut, quickDropShortcut, shortcutChangedNotification);
};

TEST_F(HotkeyRecorderTest, recordsTheFirstPressWithAModifierThatIsNotShiftAlone) {
    using Press = std::pair<std::int64_t, bool>;
    for (const auto& [flags, qualifies] : {Press{0, false},
                                           {modifierFlag::shift, false},
                                           {modifierFlag::shift | 0x10000, false},
                                           {0x800000, false},
                                           {optionShift, true},
                                           {modifierFlag::control, true},
                                           {modifierFlag::command, true},
                                           {optionShift | 0x10000, true},
                                           {modifierFlag::control | 0xA00000, true}}) {
        SCOPED_TRACE(flags);
        recorder->clear();
        EXPECT_EQ(shownAtPost, recorder->shown()) << "stored";
        posts = 0;
        recorder->toggleRecording();
        EXPECT_EQ(recorder->shown().text, "Press shortcut…");
        EXPECT_TRUE(monitors.press(1, flags | 0x120, "S")) << "swallowed in any case";
        EXPECT_EQ(state(), qualifies ? State::set : State::recording);
        EXPECT_EQ(posts, qualifies ? 1 : 0);
        EXPECT_EQ(shownAtPost == recorder->shown(), qualifies) << "posted when stored and no longer recording";
        expectStored(qualifies ? 1 : -1, qualifies ? flags : 0, qualifies ? "S" : "");
        monitors.press(escape, 0);
        EXPECT_FALSE(monitors.press(1, flags, "S")) << "the monitor is gone";
    }
}

TEST_F(HotkeyRecorderTest, escapeAndASecondClickLeaveTheShortcutAsItWas) {
    store(1, optionShift, "S");
    for (const bool byEscape : {true, false}) {
        recorder->toggleRecording();
        EXPECT_TRUE(recorder->shown().showsClearButton);
        if (byEscape)
            monitors.press(escape, modifierFlag::control, "\x1b");
        else
            recorder->toggleRecording();
    }
    expectStored(1, optionShift, "S");
}

TEST_F(HotkeyRecorderTest, neverShowsAShortcutThatIsHalfStored) {
    store(1, optionShift, "S");
    recorder->toggleRecording();
    const Subscription changes =
        recorder->changed.connect([this] { EXPECT_FALSE(recorder->shown().conflicts) << recorder->shown().text; });
    monitors.press(2, modifierFlag::command, "D");
    recorder->clear();
    store(2, optionShift | 0x10000, "D");
}

TEST_F(HotkeyRecorderTest, showsWhatIsStored) {
    struct Case {
        std::int64_t keyCode, modifiers;
        std::string keyChar, text;
        State state;
        bool conflicts;
    };
    const std::string none = "None - click to set";
    const std::string farTooLong(300, 'x');
    for (const Case& each :
         {Case{-1, 0, "", none, State::none, false},
          {-7, optionShift, "D", none, State::none, false},
          {1, optionShift, "S", shortcutDisplayText(optionShift, "S"), State::set, false},
          {1, 0x1F0000, "S", shortcutDisplayText(0x1E0000, "S"), State::set, false},
          {2, optionShift, "S", shortcutDisplayText(optionShift, "S"), State::set, true},
          {2, optionShift | 0x10000, "D", shortcutDisplayText(optionShift, "D"), State::set, false},
          {96, modifierFlag::control, "", none, State::set, false},
          {1, 0, "\n\u202E" + farTooLong, " " + farTooLong, State::set, false},
          {1, 0, "ש\xFF", "ש\uFFFD", State::set, false},
          {std::int64_t{1} << 40, 0, "S", "S", State::set, false}}) {
        store(each.keyCode, each.modifiers, each.keyChar);
        const HotkeyRecorderPresentation expected{each.state, each.text, each.keyCode >= 0, each.conflicts};
        EXPECT_EQ(recorder->shown(), expected) << each.keyCode << " " << recorder->shown().text;
    }
    preferences.setValue(quickDropShortcut.keyCode, -1);
    store(-1, optionShift, "");
    EXPECT_FALSE(recorder->shown().conflicts) << "two that are none";
    store(1, -1, "S");
    EXPECT_DEATH(static_cast<void>(recorder->shown()), "modifier flags");
}

TEST(ShortcutTextTest, namesTheModifiersAsThePlatformDoes) {
    EXPECT_EQ(shortcutDisplayText(0x1F0000, "K", macTexts), "⌃⌥⇧⌘K");
    EXPECT_EQ(shortcutDisplayText(0x1F0000, "K", linuxTexts), "Super+Ctrl+Alt+Shift+K");
    EXPECT_EQ(shortcutDisplayText(0x1E0000, "", macTexts), "");
}

}  // namespace
}  // namespace stowpocket
