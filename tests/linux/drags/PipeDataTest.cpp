// SPDX-License-Identifier: MIT
#include "platform/linux/drags/DropReading.h"

#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

/// What a source wrote before it closed its end.
int pipeWith(const std::string& text) {
    const int written = ::memfd_create("source", MFD_CLOEXEC);
    EXPECT_EQ(::write(written, text.data(), text.size()), static_cast<ssize_t>(text.size()));
    ::lseek(written, 0, SEEK_SET);
    return written;
}

class PipeDataTest : public testing::Test {
protected:
    [[nodiscard]] static PipeData dataOf(const std::string& text) {
        return PipeData([text](const std::string&) { return pipeWith(text); }, DropPatience());
    }
    [[nodiscard]] QString path() const { return folder_.filePath(QStringLiteral("contents")); }

private:
    const QTemporaryDir folder_;
};

TEST_F(PipeDataTest, readsToTheEndAndNoFurtherThanTheLimits) {
    const std::string list = "file:///a\r\nfile:///b\r\n";
    EXPECT_EQ(dataOf(list).list("text/uri-list").text, list);
    EXPECT_FALSE(dataOf({}).list("text/uri-list").failure);
    EXPECT_FALSE(dataOf(std::string(longestList, 'x')).list("text/uri-list").failure);
    EXPECT_EQ(dataOf(std::string(longestList + 1, 'x')).list("text/uri-list").failure, SelectionFailure::tooBig);
    EXPECT_FALSE(dataOf("picture").write("image/png", path()));
    EXPECT_EQ(QFileInfo(path()).size(), 7);
}

TEST_F(PipeDataTest, contentsThatCannotBeHadAreRefused) {
    EXPECT_EQ(dataOf({}).write("image/png", path()), SelectionFailure::refused);
    PipeData gone([](const std::string&) { return -1; }, DropPatience());
    EXPECT_EQ(gone.list("text/uri-list").failure, SelectionFailure::refused);
}

TEST_F(PipeDataTest, aSourceThatFallsSilentIsLateAndWhatItSaidCountsForNothing) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe2(ends.data(), O_CLOEXEC), 0);
    ASSERT_EQ(::write(ends[1], "file:///half", 12), 12);
    PipeData data([&](const std::string&) { return ends[0]; }, {.silence = 20ms, .list = 10s});
    const DragData::List list = data.list("text/uri-list");
    EXPECT_EQ(list.failure, SelectionFailure::late);
    EXPECT_EQ(list.text, "");
    ::close(ends[1]);
}

}  // namespace
}  // namespace stowpocket
