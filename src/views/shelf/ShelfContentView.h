// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/ShelfPresentation.h"
#include "services/Dragging.h"
#include "views/controls/Compose.h"
#include "views/controls/ScrollView.h"
#include "views/shelf/DropZoneView.h"
#include "views/shelf/ShelfGridView.h"

class QMimeData;

namespace stowpocket {

/// Reads the drags of the window system.
struct DropReader {
    /// Whether a drag may bring something that can become a file. Judged by the names of its types: its source, which
    /// may be slow or gone, is asked for nothing before the drop.
    std::function<bool(const QMimeData&)> offersItems;
    /// What was dropped, in the form that the shelf takes in. Asked while the drop is handled; empty for what cannot
    /// become a file.
    std::function<std::vector<std::shared_ptr<ItemProvider>>(const QMimeData&)> itemProviders;
};

/// The middle of the popover: the large drop zone of an empty shelf, else the tiles with the compact drop zone or the
/// line about the full shelf below them. Files may be dropped anywhere on it; they are only ever copied from a drag.
class ShelfContentView : public QWidget {
public:
    ShelfContentView(std::shared_ptr<ShelfViewModel> viewModel, DropReader drops, TileServices tileServices,
                     int width);

    /// Shows what the shelf shows now.
    void setPresentation(const ShelfPresentation& shown);
    [[nodiscard]] ShelfGridView& grid() { return *grid_; }
    [[nodiscard]] DropZoneView& dropZone() { return *dropZone_; }
    [[nodiscard]] DropZoneView& compactDropZone() { return *compactDropZone_; }
    [[nodiscard]] QWidget& fullNotice() { return *fullNotice_; }
    [[nodiscard]] ScrollView& scrollView() { return *scrollView_; }

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    void setTargeted(bool isTargeted);

    const std::shared_ptr<ShelfViewModel> viewModel_;
    const DropReader drops_;
    DropZoneView* const dropZone_;
    ShelfGridView* const grid_;
    DropZoneView* const compactDropZone_;
    Text* const fullNotice_;
    ScrollView* const scrollView_;
    bool acceptsDrops_ = true;
};

}  // namespace stowpocket
