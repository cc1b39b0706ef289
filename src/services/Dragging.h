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

/// The types of dragged things by their names on every platform.
namespace pasteboardType {
inline constexpr std::string_view fileURL = "public.file-url";
inline constexpr std::string_view promisedFileURL = "com.apple.pasteboard.promised-file-url";
}  // namespace pasteboardType

/// What a drag may do with the things it carries. Files are only ever referenced, so moving is never an answer.
enum class DragOperation { none, copy };

/// One dragged thing: its text in each type that has one.
struct PasteboardItem {
    std::map<std::string, std::string, std::less<>> strings;
};

/// Files that the source of a drag writes only once it is told where.
class FilePromiseReceiver {
public:
    /// Called once per file, on any thread; none for a file that could not be written.
    using Reader = std::function<void(const std::optional<FileURL>&)>;

    virtual ~FilePromiseReceiver() = default;
    /// Has the source write its files into the folder; returns at once, the files arrive later.
    virtual void receivePromisedFiles(const FileURL& destination, Reader reader) = 0;
};

/// What a drag carries, as its source wrote it: nothing here can be trusted. Main thread, during a drag operation.
class DraggingPasteboard {
public:
    virtual ~DraggingPasteboard() = default;
    [[nodiscard]] virtual std::vector<PasteboardItem> items() = 0;
    /// Each stays usable after the drag has ended.
    [[nodiscard]] virtual std::vector<std::shared_ptr<FilePromiseReceiver>> filePromiseReceivers() = 0;
};

/// Something that drags can be dropped on. The window system calls it on the main thread.
class DraggingDestination {
public:
    virtual ~DraggingDestination() = default;
    /// The types that make the window system call this at all, most wanted first.
    [[nodiscard]] virtual const std::vector<std::string>& registeredDraggedTypes() const = 0;
    [[nodiscard]] virtual DragOperation draggingEntered(DraggingPasteboard& pasteboard) = 0;
    [[nodiscard]] virtual DragOperation draggingUpdated(DraggingPasteboard& pasteboard) = 0;
    /// Whether the drop was taken.
    [[nodiscard]] virtual bool performDragOperation(DraggingPasteboard& pasteboard) = 0;
};

/// The types that drops are asked for, by their uniform type identifiers on every platform.
namespace uniformType {
inline constexpr std::string_view fileURL = "public.file-url";
inline constexpr std::string_view item = "public.item";
}  // namespace uniformType

/// One thing of a drop, in the forms its source offers. Made and asked on the main thread while the drop is handled;
/// each completion runs exactly once, on any thread, during the call or after it.
class ItemProvider {
public:
    virtual ~ItemProvider() = default;

    [[nodiscard]] virtual bool hasItemConformingTo(std::string_view typeIdentifier) const = 0;
    /// In the source's order of preference; may be empty.
    [[nodiscard]] virtual std::vector<std::string> registeredTypeIdentifiers() const = 0;
    /// The thing's bytes in that type; none when there are none or they are not plain bytes.
    virtual void loadItem(std::string_view typeIdentifier, std::function<void(std::optional<Bytes>)> completion) = 0;
    /// The thing written to a temporary file, which is there only until the completion returns; none on failure.
    virtual void loadFileRepresentation(std::string_view typeIdentifier,
                                        std::function<void(std::optional<FileURL>)> completion) = 0;
};

}  // namespace stowpocket
