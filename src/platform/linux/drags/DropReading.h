// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/x11/SelectionReader.h"
#include "platform/qt/QtDrops.h"

#include <chrono>
#include <optional>
#include <string>
#include <vector>

namespace stowpocket {

/// How long the source of a drop is waited for. Each limit in all counts from the drop on.
struct DropPatience {
    /// Without any sign of the source.
    std::chrono::milliseconds silence{2000};
    /// For the list of files, which is short.
    std::chrono::milliseconds list{2000};
    /// For a picture or text, which goes into a file and may be large, while it keeps coming.
    std::chrono::milliseconds contents{30'000};
};

/// The data of one drag, as its source hands it over. Each call ends within a time limit.
class DragData {
public:
    virtual ~DragData() = default;

    struct List {
        std::optional<SelectionFailure> failure;
        std::string text;
    };
    [[nodiscard]] virtual List list(std::string_view format) = 0;
    /// None when all of it is in the file now.
    [[nodiscard]] virtual std::optional<SelectionFailure> write(std::string_view format, const QString& path) = 0;
};

/// What was read of a drop, on whatever thread.
struct DropReading {
    std::string uriList;
    std::optional<DroppedContents> contents;
};

/// Reads what a drop of these formats brings to the shelf: the list of files, and where that names none on this
/// machine a picture, or text when no file is promised either. A picture goes before a promise because web browsers
/// offer both, and keep the promise by fetching the picture once more, which may bring an error page. A source that
/// was too late once is asked for nothing more.
[[nodiscard]] DropReading readDrop(DragData& data, const std::vector<std::string>& formats);

}  // namespace stowpocket
