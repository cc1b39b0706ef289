// SPDX-License-Identifier: MIT
#include "platform/linux/input/SelectionReader.h"

#include <algorithm>

namespace stowpocket {
namespace {

/// Of a property, in bytes and a multiple of four. Owners may make theirs as long as they like.
constexpr std::size_t partSize = 64u << 10;

bool isGone(const xcb_generic_event_t& event, xcb_window_t owner) {
    return typeOf(event) == XCB_DESTROY_NOTIFY &&
           reinterpret_cast<const xcb_destroy_notify_event_t&>(event).window == owner;
}

}  // namespace

struct SelectionReader::Question {
    xcb_window_t requestor;
    xcb_window_t owner;
    xcb_atom_t target;
    const SelectionPatience& patience;
    const Sink& sink;
};

SelectionReader::SelectionReader(XcbSession& session, const std::string& selection)
    : session_(session),
      selection_(session.atom(selection)),
      property_(session.atom("_STOWPOCKET_SELECTION")),
      inPieces_(session.atom("INCR")) {}

xcb_window_t SelectionReader::owner() const {
    const XcbAnswer<xcb_get_selection_owner_reply_t> reply(
        xcb_get_selection_owner_reply(session_.raw(), xcb_get_selection_owner(session_.raw(), selection_), nullptr));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

/// Each question has a window of its own: an answer that comes too late finds it gone, and cannot be taken for the
/// answer to the next.
SelectionReader::Answer SelectionReader::read(const std::string& target, xcb_timestamp_t time,
                                              const SelectionPatience& patience, const Sink& sink) {
    const Question question{session_.newWindow(), owner(), session_.atom(target), patience, sink};
    const std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    if (question.owner != session_.window())
        xcb_change_window_attributes(session_.raw(), question.owner, XCB_CW_EVENT_MASK, &mask);
    xcb_convert_selection(session_.raw(), question.requestor, selection_, question.target, property_, time);
    const Answer answer = receive(question);
    xcb_destroy_window(session_.raw(), question.requestor);
    return answer;
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

SelectionReader::Answer SelectionReader::receive(const Question& question) {
    const XcbSession::Event event = await(question, [&](const xcb_generic_event_t& candidate) {
        const auto& notify = reinterpret_cast<const xcb_selection_notify_event_t&>(candidate);
        return typeOf(candidate) == XCB_SELECTION_NOTIFY && notify.requestor == question.requestor &&
               notify.target == question.target;
    });
    if (!event)
        return {SelectionFailure::late};
    if (isGone(*event, question.owner) ||
        reinterpret_cast<const xcb_selection_notify_event_t&>(*event).property == XCB_ATOM_NONE)
        return {SelectionFailure::refused};
    std::size_t size = 0;
    const Answer answer = takeProperty(question, size);
    return answer.type == inPieces_ ? receiveInPieces(question) : answer;
}

/// That the property was deleted asks for the next piece (ICCCM 2.7.2); an empty piece is the end.
SelectionReader::Answer SelectionReader::receiveInPieces(const Question& question) {
    Answer first;
    for (;;) {
        const XcbSession::Event event = await(question, [&](const xcb_generic_event_t& candidate) {
            const auto& notify = reinterpret_cast<const xcb_property_notify_event_t&>(candidate);
            return typeOf(candidate) == XCB_PROPERTY_NOTIFY && notify.window == question.requestor &&
                   notify.atom == property_ && notify.state == XCB_PROPERTY_NEW_VALUE;
        });
        if (!event)
            return {SelectionFailure::late};
        if (isGone(*event, question.owner))
            return {SelectionFailure::refused};
        std::size_t size = 0;
        const Answer piece = takeProperty(question, size);
        if (piece.failure)
            return piece;
        if (first.type == XCB_ATOM_NONE)
            first = piece;
        if (size == 0)
            return first;
    }
}

/// Deletes it too, with the last part.
SelectionReader::Answer SelectionReader::takeProperty(const Question& question, std::size_t& size) const {
    for (;;) {
        const X11Property part = session_.property(question.requestor, property_, partSize, true, size);
        if (part.type == XCB_ATOM_NONE)
            return {SelectionFailure::refused};
        const Answer answer{std::nullopt, part.type, part.format};
        if (part.type == inPieces_)
            return answer;
        size += part.bytes.size();
        if (!part.bytes.empty() && !question.sink(part.bytes))
            return {SelectionFailure::tooBig};
        if (!part.isCut)
            return answer;
    }
}

XcbSession::Event SelectionReader::await(const Question& question,
                                         const std::function<bool(const xcb_generic_event_t&)>& isWanted) {
    const XcbSession::Deadline silent = std::chrono::steady_clock::now() + question.patience.silence;
    return session_.await(std::min(question.patience.deadline, silent), [&](const xcb_generic_event_t& candidate) {
        return isWanted(candidate) || (question.owner != XCB_WINDOW_NONE && isGone(candidate, question.owner));
    });
}

}  // namespace stowpocket
