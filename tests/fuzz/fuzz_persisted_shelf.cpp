// SPDX-License-Identifier: MIT
// A saved shelf in which anything may stand anywhere: any keys, any types, any nesting.
#include "fakes/FakeFiles.h"
#include "Fuzzing.h"
#include "shelf/PersistedShelf.h"

#include <array>

using namespace stowpocket;

namespace {

PropertyValue anyValue(FuzzInput& source, int depth);

PropertyValue::Dictionary anyEntry(FuzzInput& source, int depth) {
    constexpr std::array keys{"id", "filename", "fileSize", "dateAdded", "bookmark", "fallbackPath"};
    PropertyValue::Dictionary entry{{"id", "0F8FAD5B-D9CB-469F-A165-70867728950E"},
                                    {"filename", "name"},
                                    {"fileSize", std::int64_t{1}},
                                    {"dateAdded", 1.0}};
    for (int left = source.byte() % 8; left > 0; --left)
        entry.insert_or_assign(keys.at(source.byte() % keys.size()), anyValue(source, depth + 1));
    return entry;
}

PropertyValue anyValue(FuzzInput& source, int depth) {
    switch (depth > 4 ? source.byte() % 5 : source.byte() % 7) {
    case 0:
        return source.byte() % 2 == 0;
    case 1:
        return source.number<std::int64_t>();
    case 2:
        return source.number<double>();
    case 3:
        return source.text();
    case 4: {
        const std::string text = source.text();
        return Bytes(text.begin(), text.end());
    }
    case 5:
        return PropertyValue::Array{anyValue(source, depth + 1)};
    default:
        return anyEntry(source, depth + 1);
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput source(std::span(data, size));
    PropertyValue::Array entries;
    while (!source.isEmpty())
        entries.push_back(source.byte() % 4 == 0 ? anyValue(source, 0) : PropertyValue(anyEntry(source, 0)));

    FakeFiles files;
    files.add("/a");
    const std::vector<ShelfItem> items = decodedShelf(entries, files, files).items;
    invariant(items.size() <= entries.size(), "no entry makes two items");
    const DecodedShelf again = decodedShelf(encodedShelf(items), files, files);
    invariant(again.items.size() == items.size(), "what was read once is read again");
    return 0;
}
