// SPDX-License-Identifier: MIT
#pragma once

#include "services/Dispatch.h"
#include "services/Dragging.h"

#include <QString>
#include <QTemporaryDir>

#include <memory>
#include <span>

namespace stowpocket {

/// A kind of contents that is taken where a drag brings no files.
struct ContentsKind {
    QLatin1String format;
    std::string_view type;
    QLatin1String name;
    QLatin1String extension;
};

/// Most telling first, since sources offer one thing in several kinds.
[[nodiscard]] std::span<const ContentsKind> pictureKinds();
[[nodiscard]] std::span<const ContentsKind> textKinds();

/// A dropped picture or text that was written to a temporary file, named after what it is and when it came.
class DroppedContents {
public:
    explicit DroppedContents(const ContentsKind& kind);

    [[nodiscard]] const ContentsKind& kind() const { return *kind_; }
    /// Where its bytes belong; there while some copy of this object is. In a folder that could not be made nothing
    /// can be written.
    [[nodiscard]] const QString& path() const { return path_; }

private:
    const ContentsKind* kind_;
    std::shared_ptr<const QTemporaryDir> folder_;
    QString path_;
};

/// Its completions run in the background, because copying the file may take long. `dispatch` outlives it.
[[nodiscard]] std::shared_ptr<ItemProvider> providerOf(DroppedContents contents, Dispatch& dispatch);

}  // namespace stowpocket
