// SPDX-License-Identifier: MIT
#pragma once

#include "services/Processes.h"

namespace stowpocket {

/// Property lists in their XML form.
class PlistParser : public PropertyListParser {
public:
    [[nodiscard]] std::optional<PropertyValue> parse(const Bytes& bytes) override;
};

}  // namespace stowpocket
