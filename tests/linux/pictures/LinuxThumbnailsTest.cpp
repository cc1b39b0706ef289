// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/LinuxThumbnails.h"
#include "linux/pictures/PictureFiles.h"
#include "platform/qt/QtDispatch.h"
#include "platform/qt/QtImages.h"

#include <QBuffer>
#include <QDBusConnection>
#include <QPainter>

#include <sys/stat.h>
#include <sys/wait.h>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

class LinuxThumbnailsTest : public testing::Test {
protected:
    void use(const std::string& decoder, std::chrono::milliseconds limit = 30s) {
        thumbnails_ = std::make_unique<LinuxThumbnails>(dispatch_, decoder, limit,
                                                        [] { return QDBusConnection(QStringLiteral("none")); });
    }
    std::optional<Image> thumbnail(const FileURL& url, double scale = 1) {
        std::vector<std::optional<Image>> answers;
        thumbnails_->generate({url, {48, 48}, scale}, [&answers](const auto& image) { answers.push_back(image); });
        EXPECT_TRUE(answers.empty()) << "never before the call returns";
        EXPECT_TRUE(comesTrue([&answers] { return !answers.empty(); }));
        return answers.empty() ? std::nullopt : answers.front();
    }
    /// How often a script that notes its runs was started.
    [[nodiscard]] qsizetype runCount() const { return files_.read("runs").count('\n'); }

    PictureFiles files_;
    QtDispatch dispatch_;
    std::unique_ptr<LinuxThumbnails> thumbnails_;
};

TEST_F(LinuxThumbnailsTest, fitsPicturesIntoTheTile) {
    use(IMAGE_DECODER);
    const Image wide = thumbnail(files_.draw("wide.png", {400, 200}), 2).value();
    EXPECT_EQ(qtImage(wide).size(), QSize(96, 48));
    EXPECT_EQ(wide.size, (Size{48, 24}));
    EXPECT_EQ(qtImage(wide).pixelColor(50, 20), QColor(Qt::red));
    EXPECT_EQ(qtImage(wide).format(), QImage::Format_RGB32) << "which is drawn fast and packed small";
    QImage glass(60, 60, QImage::Format_ARGB32);
    glass.fill(QColor(0, 0, 255, 100));
    ASSERT_TRUE(glass.save(QString::fromStdString(files_.path("glass.png"))));
    EXPECT_EQ(qtImage(thumbnail(files_.url("glass.png")).value()).pixelColor(5, 5).alpha(), 100);

    const auto sizeOf = [this](const FileURL& url) { return qtImage(thumbnail(url).value()).size(); };
    EXPECT_EQ(sizeOf(files_.draw("small.bmp", {10, 20})), QSize(10, 20)) << "never enlarged";
    EXPECT_EQ(sizeOf(files_.draw("line.png", {4000, 2})), QSize(48, 1));
    files_.draw("whole.png", {60, 60});
    files_.rename("whole.png", "misnamed.jpg");
    EXPECT_TRUE(thumbnail(files_.url("misnamed.jpg"))) << "the content decides";
}

TEST_F(LinuxThumbnailsTest, turnsPhotographsUpright) {
    use(IMAGE_DECODER);
    QImage photograph(400, 200, QImage::Format_RGB32);
    photograph.fill(Qt::white);
    QPainter(&photograph).fillRect(0, 0, 200, 200, Qt::black);
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    ASSERT_TRUE(photograph.save(&buffer, "jpg"));
    // One EXIF entry behind the start mark: orientation 6, to be turned clockwise by a quarter.
    jpeg.insert(2, QByteArray::fromHex("ffe10022457869660000"
                                       "4d4d002a00000008000101120003000000010006000000000000"));
    files_.write("turned.jpg", jpeg);

    const QImage upright = qtImage(thumbnail(files_.url("turned.jpg")).value());
    ASSERT_EQ(upright.size(), QSize(24, 48));
    EXPECT_LT(upright.pixelColor(12, 5).lightness(), 50);
    EXPECT_GT(upright.pixelColor(12, 43).lightness(), 200);
}

TEST_F(LinuxThumbnailsTest, givesNoneForWhatHasNoPicture) {
    use(IMAGE_DECODER);
    files_.draw("whole.png", {300, 300});
    const QByteArray png = files_.read("whole.png");
    QByteArray bomb = png;
    bomb.replace(16, 8, QByteArray::fromHex("0000753000007530"));  // 30000 x 30000
    files_.write("folder.png/inside", {});
    ASSERT_EQ(::mkfifo(files_.path("pipe.png").c_str(), 0600), 0);
    for (const FileURL& url :
         {files_.write("cut.png", png.left(40)), files_.write("bomb.png", bomb), files_.write("empty.png", {}),
          files_.write("notes.txt", "text"), files_.write("film.mp4", "no bus to ask"), files_.url("folder.png"),
          files_.url("pipe.png"), files_.url("missing.png"),
          files_.write("drawing.png", "<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>")})
        EXPECT_FALSE(thumbnail(url)) << url.string();
}

TEST_F(LinuxThumbnailsTest, givesUpDecodersThatHangOrFloodOrAreMissing) {
    const FileURL picture = files_.draw("a.png", {60, 60});
    ASSERT_EQ(::mkfifo(files_.path("never").c_str(), 0600), 0);
    use(files_.script("read -r line < '" + files_.path("never") + "'"), 100ms);
    EXPECT_FALSE(thumbnail(picture));
    use(files_.script("exec >&-; read -r line < '" + files_.path("never") + "'"));
    EXPECT_FALSE(thumbnail(picture)) << "closes its output and stays";
    use(files_.script("exec cat /dev/zero"));
    EXPECT_FALSE(thumbnail(picture));
    use(files_.path("absent"));
    EXPECT_FALSE(thumbnail(picture));
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1) << "no child is left";
}

TEST_F(LinuxThumbnailsTest, givesDecodersNothingButTheFile) {
    const FileURL picture = files_.draw("a.png", {60, 60});
    const FileDescriptor inherited(::dup(STDIN_FILENO));  // not to be closed by itself
    use(files_.script("cd '" + files_.path() + "'; ls -l /proc/self/fd > seen; cat >> seen; env > environment"));
    EXPECT_FALSE(thumbnail(picture));
    const QByteArray text = files_.read("seen");
    EXPECT_TRUE(text.contains("0 -> " + QByteArray::fromStdString(picture.path())));
    EXPECT_EQ(text.left(text.indexOf("PNG")).count(" -> "), 4) << text.toStdString();  // one is the listing itself
    for (const char* const name : {"HOME=", "XDG_RUNTIME_DIR=", "DISPLAY=", "PATH="})
        EXPECT_FALSE(files_.read("environment").contains(name)) << name;
}

TEST_F(LinuxThumbnailsTest, triesAFileOnceUntilItChanges) {
    use(files_.script("echo >> '" + files_.path("runs") + "'"));
    const FileURL broken = files_.draw("broken.png", {60, 60});
    int answerCount = 0;
    for (int request = 0; request < 3; ++request)
        thumbnails_->generate({broken, {48, 48}, 1}, [&answerCount](const auto&) { ++answerCount; });
    EXPECT_TRUE(comesTrue([&answerCount] { return answerCount == 3; }));
    EXPECT_EQ(runCount(), 1) << "requests under way share one answer";
    EXPECT_FALSE(thumbnail(broken));
    EXPECT_EQ(runCount(), 1);
    files_.draw("broken.png", {61, 61}, Qt::green);
    EXPECT_FALSE(thumbnail(broken));
    EXPECT_EQ(runCount(), 2);
}

TEST_F(LinuxThumbnailsTest, answersNobodyAfterItsEnd) {
    use(IMAGE_DECODER);
    for (const char* const name : {"a.png", "b.png", "c.png"})
        thumbnails_->generate({files_.draw(name, {60, 60}), {48, 48}, 1}, [](const auto&) { FAIL(); });
    thumbnails_.reset();
    bool isDrained = false;
    dispatch_.async([&isDrained] { isDrained = true; });
    EXPECT_TRUE(comesTrue([&isDrained] { return isDrained; }));
}

}  // namespace
}  // namespace stowpocket
