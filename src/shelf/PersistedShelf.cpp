// SPDX-License-Identifier: MIT
#include "shelf/PersistedShelf.h"

#include "foundation/Text.h"
#include "services/Files.h"

#include <cmath>

namespace stowpocket {
namespace {

namespace key {
constexpr std::string_view id = "id";
constexpr std::string_view filename = "filename";
constexpr std::string_view fileSize = "fileSize";
constexpr std::string_view dateAdded = "dateAdded";
constexpr std::string_view bookmark = "bookmark";
constexpr std::string_view fallbackPath = "fallbackPath";
/// Data: the bytes of a path that is not valid UTF-8, beside "fallbackPath".
constexpr std::string_view fallbackPathBytes = "fallbackPathBytes";
}  // namespace key

/// What every entry contains, with a bookmark or a path.
struct EntryFacts {
    UUID id;
    std::string filename;
    std::int64_t fileSize = 0;
    Date dateAdded;
};

double secondsSince1970(Date date) {
    return std::chrono::duration<double>(date.time_since_epoch()).count();
}

/// A number outside the range of dates is clamped, so that the file itself is not lost.
Date dateFrom(double seconds) {
    constexpr double farthest = 8.0e12;  // seconds; a quarter of a million years, within 64-bit microseconds
    if (std::isnan(seconds))
        return Date{};
    const double clamped = std::fmax(-farthest, std::fmin(farthest, seconds));
    return Date(std::chrono::microseconds(std::llround(clamped * 1e6)));
}

std::optional<EntryFacts> entryFacts(const PropertyValue::Dictionary& entry) {
    const PropertyValue* const id = find(entry, key::id);
    const PropertyValue* const filename = find(entry, key::filename);
    const PropertyValue* const fileSize = find(entry, key::fileSize);
    const PropertyValue* const dateAdded = find(entry, key::dateAdded);
    if (id == nullptr || filename == nullptr || fileSize == nullptr || dateAdded == nullptr)
        return std::nullopt;
    if (id->string() == nullptr || filename->string() == nullptr || !fileSize->integer() || !dateAdded->real())
        return std::nullopt;
    const std::optional<UUID> uuid = UUID::parse(*id->string());
    if (!uuid)
        return std::nullopt;
    return EntryFacts{*uuid, *filename->string(), *fileSize->integer(), dateFrom(*dateAdded->real())};
}

const Bytes* bookmarkOf(const PropertyValue::Dictionary& entry) {
    const PropertyValue* const bookmark = find(entry, key::bookmark);
    return bookmark == nullptr ? nullptr : bookmark->data();
}

std::optional<FileURL> fallbackOf(const PropertyValue::Dictionary& entry) {
    const PropertyValue* const path = find(entry, key::fallbackPath);
    if (path == nullptr || path->string() == nullptr)
        return std::nullopt;
    std::string exact = *path->string();
    const PropertyValue* const bytes = find(entry, key::fallbackPathBytes);
    if (const Bytes* const data = bytes == nullptr ? nullptr : bytes->data()) {
        const std::string original(data->begin(), data->end());
        if (validUtf8(original) == exact)
            exact = original;
    }
    // A relative path is relative to the root, where desktops start programs.
    return FileURL::fromPath(exact.starts_with('/') ? exact : '/' + exact);
}

/// Property lists hold text, but a file name may be any bytes.
void addPath(PropertyValue::Dictionary& entry, const std::string& path) {
    const std::string text = validUtf8(path);
    entry.emplace(key::fallbackPath, text);
    if (text != path)
        entry.emplace(key::fallbackPathBytes, Bytes(path.begin(), path.end()));
}

ShelfItem makeItem(EntryFacts facts, FileURL url, bool isAvailable) {
    return ShelfItem{.id = facts.id,
                     .fileURL = std::move(url),
                     .bookmarkData = {},
                     .filename = std::move(facts.filename),
                     .fileSize = facts.fileSize,
                     .dateAdded = facts.dateAdded,
                     .isAvailable = isAvailable};
}

/// Builds the decoded shelf, one entry at a time.
class Decoder {
public:
    Decoder(Bookmarks& bookmarks, FileManager& fileManager) : bookmarks_(bookmarks), fileManager_(fileManager) {}

    void addBookmarked(EntryFacts facts, Bytes bookmark, const std::optional<ResolvedBookmark>& resolved) {
        if (!resolved)
            return;
        const bool isAvailable = !resolved->isToBeSought && fileManager_.fileExists(resolved->url);
        if (resolved->isToBeSought)
            shelf_.toBeSought.push_back(facts.id);
        else
            beginAccess(resolved->url, bookmarks_, shelf_.accessedResourceURLs);
        ShelfItem item = makeItem(std::move(facts), resolved->url, isAvailable);
        item.bookmarkData = std::move(bookmark);
        if (resolved->isStale)
            renewBookmark(item);
        shelf_.items.push_back(std::move(item));
    }

    void addByPath(EntryFacts facts, const FileURL& url) {
        ShelfItem item = makeItem(std::move(facts), url, fileManager_.fileExists(url));
        renewBookmark(item);
        shelf_.items.push_back(std::move(item));
    }

    DecodedShelf takeShelf() { return std::move(shelf_); }

private:
    void renewBookmark(ShelfItem& item) {
        std::optional<Bytes> fresh = bookmarks_.create(item.fileURL);
        if (!fresh)
            return;
        item.bookmarkData = std::move(fresh);
        shelf_.madeBookmarks = true;
    }

    Bookmarks& bookmarks_;
    FileManager& fileManager_;
    DecodedShelf shelf_;
};

}  // namespace

void beginAccess(const FileURL& url, Bookmarks& bookmarks, std::set<FileURL>& accessed) {
    if (!accessed.contains(url) && bookmarks.startAccessing(url))
        accessed.insert(url);
}

PropertyValue::Array encodedShelf(const std::vector<ShelfItem>& items) {
    PropertyValue::Array entries;
    entries.reserve(items.size());
    for (const ShelfItem& item : items) {
        PropertyValue::Dictionary entry;
        entry.emplace(key::id, item.id.text());
        entry.emplace(key::filename, item.filename);
        entry.emplace(key::fileSize, item.fileSize);
        entry.emplace(key::dateAdded, secondsSince1970(item.dateAdded));
        if (item.bookmarkData)
            entry.emplace(key::bookmark, *item.bookmarkData);
        else
            addPath(entry, item.fileURL.path());
        entries.emplace_back(std::move(entry));
    }
    return entries;
}

DecodedShelf decodedShelf(const PropertyValue::Array& entries, Bookmarks& bookmarks, FileManager& fileManager) {
    struct Readable {
        EntryFacts facts;
        const PropertyValue::Dictionary* entry;
    };
    std::vector<Readable> readable;
    std::vector<Bytes> stored;
    for (const PropertyValue& value : entries) {
        const PropertyValue::Dictionary* const entry = value.dictionary();
        std::optional<EntryFacts> facts = entry == nullptr ? std::nullopt : entryFacts(*entry);
        if (!facts)
            continue;
        if (const Bytes* const bookmark = bookmarkOf(*entry))
            stored.push_back(*bookmark);
        readable.push_back({std::move(*facts), entry});
    }

    const std::vector<std::optional<ResolvedBookmark>> resolved = bookmarks.resolve(stored);
    Decoder decoder(bookmarks, fileManager);
    std::size_t bookmarked = 0;
    for (Readable& next : readable) {
        if (bookmarkOf(*next.entry) != nullptr) {
            decoder.addBookmarked(std::move(next.facts), std::move(stored[bookmarked]), resolved[bookmarked]);
            ++bookmarked;
        } else if (const std::optional<FileURL> url = fallbackOf(*next.entry)) {
            decoder.addByPath(std::move(next.facts), *url);
        }
    }
    return decoder.takeShelf();
}

}  // namespace stowpocket
