// SPDX-License-Identifier: MIT
// For the adapters in this folder only: includes the system's headers.
#pragma once

#include "foundation/FileURL.h"
#include "foundation/PropertyValue.h"
#include "foundation/Values.h"

#import <Foundation/Foundation.h>

#include <optional>
#include <string>
#include <string_view>

namespace stowpocket {

/// Text that is not UTF-8 becomes text that is: nothing is lost but the broken bytes.
[[nodiscard]] NSString* _Nonnull nsString(std::string_view text);
/// None for null, and for text that cannot be written as UTF-8.
[[nodiscard]] std::optional<std::string> utf8(NSString* _Nullable text);

[[nodiscard]] NSData* _Nonnull nsData(const Bytes& bytes);
[[nodiscard]] Bytes bytesOf(NSData* _Nonnull data);

[[nodiscard]] NSURL* _Nonnull nsURL(const FileURL& url);
/// The path in the form that the file manager and the workspace take; empty where it cannot be one.
[[nodiscard]] NSString* _Nonnull nsPath(const FileURL& url);
/// None for what is no file. A reference by file number, as the Finder drags them, becomes the file's path.
[[nodiscard]] std::optional<FileURL> fileURLOf(NSURL* _Nullable url);

[[nodiscard]] id _Nonnull propertyListOf(const PropertyValue& value);
[[nodiscard]] NSDictionary<NSString*, id>* _Nonnull propertyListOf(const PropertyValue::Dictionary& values);

/// None for what no property list holds. Inside arrays and dictionaries such a thing is left out, and so is what lies
/// too deep to be anybody's honest list.
[[nodiscard]] std::optional<PropertyValue> propertyValueOf(id _Nullable object);

}  // namespace stowpocket
