// SPDX-License-Identifier: MIT
#pragma once

#include "presentation/ShelfPresentation.h"
#include "services/Dragging.h"
#include "views/controls/Compose.h"
#include "views/controls/ScrollView.h"
#include "views/shelf/ShelfGridView.h"

#include <QVariantAnimation>
#include <QWidget>

class QMimeData;

namespace stowpocket {

/// The dashed target that invites the user to drop files. It only draws: the view that receives the drop tells it
/// whether a drag is over the target.
class DropZoneView : public QWidget {
public:
    enum class Form {
        full,     ///< fills the empty shelf
        compact,  ///< a slim strip below the items
    };

    explicit DropZoneView(Form form);

    void setTargeted(bool isTargeted);
    [[nodiscard]] bool isTargeted() const { return isTargeted_; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void hideEvent(QHideEvent* event) override;

private:
    [[nodiscard]] double highlight() const { return animation_.currentValue().toDouble(); }
    void paintFrame(QPainter& painter) const;
    void paintContent(QPainter& painter) const;

    const Form form_;
    bool isTargeted_ = false;
    /// From 0 (at rest) to 1 (highlighted).
    QVariantAnimation animation_;
};

/// Reads drags from the window system.
struct DropReader {
    /// Whether a drag may bring something that can become a file. Decided by the names of its types: the source,
    /// which may be slow or gone, is asked for nothing before the drop.
    std::function<bool(const QMimeData&)> offersItems;
    /// Returns what was dropped in the form that the shelf accepts; empty if it cannot become a file. Called while
    /// the drop is handled.
    std::function<std::vector<std::shared_ptr<ItemProvider>>(const QMimeData&)> itemProviders;
};

/// The middle of the popover: the large drop zone if the shelf is empty, otherwise the tiles above the compact drop
/// zone or the notice that the shelf is full. Files may be dropped anywhere on it; drags are only ever copied.
class ShelfContentView : public QWidget {
public:
    ShelfContentView(std::shared_ptr<ShelfViewModel> viewModel, DropReader drops, TileServices tileServices,
                     int width);

    /// Shows this state of the shelf.
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
