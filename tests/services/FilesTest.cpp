// SPDX-License-Identifier: MIT
#include "fakes/FakeFiles.h"
#include "platform/linux/files/LinuxBookmarks.h"
#include "platform/linux/files/Mounts.h"
#include "platform/linux/files/PosixFileManager.h"
#include "platform/posix/FileProbe.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

struct InMemory {
    FakeFiles files;
    FakeFiles& bookmarks = files;
    [[nodiscard]] FileURL url(const std::string& name) const { return *FileURL::fromPath("/root/" + name); }
    void write(const std::string& name, const std::string& contents) { files.add(url(name).path(), contents); }
    void replace(const std::string& name) { files.add(url(name).path(), "other"); }
    void rename(const std::string& from, const std::string& to) { files.rename(url(from).path(), url(to).path()); }
    [[nodiscard]] std::string read(const std::string& name) const { return files.contents(url(name)); }
};

struct OnDisk {
    TemporaryFolder folder;
    MountTable mounts;
    FileProbe probe{[](const std::string&) { return std::nullopt; }};
    PosixFileManager files{probe};
    LinuxBookmarks bookmarks{mounts, probe, {}};
    [[nodiscard]] FileURL url(const std::string& name) const { return folder.url(name); }
    void write(const std::string& name, const std::string& contents) { folder.write(name, contents); }
    void replace(const std::string& name) {
        folder.write("replacement", "other");
        folder.rename("replacement", name);
    }
    void rename(const std::string& from, const std::string& to) { folder.rename(from, to); }
    [[nodiscard]] std::string read(const std::string& name) const { return folder.read(name); }
};

template <class Subject>
class FilesContract : public testing::Test {
protected:
    [[nodiscard]] FileURL url(const std::string& name) const { return subject.url(name); }
    Subject subject;
    FileManager& files = subject.files;
    Bookmarks& bookmarks = subject.bookmarks;
};

using Subjects = testing::Types<InMemory, OnDisk>;
TYPED_TEST_SUITE(FilesContract, Subjects);

TYPED_TEST(FilesContract, tellsExistenceAndSizeAndRemoves) {
    this->subject.write("file", "12345");
    EXPECT_TRUE(this->files.fileExists(this->url("file")));
    EXPECT_EQ(this->files.attributes(this->url("file")).value_or(FileAttributes{}).size, 5);
    EXPECT_TRUE(this->files.removeItem(this->url("file")));
    EXPECT_FALSE(this->files.fileExists(this->url("file")));
    EXPECT_FALSE(this->files.attributes(this->url("file")));
    EXPECT_FALSE(this->bookmarks.create(this->url("file")));
    EXPECT_TRUE(this->files.removeItem(this->url("file"))) << "content with nothing";
}

TYPED_TEST(FilesContract, copiesToAFreePlaceOnly) {
    ASSERT_TRUE(this->files.createDirectory(this->url("target")));
    EXPECT_TRUE(this->files.fileExists(this->url("target")));
    this->subject.write("file", "new");
    EXPECT_TRUE(this->files.copyItem(this->url("file"), this->url("target/copy")));
    EXPECT_EQ(this->subject.read("target/copy"), "new");
    EXPECT_EQ(this->subject.read("file"), "new");

    this->subject.write("target/taken", "old");
    EXPECT_FALSE(this->files.copyItem(this->url("file"), this->url("target/taken")));
    EXPECT_EQ(this->subject.read("target/taken"), "old");
    EXPECT_FALSE(this->files.copyItem(this->url("absent"), this->url("target/other")));
    EXPECT_FALSE(this->files.copyItem(this->url("file"), this->url("noSuchFolder/copy")));
}

TYPED_TEST(FilesContract, bookmarksAreAnsweredEachInItsPlace) {
    std::vector<Bytes> stored;
    for (const std::string name : {"kept", "renamed", "replaced", "deleted"}) {
        this->subject.write(name, "contents");
        stored.push_back(this->bookmarks.create(this->url(name)).value());
    }
    stored.insert(stored.begin() + 1, Bytes{'r', 'u', 'b', 'b', 'i', 's', 'h'});
    this->subject.rename("renamed", "other name");
    this->subject.replace("replaced");
    EXPECT_TRUE(this->files.removeItem(this->url("deleted")));

    auto resolved = this->bookmarks.resolve(stored);
    const auto sought = this->bookmarks.search(stored);
    for (std::size_t index = 0; index < stored.size(); ++index) {
        if (resolved[index] && resolved[index]->isToBeSought)
            resolved[index] = sought[index];
    }
    std::vector<std::string> answers;
    for (const std::optional<ResolvedBookmark>& answer : resolved)
        answers.push_back(answer ? answer->url.lastPathComponent() + (answer->isStale ? "*" : "") : "none");
    EXPECT_EQ(answers, (std::vector<std::string>{"kept", "none", "other name*", "replaced*", "none"}));
}

}  // namespace
}  // namespace stowpocket
