// SPDX-License-Identifier: MIT
#include "foundation/Invariant.h"
#include "platform/linux/updates/AppcastReader.h"
#include "updates/Appcast.h"

#include <cstddef>
#include <cstdint>

/// What a list of releases says survives the way to the program, and what is chosen from it is newer.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace stowpocket;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    static_cast<void>(decodedItems(bytes));
    const auto items = readAppcast(QByteArray::fromStdString(bytes));
    if (!items)
        return 0;
    const auto arrived = decodedItems(encodedItems(*items));
    invariant(arrived.has_value() && arrived->size() == items->size(), "items are readable again");
    const AppcastItem* const newest = selectUpdate(*arrived, {"linux", "6.1", "x86_64"}, "1.0", "");
    if (newest != nullptr)
        invariant(selectUpdate(*arrived, {"linux", "6.1", "x86_64"}, newest->version, "") == nullptr,
                  "it is the newest");
    return 0;
}
