// SPDX-License-Identifier: MIT
#include "platform/linux/files/BookmarkRecord.h"

#include "platform/linux/files/DurableFile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <utility>

namespace stowpocket {
namespace {

constexpr std::string_view hexDigits = "0123456789abcdef";

std::string hexadecimal(std::span<const unsigned char> bytes) {
    std::string text;
    text.reserve(bytes.size() * 2);
    for (const unsigned char byte : bytes) {
        text += hexDigits[byte >> 4u];
        text += hexDigits[byte & 0x0Fu];
    }
    return text;
}

std::string handleOf(int folder, const char* name) {
    alignas(file_handle) std::array<unsigned char, sizeof(file_handle) + MAX_HANDLE_SZ> buffer{};
    auto* const handle = reinterpret_cast<file_handle*>(buffer.data());
    handle->handle_bytes = MAX_HANDLE_SZ;
    int mountId = 0;
    if (::name_to_handle_at(folder, name, handle, &mountId, 0) != 0)
        return {};
    const std::size_t begin = offsetof(file_handle, handle_type);
    const std::size_t end = sizeof(file_handle) + handle->handle_bytes;
    return hexadecimal(std::span(buffer).subspan(begin, end - begin));
}

FileType typeOf(unsigned mode) {
    if (S_ISREG(mode))
        return FileType::file;
    if (S_ISDIR(mode))
        return FileType::folder;
    return S_ISLNK(mode) ? FileType::link : FileType::other;
}

Moment momentOf(const struct statx_timestamp& time) {
    return {time.tv_sec, time.tv_nsec};
}

constexpr qint64 formatVersion = 1;
/// Four times the size of a record with the longest possible path.
constexpr std::size_t maxEncodedSize = std::size_t{64} * 1024;

namespace key {
const QLatin1String version("version");
const QLatin1String path("path");
const QLatin1String type("type");
const QLatin1String inode("ino");
const QLatin1String birth("btime");
const QLatin1String handle("handle");
const QLatin1String size("size");
const QLatin1String modified("mtime");
const QLatin1String mountPoint("mountPoint");
const QLatin1String volume("fsUuid");
const QLatin1String ancestors("ancestors");
const QLatin1String seconds("s");
const QLatin1String nanoseconds("ns");
}  // namespace key

/// In the order of FileType.
constexpr std::array<const char*, 4> typeNames = {"file", "folder", "link", "other"};

/// Writes a JSON object. Texts are URLs, hexadecimal or names, none of which has a character that JSON escapes.
/// QJsonDocument would take more than half of the time that it takes to add a file.
class ObjectText {
public:
    ObjectText& text(QLatin1String key, std::string_view text) {
        begin(key);
        text_.append(1, '"').append(text).append(1, '"');
        return *this;
    }
    ObjectText& number(QLatin1String key, std::int64_t number) { return json(key, std::to_string(number)); }
    ObjectText& json(QLatin1String key, std::string_view value) {
        begin(key);
        text_.append(value);
        return *this;
    }
    [[nodiscard]] std::string end() { return std::move(text_) + '}'; }

private:
    void begin(QLatin1String key) {
        text_.append(1, text_.empty() ? '{' : ',').append(1, '"').append(key.data(), std::size_t(key.size()));
        text_.append("\":");
    }

    std::string text_;
};

std::string momentText(const std::optional<Moment>& moment) {
    if (!moment)
        return "null";
    return ObjectText().number(key::seconds, moment->seconds).number(key::nanoseconds, moment->nanoseconds).end();
}

/// JSON numbers are signed here. An inode number beyond that range is stored as the negative number with the same
/// bits.
ObjectText inodeObject(const InodeIdentity& inode) {
    ObjectText object;
    object.number(key::inode, static_cast<std::int64_t>(inode.inode)).json(key::birth, momentText(inode.birth));
    return object;
}

std::optional<Moment> readMoment(const QJsonValue& value) {
    if (!value.isObject())
        return std::nullopt;
    const QJsonObject moment = value.toObject();
    return Moment{moment.value(key::seconds).toInteger(),
                  static_cast<std::uint32_t>(moment.value(key::nanoseconds).toInteger())};
}

InodeIdentity readInode(const QJsonObject& object) {
    return {static_cast<std::uint64_t>(object.value(key::inode).toInteger()), readMoment(object.value(key::birth))};
}

std::optional<FileType> readType(const QString& name) {
    const auto found =
        std::ranges::find_if(typeNames, [&](const char* known) { return name == QLatin1String(known); });
    if (found == typeNames.end())
        return std::nullopt;
    return static_cast<FileType>(found - typeNames.begin());
}

/// Empty if it is anything else.
std::string readHexadecimal(const QJsonValue& value) {
    std::string text = value.toString().toStdString();
    const bool isHexadecimal = text.find_first_not_of(hexDigits) == std::string::npos;
    return isHexadecimal ? text : std::string();
}

std::vector<InodeIdentity> readAncestors(const QJsonArray& values) {
    std::vector<InodeIdentity> ancestors;
    for (const QJsonValue value : values) {
        if (ancestors.size() < BookmarkRecord::maxAncestors)
            ancestors.push_back(readInode(value.toObject()));
    }
    return ancestors;
}

}  // namespace

Sighting lookAt(int folder, const char* name, Detail detail) {
    constexpr int flags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_STATX_DONT_SYNC;
    struct statx found {};
    if (::statx(folder, name, flags, STATX_BASIC_STATS | STATX_BTIME | STATX_MNT_ID, &found) != 0) {
        const bool isAbsent = errno == ENOENT || errno == ENOTDIR || errno == ENAMETOOLONG;
        return {isAbsent ? Sighting::Kind::absent : Sighting::Kind::unknown, {}};
    }
    FileIdentity identity{.type = typeOf(found.stx_mode),
                          .inode = {.inode = found.stx_ino, .birth = std::nullopt},
                          .handle = {},
                          .size = static_cast<std::int64_t>(found.stx_size),
                          .modified = momentOf(found.stx_mtime),
                          .device = (std::uint64_t{found.stx_dev_major} << 32u) | found.stx_dev_minor,
                          .mountId = (found.stx_mask & STATX_MNT_ID) != 0 ? found.stx_mnt_id : 0};
    if ((found.stx_mask & STATX_BTIME) != 0)
        identity.inode.birth = momentOf(found.stx_btime);
    if (detail == Detail::handle || !identity.inode.birth)
        identity.handle = handleOf(folder, name);
    return {Sighting::Kind::present, std::move(identity)};
}

bool isSameFile(const FileIdentity& recorded, const FileIdentity& seen) {
    if (recorded.type != seen.type || recorded.inode.inode != seen.inode.inode)
        return false;
    const bool bothHaveHandles = !recorded.handle.empty() && !seen.handle.empty();
    if (bothHaveHandles && recorded.handle != seen.handle)
        return false;
    if (recorded.inode.birth && seen.inode.birth)
        return recorded.inode.birth == seen.inode.birth;
    return bothHaveHandles && recorded.size == seen.size && recorded.modified == seen.modified;
}

std::string volumeIdentifier(const std::string& mountPoint) {
    // FS_IOC_GETFSUUID of newer kernel headers.
    struct VolumeUUID {
        unsigned char length;
        std::array<unsigned char, 16> octets;
    };
    constexpr unsigned long getVolumeUUID = _IOR(0x15, 0, VolumeUUID);
    const FileDescriptor root(::open(mountPoint.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    VolumeUUID uuid{};
    if (!root.isOpen() || ::ioctl(root.get(), getVolumeUUID, &uuid) != 0)
        return {};
    const std::span<const unsigned char> octets(uuid.octets);
    const auto isZero = [](unsigned char octet) { return octet == 0; };
    return std::ranges::all_of(octets, isZero) ? std::string() : hexadecimal(octets);
}

Bytes encodeBookmark(const BookmarkRecord& record) {
    const FileIdentity& identity = record.identity;
    ObjectText object = inodeObject(identity.inode);
    object.number(key::version, formatVersion)
        .text(key::path, record.url.string())
        .text(key::type, typeNames[static_cast<std::size_t>(identity.type)])
        .text(key::handle, identity.handle)
        .number(key::size, identity.size)
        .json(key::modified, momentText(identity.modified));
    if (const std::optional<FileURL> mountPoint = FileURL::fromPath(record.mountPoint))
        object.text(key::mountPoint, mountPoint->string());
    object.text(key::volume, record.volume);
    std::string ancestors;
    for (const InodeIdentity& ancestor : record.ancestors)
        ancestors.append(1, ancestors.empty() ? '[' : ',').append(inodeObject(ancestor).end());
    object.json(key::ancestors, ancestors.empty() ? "[]" : ancestors + ']');
    const std::string json = object.end();
    return {json.begin(), json.end()};
}

std::optional<BookmarkRecord> decodeBookmark(const Bytes& data) {
    if (data.size() > maxEncodedSize)
        return std::nullopt;
    const auto json = QByteArray(reinterpret_cast<const char*>(data.data()), static_cast<qsizetype>(data.size()));
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    const std::optional<FileURL> url = FileURL::parse(object.value(key::path).toString().toStdString());
    const std::optional<FileType> type = readType(object.value(key::type).toString());
    if (object.value(key::version).toInteger() != formatVersion || !url || !type)
        return std::nullopt;
    const std::optional<FileURL> mountPoint = FileURL::parse(object.value(key::mountPoint).toString().toStdString());
    return BookmarkRecord{.url = *url,
                          .identity = {.type = *type,
                                       .inode = readInode(object),
                                       .handle = readHexadecimal(object.value(key::handle)),
                                       .size = object.value(key::size).toInteger(),
                                       .modified = readMoment(object.value(key::modified)).value_or(Moment{})},
                          .mountPoint = mountPoint ? mountPoint->path() : std::string(),
                          .volume = readHexadecimal(object.value(key::volume)),
                          .ancestors = readAncestors(object.value(key::ancestors).toArray())};
}

}  // namespace stowpocket
