// SPDX-License-Identifier: MIT
#include "services/Preferences.h"

#include <gtest/gtest.h>

#include <cmath>

namespace stowpocket {
namespace {

TEST(PreferenceStoreTest, readsTruthsAndNumbersInWhateverFormTheyAreStored) {
    constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    struct Reading {
        bool boolean;
        std::int64_t integer;
        std::vector<PropertyValue> stored;
    };
    const PropertyValue array(PropertyValue::Array{1});
    LayeredPreferenceStore store;
    for (const Reading& each : {Reading{true, 1, {true, 1, "1"}},
                                {false, 0, {false, 0, 0.0, "No", "false", "00", "0.9", "", "- 1", Bytes{1}, array}},
                                {true, 0, {-0.5, std::nan(""), "YES", "true"}},
                                {true, -50, {-50}},
                                {true, 50, {50.9, " +50 items"}},
                                {true, -7, {"-07"}},
                                {true, most, {1e300, "99999999999999999999"}},
                                {true, least, {-1e300, "-99999999999999999999"}}}) {
        for (const PropertyValue& stored : each.stored) {
            store.setValue("key", stored);
            EXPECT_EQ(store.boolean("key"), each.boolean) << store.string("key") << " for " << each.integer;
            EXPECT_EQ(store.integer("key"), each.integer) << store.string("key");
        }
    }
}

TEST(PreferenceStoreTest, answersByTypeStoredValuesFirstAndAnnouncesChangesOnceTheyHold) {
    LayeredPreferenceStore store;
    std::string announced;
    const Subscription subscription =
        store.changed().connect([&](const std::string& key) { announced += key + '=' + store.string(key) + ' '; });
    store.registerDefaults({{"letter", "D"}});
    for (const char* const letter : {"E", "E"})
        store.setValue("letter", letter);
    for (int time = 0; time < 2; ++time)
        store.removeValue("letter");
    EXPECT_EQ(announced, "letter=E letter=D ");
    EXPECT_EQ(store.integer("letter"), 0) << "of another type";
    EXPECT_EQ(store.value("absent"), std::nullopt);
}

}  // namespace
}  // namespace stowpocket
