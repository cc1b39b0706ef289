// SPDX-License-Identifier: MIT
#include "shelf/ShelfItemBuilder.h"

#include "services/Bookmarks.h"
#include "services/Dispatch.h"
#include "shelf/ShelfManager.h"

namespace stowpocket {

std::vector<ShelfItem> builtItems(std::span<const FileURL> urls, const ShelfServices& services) {
    std::vector<ShelfItem> items;
    items.reserve(urls.size());
    for (const FileURL& url : urls) {
        FileFacts facts = fileFacts(url, services.core.files);
        items.push_back({.id = UUID::random(),
                         .fileURL = url,
                         .bookmarkData = services.bookmarks.create(url),
                         .filename = std::move(facts.filename),
                         .fileSize = facts.fileSize,
                         .dateAdded = services.core.clock.now(),
                         .isAvailable = facts.exists});
    }
    return items;
}

}  // namespace stowpocket
