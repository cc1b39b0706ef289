// SPDX-License-Identifier: MIT
#include "platform/linux/drags/X11DirectSaves.h"

#include "platform/linux/drags/PromisedFileProvider.h"

#include <algorithm>
#include <ranges>

namespace stowpocket {
namespace {

/// The files of a promise, which stay in a folder of their own inside the one that they are wanted in: the source was
/// told that place and may be the last to let go of it.
class DirectSaveReceiver : public FilePromiseReceiver {
public:
    explicit DirectSaveReceiver(X11DirectSaves& saves) : saves_(saves) {}

    void receivePromisedFiles(const FileURL& destination, Reader reader) override {
        saves_.save(destination, [reader = std::move(reader)](const std::optional<ArrivalFolder>& arrived) {
            if (!arrived)
                return reader(std::nullopt);
            for (const FileURL& file : arrived->files())
                reader(file);
        });
    }

private:
    X11DirectSaves& saves_;
};

}  // namespace

X11DirectSaves::X11DirectSaves(const X11Connection& connection, Dispatch& dispatch,
                               std::chrono::milliseconds timeLimit)
    : connection_(connection), dispatch_(dispatch), timeLimit_(timeLimit) {}

X11DirectSaves::~X11DirectSaves() {
    while (!saves_.empty()) {
        const auto save = saves_.back();
        save->sourceGone();
    }
}

std::shared_ptr<FilePromiseReceiver> X11DirectSaves::receiver() {
    return std::make_shared<DirectSaveReceiver>(*this);
}

std::shared_ptr<ItemProvider> X11DirectSaves::itemProvider() {
    return std::make_shared<PromisedFileProvider>(*this);
}

void X11DirectSaves::save(const FileURL& destination,
                          std::function<void(const std::optional<ArrivalFolder>&)> completion) {
    auto complete = [this, completion = std::move(completion)](const X11DirectSave& ended,
                                                               const std::optional<ArrivalFolder>& arrived) {
        std::erase_if(saves_, [&ended](const auto& save) { return save.get() == &ended; });
        completion(arrived);
    };
    const auto save = std::make_shared<X11DirectSave>(connection_, dispatch_, timeLimit_, std::move(complete));
    saves_.push_back(save);
    save->begin(destination, dropTime_);
}

bool X11DirectSaves::handleEvent(const xcb_generic_event_t& event) {
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

void X11DirectSaves::handleReply(const xcb_selection_notify_event_t& reply) {
    const auto save = std::ranges::find(saves_, reply.requestor, [](const auto& each) { return each->requestor(); });
    if (save != saves_.end())
        later([save = *save, reply] { save->replied(reply); });
}

void X11DirectSaves::handleGone(const xcb_destroy_notify_event_t& event, std::uint32_t sequence) {
    for (const auto& save : saves_) {
        if (save->isAboutSource(event, sequence))
            later([save] { save->sourceGone(); });
    }
}

}  // namespace stowpocket
