// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Signal.h"
#include "foundation/UUID.h"
#include "services/Dragging.h"
#include "services/Pictures.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace stowpocket {

/// How heavy text and symbols are drawn.
enum class FontWeight { regular, medium, semibold, bold };

/// A named symbol as the menu bar shows it.
struct StatusItemImage {
    std::string symbolName;
    /// In points.
    double pointSize = 0;
    FontWeight weight = FontWeight::regular;
    /// What assistive technology reads instead of the picture.
    std::string accessibilityDescription;
    friend bool operator==(const StatusItemImage&, const StatusItemImage&) = default;
};

/// Text beside the symbol, with digits of equal width, in the colour of control text. Empty text takes no room.
struct StatusItemTitle {
    std::string text;
    /// In points.
    double fontSize = 0;
    FontWeight weight = FontWeight::regular;
    /// How far the text is raised above its baseline, in points.
    double baselineOffset = 0;
    friend bool operator==(const StatusItemTitle&, const StatusItemTitle&) = default;
};

/// One line of the icon's menu.
struct StatusItemMenuEntry {
    /// Above 0, and the same however the menu changes.
    int id = 0;
    std::string title;
    bool isEnabled = true;
    /// Whether a line separates it from the entry before.
    bool beginsGroup = false;
    friend bool operator==(const StatusItemMenuEntry&, const StatusItemMenuEntry&) = default;
};

/// The menu for clicks with the other button.
struct StatusItemMenu {
    /// The entries for this moment. Called whenever the menu opens.
    std::function<std::vector<StatusItemMenuEntry>()> entries;
    /// Gets the id of the chosen entry, or any other number where another program shows the menu.
    std::function<void(int id)> choose;
};

/// What a drag out of the icon carries.
enum class IconDrag { newest, everything };

/// A file that can be dragged out of the icon, as a list beside the icon shows it.
struct WaitingFile {
    UUID id;
    /// On one line.
    std::string name;
    /// A missing file is shown and cannot be dragged.
    bool isMissing = false;
    Image picture;
};

/// What can be dragged out of the icon, at this moment.
struct IconDragSource {
    /// The files of a drag; none if there are none.
    std::function<std::vector<FileURL>(IconDrag)> files;
    /// The same for a single file.
    std::function<std::vector<FileURL>(const UUID& id)> file;
    /// The newest first.
    std::function<std::vector<WaitingFile>()> list;
    /// Runs `changed` after each change of the list, as long as the subscriptions are kept.
    std::function<std::vector<Subscription>(const std::function<void()>& changed)> watch;
};

/// The icon in the menu bar. Where the bar may disappear and return, the icon keeps its contents and shows them
/// again. Main thread.
class StatusItemButton {
public:
    virtual ~StatusItemButton() = default;
    virtual void setImage(const StatusItemImage& image) = 0;
    virtual void setTitle(const StatusItemTitle& title) = 0;
    /// Runs on every click with the main button.
    virtual void setAction(std::function<void()> action) = 0;
    virtual void setMenu(StatusItemMenu menu) = 0;
    /// Puts a transparent drop view over the whole icon. The button owns it.
    virtual void addDropView(std::shared_ptr<DraggingDestination> dropView) = 0;
    /// Left alone by icons that cannot be dragged from. By value for those that keep it.
    virtual void setDragSource(IconDragSource /*source*/) {}  // NOLINT(performance-unnecessary-value-param)
};

/// A place in the menu bar, as wide as its button needs.
class StatusItem {
public:
    virtual ~StatusItem() = default;
    /// Null if the bar has no button for it.
    [[nodiscard]] virtual std::shared_ptr<StatusItemButton> button() = 0;
};

/// The desktop's menu bar.
class StatusBar {
public:
    virtual ~StatusBar() = default;
    [[nodiscard]] virtual std::unique_ptr<StatusItem> makeStatusItem() = 0;
};

}  // namespace stowpocket
