// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "platform/linux/quickdrop/Clipboard.h"
#include "platform/linux/x11/XcbSession.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

struct xkb_context;

namespace stowpocket {

/// The key combination that makes a file manager copy its selection.
enum class CopyKey {
    controlC,
    /// For a program that may show a terminal, where Ctrl+C would end the program in it.
    controlInsert,
};

struct KnownFileManager {
    std::string_view windowClass;
    CopyKey copyKey;
    /// Its Copy action can be run over the session bus, without any key.
    bool copiesOverBus;
};

/// The file manager whose windows have this class, which is the second part of WM_CLASS; users can set the first
/// part of any program. Empty for all other programs, which never get a key.
[[nodiscard]] std::optional<KnownFileManager> fileManagerOf(std::string_view windowClass);

/// What a quick drop needs from the desktop. Each call ends within its own time limit. An empty answer is a failure.
class QuickDropDesktop {
public:
    virtual ~QuickDropDesktop() = default;
    /// 0 when no window is active.
    [[nodiscard]] virtual std::uint32_t activeWindow() = 0;
    [[nodiscard]] virtual std::string classOf(std::uint32_t window) = 0;
    /// Whether the window is this program's.
    [[nodiscard]] virtual bool isOwn(std::uint32_t window) = 0;
    /// The last active window of another program, even if it is gone by now. 0 when there was none.
    [[nodiscard]] virtual std::uint32_t lastForeignWindow() = 0;
    /// Gives the keyboard to a window and waits for that. Returns false when the window does not get it.
    virtual bool activate(std::uint32_t window) = 0;

    [[nodiscard]] virtual ClipboardSnapshot takeSnapshot() = 0;
    /// Runs the Copy action of the file manager with this window. Returns false when it cannot be reached.
    [[nodiscard]] virtual bool copyOverBus(std::uint32_t window) = 0;
    /// Finds the keys of the combination, to be pressed in this window. Returns false when the current layout has no
    /// such key.
    [[nodiscard]] virtual bool prepareKeys(CopyKey key, std::uint32_t window) = 0;
    /// Releases the keys that are held and presses the prepared combination.
    virtual void pressKeys() = 0;
    /// Waits for a new clipboard owner, longer while the window's program is busy. Returns false when there is none.
    [[nodiscard]] virtual bool awaitNewOwner() = 0;
    /// The files on the clipboard. Empty when it holds something else, such as text.
    [[nodiscard]] virtual std::vector<FileURL> filesOnClipboard() = 0;
    /// Puts a complete snapshot back, unless another program has taken the clipboard since.
    virtual void restore(ClipboardSnapshot snapshot) = 0;
};

/// Makes the file manager in front copy its selection, reads the files from the clipboard and restores what the
/// clipboard held. In front is the active window. When that is our own, as after a quick drop, it is the window that
/// was active before, which then gets the keyboard for a moment. No other program ever gets a key. A clipboard that
/// could not be saved completely is not restored.
[[nodiscard]] std::vector<FileURL> runQuickDrop(QuickDropDesktop& desktop);

/// Presses copy combinations through the XTEST extension, like a keyboard.
class X11CopyKeys {
public:
    explicit X11CopyKeys(XcbSession& session);
    ~X11CopyKeys();
    X11CopyKeys(const X11CopyKeys&) = delete;
    X11CopyKeys& operator=(const X11CopyKeys&) = delete;

    /// Finds the keys in the current layout. Returns false when it has no such key, or keys cannot be pressed on
    /// this server.
    [[nodiscard]] bool prepare(CopyKey key);
    /// Releases every key that is held, which also ends a hotkey's grab of the keyboard, then presses the prepared
    /// combination. All requests go out together, since a program that sees only a modifier released may open its
    /// menu bar. Released keys are not pressed again, as they would stay down.
    void press();

private:
    XcbSession& session_;
    xkb_context* const context_;
    std::uint8_t controlKey_ = 0;
    std::uint8_t copyKey_ = 0;
    bool canPress_ = false;
};

/// Runs the Copy action of the Dolphin window `window` of the process `process` over the session bus. Any thread;
/// blocks for a fraction of a second at most. Returns false when the window is not found or does not answer.
[[nodiscard]] bool copyInDolphin(std::uint32_t process, std::uint32_t window);

}  // namespace stowpocket
