// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/ThumbnailCache.h"

#include "platform/linux/pictures/RegularFile.h"
#include "platform/linux/pictures/ThumbnailFile.h"

#include <QCryptographicHash>

#include <array>
#include <cstdlib>

namespace stowpocket {
namespace {

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

}  // namespace

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

}  // namespace stowpocket
