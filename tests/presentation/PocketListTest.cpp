// SPDX-License-Identifier: MIT
#include "presentation/PocketList.h"

#include "fakes/FakeDispatch.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

TEST(PocketFoldingTest, unfoldsForAPointerThatRestsAndFoldsSoonAfterItHasLeft) {
    FakeDispatch dispatch;
    std::vector<bool> changes;
    PocketFolding folding(dispatch, [&](bool isUnfolded) { changes.push_back(isUnfolded); });
    const auto point = [&](bool isPointedAt, std::chrono::milliseconds time) {
        folding.setPointedAt(isPointedAt);
        dispatch.advance(time);
        return folding.isUnfolded();
    };
    EXPECT_FALSE(point(true, 200ms));
    EXPECT_FALSE(point(false, 1s)) << "it only passed";
    EXPECT_FALSE(point(true, 200ms));
    EXPECT_TRUE(point(true, 200ms)) << "a hand is never still";
    EXPECT_TRUE(point(false, 300ms)) << "on the way from the pocket to the list";
    EXPECT_TRUE(point(true, 1s));
    EXPECT_FALSE(point(false, 500ms));
    EXPECT_TRUE(point(true, 1s));
    folding.fold();
    EXPECT_FALSE(point(true, 1s)) << "pressed, it does not unfold again under the pointer";
    EXPECT_FALSE(point(false, 1s));
    EXPECT_TRUE(point(true, 1s));
    EXPECT_FALSE(point(false, 1s));
    folding.dismiss();
    EXPECT_FALSE(point(true, 1s)) << "it is there since it has dropped something";
    EXPECT_FALSE(point(false, 1s));
    EXPECT_TRUE(point(true, 1s));
    folding.setPointedAt(false, PocketFolding::By::finger);
    dispatch.advance(3s);
    EXPECT_TRUE(folding.isUnfolded()) << "until a finger comes again";
    dispatch.advance(1s);
    EXPECT_EQ(changes, (std::vector{true, false, true, false, true, false, true, false}));
}

std::vector<WaitingFile> files(int count, int missing = -1) {
    std::vector<WaitingFile> files;
    for (int index = 0; index < count; ++index)
        files.push_back({UUID::random(), std::to_string(index), index == missing, {}});
    return files;
}

/// The name in the row there, "all" for the row of all files, or nothing.
std::string draggedFrom(const PocketList& list, double y) {
    const std::optional<PocketList::Row> row = list.draggableAt({50, y});
    return !row ? "" : row->file == nullptr ? "all" : row->file->name;
}

constexpr Rect screen{0, 20, 1280, 780};
constexpr Rect pocket{1220, 28, 52, 44};
constexpr double step = PocketList::wheelStep;

TEST(PocketListTest, unfoldsWhereThereIsRoomAndIsNeverLargerThanThat) {
    PocketList list;
    const auto frame = [&](const Rect& anchor, const Rect& usable, int count) {
        list.lay(files(count), anchor, usable);
        return list.frame();
    };
    const Rect below = frame(pocket, screen, 3);
    EXPECT_GT(below.y, pocket.bottom());
    EXPECT_EQ(below.height - frame(pocket, screen, 2).height, step);
    EXPECT_EQ(frame(pocket, screen, 8), frame(pocket, screen, 400));
    const Rect above = frame({8, 740, 52, 44}, screen, 9);
    EXPECT_LT(above.bottom(), 740);
    const Rect low = frame(pocket, {0, 20, 1280, 220}, 9);
    EXPECT_LT(low.bottom(), 240);
    const Rect narrow = frame({130, 28, 52, 44}, {0, 20, 190, 780}, 9);
    EXPECT_EQ(narrow.x, 8);
    EXPECT_EQ(narrow.right(), 182);
}

TEST(PocketListTest, aRowIsDraggedByWhatIsSeenUnderThePointer) {
    PocketList list;
    list.lay(files(20, 2), pocket, screen);
    EXPECT_EQ(list.textForAll(), "All 19 files");
    const double top = list.view().y;
    EXPECT_EQ(draggedFrom(list, 20), "all");
    EXPECT_EQ(draggedFrom(list, top - 2), "") << "between the rows";
    EXPECT_EQ(draggedFrom(list, top + 2 * step), "") << "it is missing";
    EXPECT_TRUE(list.pointAt(Point{50, top}));
    EXPECT_TRUE(list.scroll(step / 2));
    EXPECT_EQ(list.rows().size(), 9u) << "two are seen in part";
    EXPECT_TRUE(list.scroll(1e9));
    EXPECT_FALSE(list.scroll(1));
    EXPECT_EQ(draggedFrom(list, list.view().bottom() - 1), "19");
    EXPECT_EQ(list.scrollMark()->bottom(), list.view().bottom());
    list.lay(files(10), pocket, screen);
    EXPECT_EQ(draggedFrom(list, list.view().bottom() - 1), "9") << "fewer files leave no gap";
    list.lay(files(2, 0), pocket, screen);
    EXPECT_FALSE(list.rowForAll()) << "a single one can be dragged";
    EXPECT_FALSE(list.scrollMark());
}

}  // namespace
}  // namespace stowpocket
