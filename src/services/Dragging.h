// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/FileURL.h"
#include "foundation/Values.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

/// The types of dragged data, with the same names on every platform.
namespace pasteboardType {
inline constexpr std::string_view fileURL = "public.file-url";
inline constexpr std::string_view promisedFileURL = "com.apple.pasteboard.promised-file-url";
}  // namespace pasteboardType

/// What a drop does with the dragged data. Files are only referenced, so there is no move.
enum class DragOperation { none, copy };

/// One dragged item, with its text for each type that has one.
struct PasteboardItem {
    std::map<std::string, std::string, std::less<>> strings;
};

/// Files that the source of a drag writes once it gets a destination.
class FilePromiseReceiver {
public:
    /// Called once per file, on any thread, with none for a file that could not be written.
    using Reader = std::function<void(const std::optional<FileURL>&)>;

    virtual ~FilePromiseReceiver() = default;
    /// Asks the source to write its files into the folder. Returns at once; the files arrive later.
    virtual void receivePromisedFiles(const FileURL& destination, Reader reader) = 0;
};

/// The data of a drag, as its source wrote it: untrusted. Main thread, during a drag operation.
class DraggingPasteboard {
public:
    virtual ~DraggingPasteboard() = default;
    [[nodiscard]] virtual std::vector<PasteboardItem> items() = 0;
    /// Each remains usable after the drag has ended.
    [[nodiscard]] virtual std::vector<std::shared_ptr<FilePromiseReceiver>> filePromiseReceivers() = 0;
};

/// A drop target. The window system calls it on the main thread.
class DraggingDestination {
public:
    virtual ~DraggingDestination() = default;
    /// The types for which the window system calls this, the preferred one first.
    [[nodiscard]] virtual const std::vector<std::string>& registeredDraggedTypes() const = 0;
    [[nodiscard]] virtual DragOperation draggingEntered(DraggingPasteboard& pasteboard) = 0;
    [[nodiscard]] virtual DragOperation draggingUpdated(DraggingPasteboard& pasteboard) = 0;
    /// Whether the drop was accepted.
    [[nodiscard]] virtual bool performDragOperation(DraggingPasteboard& pasteboard) = 0;
};

/// The types that are requested from drops, by their uniform type identifiers on every platform.
namespace uniformType {
inline constexpr std::string_view fileURL = "public.file-url";
inline constexpr std::string_view item = "public.item";
}  // namespace uniformType

/// One item of a drop, in the types that its source offers. Created and called on the main thread while the drop is
/// handled. Each completion runs exactly once, on any thread, during the call or later.
class ItemProvider {
public:
    virtual ~ItemProvider() = default;

    [[nodiscard]] virtual bool hasItemConformingTo(std::string_view typeIdentifier) const = 0;
    /// In the source's order of preference; may be empty.
    [[nodiscard]] virtual std::vector<std::string> registeredTypeIdentifiers() const = 0;
    /// Delivers the item's bytes in that type, or none if it has none.
    virtual void loadItem(std::string_view typeIdentifier, std::function<void(std::optional<Bytes>)> completion) = 0;
    /// Delivers the item as a temporary file, which exists only until the completion returns, or none on failure.
    virtual void loadFileRepresentation(std::string_view typeIdentifier,
                                        std::function<void(std::optional<FileURL>)> completion) = 0;
};

/// The desktop's clipboard. Nobody listens to it: it is read only when asked for. Main thread.
class Clipboard {
public:
    /// Gets one provider for each file, or one for a picture or a text without a file, as a drop of the same data
    /// would. Gets none if nothing of that is there, or if the owner does not deliver it in time.
    using Completion = std::function<void(const std::vector<std::shared_ptr<ItemProvider>>&)>;

    virtual ~Clipboard() = default;
    /// Offers the files for copying, and their paths where only text is taken. The offer stands until another program
    /// takes the clipboard. At the end of this program it goes to the clipboard manager, if there is one.
    virtual void copyFiles(const std::vector<FileURL>& files) = 0;
    /// The same for a text, whose bytes need not be UTF-8.
    virtual void copyText(const std::string& text) = 0;
    /// What another program offers is untrusted. `completion` runs at most once, on the main thread, during the call
    /// or later.
    virtual void read(Completion completion) = 0;
};

}  // namespace stowpocket
