// SPDX-License-Identifier: MIT
#include "views/shelf/ShelfGridView.h"

#include "platform/qt/QtImages.h"
#include "presentation/Layout.h"
#include "views/controls/Compose.h"
#include "views/controls/Popups.h"
#include "views/shelf/TilePicture.h"

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
QImage itemPicture(ShelfManager& shelf, const UUID& id) {
    if (const Image* const thumbnail = shelf.thumbnail(id))
        return qtImage(*thumbnail);
    const auto item = std::ranges::find(shelf.items(), id, &ShelfItem::id);
    return item == shelf.items().end() ? QImage() : qtImage(shelf.icon(*item));
}

std::optional<GridStep> gridStep(int key) {
    switch (key) {
    case Qt::Key_Left:
        return GridStep::left;
    case Qt::Key_Right:
        return GridStep::right;
    case Qt::Key_Up:
        return GridStep::up;
    case Qt::Key_Down:
        return GridStep::down;
    case Qt::Key_Home:
        return GridStep::first;
    case Qt::Key_End:
        return GridStep::last;
    default:
        return std::nullopt;
    }
}

/// Does to a tile what an assistive technology asks for by this name.
struct TileAction {
    QString name;
    QString description;
    void (*act)(ShelfItemView& tile);
};

const std::vector<TileAction>& tileActions() {
    static const std::vector<TileAction> actions{
        {QStringLiteral("remove"), QStringLiteral("Remove from shelf"),
         [](ShelfItemView& tile) { tile.host().remove(tile); }},
        {QAccessibleActionInterface::setFocusAction(), {}, [](ShelfItemView& tile) { tile.host().takeFocus(tile); }},
        {QAccessibleActionInterface::pressAction(), QStringLiteral("Open"),
         [](ShelfItemView& tile) { tile.host().perform(tile, TileCommand::open); }},
        {QAccessibleActionInterface::toggleAction(), QStringLiteral("Select or deselect"),
         [](ShelfItemView& tile) { tile.host().select(tile, Selecting::toggle); }},
        {QAccessibleActionInterface::showMenuAction(),
         {},
         [](ShelfItemView& tile) { tile.host().openMenu(tile, tile.mapToGlobal(tile.rect().center())); }},
    };
    return actions;
}

/// An item of the list, with everything that can be done to it. Any tile can be given the keyboard, though Tab stops
/// at one of them only.
class AccessibleTile : public QAccessibleWidget {
public:
    explicit AccessibleTile(ShelfItemView& tile) : QAccessibleWidget(&tile, QAccessible::ListItem), tile_(tile) {}

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.focusable = true;
        state.selectable = true;
        state.selected = tile_.isSelected();
        return state;
    }
    [[nodiscard]] QStringList actionNames() const override {
        QStringList names;
        for (const TileAction& action : tileActions())
            names.append(action.name);
        return names;
    }
    [[nodiscard]] QString localizedActionName(const QString& name) const override {
        const TileAction* const action = named(name);
        return action == nullptr || action->description.isEmpty() ? QAccessibleWidget::localizedActionName(name)
                                                                  : action->description;
    }
    void doAction(const QString& name) override {
        if (const TileAction* const action = named(name))
            action->act(tile_);
    }

private:
    static const TileAction* named(const QString& name) {
        const auto& actions = tileActions();
        const auto action = std::ranges::find(actions, name, &TileAction::name);
        return action == actions.end() ? nullptr : &*action;
    }

    ShelfItemView& tile_;
};

QAccessibleInterface* accessibleTile(const QString& /*className*/, QObject* object) {
    auto* const tile = dynamic_cast<ShelfItemView*>(object);
    return tile == nullptr ? nullptr : new AccessibleTile(*tile);
}

}  // namespace

ShelfGridView::ShelfGridView(std::shared_ptr<ShelfViewModel> viewModel, TileServices tileServices, int width)
    : viewModel_(std::move(viewModel)),
      tileServices_(std::move(tileServices)),
      commands_(viewModel_, tileServices_.opener),
      width_(width) {
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
    selectionChanged_ = commands_.selection().changed.connect([this] {
        for (ShelfItemView* const tile : tiles_)
            tile->setSelected(commands_.selection().isSelected(tile->id()));
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

ShelfItemView* ShelfGridView::makeTile(const ShelfItem& item) {
    auto* const tile = new ShelfItemView(item.id, tilePresentation(item, tileServices_.byteCountText), *this, this);
    tile->setSelected(commands_.selection().isSelected(item.id));
    tile->show();
    return tile;
}

QImage ShelfGridView::pictureOf(const ShelfItemView& tile) {
    return itemPicture(viewModel_->shelfManager(), tile.id());
}

void ShelfGridView::click(ShelfItemView& tile, Selecting how) {
    if (const std::optional<std::size_t> index = indexOf(tile.id()))
        focusTile(*index, Qt::MouseFocusReason);
    select(tile, how);
}

void ShelfGridView::select(ShelfItemView& tile, Selecting how) {
    commands_.selection().select(tile.id(), how);
}

void ShelfGridView::startDrag(ShelfItemView& tile, QPoint held) {
    const std::vector<ShelfItem> items = commands_.itemsOfDrag(tile.id());
    if (items.empty())
        return;
    tile.setHovered(false);
    startDrag(tile, items, tile.id(), held);
}

void ShelfGridView::startDragOfAll(QWidget& source) {
    const std::vector<ShelfItem> items = commands_.itemsOfWholeDrag();
    constexpr QPoint middle(tilePictureSide / 2, tilePictureSide / 2);
    if (!items.empty())
        startDrag(source, items, items.front().id, middle);
}

void ShelfGridView::startDrag(QWidget& source, const std::vector<ShelfItem>& items, const UUID& front, QPoint held) {
    std::vector<FileURL> files;
    std::vector<QImage> pictures;
    for (const ShelfItem& item : items) {
        files.push_back(item.fileURL);
        // Those of a few are seen.
        if (item.id == front || pictures.size() < mostDragPictures)
            pictures.insert(item.id == front ? pictures.begin() : pictures.end(),
                            tilePicture(itemPicture(viewModel_->shelfManager(), item.id), devicePixelRatioF()));
    }
    const DragPicture picture =
        dragPicture(files.size(), pictures, tileServices_.fileCount, palette(), devicePixelRatioF());
    const QPoint inside(std::clamp(held.x(), 0, tilePictureSide - 1), std::clamp(held.y(), 0, tilePictureSide - 1));
    // A copy, since this may be gone before the drag ends.
    const StartFileDrag start = tileServices_.startFileDrag;
    start(source, files, picture.pixmap, picture.front + inside);
}

void ShelfGridView::perform(ShelfItemView& tile, TileCommand command) {
    commands_.perform(command, tile.id());
}

void ShelfGridView::remove(ShelfItemView& tile) {
    viewModel_->removeItem(tile.id());
}

void ShelfGridView::openMenu(ShelfItemView& tile, QPoint point) {
    std::vector<MenuEntry> entries;
    for (const TileMenuEntry& entry : commands_.menu(tile.id()))
        entries.push_back(
            {.title = displayText(entry.title),
             .action = [this, command = entry.command, id = tile.id()] { commands_.perform(command, id); },
             .isEnabled = entry.isEnabled,
             .beginsGroup = entry.beginsGroup});
    popUpMenu(tile, point, entries);
}

void ShelfGridView::takeFocus(ShelfItemView& tile) {
    if (const std::optional<std::size_t> index = indexOf(tile.id()))
        focusTile(*index, Qt::OtherFocusReason);
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
        focusTile(std::min(indexes.front(), tiles_.size() - 1), Qt::OtherFocusReason);
    else if (!focused)
        setTabStop(0);
}

void ShelfGridView::updateTiles(const std::vector<std::size_t>& indexes) {
    const auto& items = viewModel_->shelfManager().items();
    for (const std::size_t index : indexes) {
        if (index < tiles_.size())
            tiles_[index]->setPresentation(tilePresentation(items[index], tileServices_.byteCountText));
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
    event->setAccepted(handleKey(*event));
}

bool ShelfGridView::handleKey(const QKeyEvent& event) {
    if (event.matches(QKeySequence::SelectAll)) {
        if (!focusedIndex() && !tiles_.empty())
            focusTile(0, Qt::OtherFocusReason);  // where the next key goes
        commands_.selection().selectAll();
        return true;
    }
    if (const std::optional<GridStep> step = gridStep(event.key()))
        return takeStep(*step, event.modifiers());
    const std::optional<std::size_t> focused = focusedIndex();
    return focused && handleKey(event, tiles_[*focused]->id());
}

/// A key that does something to a tile.
bool ShelfGridView::handleKey(const QKeyEvent& event, const UUID& id) {
    if (event.matches(QKeySequence::Copy)) {
        commands_.perform(TileCommand::copy, id);
        return true;
    }
    switch (event.key()) {
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
        commands_.perform(TileCommand::remove, id);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        commands_.perform(TileCommand::open, id);
        return true;
    case Qt::Key_Space:
        if (event.modifiers().testFlag(Qt::ControlModifier))
            commands_.selection().select(id, Selecting::toggle);
        else
            commands_.preview(id);
        return true;
    default:
        return false;
    }
}

bool ShelfGridView::takeStep(GridStep step, Qt::KeyboardModifiers modifiers) {
    const std::optional<std::size_t> from = focusedIndex();
    if (tiles_.empty())
        return false;
    const std::optional<std::size_t> to =
        from ? tileAfter(step, *from, tiles_.size(), grid.columnCount(width_)) : std::optional<std::size_t>(0);
    if (!to)
        return true;
    focusTile(*to, Qt::OtherFocusReason);
    ShelfSelection& selection = commands_.selection();
    if (modifiers.testFlag(Qt::ShiftModifier))
        selection.extend(tiles_[from.value_or(*to)]->id(), tiles_[*to]->id());
    else if (!modifiers.testFlag(Qt::ControlModifier))
        selection.select(tiles_[*to]->id(), Selecting::alone);
    return true;
}

void ShelfGridView::setTabStop(std::size_t index) {
    for (std::size_t at = 0; at < tiles_.size(); ++at)
        tiles_[at]->setFocusPolicy(at == index ? Qt::TabFocus : Qt::NoFocus);
    // A tile created after the footer would come after it. Only views that accept the focus are in the tab order.
    setFocusPolicy(Qt::TabFocus);
    setTabOrder(this, tiles_[index]);
    setFocusPolicy(Qt::NoFocus);
}

void ShelfGridView::focusTile(std::size_t index, Qt::FocusReason reason) {
    setTabStop(index);
    tiles_[index]->setFocus(reason);
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
