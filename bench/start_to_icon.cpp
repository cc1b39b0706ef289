// SPDX-License-Identifier: MIT
// Times a program from its start to its icon on the screen, being the tray itself: no panel's own pace interferes.
//   bench_start RUNS PROGRAM [ARGUMENTS...]
// Prints one time per run in milliseconds. Needs a display without a tray; the program is ended by its process id.
#include <xcb/xcb.h>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <poll.h>
#include <spawn.h>
#include <string>
#include <string_view>
#include <sys/wait.h>

extern char** environ;

namespace {

using SteadyTime = std::chrono::steady_clock::time_point;

struct Free {
    void operator()(void* memory) const { std::free(memory); }  // NOLINT(cppcoreguidelines-no-malloc): xcb's way
};
template <class Reply>
using Owned = std::unique_ptr<Reply, Free>;

constexpr auto giveUpAfter = std::chrono::seconds(20);
constexpr std::uint32_t requestDock = 0;
constexpr std::uint32_t embeddedNotify = 0;

/// A tray of the freedesktop kind in its barest form.
class Tray {
public:
    Tray()
        : connection_(xcb_connect(nullptr, nullptr)),
          screen_(xcb_setup_roots_iterator(xcb_get_setup(connection_)).data) {
        window_ = xcb_generate_id(connection_);
        const std::uint32_t mask = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
        xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, screen_->root, 0, 0, 200, 22, 0,
                          XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
        xcb_map_window(connection_, window_);
        xcb_set_selection_owner(connection_, window_, atom("_NET_SYSTEM_TRAY_S0"), XCB_CURRENT_TIME);
        xcb_flush(connection_);
    }
    Tray(const Tray&) = delete;
    Tray& operator=(const Tray&) = delete;
    ~Tray() { xcb_disconnect(connection_); }

    /// Whether an icon was docked and mapped in time.
    bool waitForIcon() {
        const SteadyTime deadline = std::chrono::steady_clock::now() + giveUpAfter;
        while (std::chrono::steady_clock::now() < deadline) {
            pollfd readable{xcb_get_file_descriptor(connection_), POLLIN, 0};
            poll(&readable, 1, 100);
            while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(connection_)}) {
                if (handle(*event))
                    return true;
            }
        }
        return false;
    }

private:
    xcb_atom_t atom(std::string_view name) {
        const Owned<xcb_intern_atom_reply_t> reply{xcb_intern_atom_reply(
            connection_, xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
            nullptr)};
        return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
    }

    /// Docks who asks; true once the docked window is on the screen.
    bool handle(const xcb_generic_event_t& event) {
        switch (event.response_type & 0x7Fu) {
        case XCB_CLIENT_MESSAGE: {
            xcb_client_message_event_t message;
            std::memcpy(&message, &event, sizeof message);
            if (message.type == opcode_ && message.data.data32[1] == requestDock)
                dock(message.data.data32[2]);
            return false;
        }
        case XCB_MAP_NOTIFY: {
            xcb_map_notify_event_t mapped;
            std::memcpy(&mapped, &event, sizeof mapped);
            return mapped.window == icon_;
        }
        default:
            return false;
        }
    }

    void dock(xcb_window_t icon) {
        icon_ = icon;
        xcb_reparent_window(connection_, icon, window_, 0, 0);
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = icon;
        message.type = xembed_;
        message.data.data32[1] = embeddedNotify;
        message.data.data32[3] = window_;
        xcb_send_event(connection_, 0, icon, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&message));
        xcb_map_window(connection_, icon);
        xcb_flush(connection_);
    }

    xcb_connection_t* connection_;
    xcb_screen_t* screen_;
    xcb_window_t window_ = XCB_WINDOW_NONE;
    xcb_window_t icon_ = XCB_WINDOW_NONE;
    const xcb_atom_t opcode_ = atom("_NET_SYSTEM_TRAY_OPCODE");
    const xcb_atom_t xembed_ = atom("_XEMBED");
};

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: bench_start RUNS PROGRAM [ARGUMENTS...]\n");
        return 2;
    }
    for (int run = std::atoi(argv[1]); run > 0; --run) {
        Tray tray;
        const SteadyTime start = std::chrono::steady_clock::now();
        pid_t pid = 0;
        if (posix_spawn(&pid, argv[2], nullptr, nullptr, argv + 2, environ) != 0)
            return 1;
        const bool docked = tray.waitForIcon();
        const std::chrono::duration<double, std::milli> time = std::chrono::steady_clock::now() - start;
        kill(pid, SIGTERM);
        waitpid(pid, nullptr, 0);
        if (!docked)
            return 1;
        std::printf("%.1f\n", time.count());
    }
    return 0;
}
