// SPDX-License-Identifier: MIT
#import "platform/macos/Conversions.h"
#include "platform/macos/MacStorage.h"

namespace stowpocket {
namespace {

NSByteCountFormatter* makeFormatter() {
    NSByteCountFormatter* const formatter = [[NSByteCountFormatter alloc] init];
    formatter.countStyle = NSByteCountFormatterCountStyleFile;
    return formatter;
}

}  // namespace

std::string macByteCountText(std::int64_t bytes) {
    static NSByteCountFormatter* const formatter = makeFormatter();
    return utf8([formatter stringFromByteCount:bytes]).value_or("");
}

}  // namespace stowpocket
