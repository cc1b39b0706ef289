// SPDX-License-Identifier: MIT
#include "fakes/FakeFiles.h"
#include "fuzz/Fuzz.h"
#include "shelf/PersistedShelf.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <bit>

namespace stowpocket {
namespace {

PropertyValue anyValue(FuzzedDataProvider& source, int depth);

PropertyValue::Dictionary anyEntry(FuzzedDataProvider& source, int depth) {
    constexpr const char* keys[] = {"id", "filename", "fileSize", "dateAdded", "bookmark", "fallbackPath"};
    PropertyValue::Dictionary entry{{"id", "0F8FAD5B-D9CB-469F-A165-70867728950E"},
                                    {"filename", "name"},
                                    {"fileSize", std::int64_t{1}},
                                    {"dateAdded", 1.0}};
    for (int left = source.ConsumeIntegralInRange(0, 7); left > 0; --left)
        entry.insert_or_assign(source.PickValueInArray(keys), anyValue(source, depth + 1));
    return entry;
}

PropertyValue anyValue(FuzzedDataProvider& source, int depth) {
    switch (source.ConsumeIntegralInRange(0, depth > 4 ? 4 : 6)) {
    case 0:
        return source.ConsumeBool();
    case 1:
        return source.ConsumeIntegral<std::int64_t>();
    case 2:
        return std::bit_cast<double>(source.ConsumeIntegral<std::uint64_t>());
    case 3:
        return source.ConsumeRandomLengthString();
    case 4: {
        const std::string text = source.ConsumeRandomLengthString();
        return Bytes(text.begin(), text.end());
    }
    case 5:
        return PropertyValue::Array{anyValue(source, depth + 1)};
    default:
        return anyEntry(source, depth + 1);
    }
}

}  // namespace

/// A saved shelf in which anything may stand anywhere: any keys, any types, any nesting.
void checkInput(const std::string& text) {
    FuzzedDataProvider source(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
    PropertyValue::Array entries;
    while (source.remaining_bytes() > 0)
        entries.push_back(source.ConsumeBool() ? PropertyValue(anyEntry(source, 0)) : anyValue(source, 0));

    FakeFiles files;
    files.add("/a");
    const std::vector<ShelfItem> items = decodedShelf(entries, files, files).items;
    invariant(items.size() <= entries.size(), "no entry makes two items");
    const DecodedShelf again = decodedShelf(encodedShelf(items), files, files);
    invariant(again.items.size() == items.size(), "what was read once is read again");
}

}  // namespace stowpocket
