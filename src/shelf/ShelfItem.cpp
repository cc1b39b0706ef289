// SPDX-License-Identifier: MIT
#include "shelf/ShelfItem.h"

#include "foundation/Text.h"
#include "services/Files.h"

namespace stowpocket {

FileFacts fileFacts(const FileURL& url, FileManager& fileManager) {
    FileFacts facts{.filename = validUtf8(url.lastPathComponent()), .exists = fileManager.fileExists(url)};
    if (facts.exists) {
        const std::optional<FileAttributes> attributes = fileManager.attributes(url);
        facts.fileSize = attributes ? attributes->size.value_or(0) : 0;
    }
    return facts;
}

}  // namespace stowpocket
