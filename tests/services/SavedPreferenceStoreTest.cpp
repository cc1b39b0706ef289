// SPDX-License-Identifier: MIT
#include "services/SavedPreferenceStore.h"
#include "fakes/FakeDispatch.h"

#include <gtest/gtest.h>

#include <cmath>

using namespace std::chrono_literals;

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

using Values = PreferenceDisk::Values;
using Problem = std::optional<std::string>;

struct FakeDisk : PreferenceDisk {
    [[nodiscard]] Values read() override { return contents; }
    [[nodiscard]] Saved save(const Values& base, const Values& values) override {
        ++attempts;
        if (problem)
            return {problem};
        contents = mergedValues(base, values, std::exchange(foreign, std::nullopt).value_or(contents));
        return {std::nullopt, contents};
    }
    [[nodiscard]] bool isThere() override { return true; }

    Values contents;
    std::optional<Values> foreign;
    Problem problem;
    int attempts = 0;
};

struct SavedPreferenceStoreTest : testing::Test {
    void change(int value) { store.setValue("a", value); }
    /// Lets the time pass in steps so that every attempt is carried out when it is due.
    void pass(std::chrono::milliseconds time) {
        for (; time > 0ms; time -= 10ms) {
            dispatch.advance(10ms);
            dispatch.runAll();
        }
    }
    void askWhenSaved() {
        store.whenSaved([this](const Problem& problem) { answers.push_back(problem.value_or("saved")); });
    }

    FakeDispatch dispatch;
    std::shared_ptr<FakeDisk> disk = std::make_shared<FakeDisk>();
    SavedPreferenceStore store{dispatch, disk};
    std::vector<std::string> answers;
};

TEST_F(SavedPreferenceStoreTest, answersWhenTheChangesSoFarAreOnTheDisk) {
    askWhenSaved();
    EXPECT_EQ(answers.size(), 1u) << "there is nothing to save";
    for (const int value : {1, 2}) {
        change(value);
        askWhenSaved();
    }
    dispatch.runBackground();
    dispatch.runMain();
    EXPECT_EQ(answers.size(), 2u) << "asked at once, and of the first change alone";
    dispatch.runAll();
    EXPECT_EQ(answers, (std::vector<std::string>(3, "saved")));
    for (const auto& [problem, answer] : {std::pair(Problem("full"), "full"), {std::nullopt, "saved"}}) {
        disk->problem = problem;
        change(answers.size() > 3 ? 4 : 3);
        askWhenSaved();
        dispatch.runAll();
        EXPECT_EQ(answers.back(), answer);
    }
}

TEST_F(SavedPreferenceStoreTest, callsADiskSilentAfterTwoSeconds) {
    change(1);
    askWhenSaved();
    dispatch.advance(1900ms);
    change(2);
    askWhenSaved();
    dispatch.advance(100ms);
    EXPECT_EQ(answers, std::vector<std::string>{"the disk does not answer"});
    EXPECT_EQ(store.saveProblem(), "the disk does not answer");
    dispatch.runAll();
}

TEST_F(SavedPreferenceStoreTest, triesAgainAfterPausesThatGrowAndAtEveryChange) {
    int told = 0;
    const Subscription subscription = store.saveProblemChanged().connect([&] { ++told; });
    disk->problem = "full";
    change(1);
    std::vector<int> attempts;
    for (const auto second : {1s, 2s, 4s, 8s, 60s}) {
        pass(second);
        attempts.push_back(disk->attempts);
    }
    EXPECT_EQ(attempts, (std::vector{1, 2, 3, 4, 7})) << "after 1, 2, 4, 8, 16, 30 seconds";
    change(2);
    pass(20ms);
    EXPECT_EQ(disk->attempts, 8);
    EXPECT_EQ(told, 1);
    disk->problem.reset();
    pass(30s);
    EXPECT_EQ(disk->contents, (Values{{"a", 2}})) << "without another change";
    EXPECT_EQ(told, 2);
    disk->problem = "full";
    change(3);
    pass(1020ms);
    EXPECT_EQ(disk->attempts, 11) << "the pauses begin anew";
}

TEST_F(SavedPreferenceStoreTest, takesOverWhatOthersStoredUnlessItHasChangedHereSince) {
    std::vector<std::string> announced;
    const Subscription subscription =
        store.changed().connect([&](const std::string& key) { announced.push_back(key); });
    store.setValue("mine", 1);
    disk->foreign = Values{{"theirs", 5}, {"mine", 5}, {"late", 5}};
    dispatch.advance(10ms);
    dispatch.runBackground();
    store.setValue("late", 6);
    dispatch.runMain();
    EXPECT_EQ(announced, (std::vector<std::string>{"mine", "late", "theirs"}));
    dispatch.runAll();
    EXPECT_EQ(disk->contents, (Values{{"late", 6}, {"mine", 1}, {"theirs", 5}}));
}

TEST_F(SavedPreferenceStoreTest, endsInFiveSecondsWhateverTheDiskDoes) {
    change(1);
    dispatch.queuesHang = true;
    EXPECT_EQ(store.finish(), "the disk does not answer");
    EXPECT_EQ(dispatch.longestWait, 5s);
    dispatch.queuesHang = false;
    EXPECT_EQ(store.finish(), std::nullopt);
    EXPECT_EQ(disk->contents, (Values{{"a", 1}}));
}

TEST(MergedValues, keepsTheChangesOfBothKeyByKey) {
    const Values base{{"same", 1}, {"mine", 1}, {"theirs", 1}, {"both", 1}, {"removed", 1}, {"gone", 1}};
    const Values ours{{"same", 1}, {"mine", 2}, {"theirs", 1}, {"both", 2}, {"gone", 1}, {"new", 2}};
    const Values theirs{{"same", 1}, {"mine", 1}, {"theirs", 3}, {"both", 3}, {"removed", 1}, {"their new", 3}};
    EXPECT_EQ(mergedValues(base, ours, theirs),
              (Values{{"same", 1}, {"mine", 2}, {"theirs", 3}, {"both", 2}, {"new", 2}, {"their new", 3}}));
}

}  // namespace
}  // namespace stowpocket
