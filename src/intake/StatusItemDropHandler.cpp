// SPDX-License-Identifier: MIT
#include "intake/StatusItemDropHandler.h"

#include "foundation/DispatchGroup.h"
#include "intake/StatusItemDropView.h"
#include "services/Dispatch.h"
#include "services/Files.h"
#include "services/MainBundle.h"
#include "shelf/ShelfManager.h"

namespace stowpocket {
namespace {

/// Texts that name no local file are passed over: the shelf could only show them as missing.
std::vector<FileURL> plainFileURLs(DraggingPasteboard& pasteboard) {
    std::vector<FileURL> urls;
    for (const PasteboardItem& item : pasteboard.items()) {
        const auto text = item.strings.find(pasteboardType::fileURL);
        if (text == item.strings.end())
            continue;
        if (std::optional<FileURL> url = FileURL::parse(text->second))
            urls.push_back(std::move(*url));
    }
    return urls;
}

/// The files of one drop that are still being written, on whatever threads their receivers use.
struct ArrivingFiles {
    std::unique_ptr<SerialQueue> queue;
    DispatchGroup group;
    /// In the order of arrival; touched only in blocks of `queue`.
    std::vector<FileURL> urls;
};

}  // namespace

StatusItemDropHandler::StatusItemDropHandler(std::weak_ptr<StatusItemButton> button, FileManager& fileManager,
                                             Dispatch& dispatch, DropCallback onDrop,
                                             std::function<void()> onDragEntered)
    : button_(std::move(button)),
      fileManager_(fileManager),
      dispatch_(dispatch),
      onDrop_(std::move(onDrop)),
      onDragEntered_(std::move(onDragEntered)) {}

void StatusItemDropHandler::install() {
    if (const auto button = button_.lock())
        button->addDropView(std::make_shared<StatusItemDropView>(weak_from_this()));
}

bool StatusItemDropHandler::performDrop(DraggingPasteboard& pasteboard) {
    const std::vector<FileURL> urls = plainFileURLs(pasteboard);
    if (!urls.empty()) {
        onDrop_(urls);
        return true;
    }
    const auto receivers = pasteboard.filePromiseReceivers();
    if (receivers.empty())
        return false;
    receivePromises(receivers);
    return true;
}

void StatusItemDropHandler::receivePromises(const std::vector<std::shared_ptr<FilePromiseReceiver>>& receivers) {
    const FileURL directory = ShelfManager::filePromiseDirectory(fileManager_);
    static_cast<void>(fileManager_.createDirectory(directory));  // where it fails, receiving tells
    const auto arriving = std::make_shared<ArrivingFiles>();
    arriving->queue = dispatch_.serialQueue(std::string(bundleIdentifier) + ".promises");
    for (const auto& receiver : receivers) {
        // Entered once per receiver and left once per file: a receiver that brings several leaves more often than it
        // entered, which the group bears.
        arriving->group.enter();
        receiver->receivePromisedFiles(directory, [arriving](const std::optional<FileURL>& url) {
            if (url)
                arriving->queue->sync([&] { arriving->urls.push_back(*url); });
            arriving->group.leave();
        });
    }
    arriving->group.notify([weak = weak_from_this(), &dispatch = dispatch_, arriving, receivers] {
        dispatch.async([weak, arriving, receivers] {
            std::vector<FileURL> urls;
            arriving->queue->sync([&] { urls = arriving->urls; });
            const auto self = weak.lock();
            if (self && !urls.empty())
                self->onDrop_(urls);
        });
    });
}

}  // namespace stowpocket
