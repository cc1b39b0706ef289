// SPDX-License-Identifier: MIT
#include "views/QtViewFactory.h"

#include "views/ShelfView.h"

namespace stowpocket {

std::unique_ptr<Popover> QtViewFactory::makeShelfPopover(std::shared_ptr<ShelfViewModel> viewModel,
                                                         std::function<void()> onOpenSettings,
                                                         std::function<void()> onQuit) {
    ShelfView::Dependencies dependencies{std::move(viewModel), std::move(onOpenSettings), std::move(onQuit),
                                         platform_.itemProviders, platform_.startFileDrag};
    return platform_.makePopover(
        [dependencies = std::move(dependencies)] { return std::make_unique<ShelfView>(dependencies); });
}

}  // namespace stowpocket
