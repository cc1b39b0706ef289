// SPDX-License-Identifier: MIT
#include "foundation/Invariant.h"
#include "platform/linux/preferences/PropertyList.h"

/// What has been read and written once comes back the same from then on.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace stowpocket;
    const auto value = parsePropertyList({reinterpret_cast<const char*>(data), size});
    if (!value)
        return 0;
    const std::string written = writePropertyList(*value);
    const auto again = parsePropertyList(written);
    invariant(again.has_value(), "a written property list is readable");
    invariant(writePropertyList(*again) == written, "a property list is written the same again");
    return 0;
}
