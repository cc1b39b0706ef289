// SPDX-License-Identifier: MIT
#include "views/shelf/ShelfGridView.h"

#include "platform/qt/QtImages.h"
#include "presentation/Layout.h"
#include "views/controls/AccessibleRole.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QKeyEvent>

#include <algorithm>
#include <cmath>

namespace stowpocket {
namespace {

constexpr AdaptiveGrid grid{.minimumColumnWidth = 80, .maximumColumnWidth = 100, .columnSpacing = 8, .rowSpacing = 8};

/// More than most screens show at a time, and less than a millisecond's work.
constexpr std::size_t tilesPerTurn = 36;

/// The thumbnail of the item, otherwise the icon of its type; null if the item is gone.
QImage pictureOf(ShelfManager& shelf, const UUID& id) {
    if (const Image* const thumbnail = shelf.thumbnail(id))
        return qtImage(*thumbnail);
    const auto item = std::ranges::find(shelf.items(), id, &ShelfItem::id);
    return item == shelf.items().end() ? QImage() : qtImage(shelf.icon(*item));
}

QString removeAction() {
    return QStringLiteral("remove");
}

/// An item of the list, with an action that removes it. Any tile can be given the keyboard, though Tab stops at one
/// of them only.
class AccessibleTile : public QAccessibleWidget {
public:
    explicit AccessibleTile(ShelfItemView& tile) : QAccessibleWidget(&tile, QAccessible::ListItem), tile_(tile) {}

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.focusable = true;
        return state;
    }
    [[nodiscard]] QStringList actionNames() const override { return {removeAction(), setFocusAction()}; }
    [[nodiscard]] QString localizedActionName(const QString& name) const override {
        return name == removeAction() ? QStringLiteral("Remove from shelf")
                                      : QAccessibleWidget::localizedActionName(name);
    }
    void doAction(const QString& name) override {
        if (name == removeAction())
            tile_.remove();
        else if (name == setFocusAction())
            tile_.takeFocus();
    }

private:
    ShelfItemView& tile_;
};

QAccessibleInterface* accessibleTile(const QString& /*className*/, QObject* object) {
    auto* const tile = dynamic_cast<ShelfItemView*>(object);
    return tile == nullptr ? nullptr : new AccessibleTile(*tile);
}

}  // namespace

ShelfGridView::ShelfGridView(std::shared_ptr<ShelfViewModel> viewModel, TileServices tileServices, int width)
    : viewModel_(std::move(viewModel)), tileServices_(std::move(tileServices)), width_(width) {
    QAccessible::installFactory(accessibleTile);
    setAccessibleRole(*this, QAccessible::List);
    setAccessibleName(QStringLiteral("Files on the shelf"));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    making_.setSingleShot(true);
    making_.setInterval(0);
    connect(&making_, &QTimer::timeout, this, [this] {
        makeMoreTiles();
        layOut();
    });
    resetTiles();
    layOut();
}

void ShelfGridView::apply(const ShelfChange& change) {
    switch (change.kind) {
    case ShelfChange::Kind::inserted:
        insertTiles(change.indexes);
        break;
    case ShelfChange::Kind::removed:
        removeTiles(change.indexes);
        break;
    case ShelfChange::Kind::updated:
        updateTiles(change.indexes);
        break;
    case ShelfChange::Kind::reset:
        resetTiles();
        break;
    }
    layOut();
}

void ShelfGridView::updatePicture(const UUID& id) {
    if (const std::optional<std::size_t> index = indexOf(id))
        tiles_[*index]->update();
}

void ShelfGridView::focusItem(const UUID& id) {
    if (const std::optional<std::size_t> index = indexOf(id))
        focusTile(*index);
}

ShelfItemView* ShelfGridView::makeTile(const ShelfItem& item) {
    const ShelfViewModel* const model = viewModel_.get();
    auto* const tile =
        new ShelfItemView(item,
                          {.onRemove = [viewModel = viewModel_, id = item.id] { viewModel->removeItem(id); },
                           .picture = [model, id = item.id] { return pictureOf(model->shelfManager(), id); },
                           .onFocusWanted = [this, id = item.id] { focusItem(id); },
                           .services = tileServices_},
                          this);
    tile->show();
    return tile;
}

void ShelfGridView::insertTiles(const std::vector<std::size_t>& indexes) {
    const auto& items = viewModel_->shelfManager().items();
    for (const std::size_t index : indexes) {
        if (index >= tiles_.size())
            break;  // the rest are appended, like all tiles that are still to be made
        tiles_.insert(tiles_.begin() + static_cast<std::ptrdiff_t>(index), makeTile(items[index]));
    }
    makeMoreTiles();
}

void ShelfGridView::makeMoreTiles() {
    const auto& items = viewModel_->shelfManager().items();
    const std::size_t end = std::min(items.size(), tiles_.size() + tilesPerTurn);
    while (tiles_.size() < end)
        tiles_.push_back(makeTile(items[tiles_.size()]));
    if (tiles_.size() < items.size())
        making_.start();
    const bool hasTabStop = tiles_.empty() || tiles_.front()->focusPolicy() != Qt::NoFocus;
    if (!hasTabStop && !focusedIndex())
        setTabStop(0);
}

void ShelfGridView::removeTiles(const std::vector<std::size_t>& indexes) {
    const std::optional<std::size_t> focused = focusedIndex();
    // NOLINTNEXTLINE(modernize-loop-convert): the views of ranges are beyond the older compilers
    for (auto index = indexes.rbegin(); index != indexes.rend(); ++index) {
        if (*index >= tiles_.size())
            continue;
        const auto at = tiles_.begin() + static_cast<std::ptrdiff_t>(*index);
        ShelfItemView* const tile = *at;
        tiles_.erase(at);
        tile->hide();
        tile->deleteLater();  // not immediately: it may be handling the click or key that removed it
    }
    if (tiles_.empty())
        return;
    if (focused && std::ranges::binary_search(indexes, *focused))
        focusTile(std::min(indexes.front(), tiles_.size() - 1));
    else if (!focused)
        setTabStop(0);
}

void ShelfGridView::updateTiles(const std::vector<std::size_t>& indexes) {
    const auto& items = viewModel_->shelfManager().items();
    for (const std::size_t index : indexes) {
        if (index < tiles_.size())
            tiles_[index]->setItem(items[index]);
    }
}

void ShelfGridView::resetTiles() {
    for (ShelfItemView* const tile : tiles_) {
        tile->hide();
        tile->deleteLater();
    }
    tiles_.clear();
    makeMoreTiles();
}

void ShelfGridView::layOut() {
    if (tiles_.empty()) {
        setFixedHeight(0);
        return;
    }
    std::vector<double> heights;
    heights.reserve(tiles_.size());
    for (const ShelfItemView* const tile : tiles_)
        heights.push_back(tile->height());
    // Tiles that do not exist yet are assumed to have the usual height.
    heights.resize(std::max(tiles_.size(), viewModel_->shelfManager().items().size()), tiles_.back()->height());
    const GridLayout layout = grid.layout(width_, tiles_.front()->width(), heights);
    for (std::size_t index = 0; index < tiles_.size(); ++index) {
        const Point& place = layout.positions[index];
        tiles_[index]->move(static_cast<int>(std::lround(place.x)), static_cast<int>(std::lround(place.y)));
    }
    setFixedHeight(static_cast<int>(std::ceil(layout.height)));
}

QSize ShelfGridView::sizeHint() const {
    return {width_, minimumHeight()};
}

void ShelfGridView::keyPressEvent(QKeyEvent* event) {
    const std::optional<std::size_t> focused = focusedIndex();
    if (!focused) {
        event->ignore();
        return;
    }
    const auto columns = static_cast<std::ptrdiff_t>(grid.columnCount(width_));
    const auto moveBy = [&](std::ptrdiff_t step) {
        const std::ptrdiff_t target = static_cast<std::ptrdiff_t>(*focused) + step;
        if (target >= 0 && target < static_cast<std::ptrdiff_t>(tiles_.size()))
            focusTile(static_cast<std::size_t>(target));
    };
    switch (event->key()) {
    case Qt::Key_Left:
        moveBy(-1);
        break;
    case Qt::Key_Right:
        moveBy(1);
        break;
    case Qt::Key_Up:
        moveBy(-columns);
        break;
    case Qt::Key_Down:
        moveBy(columns);
        break;
    case Qt::Key_Home:
        focusTile(0);
        break;
    case Qt::Key_End:
        focusTile(tiles_.size() - 1);
        break;
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        tiles_[*focused]->remove();
        break;
    default:
        event->ignore();
    }
}

void ShelfGridView::setTabStop(std::size_t index) {
    for (std::size_t at = 0; at < tiles_.size(); ++at)
        tiles_[at]->setFocusPolicy(at == index ? Qt::TabFocus : Qt::NoFocus);
    // A tile created after the footer would come after it. Only views that accept the focus are in the tab order.
    setFocusPolicy(Qt::TabFocus);
    setTabOrder(this, tiles_[index]);
    setFocusPolicy(Qt::NoFocus);
}

void ShelfGridView::focusTile(std::size_t index) {
    setTabStop(index);
    tiles_[index]->setFocus(Qt::OtherFocusReason);
    onTileFocused(*tiles_[index]);
}

std::optional<std::size_t> ShelfGridView::indexOf(const UUID& id) const {
    const auto& items = viewModel_->shelfManager().items();
    const auto index = static_cast<std::size_t>(std::ranges::find(items, id, &ShelfItem::id) - items.begin());
    return index < tiles_.size() ? std::optional(index) : std::nullopt;
}

std::optional<std::size_t> ShelfGridView::focusedIndex() const {
    const auto focused = std::ranges::find_if(tiles_, [](const QWidget* tile) { return tile->hasFocus(); });
    if (focused == tiles_.end())
        return std::nullopt;
    return static_cast<std::size_t>(focused - tiles_.begin());
}

}  // namespace stowpocket
