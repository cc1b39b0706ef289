// SPDX-License-Identifier: MIT
#include "foundation/Invariant.h"
#include "platform/linux/files/BookmarkRecord.h"
#include "platform/linux/files/LinuxBookmarks.h"

/// A record that can be read is written the same again, and the search for its file comes to an end.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace stowpocket;
    const auto record = decodeBookmark(Bytes(data, data + size));
    if (!record)
        return 0;
    const Bytes written = encodeBookmark(*record);
    const auto again = decodeBookmark(written);
    invariant(again.has_value(), "a written bookmark is readable");
    invariant(encodeBookmark(*again) == written, "a bookmark is written the same again");
    static_cast<void>(locateFiles({*record}, {}, {}));
    return 0;
}
