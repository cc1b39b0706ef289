// SPDX-License-Identifier: MIT
#include "contracts/TemporaryFolder.h"
#include "fakes/FakeDispatch.h"
#include "platform/linux/storage/LinuxPreferenceStore.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

struct InMemory {
    LayeredPreferenceStore store;
};

struct OnDisk {
    TemporaryFolder folder;
    FakeDispatch dispatch;
    LinuxPreferenceStore store{dispatch, folder.path("stowpocket/preferences.plist")};
};

template <class Subject>
class PreferenceStoreContract : public testing::Test {
protected:
    Subject subject;
    PreferenceStore& store = subject.store;
};

using Subjects = testing::Types<InMemory, OnDisk>;
TYPED_TEST_SUITE(PreferenceStoreContract, Subjects);

TYPED_TEST(PreferenceStoreContract, storedValuesAnswerBeforeRegisteredOnes) {
    this->store.registerDefaults({{"capacity", 20}, {"letter", "S"}});
    EXPECT_EQ(this->store.integer("capacity"), 20);
    this->store.setValue("capacity", 50);
    EXPECT_EQ(this->store.integer("capacity"), 50);
    this->store.removeValue("capacity");
    EXPECT_EQ(this->store.integer("capacity"), 20);
    EXPECT_EQ(this->store.string("letter"), "S");
}

TYPED_TEST(PreferenceStoreContract, valuesOfAnotherTypeReadAsNothing) {
    this->store.setValue("text", "1");
    EXPECT_EQ(this->store.integer("text"), 0);
    EXPECT_FALSE(this->store.boolean("text"));
    EXPECT_EQ(this->store.string("absent"), "");
    EXPECT_EQ(this->store.value("absent"), std::nullopt);
}

TYPED_TEST(PreferenceStoreContract, announcesChangesOnlyAndAfterTheyHold) {
    std::vector<std::string> announced;
    const Subscription subscription = this->store.changed().connect(
        [&](const std::string& key) { announced.push_back(key + '=' + this->store.string(key)); });
    this->store.setValue("letter", "D");
    this->store.setValue("letter", "D");
    this->store.removeValue("letter");
    this->store.removeValue("letter");
    EXPECT_EQ(announced, (std::vector<std::string>{"letter=D", "letter="}));
}

}  // namespace
}  // namespace stowpocket
