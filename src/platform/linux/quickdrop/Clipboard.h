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

/// One format of the clipboard's content, as its owner delivered it.
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

/// All of the clipboard that is worth keeping, to be restored later. Empty and complete when nobody owned the
/// clipboard.
struct ClipboardSnapshot {
    std::vector<ClipboardItem> items;
    /// Whether restoring it loses nothing.
    bool isComplete = true;
};

/// The offered targets that a snapshot keeps: no targets about the selection itself, and only the best of several
/// picture formats.
[[nodiscard]] std::vector<std::string> targetsToKeep(const std::vector<std::string>& offered);

/// The target of a list of files.
inline constexpr std::string_view uriListTarget = "text/uri-list";

/// Collects a snapshot target by target within a budget of bytes.
class SnapshotBuilder {
public:
    /// `offered` is empty when the owner did not list its targets.
    SnapshotBuilder(const std::optional<std::vector<std::string>>& offered, std::size_t budget);

    /// The target to request next. Empty once the snapshot is done, complete or not.
    [[nodiscard]] std::optional<std::string> wanted() const;
    /// The most bytes that the next answer may have.
    [[nodiscard]] std::size_t budgetLeft() const { return budget_; }
    void take(ClipboardAnswer answer);
    [[nodiscard]] ClipboardSnapshot finished() &&;

private:
    std::vector<std::string> targets_;
    std::size_t next_ = 0;
    std::size_t budget_;
    ClipboardSnapshot snapshot_;
};

/// Reads another program's clipboard content and never waits beyond the deadline.
class ClipboardReader {
public:
    using Deadline = XcbSession::Deadline;

    explicit ClipboardReader(XcbSession& session);

    [[nodiscard]] xcb_atom_t selection() const { return reader_.selection(); }
    /// 0 without an owner.
    [[nodiscard]] xcb_window_t owner() const { return reader_.owner(); }
    /// Starts or stops the events about new owners.
    void watchOwner(bool isWatched);
    /// The new owner in the event. 0 for no owner, and for any other event.
    [[nodiscard]] xcb_window_t newOwnerIn(const xcb_generic_event_t& event) const;

    /// The targets that the owner offers. Empty when it does not answer.
    [[nodiscard]] std::optional<std::vector<std::string>> targets(Deadline deadline);
    [[nodiscard]] ClipboardAnswer read(const std::string& target, Deadline deadline, std::size_t mostBytes);

private:
    XcbSession& session_;
    SelectionReader reader_;
    std::uint8_t fixesEvent_ = 0;
};

/// Owns the clipboard with restored content until another program takes it.
class ClipboardOwner {
public:
    explicit ClipboardOwner(XcbSession& session);

    /// The limit for all offered items, each of which is delivered in one request.
    [[nodiscard]] std::size_t mostBytes() const;
    /// Takes the clipboard and offers `items`. Without items the clipboard has no owner afterwards.
    void offer(std::vector<ClipboardItem> items);
    /// The current offer. Empty when another program owns the clipboard.
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
