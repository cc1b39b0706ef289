// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/LocalThumbnailer.h"

#include "platform/linux/pictures/RegularFile.h"
#include "platform/qt/QtImages.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QImageReader>
#include <QMimeDatabase>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <span>

namespace stowpocket {
namespace {

/// The largest size that the cache knows ("xx-large").
constexpr std::uint32_t maxSide = 1024;
/// Texts are compressed: without a limit a small file could require gigabytes.
constexpr std::uint32_t maxTextLength = 8192;
constexpr int maxTextCount = 32;

constexpr std::array<std::uint8_t, 8> pngSignature{0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
constexpr std::size_t chunkOverhead = 12;  // length, type and check sum

std::uint32_t bigEndian(std::span<const std::uint8_t> bytes) {
    return std::uint32_t{bytes[0]} << 24u | std::uint32_t{bytes[1]} << 16u | std::uint32_t{bytes[2]} << 8u | bytes[3];
}

struct Chunk {
    std::string_view type;
    std::span<const std::uint8_t> data;
};

/// Removes the first chunk from `png` and returns it; none if it is cut off.
std::optional<Chunk> takeChunk(std::span<const std::uint8_t>& png) {
    if (png.size() < chunkOverhead)
        return std::nullopt;
    const std::size_t length = bigEndian(png);
    if (png.size() - chunkOverhead < length)
        return std::nullopt;
    const std::string_view type(reinterpret_cast<const char*>(png.data() + 4), 4);
    const Chunk chunk{type, png.subspan(8, length)};
    png = png.subspan(chunkOverhead + length);
    return chunk;
}

bool isModestSide(std::uint32_t side) {
    return side >= 1 && side <= maxSide;
}

bool isModestHeader(const Chunk& chunk) {
    return chunk.type == "IHDR" && chunk.data.size() == 13 && isModestSide(bigEndian(chunk.data)) &&
           isModestSide(bigEndian(chunk.data.subspan(4)));
}

/// Whether the image library can safely read `png`: its own header limits the memory that this takes.
bool isModestPng(std::span<const std::uint8_t> png) {
    if (png.size() > maxThumbnailFileSize || png.size() < pngSignature.size() ||
        !std::ranges::equal(png.first(pngSignature.size()), pngSignature))
        return false;
    png = png.subspan(pngSignature.size());
    std::optional<Chunk> chunk = takeChunk(png);
    if (!chunk || !isModestHeader(*chunk))
        return false;
    int textCount = 0;
    while (chunk && chunk->type != "IEND") {
        const bool isText = chunk->type == "tEXt" || chunk->type == "zTXt" || chunk->type == "iTXt";
        if (isText && (++textCount > maxTextCount || chunk->data.size() > maxTextLength))
            return false;
        chunk = takeChunk(png);
    }
    return chunk.has_value();
}

struct CachedSize {
    const char* name;
    int side;
};
constexpr std::array<CachedSize, 4> cachedSizes{
    {{"normal", 128}, {"large", 256}, {"x-large", 512}, {"xx-large", 1024}}};

std::string environmentVariable(const char* name) {
    const char* const value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

std::string cacheRoot() {
    const std::string cache = environmentVariable("XDG_CACHE_HOME");
    return (cache.starts_with('/') ? cache : environmentVariable("HOME") + "/.cache") + "/thumbnails/";
}

/// The most bytes that any rule of the type database examines.
constexpr std::size_t typeHeadSize = 16384;
constexpr std::int64_t maxNetworkFileSize = std::int64_t{200} * 1000 * 1000;

int pixels(double points, double scale) {
    return std::clamp(static_cast<int>(std::lround(points * scale)), 1, maxDecodedSide);
}

/// Whether every pixel is opaque. An image may have an alpha channel without using it.
bool isOpaque(const QImage& image) {
    for (int row = 0; row < image.height(); ++row) {
        const std::span line(reinterpret_cast<const QRgb*>(image.constScanLine(row)),
                             static_cast<std::size_t>(image.width()));
        if (std::ranges::any_of(line, [](QRgb pixel) { return qAlpha(pixel) != 255; }))
            return false;
    }
    return true;
}

/// `source` scaled to fit the request, never enlarged, in the format that is drawn fastest.
Image fitted(const QImage& source, const ThumbnailRequest& request) {
    const QSize box(pixels(request.size.width, request.scale), pixels(request.size.height, request.scale));
    QImage image = source.width() <= box.width() && source.height() <= box.height()
                       ? source
                       : source.scaled(box, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    image.convertTo(QImage::Format_ARGB32_Premultiplied);
    if (isOpaque(image))
        image.convertTo(QImage::Format_RGB32);
    image.setDevicePixelRatio(1);
    const Size size{image.width() / request.scale, image.height() / request.scale};
    return {std::make_shared<QtImageContent>(std::move(image)), size};
}

QString typeName(const FileURL& url, const RegularFile& file) {
    const Bytes head = file.head(typeHeadSize);
    const auto content =
        QByteArray::fromRawData(reinterpret_cast<const char*>(head.data()), static_cast<qsizetype>(head.size()));
    const QString name = QString::fromStdString(url.lastPathComponent());
    return QMimeDatabase().mimeTypeForFileNameAndData(name, content).name();
}

/// The types for which the thumbnailers of desktops make pictures; a request for another type would only start them
/// in vain.
bool isKnownToDesktops(const QString& type) {
    constexpr std::array<const char*, 11> prefixes{
        "image/",          "video/",           "audio/",          "font/",           "model/",
        "application/pdf", "application/epub", "application/msw", "application/vnd", "application/postscript",
        "application/x-cb"};
    return std::ranges::any_of(prefixes,
                               [&type](const char* prefix) { return type.startsWith(QLatin1String(prefix)); });
}

}  // namespace

std::optional<QImage> acceptedThumbnail(std::span<const std::uint8_t> file, std::string_view uri,
                                        std::int64_t modifiedSeconds) {
    if (!isModestPng(file))
        return std::nullopt;
    QByteArray bytes =
        QByteArray::fromRawData(reinterpret_cast<const char*>(file.data()), static_cast<qsizetype>(file.size()));
    QBuffer buffer(&bytes);
    QImageReader reader(&buffer, "png");
    reader.setAutoDetectImageFormat(false);
    // The texts are read from the image, because the reader cuts their names at the first colon.
    QImage image = reader.read();
    if (image.isNull() || image.text(QStringLiteral("Thumb::URI")).toStdString() != uri)
        return std::nullopt;
    // Some programs write fractions of a second.
    const QString modified = image.text(QStringLiteral("Thumb::MTime")).section(QLatin1Char('.'), 0, 0);
    if (modified != QString::number(modifiedSeconds))
        return std::nullopt;
    return image;
}

ThumbnailCache::ThumbnailCache() : root_(cacheRoot()) {}

std::optional<QImage> ThumbnailCache::find(const FileURL& url, std::int64_t modifiedSeconds, int side) const {
    const std::string uri = url.string();
    const QByteArray key =
        QCryptographicHash::hash(QByteArray::fromStdString(uri), QCryptographicHash::Md5).toHex() + ".png";
    for (const CachedSize& size : cachedSizes) {
        if (size.side < side)
            continue;
        const std::optional<RegularFile> file = RegularFile::open(root_ + size.name + "/" + key.toStdString());
        if (!file)
            continue;
        if (std::optional<QImage> image =
                acceptedThumbnail(file->head(maxThumbnailFileSize + 1), uri, modifiedSeconds))
            return image;
    }
    return std::nullopt;
}

std::string ThumbnailCache::sizeName(int side) {
    for (const CachedSize& size : cachedSizes) {
        if (size.side >= side)
            return size.name;
    }
    return cachedSizes.back().name;
}

int pixelSide(const ThumbnailRequest& request) {
    return pixels(std::max(request.size.width, request.size.height), request.scale);
}

LocalThumbnailer::LocalThumbnailer(ImageDecoder decoder) : decoder_(std::move(decoder)) {}

LocalThumbnail LocalThumbnailer::make(const ThumbnailRequest& request, const std::optional<FileState>& failed) const {
    const std::optional<FileState> state = RegularFile::stateAt(request.fileURL.path());
    if (!state || state == failed)
        return {std::nullopt, state, {}};
    if (std::optional<Image> image = cached(request, *state))
        return {std::move(image), state, {}};
    return decoded(request, *state);
}

std::optional<Image> LocalThumbnailer::cached(const ThumbnailRequest& request, const FileState& state) const {
    const std::optional<QImage> image = cache_.find(request.fileURL, state.modifiedSeconds, pixelSide(request));
    return image ? std::optional(fitted(*image, request)) : std::nullopt;
}

LocalThumbnail LocalThumbnailer::decoded(const ThumbnailRequest& request, const FileState& state) const {
    LocalThumbnail answer{std::nullopt, state, {}};
    const std::optional<RegularFile> file = RegularFile::open(request.fileURL.path());
    if (!file)
        return answer;
    const QString type = typeName(request.fileURL, *file);
    if (type.startsWith(QLatin1String("image/"))) {
        const DecoderReply reply = decoder_.decode(*file, pixelSide(request));
        if (reply.outcome == DecoderReply::Outcome::decoded)
            answer.image = fitted(reply.image, request);
        if (reply.outcome == DecoderReply::Outcome::decoded || reply.outcome == DecoderReply::Outcome::failed)
            return answer;
    }
    const bool isTooFar = file->size() > maxNetworkFileSize && file->isOnNetwork();
    if (isKnownToDesktops(type) && !isTooFar)
        answer.typeForDesktop = type.toStdString();
    return answer;
}

}  // namespace stowpocket
