// SPDX-License-Identifier: MIT
// What an icon theme tells of itself.
#include "foundation/Invariant.h"
#include "platform/linux/pictures/IconTheme.h"

#include <cstddef>
#include <cstdint>

using namespace stowpocket;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    for (const IconFolder& folder : parsedIconThemeIndex({data, static_cast<qsizetype>(size)}).folders)
        invariant(folder.smallest <= folder.largest, "a folder's sizes go from the smallest to the largest");
    return 0;
}
