// SPDX-License-Identifier: MIT
#include "platform/linux/drags/X11IncomingDrops.h"

#include "services/MainBundle.h"

#include <algorithm>
#include <array>

namespace stowpocket {
namespace {

/// The places of the fields in the messages (XDND 5).
constexpr std::size_t sourceField = 0;
constexpr std::size_t flagsField = 1;
constexpr std::size_t firstTypeField = 2;
constexpr std::size_t dropTimeField = 2;
constexpr std::uint32_t hasTypeListFlag = 1;

constexpr std::size_t longestTypeList = 4096;
constexpr int mostReadings = 4;
/// Sources say where they are right after they enter.
constexpr std::chrono::milliseconds longestSilence{50};

/// The message contains three types. If there are more, the window of the source has the full list.
std::vector<std::string> formatsOf(XcbSession& session, const xcb_client_message_event_t& entered) {
    const auto& fields = entered.data.data32;
    std::vector<xcb_atom_t> types(std::begin(fields) + firstTypeField, std::end(fields));
    if ((fields[flagsField] & hasTypeListFlag) != 0)
        types = session.property(fields[sourceField], session.atom(X11Atom::dragTypeList), longestTypeList).words();
    std::erase(types, xcb_atom_t{XCB_ATOM_NONE});
    return session.namesOf(types);
}

/// Any thread. Waits for the source.
DropReading readingOf(const xcb_client_message_event_t& drop, const xcb_client_message_event_t& entered,
                      const DropPatience& patience) {
    DropReading reading;
    if (const auto session = XcbSession::open())
        reading =
            readSelection(*session, {"XdndSelection", drop.data.data32[dropTimeField], drop.data.data32[sourceField]},
                          formatsOf(*session, entered), patience);
    return reading;
}

}  // namespace

X11IncomingDrops::X11IncomingDrops(const X11Connection& connection, Dispatch& dispatch, DirectSaves& saves,
                                   const DropPatience& patience)
    : connection_(connection), dispatch_(dispatch), saves_(saves), patience_(patience) {}

bool X11IncomingDrops::promisesFiles(const QMimeData& data) const {
    return data.hasFormat(QLatin1String(DirectSaves::format.data(), DirectSaves::format.size()));
}

bool X11IncomingDrops::handleEvent(const xcb_generic_event_t& event) {
    const auto* const said = eventAs<xcb_client_message_event_t>(event);
    if (said == nullptr || said->format != 32)
        return false;
    if (said->type == connection_.atom(X11Atom::dragEnter))
        handleEnter(*said);
    else if (said->window == entered_.window && (said->type == connection_.atom(X11Atom::dragPosition) ||
                                                 said->type == connection_.atom(X11Atom::dragLeave)))
        hasGoneOn_ = true;
    // Compositors made with wlroots tell of the end of a drag after its drop. What has been dropped stays.
    if (said->type == connection_.atom(X11Atom::dragLeave))
        return state_ != State::idle;
    return said->type == connection_.atom(X11Atom::dragDrop) && handleDrop(*said);
}

void X11IncomingDrops::handleEnter(const xcb_client_message_event_t& message) {
    entered_ = message;
    forgetDrag();
    hasGoneOn_ = false;
    later(longestSilence, [this, number = number_] {
        if (number == number_ && !hasGoneOn_)
            tellPosition();
    });
}

/// As the source has said it, in a message that is lost. Without an action it is a copy.
void X11IncomingDrops::tellPosition() const {
    const std::optional<QPoint> place = connection_.pointer();
    if (!place)
        return;
    xcb_client_message_event_t said = entered_;
    said.type = connection_.atom(X11Atom::dragPosition);
    constexpr int bitsOfHeight = 16;
    const auto position =
        static_cast<std::uint32_t>(place->x()) << bitsOfHeight | static_cast<std::uint32_t>(place->y());
    const std::array<std::uint32_t, 5> fields{entered_.data.data32[sourceField], 0, position, XCB_CURRENT_TIME,
                                              XCB_ATOM_NONE};
    std::ranges::copy(fields, std::begin(said.data.data32));
    sendEvent(connection_.raw(), said.window, XCB_EVENT_MASK_NO_EVENT, said);
}

void X11IncomingDrops::forgetDrag() {
    ++number_;
    state_ = State::idle;
    received_ = {};
}

bool X11IncomingDrops::handleDrop(const xcb_client_message_event_t& message) {
    if (state_ == State::reading)
        return true;
    if (state_ == State::handedOn) {
        // Qt handles the message right after this.
        later([this, number = number_] { number == number_ ? forgetDrag() : void(); });
        return false;
    }
    if (message.data.data32[sourceField] != entered_.data.data32[sourceField] || readings_ == mostReadings)
        return false;
    read(message);
    return true;
}

void X11IncomingDrops::read(const xcb_client_message_event_t& drop) {
    state_ = State::reading;
    ++readings_;
    auto work = [&dispatch = dispatch_, self = std::weak_ptr(self_), entered = entered_, drop, number = number_,
                 patience = patience_] {
        auto reading = std::make_shared<const DropReading>(readingOf(drop, entered, patience));
        dispatch.async([self, drop, number, reading = std::move(reading)] {
            if (const auto drops = self.lock())
                (*drops)->finishReading(drop, number, *reading);
        });
    };
    dispatch_.serialQueue(std::string(bundleIdentifier) + ".dragged")->async(std::move(work));
}

void X11IncomingDrops::finishReading(const xcb_client_message_event_t& drop, int number, const DropReading& reading) {
    --readings_;
    if (number != number_)
        return;
    received_.uriList = reading.uriList;
    if (reading.contents)
        received_.contents = providerOf(*reading.contents, dispatch_);
    state_ = State::handedOn;
    sendEvent(connection_.raw(), drop.window, XCB_EVENT_MASK_NO_EVENT, drop);
}

}  // namespace stowpocket
