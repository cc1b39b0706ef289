// SPDX-License-Identifier: MIT
#include "app/CopiedFilesDrop.h"

#include <chrono>
#include <optional>
#include <string>
#include <utility>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

constexpr auto lookInterval = 200ms;
constexpr int mostLooks = 5;

}  // namespace

CopiedFilesDrop::CopiedFilesDrop(std::shared_ptr<ShelfViewModel> shelf, Clipboard& clipboard, Dispatch& dispatch)
    : shelf_(std::move(shelf)), clipboard_(clipboard), dispatch_(dispatch) {}

void CopiedFilesDrop::begin() {
    takeBackMessage();
    looks_ = std::make_shared<Looks>(Looks{mostLooks});
    lookSoon();
}

void CopiedFilesDrop::end() {
    looks_.reset();
    nextLook_.reset();
    takeBackMessage();
}

void CopiedFilesDrop::lookSoon() {
    nextLook_ = dispatch_.after(lookInterval, [this] { look(); });
}

void CopiedFilesDrop::look() {
    clipboard_.read([this, looks = std::weak_ptr(looks_)](const std::vector<std::shared_ptr<ItemProvider>>& items) {
        if (!looks.expired())
            add(items);
    });
}

/// Texts and pictures that were copied are no files that were selected.
void CopiedFilesDrop::add(std::vector<std::shared_ptr<ItemProvider>> items) {
    std::erase_if(items, [](const auto& item) { return !item->hasItemConformingTo(uniformType::fileURL); });
    if (!items.empty())
        static_cast<void>(shelf_->handleDrop(items));
    else if (--looks_->left > 0)
        lookSoon();
    else
        shelf_->setCapacityMessage(std::string(copyFirstMessage));
}

void CopiedFilesDrop::takeBackMessage() {
    if (shelf_->capacityMessage() == copyFirstMessage)
        shelf_->setCapacityMessage(std::nullopt);
}

}  // namespace stowpocket
