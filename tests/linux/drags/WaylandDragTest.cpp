// SPDX-License-Identifier: MIT
#include "platform/linux/drags/X11DragWatch.h"
#include "platform/linux/x11/XcbSession.h"
#include "support/ComesTrue.h"

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

/// The window manager of an X server inside a Wayland session: it stands in for what Wayland programs drag, tells
/// nothing of it, and the server knows of no button that is held.
class FakeCompositor {
public:
    explicit FakeCompositor(const X11Connection& connection) : connection_(connection) { manage(session_->window()); }
    ~FakeCompositor() { manage(former_); }
    FakeCompositor(const FakeCompositor&) = delete;
    FakeCompositor& operator=(const FakeCompositor&) = delete;

    void setDragging(bool isDragging) {
        xcb_set_selection_owner(session_->raw(), isDragging ? session_->newWindow() : x11None,
                                session_->atom("XdndSelection"), session_->serverTime());
        static_cast<void>(session_->serverTime());
    }
    void refuseQuestions() {
        session_->setEventHandler([this](const xcb_generic_event_t& event) {
            if (typeOf(event) != XCB_SELECTION_REQUEST)
                return;
            const auto& request = reinterpret_cast<const xcb_selection_request_event_t&>(event);
            const xcb_selection_notify_event_t refusal{
                XCB_SELECTION_NOTIFY, 0, 0, request.time, request.requestor, request.selection, request.target, 0};
            xcb_send_event(session_->raw(), 0, request.requestor, 0, reinterpret_cast<const char*>(&refusal));
            xcb_flush(session_->raw());
        });
        session_->handleEvents();
    }

private:
    void manage(xcb_window_t window) const {
        connection_.setProperty(connection_.root(), connection_.atom(X11Atom::windowManager), XCB_ATOM_WINDOW,
                                {window});
        xcb_flush(connection_.raw());
    }

    const X11Connection& connection_;
    const std::vector<std::uint32_t> manager_ = connection_.property(connection_.root(), X11Atom::windowManager);
    const xcb_window_t former_ = manager_.empty() ? x11None : manager_.front();
    const std::unique_ptr<XcbSession> session_ = XcbSession::open();
};

TEST(WaylandDrag, isFollowedWithoutAButton) {
    const auto connection = X11Connection::ofApplication();
    FakeCompositor compositor(*connection);
    X11DragWatch watch(*connection);
    // Answered once the server knows of the watch.
    static_cast<void>(connection->selectionOwner(X11Atom::dragSelection));
    int begun = 0;
    std::optional<DragEnd> end;
    const Subscription beginning = watch.began.connect([&] { ++begun; });
    const Subscription ending = watch.ended.connect([&](DragEnd how) { end = how; });
    for (int drag = 1; drag <= 2; ++drag) {
        compositor.setDragging(true);
        ASSERT_TRUE(comesTrue([&] { compositor.refuseQuestions(); }, [&] { return begun == drag; }));
        EXPECT_FALSE(end);
        compositor.setDragging(false);
        ASSERT_TRUE(comesTrue([&] { return end.has_value(); }));
        EXPECT_EQ(std::exchange(end, std::nullopt), DragEnd::sourceGone);
    }
}

}  // namespace
}  // namespace stowpocket
