// SPDX-License-Identifier: MIT
#include "platform/linux/x11/SelectionReader.h"

#include <algorithm>

namespace stowpocket {
namespace {

struct Property {
    SelectionAnswer answer;
    bool announcesPieces = false;
    std::size_t size = 0;
};

Property takeProperty(SelectionExchange& exchange, const SelectionSink& sink) {
    Property property;
    for (;;) {
        const SelectionExchange::Part part = exchange.take(property.size);
        property.answer = {std::nullopt, part.type, part.format};
        property.announcesPieces = part.announcesPieces;
        property.size += part.bytes.size();
        if (!part.isThere)
            property.answer.failure = SelectionFailure::refused;
        else if (!part.announcesPieces && !part.bytes.empty() && !sink(part.bytes))
            property.answer.failure = SelectionFailure::tooBig;
        if (property.answer.failure || part.announcesPieces || !part.isCut)
            return property;
    }
}

std::optional<SelectionFailure> failureOf(SelectionExchange::Sign sign) {
    using Sign = SelectionExchange::Sign;
    if (sign == Sign::come)
        return std::nullopt;
    return sign == Sign::timeUp ? SelectionFailure::late : SelectionFailure::refused;
}

SelectionAnswer takePieces(SelectionExchange& exchange, const SelectionSink& sink) {
    std::optional<SelectionAnswer> first;
    for (;;) {
        if (const auto failure = failureOf(exchange.awaitPiece()))
            return {failure};
        const Property piece = takeProperty(exchange, sink);
        if (piece.answer.failure || piece.announcesPieces)
            return {piece.answer.failure.value_or(SelectionFailure::refused)};
        if (!first)
            first = piece.answer;
        if (piece.size == 0)
            return *first;
    }
}

/// How much of a property is read at once, in bytes and a multiple of four. Owners may make a property as long as
/// they like.
constexpr std::size_t partSize = 64u << 10;

/// One question, asked for a window of its own. A late answer finds that window gone, so it cannot be taken for the
/// answer to the next question.
class X11Exchange : public SelectionExchange {
public:
    struct Question {
        xcb_atom_t selection;
        xcb_atom_t target;
        xcb_atom_t property;
        xcb_window_t owner;
    };

    X11Exchange(XcbSession& session, const Question& question, xcb_timestamp_t time,
                const SelectionPatience& patience)
        : session_(session),
          question_(question),
          patience_(patience),
          inPieces_(session.atom(X11Atom::inPieces)),
          requestor_(session.newWindow()) {
        const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
        if (question_.owner != session_.window())
            xcb_change_window_attributes(session_.raw(), question_.owner, XCB_CW_EVENT_MASK, &mask);
        xcb_convert_selection(session_.raw(), requestor_, question_.selection, question_.target, question_.property,
                              time);
    }
    X11Exchange(const X11Exchange&) = delete;
    X11Exchange& operator=(const X11Exchange&) = delete;
    ~X11Exchange() override { xcb_destroy_window(session_.raw(), requestor_); }

    [[nodiscard]] Sign awaitAnswer() override {
        bool isEmpty = false;
        const Sign sign = signOf(await([&](const xcb_generic_event_t& candidate) {
            const auto* const notify = eventAs<xcb_selection_notify_event_t>(candidate);
            if (notify == nullptr || notify->requestor != requestor_ || notify->target != question_.target)
                return false;
            isEmpty = notify->property == XCB_ATOM_NONE;
            return true;
        }));
        return isEmpty ? Sign::refused : sign;
    }
    [[nodiscard]] Sign awaitPiece() override {
        return signOf(await([this](const xcb_generic_event_t& candidate) {
            const auto* const notify = eventAs<xcb_property_notify_event_t>(candidate);
            return notify != nullptr && notify->window == requestor_ && notify->atom == question_.property &&
                   notify->state == XCB_PROPERTY_NEW_VALUE;
        }));
    }
    [[nodiscard]] Part take(std::size_t offset) override {
        X11Property part = session_.property(requestor_, question_.property, partSize, true, offset);
        return {part.type != XCB_ATOM_NONE,
                part.type == inPieces_,
                part.type,
                part.format,
                std::move(part.bytes),
                part.isCut};
    }

private:
    [[nodiscard]] bool isOwnerGone(const xcb_generic_event_t& event) const {
        const auto* const gone = eventAs<xcb_destroy_notify_event_t>(event);
        return gone != nullptr && question_.owner != XCB_WINDOW_NONE && gone->window == question_.owner;
    }
    [[nodiscard]] Sign signOf(const XcbSession::Event& event) const {
        if (!event)
            return Sign::timeUp;
        return isOwnerGone(*event) ? Sign::refused : Sign::come;
    }
    [[nodiscard]] XcbSession::Event await(const std::function<bool(const xcb_generic_event_t&)>& isWanted) {
        const XcbSession::Deadline silent = std::chrono::steady_clock::now() + patience_.silence;
        return session_.await(std::min(patience_.deadline, silent), [&](const xcb_generic_event_t& candidate) {
            return isWanted(candidate) || isOwnerGone(candidate);
        });
    }

    XcbSession& session_;
    const Question question_;
    const SelectionPatience& patience_;
    const xcb_atom_t inPieces_;
    const xcb_window_t requestor_;
};

}  // namespace

SelectionAnswer transferSelection(SelectionExchange& exchange, const SelectionSink& sink) {
    if (const auto failure = failureOf(exchange.awaitAnswer()))
        return {failure};
    const Property property = takeProperty(exchange, sink);
    return property.announcesPieces ? takePieces(exchange, sink) : property.answer;
}

SelectionReader::SelectionReader(XcbSession& session, const std::string& selection)
    : session_(session), selection_(session.atom(selection)), property_(session.atom(X11Atom::selectionData)) {}

xcb_window_t SelectionReader::owner() const {
    return session_.selectionOwner(selection_);
}

SelectionReader::Answer SelectionReader::read(const std::string& target, xcb_timestamp_t time,
                                              const SelectionPatience& patience, const Sink& sink) {
    X11Exchange exchange(session_, {selection_, session_.atom(target), property_, owner()}, time, patience);
    return transferSelection(exchange, sink);
}

SelectionReader::Answer SelectionReader::read(const std::string& target, xcb_timestamp_t time,
                                              const SelectionPatience& patience, std::size_t mostBytes,
                                              std::vector<std::byte>& bytes) {
    return read(target, time, patience, [&](std::span<const std::byte> part) {
        if (part.size() > mostBytes - bytes.size())
            return false;
        bytes.insert(bytes.end(), part.begin(), part.end());
        return true;
    });
}

}  // namespace stowpocket
