// SPDX-License-Identifier: MIT
#include "contracts/TemporaryFolder.h"
#include "fakes/FakeFiles.h"
#include "platform/linux/storage/PatientProbe.h"
#include "platform/linux/storage/PosixFileManager.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

struct InMemory {
    FakeFiles files;
    [[nodiscard]] FileURL url(const std::string& name) const { return *FileURL::fromPath("/root/" + name); }
    void write(const std::string& name, const std::string& contents) { files.add(url(name).path(), contents); }
    [[nodiscard]] std::string read(const std::string& name) const { return files.contents(url(name)); }
};

struct OnDisk {
    TemporaryFolder folder;
    PatientProbe probe{[](const std::string&) { return std::nullopt; }};
    PosixFileManager files{probe};
    [[nodiscard]] FileURL url(const std::string& name) const { return folder.url(name); }
    void write(const std::string& name, const std::string& contents) { folder.write(name, contents); }
    [[nodiscard]] std::string read(const std::string& name) const { return folder.read(name); }
};

template <class Subject>
class FileManagerContract : public testing::Test {
protected:
    [[nodiscard]] FileURL url(const std::string& name) const { return subject.url(name); }
    Subject subject;
    FileManager& files = subject.files;
};

using Subjects = testing::Types<InMemory, OnDisk>;
TYPED_TEST_SUITE(FileManagerContract, Subjects);

TYPED_TEST(FileManagerContract, tellsExistenceAndSize) {
    this->subject.write("file", "12345");
    EXPECT_TRUE(this->files.fileExists(this->url("file")));
    EXPECT_EQ(this->files.attributes(this->url("file")).value_or(FileAttributes{}).size, 5);
    EXPECT_FALSE(this->files.fileExists(this->url("absent")));
    EXPECT_FALSE(this->files.attributes(this->url("absent")));
}

TYPED_TEST(FileManagerContract, copiesToAFreePlaceOnly) {
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

TYPED_TEST(FileManagerContract, removesAndIsContentWithNothing) {
    this->subject.write("file", "x");
    EXPECT_TRUE(this->files.removeItem(this->url("file")));
    EXPECT_FALSE(this->files.fileExists(this->url("file")));
    EXPECT_TRUE(this->files.removeItem(this->url("file")));
}

}  // namespace
}  // namespace stowpocket
