// SPDX-License-Identifier: MIT
#include "shelf/ShelfViewModel.h"

#include "services/Files.h"
#include "services/MainBundle.h"
#include "shelf/ArrivingFiles.h"

#include <algorithm>

namespace stowpocket {
namespace {

/// Copies a temporary file into the spool folder and returns the copy's URL. The name comes from the source of the
/// drop, so only a plain file name is accepted.
std::optional<FileURL> spooledCopy(const FileURL& temporaryFile, FileManager& fileManager) {
    const std::string name = temporaryFile.lastPathComponent();
    const FileURL spoolDirectory = ShelfManager::filePromiseDirectory(fileManager);
    if (!isPlainFileName(name) || !fileManager.createDirectory(spoolDirectory))
        return std::nullopt;
    FileURL destination = spoolDirectory.appending(name);
    fileManager.removeItem(destination);
    return fileManager.copyItem(temporaryFile, destination) ? std::optional(std::move(destination)) : std::nullopt;
}

void loadFileURL(ItemProvider& provider, const std::shared_ptr<ArrivingFiles>& arriving) {
    provider.loadItem(uniformType::fileURL, [arriving](const std::optional<Bytes>& data) {
        arriving->deliver(data ? FileURL::parse(std::string(data->begin(), data->end())) : std::nullopt);
    });
}

void loadContents(ItemProvider& provider, const std::shared_ptr<ArrivingFiles>& arriving, FileManager& fileManager) {
    const std::vector<std::string> types = provider.registeredTypeIdentifiers();
    const std::string type = types.empty() ? std::string(uniformType::item) : types.front();
    provider.loadFileRepresentation(type, [arriving, &fileManager](const std::optional<FileURL>& temporaryFile) {
        arriving->deliver(temporaryFile ? spooledCopy(*temporaryFile, fileManager) : std::nullopt);
    });
}

}  // namespace

std::shared_ptr<ShelfViewModel> ShelfViewModel::make(std::shared_ptr<ShelfManager> shelfManager,
                                                     FileManager& fileManager, Dispatch& dispatch,
                                                     Clipboard& clipboard) {
    return std::shared_ptr<ShelfViewModel>(
        new ShelfViewModel(std::move(shelfManager), fileManager, dispatch, clipboard));
}

bool ShelfViewModel::isFull() const {
    return static_cast<std::int64_t>(shelfManager_->items().size()) >= shelfManager_->capacity();
}

void ShelfViewModel::addFileURLs(std::span<const FileURL> urls) {
    const int overflow = shelfManager_->addFiles(urls);
    if (overflow < 1)
        return;
    const auto offered = static_cast<int>(urls.size());
    setCapacityMessage("Added " + std::to_string(offered - overflow) + " of " + std::to_string(offered) +
                       " files - shelf is full");
}

void ShelfViewModel::removeItem(const UUID& id) {
    removeItems({&id, 1});
}

void ShelfViewModel::removeItems(std::span<const UUID> ids) {
    shelfManager_->removeItems(ids);
    if (!isFull())
        setCapacityMessage(std::nullopt);
}

bool ShelfViewModel::handleDrop(const std::vector<std::shared_ptr<ItemProvider>>& providers) {
    if (isFull())
        return false;
    const auto arriving = std::make_shared<ArrivingFiles>(dispatch_, std::string(bundleIdentifier) + ".drop");
    for (const auto& provider : providers) {
        arriving->expectDelivery();
        if (provider->hasItemConformingTo(uniformType::fileURL))
            loadFileURL(*provider, arriving);
        else
            loadContents(*provider, arriving, fileManager_);
    }
    // The closure keeps the providers alive until the last one has delivered.
    arriving->whenComplete([weak = weak_from_this(), providers](const std::vector<FileURL>& files) {
        if (const auto self = weak.lock())
            self->addFileURLs(files);
    });
    return true;
}

std::vector<FileURL> ShelfViewModel::availableFiles(std::span<const UUID> ids) const {
    std::vector<FileURL> files;
    for (const ShelfItem& item : shelfManager_->items()) {
        if (item.isAvailable && std::ranges::find(ids, item.id) != ids.end())
            files.push_back(item.fileURL);
    }
    return files;
}

std::vector<ShelfItem> ShelfViewModel::presentItems(std::vector<ShelfItem> items) const {
    std::erase_if(items, [](const ShelfItem& item) { return !item.isAvailable; });
    if (std::erase_if(items, [&](const ShelfItem& item) { return !fileManager_.fileExists(item.fileURL); }) > 0)
        shelfManager_->refreshAvailability();
    return items;
}

void ShelfViewModel::copyFiles(std::span<const UUID> ids) {
    const std::vector<FileURL> files = availableFiles(ids);
    if (!files.empty())
        clipboard_.copyFiles(files);
}

void ShelfViewModel::copyPaths(std::span<const UUID> ids) {
    std::string lines;
    for (const FileURL& file : availableFiles(ids))
        lines += (lines.empty() ? "" : "\n") + file.path();
    if (!lines.empty())
        clipboard_.copyText(lines);
}

void ShelfViewModel::paste() {
    clipboard_.read([weak = weak_from_this()](const std::vector<std::shared_ptr<ItemProvider>>& providers) {
        const auto self = weak.lock();
        if (self && !providers.empty())
            static_cast<void>(self->handleDrop(providers));
    });
}

void ShelfViewModel::setCapacityMessage(std::optional<std::string> message) {
    if (capacityMessage_ == message)
        return;
    capacityMessage_ = std::move(message);
    capacityMessageChanged.emit();
}

}  // namespace stowpocket
