// SPDX-License-Identifier: MIT
#pragma once

#include "services/Dispatch.h"
#include "services/StatusItem.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace stowpocket {

class ShelfViewModel;

/// The files of the shelf for drags out of the icon; none once the shelf is gone.
[[nodiscard]] IconDragSource iconDragSource(const std::shared_ptr<ShelfViewModel>& viewModel);

/// Tells when the list beside the pocket is unfolded: while the pointer rests on the pocket or is over the list.
/// Nothing runs while the pointer is elsewhere and the list is folded. Main thread.
class PocketFolding {
public:
    /// `dispatch` outlives it. `changed` runs after each change.
    PocketFolding(Dispatch& dispatch, std::function<void(bool isUnfolded)> changed)
        : dispatch_(dispatch), changed_(std::move(changed)) {}

    /// A finger is not there between two touches, so the list waits longer for it.
    enum class By { pointer, finger };
    /// Whether the pointer is over the pocket or the list now, or a finger.
    void setPointedAt(bool isPointedAt, By by = By::pointer);
    /// Folds the list at once. It does not unfold before the pointer has left.
    void fold();
    /// The same where the pointer is about to be over the pocket for another purpose.
    void dismiss() { become(State::dismissed); }
    [[nodiscard]] bool isUnfolded() const { return state_ == State::unfolded || state_ == State::leaving; }

private:
    enum class State { folded, resting, unfolded, leaving, dismissed };

    void become(State state);
    void becomeAfter(std::chrono::milliseconds delay, State state);

    Dispatch& dispatch_;
    const std::function<void(bool isUnfolded)> changed_;
    State state_ = State::folded;
    std::unique_ptr<ScheduledWork> later_;
};

/// The list beside the pocket: a row for each file, the newest first, which scroll if there are many, and above them
/// a row for all files if several can be dragged. Distances are in points, those of rows from the list's corner.
class PocketList {
public:
    struct Row {
        /// Null for the row of all files.
        const WaitingFile* file;
        Rect place;
        bool isPointedAt;
    };

    /// Shows these files beside `pocket`, inside `usable`, scrolled as before.
    void lay(std::vector<WaitingFile> files, const Rect& pocket, const Rect& usable);
    /// The same without any.
    void clear() { *this = {}; }

    [[nodiscard]] const std::vector<WaitingFile>& files() const { return files_; }
    /// Its place on the screen.
    [[nodiscard]] const Rect& frame() const { return frame_; }
    /// What the row for all files says; empty without that row.
    [[nodiscard]] const std::string& textForAll() const { return textForAll_; }
    /// The rows of files that are in sight, also in part. They are seen inside `view` only.
    [[nodiscard]] std::vector<Row> rows() const;
    [[nodiscard]] std::optional<Row> rowForAll() const;
    [[nodiscard]] const Rect& view() const { return view_; }
    /// The sign of how far it is scrolled; none if all files are in sight.
    [[nodiscard]] std::optional<Rect> scrollMark() const;

    /// What a drag from there begins with; none where there is nothing to drag.
    [[nodiscard]] std::optional<Row> draggableAt(const Point& point) const;
    /// Both return whether it looks different now.
    [[nodiscard]] bool pointAt(std::optional<Point> point);
    [[nodiscard]] bool scroll(double distance);
    /// As far as one step of a wheel scrolls.
    static constexpr double wheelStep = 36;

private:
    [[nodiscard]] Row rowOf(std::size_t index) const;
    [[nodiscard]] double contentHeight() const;
    /// Which row that is: 0 for all files, then the files from 1; none where there is no row.
    [[nodiscard]] std::optional<std::size_t> rowAt(const Point& point) const;
    [[nodiscard]] std::optional<std::size_t> pointedRow() const;

    std::vector<WaitingFile> files_;
    std::string textForAll_;
    Rect frame_;
    Rect view_;
    double scrolled_ = 0;
    std::optional<Point> pointer_;
};

}  // namespace stowpocket
