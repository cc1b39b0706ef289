// SPDX-License-Identifier: MIT
#include "app/DesktopShortcuts.h"

#include "app/AppDelegate.h"
#include "app/Settings.h"
#include "services/Dispatch.h"
#include "services/Dragging.h"
#include "services/OtherPrograms.h"

#include <algorithm>
#include <utility>

namespace stowpocket {
namespace {

const std::string listSchema = "org.gnome.settings-daemon.plugins.media-keys";
const std::string listKey = "custom-keybindings";

std::string pathOf(const BoundCommand& command) {
    return "/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/stowpocket-" +
           std::string(command.verb) + '/';
}

/// GNOME's list of custom shortcuts, by the program that comes with its settings. Of a schema that is not there the
/// library itself would end the process.
class CustomShortcutList {
public:
    explicit CustomShortcutList(ChildProcess& programs) : programs_(programs) {}

    using Strings = std::vector<std::string>;
    [[nodiscard]] std::optional<Strings> read() const {
        const std::optional<Bytes> output = programs_.run("gsettings", {"get", listSchema, listKey});
        return output ? gvariantStringsIn(std::string(output->begin(), output->end())) : std::nullopt;
    }
    void write(const Strings& paths) const { set(listSchema, listKey, gvariantArray(paths)); }

    void writeEntry(const BoundCommand& command) const {
        const std::string entry = entryOf(command);
        set(entry, "name", gvariantString("stowpocket: " + std::string(command.name)));
        set(entry, "command", gvariantString(command.command));
        set(entry, "binding", gvariantString(gnomeAccelerator(command)));
    }
    void clearEntry(const BoundCommand& command) const { run({"reset-recursively", entryOf(command)}); }

private:
    [[nodiscard]] static std::string entryOf(const BoundCommand& command) {
        return listSchema + ".custom-keybinding:" + pathOf(command);
    }
    void set(const std::string& schema, const std::string& key, const std::string& value) const {
        run({"set", schema, key, value});
    }
    void run(const Strings& arguments) const { static_cast<void>(programs_.run("gsettings", arguments)); }

    ChildProcess& programs_;
};

bool isOf(const BoundCommand& command, const std::string& writtenPath) {
    return writtenPath.substr(1, writtenPath.size() - 2) == pathOf(command);  // in quotes of either kind
}

}  // namespace

std::shared_ptr<DesktopShortcuts> DesktopShortcuts::make(Services services) {
    std::shared_ptr<DesktopShortcuts> made(new DesktopShortcuts(std::move(services)));
    made->recordings_ = made->services_.core.notifications.observe(
        shortcutChangedNotification, [self = made.get()] { self->begin(Task::follow); });
    return made;
}

void DesktopShortcuts::setAdded(bool wanted) {
    customShortcuts_.hasOurs = wanted;  // until it turns out otherwise
    begin(wanted ? Task::add : Task::remove);
}

void DesktopShortcuts::copyLine(std::size_t index) const {
    const std::vector<std::string> lines = shown().lines;
    if (index < lines.size())
        services_.clipboard.copyText(lines.at(index));
}

BoundCommandsPresentation DesktopShortcuts::shown() const {
    return boundCommandsShown(services_.source(), services_.desktop, customShortcuts_, commands());
}

/// One task at a time. What the user has asked for goes before what waits.
void DesktopShortcuts::begin(Task task) {
    changed.emit();
    if (services_.desktop != ShortcutDesktop::gnome)
        return;
    if (isAtWork_) {
        if (!next_ || task == Task::add || task == Task::remove)
            next_ = task;
        return;
    }
    isAtWork_ = true;
    services_.core.dispatch.background([task, weak = weak_from_this(), programs = services_.programs,
                                        commands = commands(), &dispatch = services_.core.dispatch] {
        const CustomShortcuts found = carryOut(task, *programs, commands);
        dispatch.async([weak, found] {
            if (const auto self = weak.lock())
                self->finish(found);
        });
    });
}

void DesktopShortcuts::finish(const CustomShortcuts& found) {
    isAtWork_ = false;
    customShortcuts_ = found;
    if (const std::optional<Task> next = std::exchange(next_, std::nullopt))
        begin(*next);
    else
        changed.emit();
}

CustomShortcuts DesktopShortcuts::carryOut(Task task, ChildProcess& programs,
                                           const std::vector<BoundCommand>& commands) {
    const CustomShortcutList list(programs);
    const auto hasOurs = [&commands](const std::vector<std::string>& paths) {
        return std::ranges::any_of(commands, [&paths](const BoundCommand& command) {
            return std::ranges::any_of(paths, [&](const std::string& path) { return isOf(command, path); });
        });
    };
    std::optional<std::vector<std::string>> paths = list.read();
    if (!paths)
        return {.state = CustomShortcuts::State::unreadable};
    if (task == Task::look || (task == Task::follow && !hasOurs(*paths)))
        return {.state = CustomShortcuts::State::read, .hasOurs = hasOurs(*paths)};
    std::vector<const BoundCommand*> removed;
    for (const BoundCommand& command : commands) {
        const auto isOurs = [&command](const std::string& path) { return isOf(command, path); };
        if (task != Task::remove && !command.keySymbol.empty()) {
            list.writeEntry(command);
            if (std::ranges::none_of(*paths, isOurs))
                paths->push_back(gvariantString(pathOf(command)));
        } else if (std::erase_if(*paths, isOurs) > 0) {
            removed.push_back(&command);
        }
    }
    list.write(*paths);
    for (const BoundCommand* const command : removed)
        list.clearEntry(*command);
    const std::optional<std::vector<std::string>> written = list.read();
    return {.state = CustomShortcuts::State::read,
            .hasOurs = written && hasOurs(*written),
            .hasFailed = written != paths};
}

std::vector<BoundCommand> DesktopShortcuts::commands() const {
    const PreferenceStore& preferences = services_.core.preferences;
    const auto symbol = [&](std::string_view keyCodeKey) {
        const std::int64_t keyCode = preferences.integer(keyCodeKey);
        return keyCode < 0 ? std::string() : services_.keySymbol(static_cast<std::uint32_t>(keyCode));
    };
    return {{.verb = "toggle",
             .name = "Open/Close Shelf",
             .command = services_.program + " toggle",
             .keySymbol = symbol(preferenceKey::shelfHotkeyKeyCode),
             .modifiers = preferences.integer(preferenceKey::shelfHotkeyModifiers)},
            {.verb = "quick-drop",
             .name = "Quick Drop",
             .command = services_.program + " quick-drop",
             .keySymbol = symbol(preferenceKey::quickDropKeyCode),
             .modifiers = preferences.integer(preferenceKey::quickDropModifiers)}};
}

}  // namespace stowpocket
