// SPDX-License-Identifier: MIT
#include "services/Preferences.h"

#include <gtest/gtest.h>

#include <cmath>

namespace stowpocket {
namespace {

TEST(PreferenceStoreTest, readsTruthsAndNumbersInWhateverFormTheyAreStored) {
    constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    struct Row {
        PropertyValue stored;
        bool boolean;
        std::int64_t integer;
    };
    const std::vector<Row> table{{true, true, 1},
                                 {false, false, 0},
                                 {1, true, 1},
                                 {0, false, 0},
                                 {-50, true, -50},
                                 {50.9, true, 50},
                                 {-0.5, true, 0},
                                 {0.0, false, 0},
                                 {1e300, true, most},
                                 {-1e300, true, least},
                                 {std::nan(""), true, 0},
                                 {"YES", true, 0},
                                 {"true", true, 0},
                                 {"No", false, 0},
                                 {"false", false, 0},
                                 {"1", true, 1},
                                 {" +50 items", true, 50},
                                 {"-07", true, -7},
                                 {"00", false, 0},
                                 {"0.9", false, 0},
                                 {"99999999999999999999", true, most},
                                 {"-99999999999999999999", true, least},
                                 {"", false, 0},
                                 {"- 1", false, 0},
                                 {Bytes{1}, false, 0},
                                 {PropertyValue::Array{1}, false, 0}};
    LayeredPreferenceStore store;
    for (const Row& row : table) {
        store.setValue("key", row.stored);
        const std::string* const text = row.stored.string();
        const std::size_t at = static_cast<std::size_t>(&row - table.data());
        EXPECT_EQ(store.boolean("key"), row.boolean) << at << (text != nullptr ? ' ' + *text : "");
        EXPECT_EQ(store.integer("key"), row.integer) << at << (text != nullptr ? ' ' + *text : "");
    }
}

}  // namespace
}  // namespace stowpocket
