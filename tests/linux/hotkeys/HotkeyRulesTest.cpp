// SPDX-License-Identifier: MIT
#include "platform/linux/hotkeys/CommandBinding.h"
#include "platform/linux/hotkeys/X11HotkeyService.h"
#include "platform/linux/input/Keys.h"
#include "services/Input.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>

namespace stowpocket {
namespace {

/// Key codes as the kernel's input-event-codes.h has them.
std::uint16_t kernelKey(std::uint8_t code) {
    return virtualKeyOf(static_cast<std::uint8_t>(code + 8));
}

TEST(KeyCodesTest, namesPhysicalKeysAsTheReferenceKeyboardDoes) {
    for (const auto& [code, virtualKey] : std::vector<std::pair<std::uint8_t, std::uint16_t>>{
             {31, 1}, {1, 53}, {111, 117}, {28, 36}, {30, 0}, {103, 126}})
        EXPECT_EQ(kernelKey(code), virtualKey) << "kernel code " << int{code};
}

TEST(KeyCodesTest, givesEveryKeyOneCodeAndFindsItAgain) {
    std::set<std::uint16_t> codes;
    for (unsigned key = 0; key <= 0xFF; ++key) {
        const std::uint16_t code = virtualKeyOf(static_cast<std::uint8_t>(key));
        EXPECT_TRUE(codes.insert(code).second) << key;
        EXPECT_EQ(physicalKeyOf(code), key < 8 ? std::nullopt : std::optional(key));
    }
}

TEST(KeyModifiersTest, findsTheModifiersOfTheKeyboardMap) {
    std::array<std::vector<std::uint8_t>, 8> keys{{{50, 62}, {66}, {37}, {108}, {77, 64}, {133}, {}, {92}}};
    std::map<std::uint8_t, std::vector<std::uint32_t>> keyboard{
        {108, {0xFFEA, 0xFFE8}}, {77, {0xFF7F}}, {64, {0xFFE9}}, {133, {0, 0xFFEB}}, {92, {0xFF14}}};
    const auto symbols = [&](std::uint8_t key) { return keyboard[key]; };
    const ModifierLayout layout = modifierLayoutOf(keys, symbols);
    EXPECT_EQ(layout, (ModifierLayout{0x8, 0x20, 0x10, 0x80})) << "the first modifier with the key counts";
    EXPECT_EQ(x11ModifiersOf(carbonModifier::optionKey | carbonModifier::cmdKey | carbonModifier::shiftKey, layout),
              0x29);
    EXPECT_EQ(x11ModifiersOf(carbonModifier::controlKey, layout), 0x4);
    const std::vector<std::uint16_t> states = lockStates(layout);
    EXPECT_EQ(std::set(states.begin(), states.end()),
              (std::set<std::uint16_t>{0, 2, 0x10, 0x12, 0x80, 0x82, 0x90, 0x92}));
    EXPECT_EQ(lockStates(modifierLayoutOf({}, symbols)), (std::vector<std::uint16_t>{0, 2}));
}

TEST(KeyRepeatFilterTest, toldRepeatsFromPresses) {
    KeyRepeatFilter repeats;
    EXPECT_TRUE(repeats.isNewPress(39, 100));
    EXPECT_FALSE(repeats.isNewPress(39, 760)) << "repeats as presses alone";
    repeats.noteRelease(39, 800);
    EXPECT_FALSE(repeats.isNewPress(39, 800)) << "repeats as release and press of one moment";
    repeats.noteRelease(39, 900);
    EXPECT_TRUE(repeats.isNewPress(39, 901));
    EXPECT_TRUE(repeats.isNewPress(40, 902)) << "another key";
    repeats.noteRelease(39, 903);
    EXPECT_FALSE(repeats.isNewPress(40, 904)) << "the release of the first key does not end the second";
}

TEST(CommandBindingTest, programsAnswerOrAreEnded) {
    const std::shared_ptr<ChildProcess> programs = makeSettingsPrograms();
    const std::string said = "two  words 'é'";
    EXPECT_EQ(programs->run("printf", {"%s", said}), Bytes(said.begin(), said.end()));
    EXPECT_EQ(programs->run("false", {}), Bytes());
    EXPECT_EQ(programs->run("no-such-program", {}), std::nullopt);
    EXPECT_EQ(programs->run("yes", {}), std::nullopt) << "it never ends";
}

TEST(CommandBindingTest, theCommandStartsThisVeryFile) {
    EXPECT_EQ(shellCommand(std::filesystem::canonical("/usr/bin/printf")), "printf");
    EXPECT_EQ(shellCommand("/opt/other/printf"), "/opt/other/printf");
    EXPECT_EQ(shellCommand("/opt/it's $HOME/printf"), "'/opt/it'\\''s $HOME/printf'");
}

}  // namespace
}  // namespace stowpocket
