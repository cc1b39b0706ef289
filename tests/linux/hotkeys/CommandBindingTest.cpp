// SPDX-License-Identifier: MIT
#include "platform/linux/hotkeys/CommandBinding.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace stowpocket {
namespace {

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
