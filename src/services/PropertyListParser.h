// SPDX-License-Identifier: MIT
#pragma once

#include "foundation/Bytes.h"
#include "foundation/PropertyValue.h"

#include <optional>

namespace stowpocket {

/// Reads property lists that others wrote. Any thread.
class PropertyListParser {
public:
    virtual ~PropertyListParser() = default;
    /// None when `bytes` are no property list.
    [[nodiscard]] virtual std::optional<PropertyValue> parse(const Bytes& bytes) = 0;
};

}  // namespace stowpocket
