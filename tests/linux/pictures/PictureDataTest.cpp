// SPDX-License-Identifier: MIT
#include "linux/pictures/PictureFiles.h"
#include "platform/linux/pictures/ImageDecoder.h"
#include "platform/linux/pictures/LocalThumbnailer.h"
#include "platform/qt/QtImages.h"

#include <QBuffer>

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

using Outcome = DecoderReply::Outcome;

Bytes replyOfSize(int width, int height) {
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(QColor(10, 200, 30, 40));
    return encodedReply(image);
}

TEST(DecoderReplyTest, carriesPixelsAndTransparency) {
    const DecoderReply reply = parsedReply(replyOfSize(3, 5), 5);
    ASSERT_EQ(reply.outcome, Outcome::decoded);
    EXPECT_EQ(reply.image.size(), QSize(3, 5));
    EXPECT_EQ(reply.image.pixelColor(2, 4), QColor(10, 200, 30, 40));
    for (const Outcome outcome : {Outcome::failed, Outcome::unsupported, Outcome::unconfined})
        EXPECT_EQ(parsedReply(encodedReply(outcome), 5).outcome, outcome);
    EXPECT_EQ(parsedReply(encodedReply(Outcome::decoded), 5).outcome, Outcome::failed) << "without a picture";
}

TEST(DecoderReplyTest, refusesLengthsAndSizesThatWereNotAskedFor) {
    EXPECT_EQ(parsedReply(replyOfSize(9, 1), 8).outcome, Outcome::failed);
    EXPECT_EQ(parsedReply(replyOfSize(1, 9), 8).outcome, Outcome::failed);
    const Bytes whole = replyOfSize(2, 2);
    Bytes longer = whole;
    longer.push_back(0);
    Bytes lying = whole;
    lying[7] = 0x80;  // 2^31 + 2 columns: times 4 bytes that is 8 again, modulo 2^32
    for (const Bytes& bytes : {longer, lying, Bytes(whole.begin(), whole.end() - 1), Bytes{}})
        EXPECT_EQ(parsedReply(bytes, 8).outcome, Outcome::failed);
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
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::blue);
    image.setText(QStringLiteral("Thumb::URI"), QStringLiteral("file:///a"));
    image.setText(QStringLiteral("Thumb::MTime"), QStringLiteral("1"));
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

/// As irregular as a photograph: compressed without loss it stays about as large as it is.
QImage irregular(QImage::Format format) {
    QImage image(96, 72, format);
    std::uint32_t state = 1;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            state = state * 1664525u + 1013904223u;
            const int noise = static_cast<int>(state >> 28u);
            image.setPixelColor(x, y, QColor(x * 2 + noise, y * 3 + noise, 100 + noise, x < 48 ? 255 : 0));
        }
    }
    return image;
}

TEST(QtImageContent, isNearlyTheSameWhenPackedAndMuchSmaller) {
    const QImage original = irregular(QImage::Format_RGB32);
    const Image packed{QtImageContent(original).packed(), Size{48, 36}};
    ASSERT_TRUE(packed.content);
    EXPECT_LT(dynamic_cast<const PackedImageContent&>(*packed.content).file().capacity(),
              original.sizeInBytes() / 10);
    const QImage unpacked = qtImage(packed);
    ASSERT_EQ(unpacked.size(), original.size());
    for (const QPoint at : {QPoint(5, 5), QPoint(90, 8), QPoint(40, 60)}) {
        EXPECT_NEAR(unpacked.pixelColor(at).red(), original.pixelColor(at).red(), 40);
        EXPECT_NEAR(unpacked.pixelColor(at).green(), original.pixelColor(at).green(), 40);
    }
}

}  // namespace
}  // namespace stowpocket
