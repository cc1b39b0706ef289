// SPDX-License-Identifier: MIT
#include "platform/linux/drags/DirectSaves.h"
#include "platform/linux/drags/DragWatching.h"
#include "platform/linux/drags/PromisedFiles.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

namespace fs = std::filesystem;
using Step = DirectSaveProgress::Step;
using Arrival = DirectSaveProgress::Arrival;
using Steps = std::vector<Step>;

TEST(DirectSaveProgressTest, takesOnlyThePlainNameOfWhatIsProposed) {
    using namespace std::string_view_literals;
    for (const auto& [proposed, name] : std::vector<std::pair<std::string_view, std::string_view>>{
             {"folder/", "folder"}, {"../x", "x"}, {"/etc/passwd", "passwd"}, {"\xFF.txt", "\xFF.txt"}})
        EXPECT_EQ(directSaveName(proposed), name) << proposed;
    for (const std::string_view refused : {""sv, "///"sv, ".."sv, "a/."sv, "a\0b"sv, "\0"sv})
        EXPECT_EQ(directSaveName(refused), std::nullopt) << refused;
    EXPECT_FALSE(directSaveName(std::string(256, 'x')));
}

TEST(DirectSaveProgressTest, succeedsOnlyOnTheLetterForSuccess) {
    EXPECT_EQ(DirectSaveProgress().replied("S", Arrival::content), Step::collect);
    EXPECT_EQ(DirectSaveProgress().replied("S", Arrival::nothing), Step::fail);
    for (const char* const reply : {"F", "E", "", "SS"})
        EXPECT_EQ(DirectSaveProgress().replied(reply, Arrival::content), Step::fail) << reply;
}

TEST(DirectSaveProgressTest, waitsForASourceThatWritesAndEndsOnce) {
    constexpr Arrival content = Arrival::content;
    DirectSaveProgress save;
    EXPECT_EQ((Steps{save.written(content), save.timeLimitReached(10, content), save.timeLimitReached(20, content)}),
              (Steps{Step::none, Step::wait, Step::wait}));
    EXPECT_EQ(save.timeLimitReached(20, content), Step::fail);
    EXPECT_EQ((Steps{save.timeLimitReached(30, content), save.replied("S", content),
                     save.replied("S", Arrival::emptyFiles), save.sourceGone()}),
              Steps(4, Step::none));
    DirectSaveProgress abandoned;
    EXPECT_EQ((Steps{abandoned.sourceGone(), abandoned.replied("S", content)}), (Steps{Step::fail, Step::none}));
}

TEST(DirectSaveProgressTest, waitsForContentThatComesAfterTheSuccess) {
    DirectSaveProgress save;
    EXPECT_EQ((Steps{save.replied("S", Arrival::emptyFiles), save.sourceGone(), save.written(Arrival::emptyFiles)}),
              (Steps{Step::wait, Step::none, Step::none}));
    DirectSaveProgress empty = save;
    EXPECT_EQ(save.written(Arrival::content), Step::collect);
    EXPECT_EQ(empty.timeLimitReached(0, Arrival::emptyFiles), Step::fail);
}

TEST(DropFolder, isFreshPrivateAndListsWhatArrivedWithoutLinks) {
    const TemporaryFolder spool;
    const FileURL parent = *FileURL::fromPath(spool.path());
    const DropFolder folder = DropFolder::make(parent).value();
    const DropFolder other = DropFolder::make(parent).value();
    EXPECT_NE(folder.url(), other.url());
    EXPECT_EQ(folder.url().parent(), parent);
    EXPECT_EQ(fs::status(folder.url().path()).permissions(), fs::perms::owner_all);
    EXPECT_FALSE(DropFolder::make(parent.appending("none")));

    const std::string place = folder.url().lastPathComponent();
    spool.write(place + "/b", "");
    EXPECT_FALSE(folder.hasContent());
    spool.write(place + "/b", "12345");
    EXPECT_TRUE(folder.hasContent());
    spool.write(place + "/a/inside", "123");
    fs::create_symlink("/etc/passwd", spool.path(place + "/link"));
    EXPECT_EQ(folder.files(), (std::vector{folder.url().appending("a"), folder.url().appending("b")}));
    EXPECT_EQ(folder.size(), 8U);

    spool.write(other.url().lastPathComponent() + "/empty", "");
    for (const DropFolder& each : {folder, other})
        each.discardIfEmpty();
    EXPECT_EQ(spool.names(), std::vector{place});
    EXPECT_EQ(spool.read(place + "/b"), "12345");
}

using Watch = DragWatching::Step;
using Watches = std::vector<Watch>;
using Owner = DragWatching::Owner;

constexpr std::uint32_t uriList = 7;
constexpr std::uint32_t directSave = 8;
constexpr std::uint32_t text = 9;

DragWatching asked() {
    DragWatching watching;
    EXPECT_EQ(watching.ownerChanged(Owner::another, true), Watch::ask);
    return watching;
}

TEST(DragOffer, isJudgedByTypesAndUnknownWhereNoneAreTold) {
    const auto judge = [](std::optional<std::vector<std::uint32_t>> targets, std::vector<std::uint32_t> list = {}) {
        return judgeDrag(targets, list, uriList, directSave);
    };
    EXPECT_EQ(judge({{text, directSave, uriList}}), DragOffer::files);
    EXPECT_EQ(judge({{text, directSave}}), DragOffer::promise);
    EXPECT_EQ(judge(std::nullopt, {text, uriList}), DragOffer::files);
    EXPECT_EQ(judge(std::nullopt), DragOffer::unknown);
}

TEST(DragWatching, followsADragToItsEnd) {
    DragWatching drag = asked();
    EXPECT_EQ((Watches{drag.answered(DragOffer::files), drag.buttonsSeen(true), drag.buttonsSeen(false),
                       drag.buttonsSeen(false), drag.settled()}),
              (Watches{Watch::announce, Watch::none, Watch::settle, Watch::none, Watch::end}));
    EXPECT_EQ(drag.ending(), DragEnd::released);
    // A late drop will not come any more.
    EXPECT_EQ((Watches{drag.settled(), drag.ownerChanged(Owner::nobody, false)}), (Watches{Watch::none, Watch::end}));
    EXPECT_EQ(drag.ownerChanged(Owner::nobody, false), Watch::none);
    DragWatching dying = asked();
    EXPECT_EQ((Watches{dying.answered(DragOffer::files), dying.ownerChanged(Owner::nobody, true), dying.settled()}),
              (Watches{Watch::announce, Watch::settle, Watch::end}));
    EXPECT_EQ(dying.ending(), DragEnd::sourceGone);
}

TEST(DragWatching, restsOnDragsThatAreNotForTheShelf) {
    DragWatching other = asked();
    EXPECT_EQ((Watches{other.answered(DragOffer::nothing), other.buttonsSeen(false),
                       other.ownerChanged(Owner::ourselves, true), other.answered(DragOffer::files),
                       other.ownerChanged(Owner::another, false)}),
              (Watches{Watch::rest, Watch::none, Watch::none, Watch::none, Watch::none}));
    DragWatching silent = asked();
    EXPECT_EQ((Watches{silent.buttonsSeen(false), silent.answered(DragOffer::files), silent.settled()}),
              (Watches{Watch::settle, Watch::none, Watch::rest}));
}

TEST(WaylandDrag, endsWithTheFirstSignOfItsEndOrSomeTimeAfterTheLastOfItsLife) {
    using namespace std::chrono_literals;
    constexpr WaylandDrag::Pointer place{640, 450};
    WaylandDrag drag;
    const auto begin = [&](WaylandDrag::Types types) { drag.begin(100s, place, types); };

    begin(WaylandDrag::Types::toldAtTimes);
    EXPECT_FALSE(drag.isOn(101s, {641, 450})) << "the server sees the pointer move";
    drag.answered(false, 101s);
    EXPECT_TRUE(drag.isOn(109s, place));
    EXPECT_FALSE(drag.isOn(111s, place) || drag.isWorthAsking(109s));
    drag.seen(DragSign::entered, 105s);
    EXPECT_TRUE(drag.isOn(500s, place));
    drag.seen(DragSign::left, 105s);
    EXPECT_FALSE(drag.isOn(108s, place));
    drag.seen(DragSign::entered, 108s);
    drag.seen(DragSign::dropped, 109s);
    EXPECT_FALSE(drag.isOn(109s, place));

    begin(WaylandDrag::Types::toldThroughout);
    EXPECT_FALSE(drag.isWorthAsking(100s));
    EXPECT_TRUE(drag.isWorthAsking(101s));
    drag.answered(true, 108s);
    EXPECT_FALSE(drag.isWorthAsking(108s));
    drag.seen(DragSign::left, 108s);
    EXPECT_TRUE(drag.isOn(117s, place));
    drag.answered(false, 117s);
    EXPECT_FALSE(drag.isOn(117s, place));
}

}  // namespace
}  // namespace stowpocket
