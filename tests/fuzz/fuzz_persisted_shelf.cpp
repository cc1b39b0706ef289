// SPDX-License-Identifier: MIT
#include "fakes/FakeFiles.h"
#include "fuzz/Fuzz.h"
#include "platform/linux/preferences/PropertyList.h"
#include "shelf/PersistedShelf.h"

/// A saved shelf in which anything may stand anywhere: any keys, any types, any nesting.
void stowpocket::checkInput(const std::string& text) {
    const auto value = parsePropertyList(text);
    const PropertyValue::Array* const entries = value ? value->array() : nullptr;
    if (entries == nullptr)
        return;
    FakeFiles files;
    files.add("/a");
    const std::vector<ShelfItem> items = decodedShelf(*entries, files, files).items;
    invariant(items.size() <= entries->size(), "no entry makes two items");
    const DecodedShelf again = decodedShelf(encodedShelf(items), files, files);
    invariant(again.items.size() == items.size(), "what was read once is read again");
}
