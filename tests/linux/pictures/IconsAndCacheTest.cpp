// SPDX-License-Identifier: MIT
#include "fakes/FakePictures.h"
#include "linux/pictures/PictureFiles.h"
#include "platform/linux/pictures/ImageDecoder.h"
#include "platform/linux/pictures/LinuxWorkspaceIcons.h"
#include "platform/linux/pictures/LocalThumbnailer.h"
#include "platform/qt/QtImages.h"
#include "platform/qt/QtWindow.h"

#include <QBuffer>
#include <QIcon>

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace stowpocket {
namespace {

class LinuxWorkspaceIconsTest : public testing::Test {
protected:
    LinuxWorkspaceIconsTest() {
        QIcon::setThemeSearchPaths({QString::fromStdString(files_.path("themes"))});
        QIcon::setThemeName(QStringLiteral("hicolor"));  // what Qt takes outside the desktops that it knows
        QIcon::setFallbackThemeName({});
    }
    void installTheme(const std::string& name, const std::map<std::string, Qt::GlobalColor>& icons) {
        const std::string folder = "themes/" + name;
        files_.write(folder + "/index.theme", "[Icon Theme]\nName=Test\nDirectories=48x48\n[48x48]\nSize=48\n");
        for (const auto& [icon, color] : icons)
            files_.draw(folder + "/48x48/" + icon + ".png", {48, 48}, color);
    }
    QImage icon(const FileURL& url) { return qtImage(icons_.icon(url)); }
    QImage icon(const std::string& name) { return icon(files_.url(name)); }
    QColor color(const std::string& name) { return icon(name).pixelColor(24, 24); }

    PictureFiles files_;
    FakeScreen screen_;
    LinuxWorkspaceIcons icons_{screen_};
};

TEST_F(LinuxWorkspaceIconsTest, takesTheFirstThemeThatHasIconsForFiles) {
    installTheme("breeze", {{"image-x-generic", Qt::black}});
    installTheme("Adwaita", {{"text-x-generic", Qt::white},
                             {"image-x-generic", Qt::green},
                             {"image-png", Qt::blue},
                             {"folder", Qt::yellow}});
    installTheme("gnome", {{"text-x-generic", Qt::black}});
    EXPECT_EQ(color("a.png"), QColor(Qt::blue)) << "the icon of the very type";
    EXPECT_EQ(color("A.JPEG"), QColor(Qt::green)) << "the icon of its kind";
    EXPECT_EQ(color("unknown"), QColor(Qt::white));
    files_.write("album.png/inside", "");
    EXPECT_EQ(color("album.png"), QColor(Qt::yellow)) << "a folder, whatever its name";
    EXPECT_EQ(icons_.lowercased("JPG\u00C4"), "jpg\u00E4") << "capitals of any script";
    EXPECT_EQ(icon("a.pdf"), bundledIcon(QStringLiteral("pdf"), 48)) << "what the theme has not";
}

TEST_F(LinuxWorkspaceIconsTest, leavesADesktopsOwnThemeAlone) {
    installTheme("Own", {{"text-x-generic", Qt::cyan}});
    installTheme("Adwaita", {{"text-x-generic", Qt::white}});
    QIcon::setThemeName(QStringLiteral("Own"));
    EXPECT_EQ(color("a.txt"), QColor(Qt::cyan));
    EXPECT_TRUE(QIcon::fallbackThemeName().isEmpty());
}

TEST_F(LinuxWorkspaceIconsTest, takesTheSizeThatSuitsBestFromTheThemeOrWhatItInherits) {
    files_.write("themes/Own/index.theme", "[Icon Theme]\nInherits=../elsewhere,Parent\n\n[16]\nSize=16\n"
                                           "[32]\nSize=32\nType=Fixed\nContext=MimeTypes\n"
                                           "[64]\nSize=64\nType=Fixed\n[40x2]\nSize=40\nScale=2\n"
                                           "[any]\nType=Scalable\nSize=64\nMinSize=60\nMaxSize=256\n"
                                           "[actions]\nSize=48\nContext=Actions\n[x]\nSize=-1\n[y]\nSize=9e9\n");
    files_.write("themes/Parent/index.theme", "[Icon Theme]\nInherits=Own\n[48]\r\n Size = 48\r\n");
    QIcon::setThemeName(QStringLiteral("Own"));
    for (const auto& [icon, side, color] : {std::tuple("Own/16/text-x-generic", 16, Qt::red),
                                            {"Own/32/text-x-generic", 32, Qt::green},
                                            {"Own/64/text-x-generic", 64, Qt::blue},
                                            {"Own/actions/text-x-generic", 48, Qt::red},
                                            {"Own/32/video-x-generic", 32, Qt::green},
                                            {"Own/40x2/image-x-generic", 80, Qt::red},
                                            {"Own/64/image-x-generic", 64, Qt::blue},
                                            {"Parent/48/package-x-generic", 48, Qt::magenta}})
        files_.draw(std::string("themes/") + icon + ".png", {side, side}, color);
    files_.write(
        "themes/Own/any/audio-x-generic.svg",
        "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 9 9'><rect width='9' height='9' fill='#0ff'/></svg>");
    EXPECT_EQ(color("a.txt"), QColor(Qt::blue)) << "rather too large than too small";
    EXPECT_EQ(icon("a.txt").size(), QSize(48, 48));
    EXPECT_EQ(icon("a.mkv").size(), QSize(32, 32)) << "not blown up";
    EXPECT_EQ(color("a.gif"), QColor(Qt::blue)) << "not one for denser screens, whose drawings are simple";
    EXPECT_EQ(color("a.ogg"), QColor(Qt::cyan));
    EXPECT_EQ(color("a.zip"), QColor(Qt::magenta));
}

TEST_F(LinuxWorkspaceIconsTest, drawsItsOwnWithoutATheme) {
    files_.write("folder/inside", "");
    std::filesystem::rename(files_.script("exit"), files_.path("program"));
    const std::pair<const char*, const char*> table[] = {
        {"a.7z", "archive"},       {"a.flac", "audio"},       {"a.cpp", "code"},  {"a.exe", "executable"},
        {"program", "executable"}, {"missing", "file"},       {"a.iso", "file"},  {"folder", "folder"},
        {"a.svg", "image"},        {"a.PDF", "pdf"},          {"README", "text"}, {"a.odp", "presentation"},
        {"a.csv", "spreadsheet"},  {"a.xlsx", "spreadsheet"}, {"a.docx", "text"}, {"a.webm", "video"},
    };
    std::set<QByteArray> drawings;
    for (const auto& [name, kind] : table) {
        const QImage drawing = bundledIcon(QString::fromUtf8(kind), 48);
        EXPECT_EQ(icon(name), drawing) << name;
        EXPECT_GT(drawing.pixelColor(24, 30).alpha(), 0) << kind << " is not empty";
        drawings.emplace(reinterpret_cast<const char*>(drawing.constBits()), drawing.sizeInBytes());
    }
    EXPECT_EQ(drawings.size(), 12U) << "two kinds are drawn alike";
    EXPECT_EQ(icon(*FileURL::fromPath("/no/such/folder/")), bundledIcon(QStringLiteral("folder"), 48));
}

TEST_F(LinuxWorkspaceIconsTest, drawsForTheScreen) {
    screen_.scale = 1.5;
    EXPECT_EQ(icon("a.txt").size(), QSize(72, 72));
    EXPECT_EQ(icons_.icon(files_.url("a.txt")).size, (Size{48, 48}));
    screen_.scale.reset();
    EXPECT_EQ(icon("a.txt").size(), QSize(96, 96));
    EXPECT_EQ(QtMainScreen().backingScaleFactor(), 1.0);
}

using Outcome = DecoderReply::Outcome;

Bytes replyOfSize(int width, int height) {
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(QColor(10, 200, 30, 40));
    return encodedReply(image);
}

TEST(DecoderReplyTest, carriesPixelsAndTransparencyOfNoOtherSizeThanAskedFor) {
    const DecoderReply reply = parsedReply(replyOfSize(3, 5), 5);
    ASSERT_EQ(reply.image.size(), QSize(3, 5));
    EXPECT_EQ(reply.image.pixelColor(2, 4), QColor(10, 200, 30, 40));
    for (const Outcome outcome : {Outcome::unsupported, Outcome::unconfined})
        EXPECT_EQ(parsedReply(encodedReply(outcome), 5).outcome, outcome);
    const Bytes whole = replyOfSize(2, 2);
    Bytes longer = whole;
    longer.push_back(0);
    Bytes lying = whole;
    lying[7] = 0x80;  // 2^31 + 2 columns: times 4 bytes that is 8 again, modulo 2^32
    for (const Bytes& bytes : {longer, lying, Bytes(whole.begin(), whole.end() - 1), Bytes{}, replyOfSize(9, 1),
                               replyOfSize(1, 9), encodedReply(Outcome::failed), encodedReply(Outcome::decoded)})
        EXPECT_EQ(parsedReply(bytes, 8).outcome, Outcome::failed) << bytes.size();
}

TEST(ThumbnailCacheTest, findsFilesWithAnyNameAsTheyAre) {
    const std::pair<const char*, const char*> table[] = {
        {"/tmp/we ird [x]#\xC3\xA9%20;,'(1)&.png", "file:///tmp/we%20ird%20%5Bx%5D%23%C3%A9%2520%3B,'(1)&.png"},
        {"/tmp/latin\xE9?", "file:///tmp/latin%E9%3F"},
    };
    for (const auto& [path, uri] : table) {
        PictureFiles::cache(uri, "1700000000.25");
        EXPECT_TRUE(ThumbnailCache().find(*FileURL::fromPath(path), 1700000000, 96)) << path;
        EXPECT_FALSE(ThumbnailCache().find(*FileURL::fromPath(path), 1700000001, 96)) << "it has changed since";
    }
    const FileURL other = *FileURL::fromPath("/tmp/other");
    ASSERT_TRUE(QFile::copy(PictureFiles::cachePath(table[0].second), PictureFiles::cachePath(other.string())));
    EXPECT_FALSE(ThumbnailCache().find(other, 1700000000, 96)) << "it shows another file";
}

TEST(ThumbnailCacheTest, takesTheSmallestSizeThatIsLargeEnough) {
    const FileURL url = *FileURL::fromPath("/tmp/sizes");
    PictureFiles::cache(url.string(), "1", {128, 128}, QStringLiteral("normal"));
    EXPECT_FALSE(ThumbnailCache().find(url, 1, 144));
    PictureFiles::cache(url.string(), "1", {512, 512}, QStringLiteral("x-large"));
    PictureFiles::cache(url.string(), "1", {256, 256}, QStringLiteral("large"));
    EXPECT_EQ(ThumbnailCache().find(url, 1, 144)->width(), 256);
    EXPECT_EQ(ThumbnailCache().find(url, 1, 48)->width(), 128);
    EXPECT_EQ(ThumbnailCache::sizeName(144), "large");
}

Bytes thumbnailFile(const QSize& size, int textCount, int textLength) {
    QImage image = PictureFiles::thumbnail("file:///a", "1", size);
    QString text;
    for (int at = 0; at < textLength; ++at)  // must not shrink when it is compressed
        text += QChar(0x20 + (at * at + 7919 * at / 13) % 0x2000);
    for (int count = 2; count < textCount; ++count)
        image.setText(QString::number(count), text);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    EXPECT_TRUE(image.save(&buffer, "png"));
    return {bytes.begin(), bytes.end()};
}

TEST(ThumbnailCacheTest, acceptsModestPngFilesOnly) {
    const Bytes modest = thumbnailFile({1024, 10}, 32, 8);
    EXPECT_TRUE(acceptedThumbnail(modest, "file:///a", 1));
    for (const Bytes& refused : {thumbnailFile({10, 1025}, 2, 0), thumbnailFile({10, 10}, 33, 8),
                                 thumbnailFile({10, 10}, 3, 20000), Bytes(modest.begin(), modest.end() - 13)})
        EXPECT_FALSE(acceptedThumbnail(refused, "file:///a", 1)) << refused.size();
}

TEST(QtImageContent, isNearlyTheSameWhenPackedAndMuchSmaller) {
    QImage original(96, 72, QImage::Format_RGB32);
    std::uint32_t state = 1;  // as irregular as a photograph, which packs badly without loss
    for (int at = 0; at < 96 * 72; ++at) {
        state = state * 1664525u + 1013904223u;
        const int noise = static_cast<int>(state >> 28u);
        original.setPixelColor(at % 96, at / 96, QColor(at % 96 * 2 + noise, at / 96 * 3 + noise, 100 + noise));
    }
    const Image packed{QtImageContent(original).packed(), Size{48, 36}};
    EXPECT_LT(dynamic_cast<const PackedImageContent&>(*packed.content).file().capacity(),
              original.sizeInBytes() / 10);
    const QImage unpacked = qtImage(packed);
    ASSERT_EQ(unpacked.size(), original.size());
    for (const QPoint at : {QPoint(5, 5), QPoint(90, 8), QPoint(40, 60)})
        EXPECT_NEAR(unpacked.pixelColor(at).green(), original.pixelColor(at).green(), 40);
}

}  // namespace
}  // namespace stowpocket
