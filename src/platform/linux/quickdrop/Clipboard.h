// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/SelectionReader.h"
#include "platform/linux/x11/XcbSession.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

/// One form of what is on the clipboard, as its owner handed it over.
struct ClipboardItem {
    std::string target;
    std::string type;
    std::uint8_t format = 8;  ///< bits of one unit: 8, 16 or 32
    std::vector<std::byte> bytes;
    friend bool operator==(const ClipboardItem&, const ClipboardItem&) = default;
};

struct ClipboardAnswer {
    std::optional<SelectionFailure> failure;
    ClipboardItem item;
};

/// All of the clipboard that is worth keeping, to be put back later. Empty and complete when nobody owned it.
struct ClipboardSnapshot {
    std::vector<ClipboardItem> items;
    /// Whether putting it back loses nothing.
    bool isComplete = true;
};

/// Of what an owner offers, what a snapshot keeps: not the questions about the selection itself, and of several
/// picture formats the best one.
[[nodiscard]] std::vector<std::string> targetsToKeep(const std::vector<std::string>& offered);

/// The names of a file list among the targets.
inline constexpr std::string_view uriListTarget = "text/uri-list";

/// Collects a snapshot target by target within a budget of bytes.
class SnapshotBuilder {
public:
    /// `offered` is none when the owner did not even say what it has.
    SnapshotBuilder(const std::optional<std::vector<std::string>>& offered, std::size_t budget);

    /// The target to ask for next; none when the snapshot is done, complete or not.
    [[nodiscard]] std::optional<std::string> wanted() const;
    /// The most bytes that the answer may have.
    [[nodiscard]] std::size_t budgetLeft() const { return budget_; }
    void take(ClipboardAnswer answer);
    [[nodiscard]] ClipboardSnapshot finished() &&;

private:
    std::vector<std::string> targets_;
    std::size_t next_ = 0;
    std::size_t budget_;
    ClipboardSnapshot snapshot_;
};

/// Reads what another program has on the clipboard, never waiting longer than told.
class ClipboardReader {
public:
    using Deadline = XcbSession::Deadline;

    explicit ClipboardReader(XcbSession& session);

    [[nodiscard]] xcb_atom_t selection() const { return reader_.selection(); }
    /// 0 when nobody owns it.
    [[nodiscard]] xcb_window_t owner() const { return reader_.owner(); }
    /// Hears of new owners from now on, or no longer.
    void watchOwner(bool isWatched);
    /// The owner that the event tells of; 0 when that is nobody, or the event tells of something else.
    [[nodiscard]] xcb_window_t newOwnerIn(const xcb_generic_event_t& event) const;

    /// What the owner offers; none when it does not answer.
    [[nodiscard]] std::optional<std::vector<std::string>> targets(Deadline deadline);
    [[nodiscard]] ClipboardAnswer read(const std::string& target, Deadline deadline, std::size_t mostBytes);

private:
    XcbSession& session_;
    SelectionReader reader_;
    std::uint8_t fixesEvent_ = 0;
};

/// Holds the clipboard for a program whose content was put back, until another program takes it.
class ClipboardOwner {
public:
    explicit ClipboardOwner(XcbSession& session);

    /// Nothing is offered that needs more than one request to hand over.
    [[nodiscard]] std::size_t mostBytes() const;
    /// Takes the clipboard and offers `items`; without any it leaves the clipboard to nobody.
    void offer(std::vector<ClipboardItem> items);
    /// What is offered now; empty when another program has the clipboard.
    [[nodiscard]] const std::vector<ClipboardItem>& items() const { return items_; }
    void handleEvent(const xcb_generic_event_t& event);

private:
    void answer(const xcb_selection_request_event_t& request);
    [[nodiscard]] bool handOver(xcb_window_t requestor, xcb_atom_t property, xcb_atom_t target);

    XcbSession& session_;
    const xcb_atom_t clipboard_;
    xcb_timestamp_t since_ = XCB_CURRENT_TIME;
    std::vector<ClipboardItem> items_;
};

}  // namespace stowpocket
