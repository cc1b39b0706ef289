// SPDX-License-Identifier: MIT
#include "intake/StatusItemDrop.h"

#include "services/Files.h"
#include "services/MainBundle.h"
#include "shelf/ArrivingFiles.h"
#include "shelf/ShelfManager.h"

namespace stowpocket {
namespace {

/// Texts that are not URLs of local files are skipped: the shelf could only show them as missing.
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
    const auto arriving = std::make_shared<ArrivingFiles>(dispatch_, std::string(bundleIdentifier) + ".promises");
    for (const auto& receiver : receivers) {
        // One delivery per receiver is expected, though it delivers once per file.
        arriving->expectDelivery();
        receiver->receivePromisedFiles(directory,
                                       [arriving](const std::optional<FileURL>& file) { arriving->deliver(file); });
    }
    arriving->whenComplete([weak = weak_from_this(), receivers](const std::vector<FileURL>& files) {
        const auto self = weak.lock();
        if (self && !files.empty())
            self->onDrop_(files);
    });
}

const std::vector<std::string>& StatusItemDropView::registeredDraggedTypes() const {
    static const std::vector<std::string> types{std::string(pasteboardType::fileURL),
                                                std::string(pasteboardType::promisedFileURL)};
    return types;
}

DragOperation StatusItemDropView::draggingEntered(DraggingPasteboard&) {
    const auto handler = handler_.lock();
    if (!handler)
        return DragOperation::none;
    handler->dragEntered();
    return DragOperation::copy;
}

DragOperation StatusItemDropView::draggingUpdated(DraggingPasteboard&) {
    return DragOperation::copy;
}

bool StatusItemDropView::performDragOperation(DraggingPasteboard& pasteboard) {
    const auto handler = handler_.lock();
    return handler && handler->performDrop(pasteboard);
}

}  // namespace stowpocket
