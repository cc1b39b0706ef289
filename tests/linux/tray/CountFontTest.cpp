// SPDX-License-Identifier: MIT
#include "platform/linux/tray/CountFont.h"
#include "support/ComesTrue.h"

#include <gtest/gtest.h>

#include <string>

namespace stowpocket {
namespace {

TEST(CountFontTest, theLatestCountWaitsForTheFontAndLaterOnesDoNot) {
    std::string drawn;
    CountFont font;
    font.whenLoaded([&] { drawn += "first"; });
    font.whenLoaded([&] { drawn += "second"; });
    EXPECT_EQ(drawn, "");
    EXPECT_TRUE(comesTrue([&] { return drawn == "second"; }));
    font.whenLoaded([&] { drawn = "third"; });
    EXPECT_EQ(drawn, "third");

    CountFont forgotten;
    forgotten.whenLoaded([] { FAIL() << "after its end"; });
}

}  // namespace
}  // namespace stowpocket
