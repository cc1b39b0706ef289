// SPDX-License-Identifier: MIT
#include "platform/linux/drags/X11DirectSave.h"

#include <QDebug>
#include <QSysInfo>

namespace stowpocket {
namespace {

/// With this machine's name, as the protocol wants it: sources elsewhere on the network then know that they cannot
/// write there.
std::string urlForSource(const FileURL& file) {
    constexpr std::string_view scheme = "file://";
    return std::string(scheme) + QSysInfo::machineHostName().toStdString() + file.string().substr(scheme.size());
}

}  // namespace

X11DirectSave::X11DirectSave(const X11Connection& connection, Dispatch& dispatch, std::chrono::milliseconds timeLimit,
                             Completion completion)
    : connection_(connection),
      dispatch_(dispatch),
      timeLimit_(timeLimit),
      completion_(std::move(completion)),
      requestor_(connection) {}

void X11DirectSave::begin(const FileURL& destination, xcb_timestamp_t dropTime) {
    source_ = connection_.selectionOwner(X11Atom::dragSelection);
    const std::optional<std::string> proposed = connection_.text(source_, X11Atom::directSave);
    const std::optional<std::string> name = proposed ? directSaveName(*proposed) : std::nullopt;
    if (name)
        folder_ = ArrivalFolder::make(destination);
    if (!folder_) {
        qWarning("stowpocket: a promised file was refused: %s", name ? "no folder to put it in" : "bad name");
        return take(save_.replied(std::nullopt, DirectSave::Arrival::nothing));
    }
    watch_ = std::make_unique<ArrivalWatch>(folder_->url(), [this] { handleWritten(); });
    connection_.hearAlso(source_, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    connection_.setText(source_, X11Atom::directSave, X11Atom::plainText,
                        urlForSource(folder_->url().appending(*name)));
    asked_ = requestor_.ask(X11Atom::dragSelection, X11Atom::directSave, dropTime);
    waitOn();
}

void X11DirectSave::replied(const xcb_selection_notify_event_t& event) {
    const std::optional<std::string> reply = requestor_.takeText(event);
    take(save_.replied(reply ? std::optional<std::string_view>(*reply) : std::nullopt, arrival()));
}

bool X11DirectSave::isAboutSource(const xcb_destroy_notify_event_t& event, std::uint32_t sequence) const {
    return event.window == source_ && static_cast<std::int32_t>(sequence - asked_) >= 0;
}

/// Later, because the save may end with this, and the watch with it.
void X11DirectSave::handleWritten() {
    dispatch_.async([weak = weak_from_this()] {
        if (const auto self = weak.lock())
            self->take(self->save_.written(self->arrival()));
    });
}

void X11DirectSave::waitOn() {
    patience_ = dispatch_.after(timeLimit_, [weak = weak_from_this()] {
        if (const auto self = weak.lock())
            self->take(self->save_.timeLimitReached(self->folder_->size(), self->arrival()));
    });
}

DirectSave::Arrival X11DirectSave::arrival() const {
    using Arrival = DirectSave::Arrival;
    if (folder_->files().empty())
        return Arrival::nothing;
    return folder_->hasContent() ? Arrival::content : Arrival::emptyFiles;
}

void X11DirectSave::take(DirectSave::Step step) {
    if (step == DirectSave::Step::wait)
        return waitOn();
    if (step == DirectSave::Step::none)
        return;
    if (step == DirectSave::Step::collect)
        return completion_(*this, folder_);
    if (folder_)
        folder_->discardIfEmpty();
    completion_(*this, std::nullopt);
}

}  // namespace stowpocket
