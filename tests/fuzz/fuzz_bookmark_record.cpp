// SPDX-License-Identifier: MIT
#include "fuzz/Fuzz.h"
#include "platform/linux/files/BookmarkRecord.h"
#include "platform/linux/files/LinuxBookmarks.h"

/// A record that can be read is written the same again, and the search for its file comes to an end.
void stowpocket::checkInput(const std::string& text) {
    const auto record = decodeBookmark(Bytes(text.begin(), text.end()));
    if (!record)
        return;
    const Bytes written = encodeBookmark(*record);
    const auto again = decodeBookmark(written);
    invariant(again.has_value(), "a written bookmark is readable");
    invariant(encodeBookmark(*again) == written, "a bookmark is written the same again");
    static_cast<void>(locateFiles({*record}, {}, {}));
}
