// SPDX-License-Identifier: MIT
#pragma once

#include "services/Files.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace stowpocket {

/// Adapters that work on real files. `Adapters` has `files` and `bookmarks`.
template <class Adapters>
struct OnDisk {
    TemporaryFolder folder;
    Adapters adapters;
    FileManager& files = adapters.files;
    Bookmarks& bookmarks = adapters.bookmarks;
    [[nodiscard]] FileURL url(const std::string& name) const { return folder.url(name); }
    void write(const std::string& name, const std::string& contents) { folder.write(name, contents); }
    void replace(const std::string& name) {
        folder.write("replacement", "other");
        folder.rename("replacement", name);
    }
    void rename(const std::string& from, const std::string& to) { folder.rename(from, to); }
    [[nodiscard]] std::string read(const std::string& name) const { return folder.read(name); }
};

/// What every FileManager with its Bookmarks promises.
template <class Subject>
struct FilesContract : testing::Test {
    [[nodiscard]] FileURL url(const std::string& name) const { return subject.url(name); }
    Subject subject;
    FileManager& files = subject.files;
    Bookmarks& bookmarks = subject.bookmarks;
};
TYPED_TEST_SUITE_P(FilesContract);

TYPED_TEST_P(FilesContract, tellsExistenceAndSizeAndRemoves) {
    this->subject.write("file", "12345");
    EXPECT_TRUE(this->files.fileExists(this->url("file")));
    EXPECT_EQ(this->files.attributes(this->url("file")).value_or(FileAttributes{}).size, 5);
    EXPECT_TRUE(this->files.removeItem(this->url("file")));
    EXPECT_FALSE(this->files.fileExists(this->url("file")));
    EXPECT_FALSE(this->files.attributes(this->url("file")));
    EXPECT_FALSE(this->bookmarks.create(this->url("file")));
    EXPECT_TRUE(this->files.removeItem(this->url("file"))) << "content with nothing";
}

TYPED_TEST_P(FilesContract, copiesToAFreePlaceOnly) {
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

TYPED_TEST_P(FilesContract, bookmarksAreAnsweredEachInItsPlace) {
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

REGISTER_TYPED_TEST_SUITE_P(FilesContract, tellsExistenceAndSizeAndRemoves, copiesToAFreePlaceOnly,
                            bookmarksAreAnsweredEachInItsPlace);

}  // namespace stowpocket
