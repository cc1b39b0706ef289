// SPDX-License-Identifier: MIT
#include "platform/linux/drags/DirectSave.h"

#include "foundation/FileURL.h"

namespace stowpocket {
namespace {

/// In bytes, on every common file system.
constexpr std::size_t longestName = 255;

/// The protocol's letters are "S" for success, "F" for a place that the source cannot reach and "E" for any other
/// error.
constexpr std::string_view success = "S";

}  // namespace

std::optional<std::string> directSaveName(std::string_view proposed) {
    while (proposed.ends_with('/'))
        proposed.remove_suffix(1);
    const std::string_view name = proposed.substr(proposed.find_last_of('/') + 1);
    if (!isPlainFileName(name) || name.size() > longestName)
        return std::nullopt;
    return std::string(name);
}

DirectSave::Step DirectSave::replied(std::optional<std::string_view> reply, Arrival arrival) {
    if (reply != success || arrival == Arrival::nothing)
        return end(Step::fail);
    if (arrival == Arrival::content)
        return end(Step::collect);
    hasSucceeded_ = true;
    return isOver_ ? Step::none : Step::wait;
}

DirectSave::Step DirectSave::written(Arrival arrival) {
    return hasSucceeded_ && arrival == Arrival::content ? end(Step::collect) : Step::none;
}

DirectSave::Step DirectSave::sourceGone() {
    return hasSucceeded_ ? Step::none : end(Step::fail);
}

DirectSave::Step DirectSave::timeLimitReached(std::uint64_t size, Arrival arrival) {
    if (isOver_ || size == size_)
        return end(hasSucceeded_ && arrival == Arrival::content ? Step::collect : Step::fail);
    size_ = size;
    return Step::wait;
}

DirectSave::Step DirectSave::end(Step step) {
    if (isOver_)
        return Step::none;
    isOver_ = true;
    return step;
}

}  // namespace stowpocket
