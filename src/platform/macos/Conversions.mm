// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"

#include "foundation/Text.h"

#import <CoreFoundation/CoreFoundation.h>

#include <cmath>

namespace stowpocket {
namespace {

constexpr int deepestNesting = 64;
/// Three thousand years before and after 1970, which a date of the core can hold.
constexpr double latestSecond = 1e11;

std::optional<PropertyValue> valueOf(id object, int depth);

PropertyValue numberOf(NSNumber* number) {
    if (CFGetTypeID((__bridge CFTypeRef)number) == CFBooleanGetTypeID())
        return static_cast<bool>(number.boolValue);
    if (CFNumberIsFloatType((__bridge CFNumberRef)number))
        return number.doubleValue;
    return std::int64_t{number.longLongValue};
}

std::optional<PropertyValue> dateOf(NSDate* date) {
    const double seconds = date.timeIntervalSince1970;
    if (!(std::abs(seconds) < latestSecond))
        return std::nullopt;
    return PropertyValue(Date(std::chrono::microseconds(std::llround(seconds * 1e6))));
}

PropertyValue arrayOf(NSArray* array, int depth) {
    PropertyValue::Array values;
    for (id element in array) {
        if (std::optional<PropertyValue> value = valueOf(element, depth))
            values.push_back(std::move(*value));
    }
    return values;
}

PropertyValue dictionaryOf(NSDictionary* dictionary, int depth) {
    PropertyValue::Dictionary values;
    for (id key in dictionary) {
        if (![key isKindOfClass:NSString.class])
            continue;
        std::optional<std::string> name = utf8(static_cast<NSString*>(key));
        std::optional<PropertyValue> value = valueOf(dictionary[key], depth);
        if (name && value)
            values.insert_or_assign(std::move(*name), std::move(*value));
    }
    return values;
}

std::optional<PropertyValue> valueOf(id object, int depth) {
    if ([object isKindOfClass:NSNumber.class])
        return numberOf(static_cast<NSNumber*>(object));
    if ([object isKindOfClass:NSString.class]) {
        std::optional<std::string> text = utf8(static_cast<NSString*>(object));
        return text ? std::optional<PropertyValue>(std::move(*text)) : std::nullopt;
    }
    if ([object isKindOfClass:NSData.class])
        return PropertyValue(bytesOf(static_cast<NSData*>(object)));
    if ([object isKindOfClass:NSDate.class])
        return dateOf(static_cast<NSDate*>(object));
    if (depth >= deepestNesting)
        return std::nullopt;
    if ([object isKindOfClass:NSArray.class])
        return arrayOf(static_cast<NSArray*>(object), depth + 1);
    if ([object isKindOfClass:NSDictionary.class])
        return dictionaryOf(static_cast<NSDictionary*>(object), depth + 1);
    return std::nullopt;
}

}  // namespace

NSString* nsString(std::string_view text) {
    if (text.empty())
        return @"";  // an empty view may have no bytes
    NSString* const string = [[NSString alloc] initWithBytes:text.data()
                                                      length:text.size()
                                                    encoding:NSUTF8StringEncoding];
    if (string != nil)
        return string;
    const std::string valid = validUtf8(text);
    NSString* const repaired = [[NSString alloc] initWithBytes:valid.data()
                                                        length:valid.size()
                                                      encoding:NSUTF8StringEncoding];
    return repaired != nil ? repaired : @"";
}

std::optional<std::string> utf8(NSString* text) {
    NSData* const data = [text dataUsingEncoding:NSUTF8StringEncoding];
    if (data == nil)
        return std::nullopt;
    return std::string(static_cast<const char*>(data.bytes), data.length);
}

NSData* nsData(const Bytes& bytes) {
    return [NSData dataWithBytes:bytes.data() length:bytes.size()];
}

Bytes bytesOf(NSData* data) {
    const auto* const first = static_cast<const Bytes::value_type*>(data.bytes);
    return first == nullptr ? Bytes() : Bytes(first, first + data.length);
}

NSURL* nsURL(const FileURL& url) {
    return [NSURL fileURLWithFileSystemRepresentation:url.path().c_str()
                                          isDirectory:url.string().ends_with('/')
                                        relativeToURL:nil];
}

NSString* nsPath(const FileURL& url) {
    const std::string path = url.path();
    // A name that is not UTF-8 comes from another system: the file systems of macOS have none.
    NSString* const found = [NSFileManager.defaultManager stringWithFileSystemRepresentation:path.data()
                                                                                      length:path.size()];
    return found == nil ? @"" : found;
}

std::optional<FileURL> fileURLOf(NSURL* url) {
    const std::optional<std::string> text = utf8(url.filePathURL.absoluteString);
    return text ? FileURL::parse(*text) : std::nullopt;
}

id propertyListOf(const PropertyValue& value) {
    if (const std::optional<bool> boolean = value.boolean())
        return @(*boolean);
    if (const std::optional<std::int64_t> integer = value.integer())
        return [NSNumber numberWithLongLong:*integer];
    if (const std::optional<double> real = value.real())
        return @(*real);
    if (const std::optional<Date> date = value.date()) {
        const std::chrono::duration<double> seconds = date->time_since_epoch();
        return [NSDate dateWithTimeIntervalSince1970:seconds.count()];
    }
    if (const std::string* const text = value.string())
        return nsString(*text);
    if (const Bytes* const data = value.data())
        return nsData(*data);
    if (const PropertyValue::Dictionary* const dictionary = value.dictionary())
        return propertyListOf(*dictionary);
    NSMutableArray* const array = [NSMutableArray arrayWithCapacity:value.array()->size()];
    for (const PropertyValue& element : *value.array())
        [array addObject:propertyListOf(element)];
    return array;
}

NSDictionary<NSString*, id>* propertyListOf(const PropertyValue::Dictionary& values) {
    NSMutableDictionary<NSString*, id>* const dictionary = [NSMutableDictionary dictionary];
    for (const auto& [key, value] : values)
        dictionary[nsString(key)] = propertyListOf(value);
    return dictionary;
}

std::optional<PropertyValue> propertyValueOf(id object) {
    return valueOf(object, 0);
}

}  // namespace stowpocket
