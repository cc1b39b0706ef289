// SPDX-License-Identifier: MIT
#include "presentation/ShelfPresentation.h"

#include "presentation/Texts.h"
#include "services/Preferences.h"
#include "shelf/ShelfItem.h"
#include "shelf/ShelfViewModel.h"

namespace stowpocket {

ShelfPresentation shelfPresentation(const ShelfViewModel& viewModel) {
    const ShelfManager& shelf = viewModel.shelfManager();
    const auto count = static_cast<std::int64_t>(shelf.items().size());
    const std::int64_t capacity = shelf.capacity();

    ShelfPresentation shown;
    shown.badge = std::to_string(count) + "/" + std::to_string(capacity);
    shown.banner = viewModel.capacityMessage();
    if (const std::optional<std::string> problem = shelf.preferences().saveProblem())
        shown.saveBanner = "Changes are not saved: " + *problem;
    shown.content = count == 0 ? ShelfPresentation::Content::dropZone : ShelfPresentation::Content::grid;
    shown.acceptsDrops = count < capacity;
    if (shown.acceptsDrops)
        shown.belowGrid = ShelfPresentation::BelowGrid::compactDropZone;
    else  // the banner says it already
        shown.belowGrid =
            shown.banner ? ShelfPresentation::BelowGrid::nothing : ShelfPresentation::BelowGrid::fullNotice;
    shown.showsProgress = shelf.isLoading();
    shown.showsClearButton = count > 0;
    return shown;
}

std::string TilePresentation::accessibleName() const {
    return name + ", " + size + (isMissing ? ", Missing" : "");
}

TilePresentation tilePresentation(const ShelfItem& item, const ByteCountText& byteCountText) {
    return {displayName(item.filename), byteCountText(item.fileSize), !item.isAvailable};
}

}  // namespace stowpocket
