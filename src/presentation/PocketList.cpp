// SPDX-License-Identifier: MIT
#include "presentation/PocketList.h"

#include "presentation/Texts.h"
#include "shelf/ShelfViewModel.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

/// A pointer that only passes, or clicks at once, unfolds nothing.
constexpr auto restTime = 250ms;
/// For the way from the pocket to the list, and for a hand that slips.
constexpr auto graceTime = 400ms;
constexpr auto graceTimeOfFingers = 4s;

constexpr double listWidth = 280;
constexpr double rowHeight = PocketList::wheelStep;
constexpr double padding = 6;
/// Between the row of all files and the others.
constexpr double separation = 7;
constexpr double distanceFromPocket = 6;
constexpr double distanceFromEdge = 8;
constexpr double mostRowsInSight = 8;
constexpr double markWidth = 4;
constexpr double shortestMark = 24;

bool contains(const Rect& rect, const Point& point) {
    return point.x >= rect.x && point.x < rect.right() && point.y >= rect.y && point.y < rect.bottom();
}

std::vector<WaitingFile> waitingFiles(ShelfManager& shelf) {
    std::vector<WaitingFile> files;
    for (const ShelfItem& item : shelf.items()) {
        const Image* const thumbnail = shelf.thumbnail(item.id);
        files.push_back({.id = item.id,
                         .name = displayName(item.filename),
                         .isMissing = !item.isAvailable,
                         .picture = thumbnail != nullptr ? *thumbnail : shelf.icon(item)});
    }
    // The shelf appends what is new.
    std::ranges::reverse(files);
    return files;
}

std::vector<FileURL> presentFiles(const ShelfViewModel& viewModel, std::vector<ShelfItem> items) {
    std::vector<FileURL> files;
    for (const ShelfItem& item : viewModel.presentItems(std::move(items)))
        files.push_back(item.fileURL);
    return files;
}

}  // namespace

IconDragSource iconDragSource(const std::shared_ptr<ShelfViewModel>& viewModel) {
    IconDragSource source;
    source.files = [weak = std::weak_ptr(viewModel)](IconDrag drag) {
        std::vector<FileURL> files;
        if (const auto shelf = weak.lock())
            files = presentFiles(*shelf, shelf->shelfManager().items());
        if (drag == IconDrag::newest && !files.empty())
            files.erase(files.begin(), files.end() - 1);
        return files;
    };
    source.file = [weak = std::weak_ptr(viewModel)](const UUID& id) {
        const auto shelf = weak.lock();
        if (!shelf)
            return std::vector<FileURL>();
        std::vector<ShelfItem> items = shelf->shelfManager().items();
        std::erase_if(items, [&](const ShelfItem& item) { return item.id != id; });
        return presentFiles(*shelf, std::move(items));
    };
    source.list = [weak = std::weak_ptr(viewModel)] {
        const auto shelf = weak.lock();
        return shelf ? waitingFiles(shelf->shelfManager()) : std::vector<WaitingFile>();
    };
    source.watch = [weak = std::weak_ptr(viewModel)](const std::function<void()>& changed) {
        std::vector<Subscription> subscriptions;
        if (const auto shelf = weak.lock()) {
            ShelfManager& manager = shelf->shelfManager();
            subscriptions.push_back(manager.itemsChanged.connect([changed](const ShelfChange&) { changed(); }));
            subscriptions.push_back(manager.thumbnailChanged.connect([changed](const UUID&) { changed(); }));
        }
        return subscriptions;
    };
    return source;
}

void PocketFolding::setPointedAt(bool isPointedAt, By by) {
    if (isPointedAt && state_ == State::folded)
        becomeAfter(restTime, State::unfolded);
    else if (isPointedAt && state_ == State::leaving)
        become(State::unfolded);
    else if (!isPointedAt && state_ == State::unfolded)
        becomeAfter(by == By::pointer ? graceTime : graceTimeOfFingers, State::folded);
    else if (!isPointedAt && state_ != State::leaving)
        become(State::folded);
}

void PocketFolding::fold() {
    const bool isPointedAt = state_ != State::folded && state_ != State::leaving;
    become(isPointedAt ? State::dismissed : State::folded);
}

void PocketFolding::becomeAfter(std::chrono::milliseconds delay, State state) {
    state_ = state == State::unfolded ? State::resting : State::leaving;
    later_ = dispatch_.after(delay, [this, state] { become(state); });
}

void PocketFolding::become(State state) {
    const bool wasUnfolded = isUnfolded();
    state_ = state;
    later_.reset();
    if (isUnfolded() != wasUnfolded)
        changed_(isUnfolded());
}

void PocketList::lay(std::vector<WaitingFile> files, const Rect& pocket, const Rect& usable) {
    files_ = std::move(files);
    const auto there = std::ranges::count(files_, false, &WaitingFile::isMissing);
    textForAll_ = there > 1 ? "All " + std::to_string(there) + " files" : std::string();
    const double top = padding + (there > 1 ? rowHeight + separation : 0);

    const double roomBelow = usable.bottom() - distanceFromEdge - pocket.bottom() - distanceFromPocket;
    const double roomAbove = pocket.y - distanceFromPocket - usable.y - distanceFromEdge;
    const double wished = std::min(contentHeight(), mostRowsInSight * rowHeight);
    const bool isBelow = top + wished + padding <= roomBelow || roomBelow >= roomAbove;
    const double rowsWithRoom = std::floor(((isBelow ? roomBelow : roomAbove) - top - padding) / rowHeight);
    view_ = {padding, top, std::min(listWidth, usable.width - 2 * distanceFromEdge) - 2 * padding,
             std::min(wished, std::max(1.0, rowsWithRoom) * rowHeight)};

    frame_.width = view_.width + 2 * padding;
    frame_.height = view_.bottom() + padding;
    frame_.y = isBelow ? pocket.bottom() + distanceFromPocket : pocket.y - distanceFromPocket - frame_.height;
    const bool isOnTheRight = pocket.centerX() > usable.centerX();
    const double left = isOnTheRight ? pocket.right() - frame_.width : pocket.x;
    const double furthestRight = usable.right() - distanceFromEdge - frame_.width;
    frame_.x = std::max(usable.x + distanceFromEdge, std::min(left, furthestRight));
    static_cast<void>(scroll(0));
}

double PocketList::contentHeight() const {
    return static_cast<double>(files_.size()) * rowHeight;
}

PocketList::Row PocketList::rowOf(std::size_t index) const {
    const bool isPointedAt = pointedRow() == index;
    if (index == 0)
        return {nullptr, {padding, padding, view_.width, rowHeight}, isPointedAt};
    const double above = static_cast<double>(index - 1) * rowHeight;
    return {&files_[index - 1], {padding, view_.y + above - scrolled_, view_.width, rowHeight}, isPointedAt};
}

std::vector<PocketList::Row> PocketList::rows() const {
    std::vector<Row> rows;
    for (std::size_t index = 1; index <= files_.size(); ++index) {
        const Row row = rowOf(index);
        if (row.place.bottom() > view_.y && row.place.y < view_.bottom())
            rows.push_back(row);
    }
    return rows;
}

std::optional<PocketList::Row> PocketList::rowForAll() const {
    return textForAll_.empty() ? std::nullopt : std::optional(rowOf(0));
}

std::optional<Rect> PocketList::scrollMark() const {
    const double content = contentHeight();
    if (content <= view_.height)
        return std::nullopt;
    const double length = std::max(shortestMark, view_.height * view_.height / content);
    const double top = view_.y + (view_.height - length) * scrolled_ / (content - view_.height);
    return Rect{view_.right() + (padding - markWidth) / 2, top, markWidth, length};
}

std::optional<std::size_t> PocketList::rowAt(const Point& point) const {
    if (contains(view_, point))
        return 1 + static_cast<std::size_t>((point.y - view_.y + scrolled_) / rowHeight);
    const bool isForAll = !textForAll_.empty() && contains({padding, padding, view_.width, rowHeight}, point);
    return isForAll ? std::optional<std::size_t>(0) : std::nullopt;
}

std::optional<std::size_t> PocketList::pointedRow() const {
    return pointer_ ? rowAt(*pointer_) : std::nullopt;
}

std::optional<PocketList::Row> PocketList::draggableAt(const Point& point) const {
    const std::optional<std::size_t> index = rowAt(point);
    const bool isMissing = index && *index > 0 && files_[*index - 1].isMissing;
    return !index || isMissing ? std::nullopt : std::optional(rowOf(*index));
}

bool PocketList::pointAt(std::optional<Point> point) {
    const std::optional<std::size_t> before = pointedRow();
    pointer_ = point;
    return pointedRow() != before;
}

bool PocketList::scroll(double distance) {
    const double furthest = std::max(0.0, contentHeight() - view_.height);
    const double before = std::exchange(scrolled_, std::clamp(scrolled_ + distance, 0.0, furthest));
    return scrolled_ != before;
}

}  // namespace stowpocket
