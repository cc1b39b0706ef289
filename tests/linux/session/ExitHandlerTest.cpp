// SPDX-License-Identifier: MIT
#include "platform/linux/session/ExitHandler.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>

namespace stowpocket {
namespace {

TEST(ExitHandlerDeathTest, runsOnlyWhenTheProcessEndsBeforeIt) {
    const auto say = [](const char* text) { return [text] { std::fputs(text, stderr); }; };
    EXPECT_EXIT(
        {
            { const ExitHandler ended(say("over ")); }
            const ExitHandler handler(say("saved"));
            std::exit(3);
        },
        testing::ExitedWithCode(3), "^saved$");
}

}  // namespace
}  // namespace stowpocket
