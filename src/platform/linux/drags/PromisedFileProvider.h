// SPDX-License-Identifier: MIT
#pragma once

#include "services/Dragging.h"

namespace stowpocket {

class X11DirectSaves;

/// A promise as one thing of a drop. The source writes it into a temporary folder; where several files come, that
/// folder itself is the thing, named after when they came.
class PromisedFileProvider : public ItemProvider {
public:
    /// `saves` outlives it.
    explicit PromisedFileProvider(X11DirectSaves& saves) : saves_(saves) {}

    [[nodiscard]] bool hasItemConformingTo(std::string_view typeIdentifier) const override;
    [[nodiscard]] std::vector<std::string> registeredTypeIdentifiers() const override;
    /// Nothing: a promise has no bytes before it is a file.
    void loadItem(std::string_view typeIdentifier, std::function<void(std::optional<Bytes>)> completion) override;
    /// `completion` runs in the background, because copying what arrived may take long.
    void loadFileRepresentation(std::string_view typeIdentifier,
                                std::function<void(std::optional<FileURL>)> completion) override;

private:
    X11DirectSaves& saves_;
};

}  // namespace stowpocket
