// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/input/XcbSession.h"

#include <array>

namespace stowpocket {

/// Another program that drags something, on a connection of its own. It works only while it is asked to; what it does
/// by itself the server has seen when the call returns.
class FakeDragSource {
public:
    /// Offers those types; a source that `refuses` the question for them behaves as Qt programs do.
    explicit FakeDragSource(std::vector<std::string> types, bool refuses = false);
    FakeDragSource(const FakeDragSource&) = delete;
    FakeDragSource& operator=(const FakeDragSource&) = delete;
    ~FakeDragSource();

    [[nodiscard]] xcb_window_t window() const { return window_; }
    /// Moves the pointer, whose main button is then held or not.
    void press(std::int16_t x, std::int16_t y);
    void release();
    /// Takes the selection that stands for a drag.
    void begin();
    /// Proposes a name for the file that it promises.
    void propose(const std::string& name);
    /// Answers with this when the file is wanted, after `onSave` has been told the URL. Silent when empty.
    void replyWith(std::string reply, std::function<void(const std::string& url)> onSave = {});
    void enter(xcb_window_t window, std::int16_t x, std::int16_t y);
    void drop(xcb_window_t window, xcb_timestamp_t time);
    /// Its window goes, and with it what it was dragging.
    void vanish();

    /// Answers what it was asked since the last time.
    void work();
    /// When the promised file was wanted, as the one who wanted it said.
    [[nodiscard]] xcb_timestamp_t savedAt() const { return savedAt_; }
    [[nodiscard]] bool wasSaveWanted() const { return wasSaveWanted_; }

private:
    [[nodiscard]] std::vector<xcb_atom_t> typeAtoms();
    void sync();
    void send(xcb_window_t window, const std::string& type, std::array<std::uint32_t, 5> data);
    void answer(const xcb_selection_request_event_t& request);
    [[nodiscard]] bool convert(const xcb_selection_request_event_t& request);
    [[nodiscard]] bool save(const xcb_selection_request_event_t& request);

    const std::unique_ptr<XcbSession> session_ = XcbSession::open();
    xcb_connection_t* const connection_ = session_->raw();
    const xcb_window_t root_ = session_->root();
    const xcb_window_t window_ = session_->newWindow();
    const std::vector<std::string> types_;
    const bool refuses_;
    std::string reply_;
    std::function<void(const std::string&)> onSave_;
    xcb_timestamp_t savedAt_ = 0;
    bool wasSaveWanted_ = false;
};

}  // namespace stowpocket
