// SPDX-License-Identifier: MIT
#include "updates/Appcast.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

TEST(VersionComparison, ordersVersionsAsTheirMakersMeanThem) {
    const std::vector<const char*> ascending{
        "",       "0.0.9",   "0.1",     "1.0a1",   "1.0b1",       "1.0b2",   "1.0B9",
        "1.0b10", "1.0-rc1", "1.0",     "1.0 (1)", "1.0 (1234)",  "1.0.1b5", "1.0.1 (1)",
        "1.9",    "1.10",    "3.3 (5)", "3.3 (6)", "3.3.1b1 (7)", "9",       "18446744073709551617"};
    for (std::size_t older = 0; older < ascending.size(); ++older) {
        for (std::size_t newer = older + 1; newer < ascending.size(); ++newer) {
            EXPECT_TRUE(compareVersions(ascending[older], ascending[newer]) < 0) << ascending[older];
            EXPECT_TRUE(compareVersions(ascending[newer], ascending[older]) > 0) << ascending[newer];
        }
    }
    EXPECT_TRUE(compareVersions("1.0 beta", "1.0") < 0);
    EXPECT_TRUE(compareVersions("v9", "1") < 0);
    EXPECT_TRUE(compareVersions("0.0.9", ".1") < 0);
    for (const auto& [left, right] :
         {std::pair("1.0", "1.0.0"), {"01.002", "1.2"}, {"1.0-rc1", "1.0 RC 1"}, {" 1.0", "1.0-"}, {"", "0"}})
        EXPECT_TRUE(compareVersions(left, right) == 0) << left << " = " << right;
}

AppcastItem item(const char* version, const char* operatingSystem = "linux") {
    AppcastItem made;
    made.version = version;
    made.operatingSystem = operatingSystem;
    return made;
}

/// The version chosen among `items` by a program of version 2.0.
std::string chosen(const std::vector<AppcastItem>& items, const char* skipped = "", const char* hardware = "x86_64") {
    const AppcastItem* const found = selectUpdate(items, {"linux", "6.1.0-13", hardware}, "2.0", skipped);
    return found == nullptr ? "none" : found->version;
}

TEST(UpdateSelection, takesTheNewestThatRunsHereAndIsNewer) {
    EXPECT_EQ(chosen({}), "none");
    EXPECT_EQ(chosen({item("1.9"), item("2.0"), item("2.0.0"), item("2.0b1"), item("")}), "none") << "no way back";
    EXPECT_EQ(chosen({item("2.9"), item("2.10"), item("2.1")}), "2.10");
    EXPECT_EQ(chosen({item("2.1"), item("3", ""), item("3", "macos"), item("3", "windows")}), "2.1");
    EXPECT_EQ(chosen({item("2.1"), item("2.2")}, "2.2"), "2.1");
    std::vector<AppcastItem> items{item("2.1"), item("3"), item("4"), item("5"), item("2.2")};
    items[1].channel = "beta";
    items[2].minimumSystemVersion = "6.2";
    items[3].hardware = "arm64";
    items[4].minimumSystemVersion = "6.1";
    items[4].hardware = " x86_64 ";
    EXPECT_EQ(chosen(items), "2.2");
    EXPECT_EQ(chosen(items, "", "aarch64"), "5");
}

TEST(AppcastRecords, comeBackAsTheyWereAndRefuseRubbish) {
    std::vector<AppcastItem> items{item("1"), item("2")};
    items[1].notes = "a\nb \u00e9";
    items[1].length = 5'000'000'000;
    const std::string bytes = encodedItems(items);
    EXPECT_EQ(decodedItems(bytes), items);
    EXPECT_EQ(decodedItems(""), std::vector<AppcastItem>());
    EXPECT_FALSE(decodedItems(bytes.substr(0, bytes.size() - 1)));
    EXPECT_FALSE(decodedItems(bytes + "x"));
    items[0].notes = std::string("nul\0nul", 7);
    EXPECT_EQ(decodedItems(encodedItems(items))->at(0).notes, "nulnul");
}

}  // namespace
}  // namespace stowpocket
