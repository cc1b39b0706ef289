// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"

#include "foundation/Utf8.h"

namespace stowpocket {

NSString* nsString(std::string_view text) {
    if (text.empty())
        return @"";  // its bytes may be nowhere
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
    // Names that are no UTF-8 come from elsewhere only: no file system of this system has them.
    NSString* const found = [NSFileManager.defaultManager stringWithFileSystemRepresentation:path.data()
                                                                                      length:path.size()];
    return found == nil ? @"" : found;
}

std::optional<FileURL> fileURLOf(NSURL* url) {
    const std::optional<std::string> text = utf8(url.filePathURL.absoluteString);
    return text ? FileURL::parse(*text) : std::nullopt;
}

}  // namespace stowpocket
