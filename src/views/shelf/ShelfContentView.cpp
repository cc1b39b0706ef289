// SPDX-License-Identifier: MIT
#include "views/shelf/ShelfContentView.h"

#include <QDropEvent>

namespace stowpocket {
namespace {

constexpr int gridPadding = 10;
constexpr int belowGridPadding = 8;
constexpr int bottomPadding = 10;

}  // namespace

ShelfContentView::ShelfContentView(std::shared_ptr<ShelfViewModel> viewModel, DropReader drops,
                                   TileServices tileServices, int width)
    : viewModel_(std::move(viewModel)),
      drops_(std::move(drops)),
      dropZone_(new DropZoneView(DropZoneView::Form::full)),
      grid_(new ShelfGridView(viewModel_, std::move(tileServices), width - 2 * gridPadding)),
      compactDropZone_(new DropZoneView(DropZoneView::Form::compact)),
      fullNotice_(text(QStringLiteral("Shelf full - remove items to add more."),
                       {.pointSize = captionPointSize, .role = ColorRole::orange})),
      scrollView_(new ScrollView(
          padded(vstack(defaultSpacing, padded(grid_, {.horizontal = gridPadding, .top = gridPadding, .bottom = 0}),
                        padded(compactDropZone_, {.horizontal = gridPadding, .top = belowGridPadding, .bottom = 0}),
                        padded(fullNotice_, {.top = belowGridPadding, .bottom = 0})),
                 {.bottom = bottomPadding}))) {
    compose(*this, vstack(0, padded(dropZone_, {.horizontal = gridPadding}), scrollView_));
    setAcceptDrops(true);
    fullNotice_->setAlignment(Qt::AlignCenter);
    grid_->onTileFocused = [this](QWidget& tile) { scrollView_->ensureWidgetVisible(&tile, 0, gridPadding); };
}

void ShelfContentView::setPresentation(const ShelfPresentation& shown) {
    using Content = ShelfPresentation::Content;
    using BelowGrid = ShelfPresentation::BelowGrid;
    acceptsDrops_ = shown.acceptsDrops;
    compactDropZone_->setVisible(shown.belowGrid == BelowGrid::compactDropZone);
    fullNotice_->setVisible(shown.belowGrid == BelowGrid::fullNotice);
    // Before it is shown: content that changes its size while its first size is announced would miss the change.
    scrollView_->measureContent();
    dropZone_->setVisible(shown.content == Content::dropZone);
    scrollView_->setVisible(shown.content == Content::grid);
    updateGeometry();
}

void ShelfContentView::setTargeted(bool isTargeted) {
    dropZone_->setTargeted(isTargeted);
    compactDropZone_->setTargeted(isTargeted);
}

void ShelfContentView::dragEnterEvent(QDragEnterEvent* event) {
    const bool isWanted =
        acceptsDrops_ && event->possibleActions().testFlag(Qt::CopyAction) && drops_.offersItems(*event->mimeData());
    if (!isWanted) {
        event->ignore();
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    setTargeted(true);
}

void ShelfContentView::dragMoveEvent(QDragMoveEvent* event) {
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(acceptsDrops_ && dropZone_->isTargeted());
}

void ShelfContentView::dragLeaveEvent(QDragLeaveEvent*) {
    setTargeted(false);
}

void ShelfContentView::dropEvent(QDropEvent* event) {
    setTargeted(false);
    const auto providers = drops_.itemProviders(*event->mimeData());
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(!providers.empty() && viewModel_->handleDrop(providers));
}

void ShelfContentView::hideEvent(QHideEvent* event) {
    setTargeted(false);
    QWidget::hideEvent(event);
}

}  // namespace stowpocket
