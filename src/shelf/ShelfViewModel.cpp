// SPDX-License-Identifier: MIT
#include "shelf/ShelfViewModel.h"

#include "foundation/DispatchGroup.h"
#include "foundation/Values.h"
#include "services/Dispatch.h"
#include "services/Files.h"
#include "services/MainBundle.h"

namespace stowpocket {
namespace {

/// The URLs of one drop while its parts are being loaded, on whatever threads their sources use.
struct PendingDrop {
    std::unique_ptr<SerialQueue> queue;
    DispatchGroup group;
    /// Touched only in blocks of `queue`.
    std::vector<FileURL> urls;

    void append(const FileURL& url) {
        queue->sync([this, &url] { urls.push_back(url); });
    }
};

/// Copies what a source wrote to a temporary place into the spool folder; the copy's URL when it stands there. The
/// name comes from the source, so only a plain file name is taken.
std::optional<FileURL> spooledCopy(const FileURL& temporaryFile, FileManager& fileManager) {
    const std::string name = temporaryFile.lastPathComponent();
    const FileURL spoolDirectory = ShelfManager::filePromiseDirectory(fileManager);
    if (!isPlainFileName(name) || !fileManager.createDirectory(spoolDirectory))
        return std::nullopt;
    FileURL destination = spoolDirectory.appending(name);
    fileManager.removeItem(destination);
    return fileManager.copyItem(temporaryFile, destination) ? std::optional(std::move(destination)) : std::nullopt;
}

void loadFileURL(ItemProvider& provider, const std::shared_ptr<PendingDrop>& drop) {
    provider.loadItem(uniformType::fileURL, [drop](const std::optional<Bytes>& data) {
        if (data) {
            if (const std::optional<FileURL> url = FileURL::parse(std::string(data->begin(), data->end())))
                drop->append(*url);
        }
        drop->group.leave();
    });
}

void loadContents(ItemProvider& provider, const std::shared_ptr<PendingDrop>& drop, FileManager& fileManager) {
    const std::vector<std::string> types = provider.registeredTypeIdentifiers();
    const std::string type = types.empty() ? std::string(uniformType::item) : types.front();
    provider.loadFileRepresentation(type, [drop, &fileManager](const std::optional<FileURL>& temporaryFile) {
        if (temporaryFile) {
            if (const std::optional<FileURL> copy = spooledCopy(*temporaryFile, fileManager))
                drop->append(*copy);
        }
        drop->group.leave();
    });
}

}  // namespace

std::shared_ptr<ShelfViewModel> ShelfViewModel::make(std::shared_ptr<ShelfManager> shelfManager,
                                                     FileManager& fileManager, Dispatch& dispatch) {
    return std::shared_ptr<ShelfViewModel>(new ShelfViewModel(std::move(shelfManager), fileManager, dispatch));
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
    shelfManager_->removeItem(id);
    if (!isFull())
        setCapacityMessage(std::nullopt);
}

bool ShelfViewModel::handleDrop(const std::vector<std::shared_ptr<ItemProvider>>& providers) {
    if (isFull())
        return false;
    const auto drop = std::make_shared<PendingDrop>();
    drop->queue = dispatch_.serialQueue(std::string(bundleIdentifier) + ".drop");
    for (const auto& provider : providers) {
        drop->group.enter();
        if (provider->hasItemConformingTo(uniformType::fileURL))
            loadFileURL(*provider, drop);
        else
            loadContents(*provider, drop, fileManager_);
    }
    // The providers stay alive until the last of them has delivered.
    drop->group.notify([weak = weak_from_this(), &dispatch = dispatch_, drop, providers] {
        dispatch.async([weak, drop, providers] {
            if (const auto self = weak.lock())
                self->addFileURLs(drop->urls);
        });
    });
    return true;
}

void ShelfViewModel::setCapacityMessage(std::optional<std::string> message) {
    if (capacityMessage_ == message)
        return;
    capacityMessage_ = std::move(message);
    capacityMessageChanged.emit();
}

}  // namespace stowpocket
