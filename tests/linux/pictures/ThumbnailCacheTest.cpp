// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/ThumbnailCache.h"
#include "linux/pictures/PictureFiles.h"

#include <QBuffer>

namespace stowpocket {
namespace {

TEST(ThumbnailCacheTest, findsFilesWithAnyName) {
    const std::pair<const char*, const char*> table[] = {
        {"/tmp/plain.png", "file:///tmp/plain.png"},
        {"/tmp/we ird [x]#\xC3\xA9%20;,'(1)&.png", "file:///tmp/we%20ird%20%5Bx%5D%23%C3%A9%2520%3B,'(1)&.png"},
        {"/tmp/latin\xE9?", "file:///tmp/latin%E9%3F"},
    };
    for (const auto& [path, uri] : table) {
        PictureFiles::cache(uri, "1700000000.25");
        EXPECT_TRUE(ThumbnailCache().find(*FileURL::fromPath(path), 1700000000, 96)) << path;
    }
}

TEST(ThumbnailCacheTest, believesOnlyWhatShowsThisFileAsItIs) {
    const FileURL url = *FileURL::fromPath("/tmp/stale");
    PictureFiles::cache(url.string(), "1700000000");
    EXPECT_TRUE(ThumbnailCache().find(url, 1700000000, 96));
    EXPECT_FALSE(ThumbnailCache().find(url, 1700000001, 96)) << "the file has changed since";

    const QString folder = qEnvironmentVariable("XDG_CACHE_HOME") + QStringLiteral("/thumbnails/normal/");
    const FileURL other = *FileURL::fromPath("/tmp/other");
    const auto name = [](const FileURL& file) {
        return QString::fromLatin1(
            QCryptographicHash::hash(QByteArray::fromStdString(file.string()), QCryptographicHash::Md5).toHex());
    };
    ASSERT_TRUE(
        QFile::copy(folder + name(url) + QStringLiteral(".png"), folder + name(other) + QStringLiteral(".png")));
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

Bytes thumbnailFile(const QSize& size, int textCount, qsizetype textLength) {
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::blue);
    image.setText(QStringLiteral("Thumb::URI"), QStringLiteral("file:///a"));
    image.setText(QStringLiteral("Thumb::MTime"), QStringLiteral("1"));
    QString text;
    for (qsizetype at = 0; at < textLength; ++at)  // must not shrink when it is compressed
        text += QChar(static_cast<ushort>(0x20 + (at * at + 7919 * at / 13) % 0x2000));
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
    EXPECT_FALSE(acceptedThumbnail(thumbnailFile({10, 1025}, 2, 0), "file:///a", 1));
    EXPECT_FALSE(acceptedThumbnail(thumbnailFile({10, 10}, 33, 8), "file:///a", 1));
    EXPECT_FALSE(acceptedThumbnail(thumbnailFile({10, 10}, 3, 20000), "file:///a", 1));
    for (const std::size_t length : {std::size_t{0}, std::size_t{7}, std::size_t{20}, modest.size() - 13})
        EXPECT_FALSE(acceptedThumbnail(std::span(modest).first(length), "file:///a", 1)) << length;
}

}  // namespace
}  // namespace stowpocket
