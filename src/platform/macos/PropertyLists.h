// SPDX-License-Identifier: MIT
// For the adapters in this folder only: includes the system's headers.
#pragma once

#include "foundation/PropertyValue.h"

#import <Foundation/Foundation.h>

#include <optional>

namespace stowpocket {

[[nodiscard]] id _Nonnull propertyListOf(const PropertyValue& value);
[[nodiscard]] NSDictionary<NSString*, id>* _Nonnull propertyListOf(const PropertyValue::Dictionary& values);

/// None for what no property list holds. Inside arrays and dictionaries such a thing is left out, and so is what lies
/// too deep to be anybody's honest list.
[[nodiscard]] std::optional<PropertyValue> propertyValueOf(id _Nullable object);

}  // namespace stowpocket
