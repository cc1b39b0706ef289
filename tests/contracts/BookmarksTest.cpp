// SPDX-License-Identifier: MIT
#include "contracts/TemporaryFolder.h"
#include "fakes/FakeFiles.h"
#include "platform/linux/storage/LinuxBookmarks.h"
#include "platform/linux/storage/MountTable.h"
#include "platform/linux/storage/PatientProbe.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

struct InMemory {
    FakeFiles bookmarks;
    [[nodiscard]] FileURL url(const std::string& name) const { return *FileURL::fromPath("/root/" + name); }
    void write(const std::string& name) { bookmarks.add(url(name).path()); }
    void replace(const std::string& name) { bookmarks.replace(url(name).path(), "other"); }
    void rename(const std::string& from, const std::string& to) {
        bookmarks.rename(url(from).path(), url(to).path());
    }
    void remove(const std::string& name) { bookmarks.removeItem(url(name)); }
};

struct OnDisk {
    TemporaryFolder folder;
    MountTable mounts;
    PatientProbe probe{[](const std::string&) { return std::nullopt; }};
    LinuxBookmarks bookmarks{mounts, probe, {}};
    [[nodiscard]] FileURL url(const std::string& name) const { return folder.url(name); }
    void write(const std::string& name) { folder.write(name); }
    void replace(const std::string& name) {
        folder.write("replacement", "other");
        folder.rename("replacement", name);
    }
    void rename(const std::string& from, const std::string& to) { folder.rename(from, to); }
    void remove(const std::string& name) { std::filesystem::remove(folder.path(name)); }
};

template <class Subject>
class BookmarksContract : public testing::Test {
protected:
    [[nodiscard]] FileURL url(const std::string& name) const { return subject.url(name); }
    Subject subject;
    Bookmarks& bookmarks = subject.bookmarks;
};

using Subjects = testing::Types<InMemory, OnDisk>;
TYPED_TEST_SUITE(BookmarksContract, Subjects);

TYPED_TEST(BookmarksContract, answersEachBookmarkInItsPlace) {
    std::vector<Bytes> stored;
    for (const std::string name : {"kept", "renamed", "replaced", "deleted"}) {
        this->subject.write(name);
        stored.push_back(this->bookmarks.create(this->url(name)).value());
    }
    stored.insert(stored.begin() + 1, Bytes{'r', 'u', 'b', 'b', 'i', 's', 'h'});
    this->subject.rename("renamed", "other name");
    this->subject.replace("replaced");
    this->subject.remove("deleted");

    const auto resolved = this->bookmarks.resolve(stored);
    ASSERT_EQ(resolved.size(), 5u);
    ASSERT_TRUE(resolved[0] && resolved[2] && resolved[3]);
    EXPECT_EQ(resolved[0]->url, this->url("kept"));
    EXPECT_FALSE(resolved[0]->isStale);
    EXPECT_FALSE(resolved[1]);
    EXPECT_EQ(resolved[2]->url, this->url("other name"));
    EXPECT_TRUE(resolved[2]->isStale);
    EXPECT_EQ(resolved[3]->url, this->url("replaced"));
    EXPECT_TRUE(resolved[3]->isStale);
    EXPECT_FALSE(resolved[4]);
}

TYPED_TEST(BookmarksContract, makesNoneForAFileThatIsNotThere) {
    EXPECT_FALSE(this->bookmarks.create(this->url("absent")));
    EXPECT_TRUE(this->bookmarks.resolve({}).empty());
}

}  // namespace
}  // namespace stowpocket
