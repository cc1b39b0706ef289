// SPDX-License-Identifier: MIT
#include "platform/linux/drags/DragWatching.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using Step = DragWatching::Step;
using Owner = DragWatching::Owner;

constexpr std::uint32_t uriList = 7;
constexpr std::uint32_t directSave = 8;
constexpr std::uint32_t text = 9;

DragWatching asked() {
    DragWatching watching;
    EXPECT_EQ(watching.ownerChanged(Owner::another, true), Step::ask);
    return watching;
}

TEST(DragOffer, isJudgedByTypesAndUnknownWhereNoneAreTold) {
    const auto judge = [](std::optional<std::vector<std::uint32_t>> targets, std::vector<std::uint32_t> list = {}) {
        return judgeDrag(targets, list, uriList, directSave);
    };
    EXPECT_EQ(judge({{text, uriList}}), DragOffer::files);
    EXPECT_EQ(judge({{directSave, uriList}}), DragOffer::files);
    EXPECT_EQ(judge({{text, directSave}}), DragOffer::promise);
    EXPECT_EQ(judge({{text}}), DragOffer::nothing);
    EXPECT_EQ(judge(std::vector<std::uint32_t>(), {uriList}), DragOffer::nothing);
    EXPECT_EQ(judge(std::nullopt, {text, uriList}), DragOffer::files);
    EXPECT_EQ(judge(std::nullopt, {text}), DragOffer::nothing);
    EXPECT_EQ(judge(std::nullopt), DragOffer::unknown);
}

TEST(DragWatching, followsADragToItsEnd) {
    DragWatching watching = asked();
    EXPECT_EQ(watching.answered(DragOffer::files), Step::announce);
    EXPECT_EQ(watching.buttonsSeen(true), Step::none);
    EXPECT_EQ(watching.buttonsSeen(false), Step::settle);
    EXPECT_EQ(watching.buttonsSeen(false), Step::none);
    EXPECT_EQ(watching.settled(), Step::end);
    EXPECT_EQ(watching.ending(), DragEnd::released);
    EXPECT_EQ(watching.settled(), Step::none);

    EXPECT_EQ(watching.ownerChanged(Owner::nobody, false), Step::end) << "a late drop will not come any more";
    EXPECT_EQ(watching.ending(), DragEnd::sourceGone);
    EXPECT_EQ(watching.ownerChanged(Owner::nobody, false), Step::none);
}

TEST(DragWatching, restsOnDragsThatAreNotForTheShelf) {
    DragWatching watching = asked();
    EXPECT_EQ(watching.answered(DragOffer::nothing), Step::rest);
    EXPECT_EQ(watching.buttonsSeen(false), Step::none);
    EXPECT_EQ(watching.ownerChanged(Owner::ourselves, true), Step::none);
    EXPECT_EQ(watching.answered(DragOffer::files), Step::none);
    EXPECT_EQ(watching.ownerChanged(Owner::another, false), Step::none);

    DragWatching silent = asked();
    EXPECT_EQ(silent.buttonsSeen(false), Step::settle);
    EXPECT_EQ(silent.answered(DragOffer::files), Step::none);
    EXPECT_EQ(silent.settled(), Step::rest);
}

TEST(DragWatching, endsOnceWhereADragFollowsAtOnce) {
    DragWatching watching = asked();
    EXPECT_EQ(watching.answered(DragOffer::files), Step::announce);
    EXPECT_EQ(watching.buttonsSeen(false), Step::settle);
    EXPECT_EQ(watching.ownerChanged(Owner::another, true), Step::ask);
    EXPECT_EQ(watching.settled(), Step::none);
    EXPECT_EQ(watching.answered(DragOffer::promise), Step::announce);
    EXPECT_EQ(watching.ownerChanged(Owner::another, true), Step::ask);
    EXPECT_EQ(watching.answered(DragOffer::nothing), Step::end);
}

}  // namespace
}  // namespace stowpocket
