// SPDX-License-Identifier: MIT
// For the adapters in this folder only: includes the system's headers.
#pragma once

#include "foundation/FileURL.h"
#include "foundation/Values.h"

#import <Foundation/Foundation.h>

#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

/// Repairs text that is not valid UTF-8: only the broken bytes are lost.
[[nodiscard]] NSString* _Nonnull nsString(std::string_view text);
/// Returns nothing for null and for text that cannot be written as UTF-8.
[[nodiscard]] std::optional<std::string> utf8(NSString* _Nullable text);

[[nodiscard]] NSData* _Nonnull nsData(const Bytes& bytes);
[[nodiscard]] Bytes bytesOf(NSData* _Nonnull data);

[[nodiscard]] NSURL* _Nonnull nsURL(const FileURL& url);
/// Returns the path as the file manager and the workspace take it. It is empty when the name is not valid UTF-8.
[[nodiscard]] NSString* _Nonnull nsPath(const FileURL& url);
/// Returns nothing for a URL that is not a file. A reference by file number, which the Finder drags, becomes a path.
[[nodiscard]] std::optional<FileURL> fileURLOf(NSURL* _Nullable url);

[[nodiscard]] id _Nonnull propertyListOf(const PropertyValue& value);
[[nodiscard]] NSDictionary<NSString*, id>* _Nonnull propertyListOf(const PropertyValue::Dictionary& values);

/// Returns nothing for an object that no property list can hold. Such objects are left out of arrays and
/// dictionaries, and so are those nested deeper than any honest list.
[[nodiscard]] std::optional<PropertyValue> propertyValueOf(id _Nullable object);

}  // namespace stowpocket
