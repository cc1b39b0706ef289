// SPDX-License-Identifier: MIT
#include "platform/linux/drags/DirectSaves.h"

#include "foundation/FileURL.h"
#include "platform/linux/drags/X11Requestor.h"

#include <QSysInfo>

#include <algorithm>

namespace stowpocket {
namespace {

/// In bytes, on every common file system.
constexpr std::size_t longestName = 255;

/// The protocol has the letters "S" for success, "F" for a place that the source cannot reach and "E" for any other
/// error.
constexpr std::string_view success = "S";

/// Contains the name of this machine, as the protocol demands. Sources elsewhere on the network then know that they
/// cannot write there.
std::string urlForSource(const FileURL& file) {
    constexpr std::string_view scheme = "file://";
    return std::string(scheme) + QSysInfo::machineHostName().toStdString() + file.string().substr(scheme.size());
}

}  // namespace

std::optional<std::string> directSaveName(std::string_view proposed) {
    while (proposed.ends_with('/'))
        proposed.remove_suffix(1);
    const std::string_view name = proposed.substr(proposed.find_last_of('/') + 1);
    if (!isPlainFileName(name) || name.size() > longestName)
        return std::nullopt;
    return std::string(name);
}

DirectSaveProgress::Step DirectSaveProgress::replied(std::optional<std::string_view> reply, Arrival arrival) {
    if (reply != success || arrival == Arrival::nothing)
        return end(Step::fail);
    if (arrival == Arrival::content)
        return end(Step::collect);
    hasSucceeded_ = true;
    return isOver_ ? Step::none : Step::wait;
}

DirectSaveProgress::Step DirectSaveProgress::written(Arrival arrival) {
    return hasSucceeded_ && arrival == Arrival::content ? end(Step::collect) : Step::none;
}

DirectSaveProgress::Step DirectSaveProgress::sourceGone() {
    return hasSucceeded_ ? Step::none : end(Step::fail);
}

DirectSaveProgress::Step DirectSaveProgress::timeLimitReached(std::uint64_t size, Arrival arrival) {
    if (isOver_ || size == size_)
        return end(hasSucceeded_ && arrival == Arrival::content ? Step::collect : Step::fail);
    size_ = size;
    return Step::wait;
}

DirectSaveProgress::Step DirectSaveProgress::end(Step step) {
    if (isOver_)
        return Step::none;
    isOver_ = true;
    return step;
}

/// One promise under way: the source of the drag knows a path in a new folder, and this waits for its reply and the
/// files.
class DirectSaves::Save : public std::enable_shared_from_this<Save> {
public:
    /// Runs once; with nothing when no file arrived.
    using Completion = std::function<void(const Save&, const std::optional<DropFolder>&)>;

    Save(const X11Connection& connection, Dispatch& dispatch, std::chrono::milliseconds timeLimit,
         Completion completion);

    /// Asks the source of the drag that is being dropped, with the time of that drop.
    void begin(const FileURL& destination, xcb_timestamp_t dropTime);

    [[nodiscard]] xcb_window_t requestor() const { return requestor_.window(); }
    /// Whether the event says that the window of the source is gone. Numbers of windows are used again, so an event
    /// from before the question is about another window.
    [[nodiscard]] bool isAboutSource(const xcb_destroy_notify_event_t& event, std::uint32_t sequence) const;
    void replied(const xcb_selection_notify_event_t& event);
    void sourceGone() { takeStep(save_.sourceGone()); }

private:
    void handleWritten();
    void waitOn();
    [[nodiscard]] DirectSaveProgress::Arrival arrival() const;
    void takeStep(DirectSaveProgress::Step step);

    const X11Connection& connection_;
    Dispatch& dispatch_;
    const std::chrono::milliseconds timeLimit_;
    const Completion completion_;
    const X11Requestor requestor_;
    DirectSaveProgress save_;
    xcb_window_t source_ = x11None;
    unsigned asked_ = 0;
    std::optional<DropFolder> folder_;
    std::unique_ptr<FolderWatch> watch_;
    std::unique_ptr<ScheduledWork> patience_;
};

DirectSaves::Save::Save(const X11Connection& connection, Dispatch& dispatch, std::chrono::milliseconds timeLimit,
                        Completion completion)
    : connection_(connection),
      dispatch_(dispatch),
      timeLimit_(timeLimit),
      completion_(std::move(completion)),
      requestor_(connection) {}

void DirectSaves::Save::begin(const FileURL& destination, xcb_timestamp_t dropTime) {
    source_ = connection_.selectionOwner(X11Atom::dragSelection);
    const std::optional<std::string> proposed = connection_.text(source_, X11Atom::directSave);
    const std::optional<std::string> name = proposed ? directSaveName(*proposed) : std::nullopt;
    if (name)
        folder_ = DropFolder::make(destination);
    if (!folder_) {
        qCWarning(dragsLog, "a promised file was refused: %s", name ? "no folder to put it in" : "bad name");
        return takeStep(save_.replied(std::nullopt, DirectSaveProgress::Arrival::nothing));
    }
    watch_ = std::make_unique<FolderWatch>(folder_->url(), [this] { handleWritten(); });
    connection_.hearAlso(source_, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    connection_.setText(source_, X11Atom::directSave, X11Atom::plainText,
                        urlForSource(folder_->url().appending(*name)));
    asked_ = requestor_.ask(X11Atom::dragSelection, X11Atom::directSave, dropTime);
    waitOn();
}

void DirectSaves::Save::replied(const xcb_selection_notify_event_t& event) {
    const std::optional<std::string> reply = requestor_.takeText(event);
    takeStep(save_.replied(reply ? std::optional<std::string_view>(*reply) : std::nullopt, arrival()));
}

bool DirectSaves::Save::isAboutSource(const xcb_destroy_notify_event_t& event, std::uint32_t sequence) const {
    return event.window == source_ && static_cast<std::int32_t>(sequence - asked_) >= 0;
}

/// Runs later, because the save and this watch with it may end.
void DirectSaves::Save::handleWritten() {
    dispatch_.async([weak = weak_from_this()] {
        if (const auto self = weak.lock())
            self->takeStep(self->save_.written(self->arrival()));
    });
}

void DirectSaves::Save::waitOn() {
    patience_ = dispatch_.after(timeLimit_, [weak = weak_from_this()] {
        if (const auto self = weak.lock())
            self->takeStep(self->save_.timeLimitReached(self->folder_->size(), self->arrival()));
    });
}

DirectSaveProgress::Arrival DirectSaves::Save::arrival() const {
    using Arrival = DirectSaveProgress::Arrival;
    if (folder_->files().empty())
        return Arrival::nothing;
    return folder_->hasContent() ? Arrival::content : Arrival::emptyFiles;
}

void DirectSaves::Save::takeStep(DirectSaveProgress::Step step) {
    if (step == DirectSaveProgress::Step::wait)
        return waitOn();
    if (step == DirectSaveProgress::Step::none)
        return;
    if (step == DirectSaveProgress::Step::collect)
        return completion_(*this, folder_);
    if (folder_)
        folder_->discardIfEmpty();
    completion_(*this, std::nullopt);
}

DirectSaves::DirectSaves(const X11Connection& connection, Dispatch& dispatch, std::chrono::milliseconds timeLimit)
    : connection_(connection), dispatch_(dispatch), timeLimit_(timeLimit) {}

DirectSaves::~DirectSaves() {
    while (!saves_.empty()) {
        const auto save = saves_.back();
        save->sourceGone();
    }
}

std::shared_ptr<FilePromiseReceiver> DirectSaves::receiver() {
    return promiseReceiver(saving());
}

std::shared_ptr<ItemProvider> DirectSaves::itemProvider() {
    return promiseProvider(saving(), dispatch_);
}

PromiseSaving DirectSaves::saving() {
    return [this](const FileURL& destination, std::function<void(const std::optional<DropFolder>&)> completion) {
        save(destination, std::move(completion));
    };
}

void DirectSaves::save(const FileURL& destination, std::function<void(const std::optional<DropFolder>&)> completion) {
    auto complete = [this, completion = std::move(completion)](const Save& ended,
                                                               const std::optional<DropFolder>& arrived) {
        std::erase_if(saves_, [&ended](const auto& save) { return save.get() == &ended; });
        completion(arrived);
    };
    const auto save = std::make_shared<Save>(connection_, dispatch_, timeLimit_, std::move(complete));
    saves_.push_back(save);
    save->begin(destination, dropTime_);
}

bool DirectSaves::handleEvent(const xcb_generic_event_t& event) {
    constexpr std::size_t timeOfDrop = 2;
    if (const auto* const said = eventAs<xcb_client_message_event_t>(event)) {
        if (said->type == connection_.atom(X11Atom::dragDrop))
            dropTime_ = said->data.data32[timeOfDrop];
    } else if (const auto* const reply = eventAs<xcb_selection_notify_event_t>(event)) {
        handleReply(*reply);
    } else if (const auto* const gone = eventAs<xcb_destroy_notify_event_t>(event)) {
        handleGone(*gone, event.full_sequence);
    }
    return false;
}

void DirectSaves::handleReply(const xcb_selection_notify_event_t& reply) {
    const auto save = std::ranges::find(saves_, reply.requestor, [](const auto& each) { return each->requestor(); });
    if (save != saves_.end())
        later([save = *save, reply] { save->replied(reply); });
}

void DirectSaves::handleGone(const xcb_destroy_notify_event_t& event, std::uint32_t sequence) {
    for (const auto& save : saves_) {
        if (save->isAboutSource(event, sequence))
            later([save] { save->sourceGone(); });
    }
}

}  // namespace stowpocket
