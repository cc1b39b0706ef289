// SPDX-License-Identifier: MIT
#pragma once

#include "services/Preferences.h"

#include <gtest/gtest.h>

#include <limits>

namespace stowpocket {

/// What every PreferenceStore promises. `Subject` has `store()`, which `restart()` makes anew.
template <class Subject>
struct PreferencesContract : testing::Test {
    Subject subject;
};
TYPED_TEST_SUITE_P(PreferencesContract);

TYPED_TEST_P(PreferencesContract, prefersStoredValuesToRegisteredOnes) {
    PreferenceStore& store = this->subject.store();
    store.registerDefaults({{"capacity", 20}, {"flag", true}});
    EXPECT_EQ(store.value("capacity"), PropertyValue(20));
    EXPECT_EQ(store.value("flag"), PropertyValue(true));
    store.setValue("capacity", 50);
    EXPECT_EQ(store.value("capacity"), PropertyValue(50));
    store.removeValue("capacity");
    EXPECT_EQ(store.value("capacity"), PropertyValue(20));
    EXPECT_EQ(store.value("absent"), std::nullopt);
}

TYPED_TEST_P(PreferencesContract, announcesAChangeOnceItHolds) {
    PreferenceStore& store = this->subject.store();
    std::vector<std::string> announced;
    const Subscription watching =
        store.changed().connect([&](const std::string& key) { announced.push_back(key + '=' + store.string(key)); });
    store.setValue("letter", "D");
    store.setValue("letter", "D");
    store.removeValue("letter");
    store.removeValue("letter");
    EXPECT_EQ(announced, (std::vector<std::string>{"letter=D", "letter="}));
}

TYPED_TEST_P(PreferencesContract, keepsEveryTypeOverARestart) {
    using Limits = std::numeric_limits<std::int64_t>;
    const PropertyValue value(PropertyValue::Dictionary{
        {"booleans", PropertyValue::Array{true, false}},
        {"integers", PropertyValue::Array{0, 1, -5, Limits::min(), Limits::max()}},
        {"reals", PropertyValue::Array{0.0, 1.0, -0.1, 1e300}},
        {"texts", PropertyValue::Array{"", "  ", "<&>", "\xC3\xA9"}},
        {"data", PropertyValue::Array{Bytes{}, Bytes{0, 255, '<', 10}}},
        {"dates", PropertyValue::Array{Date{}, Date{std::chrono::seconds(1'700'000'000)}}},
        {"empty", PropertyValue::Array{PropertyValue::Array{}, PropertyValue::Dictionary{}}},
    });
    this->subject.store().setValue("shelf", value);
    this->subject.restart();
    const std::optional<PropertyValue> kept = this->subject.store().value("shelf");
    const PropertyValue::Dictionary* const dictionary = kept ? kept->dictionary() : nullptr;
    ASSERT_NE(dictionary, nullptr);
    for (const auto& [name, values] : *value.dictionary())
        EXPECT_EQ(dictionary->at(name), values) << name;
    this->subject.store().removeValue("shelf");
    this->subject.restart();
    EXPECT_EQ(this->subject.store().value("shelf"), std::nullopt);
}

REGISTER_TYPED_TEST_SUITE_P(PreferencesContract, prefersStoredValuesToRegisteredOnes, announcesAChangeOnceItHolds,
                            keepsEveryTypeOverARestart);

}  // namespace stowpocket
