// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "presentation/BoundCommands.h"
#include "services/CoreServices.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace stowpocket {

class ChildProcess;
class Clipboard;

/// The shortcuts where the window system gives none: what the settings say of them, and on GNOME their entries among
/// the custom shortcuts, which call this program's commands. The entries are made and removed only when the user
/// asks. While they are there, they follow the recorded keys. Nothing else in that list is changed, and a list that
/// cannot be read is not written. Made for the settings window. Main thread only.
class DesktopShortcuts : public std::enable_shared_from_this<DesktopShortcuts> {
public:
    struct Services {
        CoreServices core;
        Clipboard& clipboard;
        /// Runs `gsettings`, also after these settings are closed.
        std::shared_ptr<ChildProcess> programs;
        /// What currently makes the shortcuts work.
        std::function<HotkeySource()> source;
        /// The name of the symbol on a key, by its virtual key code; empty if it has none.
        std::function<std::string(std::uint32_t keyCode)> keySymbol;
        ShortcutDesktop desktop = ShortcutDesktop::another;
        /// Starts this program, as a shell would.
        std::string program;
    };
    [[nodiscard]] static std::shared_ptr<DesktopShortcuts> make(Services services);

    /// Reads what others may have changed. Called when the settings are shown.
    void look() { begin(Task::look); }
    void setAdded(bool wanted);
    void copyLine(std::size_t index) const;

    [[nodiscard]] BoundCommandsPresentation shown() const;
    /// Emitted when `shown()` may have changed.
    Signal<> changed;

private:
    enum class Task { look, follow, add, remove };

    explicit DesktopShortcuts(Services services) : services_(std::move(services)) {}

    void begin(Task task);
    void finish(const CustomShortcuts& found);
    /// Runs in the background.
    [[nodiscard]] static CustomShortcuts carryOut(Task task, ChildProcess& programs,
                                                  const std::vector<BoundCommand>& commands);
    [[nodiscard]] std::vector<BoundCommand> commands() const;

    const Services services_;
    CustomShortcuts customShortcuts_;
    bool isAtWork_ = false;
    std::optional<Task> next_;
    Subscription recordings_;
};

}  // namespace stowpocket
