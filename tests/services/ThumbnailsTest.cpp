// SPDX-License-Identifier: MIT
#include "fakes/FakePictures.h"
#include "linux/pictures/PictureFiles.h"
#include "platform/linux/pictures/LinuxThumbnails.h"
#include "platform/qt/QtDispatch.h"

#include <QDBusConnection>

namespace stowpocket {
namespace {

struct Faked {
    std::unique_ptr<FakeThumbnails> thumbnails = std::make_unique<FakeThumbnails>();
    void settle() const {
        for (const FakeThumbnails::Asked& each : std::exchange(thumbnails->asked, {}))
            each.completion(each.request.fileURL.pathExtension() == "png" ? std::optional(fakeImage())
                                                                          : std::nullopt);
    }
};

struct OnLinux {
    QtDispatch dispatch;
    std::unique_ptr<LinuxThumbnails> thumbnails = std::make_unique<LinuxThumbnails>(
        dispatch, IMAGE_DECODER, std::chrono::seconds(30), [] { return QDBusConnection(QStringLiteral("none")); });
    void settle() {}
};

template <class Subject>
class ThumbnailsContract : public testing::Test {
protected:
    void ask(const FileURL& url) {
        subject.thumbnails->generate({url, {48, 48}, 1}, [this](const std::optional<Image>& image) {
            answers += image ? "picture " : "none ";
        });
    }
    bool comes(const std::string& expected) {
        subject.settle();
        return comesTrue([&] { return answers == expected; });
    }

    PictureFiles files;
    std::string answers;
    Subject subject;
};
using Subjects = testing::Types<Faked, OnLinux>;
TYPED_TEST_SUITE(ThumbnailsContract, Subjects);

TYPED_TEST(ThumbnailsContract, answerEachRequestOnceAndLater) {
    const FileURL picture = this->files.draw("a.png", {60, 60});
    for (const FileURL& url : {picture, picture}) {
        this->ask(url);
        EXPECT_EQ(this->answers, "");
    }
    EXPECT_TRUE(this->comes("picture picture "));
    this->ask(this->files.write("notes.txt", "text"));
    EXPECT_TRUE(this->comes("picture picture none "));
}

TYPED_TEST(ThumbnailsContract, answerNobodyAfterTheirEnd) {
    for (const char* const name : {"a.png", "b.png", "c.png"})
        this->ask(this->files.draw(name, {60, 60}));
    this->subject.thumbnails.reset();
    QtDispatch dispatch;
    bool isDrained = false;
    dispatch.async([&isDrained] { isDrained = true; });
    EXPECT_TRUE(comesTrue([&isDrained] { return isDrained; }));
    EXPECT_EQ(this->answers, "");
}

}  // namespace
}  // namespace stowpocket
