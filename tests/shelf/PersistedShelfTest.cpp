// SPDX-License-Identifier: MIT
#include "shelf/PersistedShelf.h"

#include "fakes/ShelfFixture.h"

#include <gtest/gtest.h>

#include <cmath>

namespace stowpocket {
namespace {

constexpr auto someID = "0F8FAD5B-D9CB-469F-A165-70867728950E";

PropertyValue::Dictionary entryByPath(const std::string& path, const std::string& id = someID) {
    return {{"id", id},
            {"filename", "stored name"},
            {"fileSize", std::int64_t{12}},
            {"dateAdded", 1234.5},
            {"fallbackPath", path}};
}

struct PersistedShelfTest : testing::Test, ShelfFixture {
    void store(PropertyValue value) {
        preferences.setValue(shelfBookmarksKey, std::move(value));
        preferences.saves = 0;
    }
    PropertyValue::Dictionary storedEntry(std::size_t index) {
        return *preferences.value(shelfBookmarksKey)->array()->at(index).dictionary();
    }
};

TEST_F(PersistedShelfTest, writesOneBookmarkOrOnePathPerItem) {
    files.unbookmarkable = {"/files/1.txt"};
    addFiles(2);
    const std::vector<ShelfItem>& items = manager->items();
    for (const std::size_t index : {0U, 1U}) {
        PropertyValue::Dictionary expected{{"id", items[index].id.text()},
                                           {"filename", items[index].filename},
                                           {"fileSize", std::int64_t{8}},
                                           {"dateAdded", 1'700'000'000.0}};
        if (index == 0)
            expected.emplace("bookmark", *items[0].bookmarkData);
        else
            expected.emplace("fallbackPath", "/files/1.txt");
        EXPECT_EQ(storedEntry(index), expected);
    }
}

TEST_F(PersistedShelfTest, comesBackAsItWas) {
    dispatch.advance(std::chrono::milliseconds(250));
    addFiles(3);
    const std::vector<ShelfItem> before = manager->items();
    restart();
    EXPECT_EQ(encodedShelf(manager->items()), encodedShelf(before));
    store(PropertyValue::Array{storedEntry(0), storedEntry(0)});
    restart();
    EXPECT_EQ(manager->items().size(), 2u);
    EXPECT_EQ(files.accesses["/files/0.txt"], 2) << "one for each start, whatever the number of its entries";
    manager->clear();
}

TEST_F(PersistedShelfTest, damagedEntriesAreLeftOutAndTheOthersKeepTheirOrder) {
    PropertyValue::Array entries{entryByPath("/first"), "no dictionary"};
    for (const char* const missing : {"id", "filename", "fileSize", "dateAdded", "fallbackPath"}) {
        PropertyValue::Dictionary entry = entryByPath("/damaged");
        entry.erase(missing);
        entries.emplace_back(entry);
        entry.insert_or_assign(missing, Bytes{1});
        entries.emplace_back(entry);
    }
    entries.emplace_back(entryByPath("/damaged", "not a UUID"));
    PropertyValue::Dictionary entry = entryByPath("/damaged");
    entry.emplace("bookmark", Bytes{0, 255, 7});
    entries.emplace_back(entry);
    for (const double date : {std::nan(""), HUGE_VAL, -HUGE_VAL, 1e300}) {  // beyond all calendars
        entry = entryByPath("/dated");
        entry.insert_or_assign("dateAdded", date);
        entries.emplace_back(entry);
    }
    entries.emplace_back(entryByPath("/last"));
    store(entries);

    manager->load();
    std::string paths;
    for (const ShelfItem& item : manager->items())
        paths += item.fileURL.path();
    EXPECT_EQ(paths, "/first/dated/dated/dated/dated/last");
    EXPECT_EQ(preferences.saves, 0) << "entries left out stay stored until the next change";
}

TEST_F(PersistedShelfTest, aRenamedFileIsFoundKeepsItsNameAndIsBookmarkedAnew) {
    addFiles(2);
    const std::optional<Bytes> oldBookmark = manager->items()[0].bookmarkData;
    files.rename("/files/0.txt", "/elsewhere/new.txt");
    preferences.saves = 0;
    posts = 0;

    restart();
    const ShelfItem& item = manager->items()[0];
    EXPECT_EQ(item.fileURL.path(), "/elsewhere/new.txt");
    EXPECT_EQ(posts, 0);
    restart();
    EXPECT_EQ(preferences.saves, 1) << "the next start has nothing to save";

    files.rename("/elsewhere/new.txt", "/newer.txt");
    files.unbookmarkable = {"/newer.txt"};
    const std::optional<Bytes> kept = manager->items()[0].bookmarkData;
    restart();
    EXPECT_EQ(manager->items()[0].bookmarkData, kept) << "no fresh one can be made";
    files.removeItem(fileAt("/newer.txt"));
    restart();
    EXPECT_EQ(names(), Names{"1.txt"}) << "what leads nowhere loses its entry";
}

TEST_F(PersistedShelfTest, filesThatHaveToBeSoughtArriveLater) {
    addFiles(4);
    const std::optional<Bytes> oldBookmark = manager->items()[1].bookmarkData;
    files.rename("/files/1.txt", "/elsewhere/new.txt");
    files.removeItem(fileAt("/files/2.txt"));
    files.seeksMissing = true;
    files.accesses.clear();
    preferences.saves = 0;
    posts = 0;

    restart();
    EXPECT_FALSE(manager->items()[1].isAvailable || manager->items()[2].isAvailable);
    EXPECT_EQ(files.accesses.size(), 2u) << "nothing to have access to";
    manager->removeItem(manager->items()[0].id);
    EXPECT_EQ(storedEntry(0).at("bookmark"), *oldBookmark) << "not lost by a change meanwhile";
    manager->removeMissingItems();
    EXPECT_EQ(names().size(), 3u) << "nor because the search takes long";

    dispatch.runAll();
    EXPECT_EQ(names(), (Names{"1.txt", "3.txt"}));
    const ShelfItem& moved = manager->items()[0];
    EXPECT_TRUE(moved.isAvailable);
    EXPECT_EQ(files.accesses["/elsewhere/new.txt"], 1);
    EXPECT_NE(moved.bookmarkData, oldBookmark);
    EXPECT_EQ(preferences.saves, 2);
    EXPECT_EQ(posts, 2) << "one item was removed, one not found";
}

TEST_F(PersistedShelfTest, anEntryByPathGetsABookmarkOrStaysAsMissing) {
    files.add("/there");
    PropertyValue::Dictionary there = entryByPath("/there");
    there.emplace("bookmark", "of another type");
    store(PropertyValue::Array{there, entryByPath("/gone")});
    manager->load();
    ASSERT_EQ(manager->items().size(), 2u);
    EXPECT_TRUE(manager->items()[0].isAvailable && manager->items()[0].bookmarkData);
    EXPECT_EQ(manager->items()[0].fileSize, 12) << "as stored";
    EXPECT_FALSE(manager->items()[1].isAvailable || manager->items()[1].bookmarkData);
    EXPECT_EQ(preferences.saves, 1);
    EXPECT_TRUE(files.accesses.empty()) << "no access is begun on a path";
}

TEST_F(PersistedShelfTest, anyPathComesBackAsItIsOrAsOneFromTheRoot) {
    const std::string path = "/caf\xE9 \xEF\xBF\xBD";
    files.add(path);
    files.unbookmarkable = {path};
    manager->addFiles(std::vector{fileAt(path)});
    EXPECT_EQ(names(), Names{"caf\xEF\xBF\xBD \xEF\xBF\xBD"});
    restart();
    EXPECT_EQ(manager->items().at(0).fileURL.path(), path);
    store(PropertyValue::Array{entryByPath("a"), entryByPath("")});
    manager->load();
    EXPECT_EQ(manager->items().at(0).fileURL.path(), "/a");
    EXPECT_EQ(manager->items().at(1).fileURL.path(), "/");
}

}  // namespace
}  // namespace stowpocket
