// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Bytes.h"
#include "foundation/FileURL.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace stowpocket {

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
