// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/LocalThumbnailer.h"

#include "platform/qt/QtImages.h"

#include <QMimeDatabase>

#include <algorithm>
#include <array>
#include <cmath>
#include <span>

namespace stowpocket {
namespace {

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
