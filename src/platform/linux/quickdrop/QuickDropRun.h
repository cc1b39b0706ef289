// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "platform/linux/quickdrop/Clipboard.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace stowpocket {

/// How a file manager is made to copy its selection.
enum class CopyKey {
    controlC,
    /// For a program that may show a terminal, where Ctrl+C would end what runs in it.
    controlInsert,
};

struct KnownFileManager {
    std::string_view windowClass;
    CopyKey copyKey;
    /// Its Copy action can be run over the session bus, without any key.
    bool copiesOverBus;
};

/// The file manager whose windows have this class (the second part of WM_CLASS; users set the first part freely, for
/// terminals too). None for all other programs: no key is ever sent to those.
[[nodiscard]] std::optional<KnownFileManager> fileManagerOf(std::string_view windowClass);

/// What a quick drop asks of the desktop. Each call ends within its own time limit; an empty answer is a failure.
class QuickDropDesktop {
public:
    virtual ~QuickDropDesktop() = default;
    /// 0 when no window is active.
    [[nodiscard]] virtual std::uint32_t activeWindow() = 0;
    [[nodiscard]] virtual std::string classOf(std::uint32_t window) = 0;
    /// Whether the window is this program's.
    [[nodiscard]] virtual bool isOwn(std::uint32_t window) = 0;
    /// The last active window that was another program's, also when it is no more; 0 when there was none.
    [[nodiscard]] virtual std::uint32_t lastForeignWindow() = 0;
    /// Gives the keyboard to a window and waits until it has it. False when it does not get it.
    virtual bool activate(std::uint32_t window) = 0;

    [[nodiscard]] virtual ClipboardSnapshot takeSnapshot() = 0;
    /// Runs the Copy action of the file manager that has this window. False when it could not be reached.
    [[nodiscard]] virtual bool copyOverBus(std::uint32_t window) = 0;
    /// Finds the combination on the keyboard, for this window. False when the present layout has no such key.
    [[nodiscard]] virtual bool prepareKeys(CopyKey key, std::uint32_t window) = 0;
    /// Releases the keys that are held and presses the combination that was prepared.
    virtual void pressKeys() = 0;
    /// Waits for the clipboard to change hands, longer while the window's program is busy. False when nobody took it.
    [[nodiscard]] virtual bool awaitNewOwner() = 0;
    /// The files on the clipboard; none when it holds something else, such as text.
    [[nodiscard]] virtual std::vector<FileURL> filesOnClipboard() = 0;
    /// Puts a complete snapshot back, unless somebody else has taken the clipboard since.
    virtual void restore(ClipboardSnapshot snapshot) = 0;
};

/// Has the file manager in front copy its selection, reads the files off the clipboard and puts back what was there.
/// In front is the active window, or the one that was active before when that is our own, as after a quick drop; it
/// then gets the keyboard for a moment. Nothing is ever sent to another program, and a clipboard that could not be
/// saved completely is not put back.
[[nodiscard]] std::vector<FileURL> runQuickDrop(QuickDropDesktop& desktop);

}  // namespace stowpocket
