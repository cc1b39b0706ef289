// SPDX-License-Identifier: MIT
#include "fuzz/Fuzz.h"
#include "platform/linux/updates/AppcastReader.h"
#include "updates/Appcast.h"

/// What a list of releases says survives the way to the program, and what is chosen from it is newer.
void stowpocket::checkInput(const std::string& text) {
    static_cast<void>(decodedItems(text));
    const auto items = readAppcast(QByteArray::fromStdString(text));
    if (!items)
        return;
    const auto arrived = decodedItems(encodedItems(*items));
    invariant(arrived.has_value() && arrived->size() == items->size(), "items are readable again");
    const AppcastItem* const newest = selectUpdate(*arrived, {"linux", "6.1", "x86_64"}, "1.0", "");
    if (newest != nullptr)
        invariant(selectUpdate(*arrived, {"linux", "6.1", "x86_64"}, newest->version, "") == nullptr,
                  "it is the newest");
}
