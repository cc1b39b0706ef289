// SPDX-License-Identifier: MIT
#include "intake/StatusItemDropHandler.h"

#include "intake/StatusItemDropView.h"

namespace stowpocket {
namespace {

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

StatusItemDropHandler::StatusItemDropHandler(std::weak_ptr<StatusItemButton> button, DropCallback onDrop,
                                             std::function<void()> onDragEntered)
    : button_(std::move(button)), onDrop_(std::move(onDrop)), onDragEntered_(std::move(onDragEntered)) {}

void StatusItemDropHandler::install(const std::shared_ptr<StatusItemDropHandler>& handler) {
    if (const auto button = handler->button_.lock())
        button->addDropView(std::make_shared<StatusItemDropView>(handler));
}

bool StatusItemDropHandler::performDrop(DraggingPasteboard& pasteboard) const {
    const std::vector<FileURL> urls = plainFileURLs(pasteboard);
    if (urls.empty())
        return false;
    onDrop_(urls);
    return true;
}

}  // namespace stowpocket
