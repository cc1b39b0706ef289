// SPDX-License-Identifier: MIT
#include "fuzz/Fuzz.h"
#include "platform/linux/preferences/PropertyList.h"

/// What has been read and written once comes back the same from then on.
void stowpocket::checkInput(const std::string& text) {
    const auto value = parsePropertyList(text);
    if (!value)
        return;
    const std::string written = writePropertyList(*value);
    const auto again = parsePropertyList(written);
    invariant(again.has_value(), "a written property list is readable");
    invariant(writePropertyList(*again) == written, "a property list is written the same again");
}
