// SPDX-License-Identifier: MIT
#include "cli/ShelfCommands.h"

#include "fakes/AppFixture.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using Added = std::vector<AddOutcome>;
using Removed = std::vector<RemoveOutcome>;
using Problem = std::optional<std::string>;

struct ShelfCommandsTest : testing::Test, AppFixture {
    ShelfCommandsTest() {
        launch();
        commands.emplace(*app, [](const StartupTokens&) {});
    }
    void setCapacity(int capacity) { preferences.setValue(shelfCapacityKey, capacity); }
    void add(const Names& urls) {
        answer.reset();
        commands->add(urls, [this](const Added& outcomes, const Problem&) { answer = outcomes; });
    }
    void remove(const Names& names) {
        commands->remove(names, [this](const Removed& outcomes, const Problem&) { removed = outcomes; });
    }
    [[nodiscard]] Names staged() const {
        return namesOf(commands->list(), [](const StagedFile& file) { return file.fileURL.lastPathComponent(); });
    }

    std::optional<ShelfCommands> commands;
    std::optional<Added> answer;
    Removed removed;
};

TEST_F(ShelfCommandsTest, addTellsTheFateOfEveryURL) {
    setCapacity(3);
    add({"file:///a", "https://host/a", "file:///a", "file:///b", "/c", "", "file:///" + std::string(60'000, 'x')});
    EXPECT_EQ(answer, (Added{AddOutcome::added, AddOutcome::malformed, AddOutcome::alreadyOnShelf, AddOutcome::added,
                             AddOutcome::malformed, AddOutcome::malformed, AddOutcome::malformed}));
    EXPECT_EQ(opening(), "none") << "a script that adds files opens nothing";

    add({"file:///b", "file:///c", "file:///d", "file:///d"});
    EXPECT_EQ(answer,
              (Added{AddOutcome::alreadyOnShelf, AddOutcome::added, AddOutcome::shelfFull, AddOutcome::shelfFull}));
    EXPECT_EQ(staged(), (Names{"a", "b", "c"}));
    EXPECT_EQ(app->shelfViewModel().capacityMessage(), "Added 3 of 4 files - shelf is full");
    EXPECT_EQ(opening(), "animated") << "the message is to be seen";
    commands->perform(ShelfAction::clear, {}, [](const Problem&) {});
    EXPECT_TRUE(shelf().items().empty());
}

TEST_F(ShelfCommandsTest, addAnswersWhenALargeBatchStandsOnTheShelf) {
    setCapacity(8);
    Names urls;
    for (char name = 'a'; name < 'k'; ++name)
        urls.push_back(std::string("file:///") + name);
    add(urls);
    setCapacity(9);
    std::optional<Added> another;
    commands->add(Names{"file:///z"}, [&](const Added& outcomes, auto&) { another = outcomes; });
    EXPECT_EQ(another, Added{AddOutcome::added}) << "a batch that is held up holds up no other answer";
    EXPECT_FALSE(answer) << "still being prepared";
    dispatch.runAll();
    ASSERT_TRUE(answer);
    shelf().clear();
    add(urls);
    commands.reset();
    dispatch.runAll();
    EXPECT_FALSE(answer) << "its receiver is gone";
}

TEST_F(ShelfCommandsTest, answersWhenTheChangeIsSavedOrCannotBe) {
    std::vector<Problem> problems;
    const auto note = [&](const auto&, const Problem& problem) { problems.push_back(problem); };
    preferences.isSlow = true;
    commands->add(Names{"file:///a"}, note);
    commands->remove(Names{"file:///a"}, note);
    commands->perform(ShelfAction::clear, {}, [&](const Problem& problem) { problems.push_back(problem); });
    preferences.finishSaving("the disk is full");
    EXPECT_EQ(problems, std::vector<Problem>(3, "the disk is full"));
    const auto show = [&] {
        commands->perform(ShelfAction::show, {}, [&](const Problem& problem) { problems.push_back(problem); });
    };
    show();
    EXPECT_EQ(problems.size(), 4u) << "there is nothing to save";
    opening();
    show();
    EXPECT_EQ(opening(), "animated") << "another program may have the keyboard";
}

TEST_F(ShelfCommandsTest, removesByEitherName) {
    add({"file:///a", "file:///b", "file:///c/"});
    const std::string id = commands->list().at(1).id;
    remove({"file:///c", id, id, "file:///b", "nonsense"});
    EXPECT_EQ(removed, (Removed{RemoveOutcome::removed, RemoveOutcome::removed, RemoveOutcome::notOnShelf,
                                RemoveOutcome::notOnShelf, RemoveOutcome::malformed}));
    EXPECT_EQ(staged(), Names{"a"});
}

TEST_F(ShelfCommandsTest, usesWhatIsOnTheShelfAndBringsBackWhatWas) {
    files.add("/a");
    add({"file:///a", "file:///gone"});
    const Names names{"file:///gone", commands->list().at(0).id, "file:///b", "nonsense"};
    for (const ItemUse what : {ItemUse::copy, ItemUse::open})
        EXPECT_EQ(commands->use(what, names), (std::vector{UseOutcome::missing, UseOutcome::done,
                                                           UseOutcome::notOnShelf, UseOutcome::malformed}));
    EXPECT_EQ(clipboard.files, std::vector{fileAt("/a")});
    EXPECT_EQ(opener.opened, Names{"a"});
    remove({"file:///a", "file:///gone"});
    commands->perform(ShelfAction::undo, {}, [](const auto&) {});
    dispatch.runAll();
    EXPECT_EQ(staged(), Names{"a"});
}

}  // namespace
}  // namespace stowpocket
