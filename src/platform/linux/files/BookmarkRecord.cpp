// SPDX-License-Identifier: MIT
#include "platform/linux/files/BookmarkRecord.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <array>

namespace stowpocket {
namespace {

constexpr qint64 formatVersion = 1;
/// Four times what a path of the greatest length takes.
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

QJsonValue momentValue(const std::optional<Moment>& moment) {
    if (!moment)
        return QJsonValue::Null;
    return QJsonObject{{key::seconds, static_cast<qint64>(moment->seconds)},
                       {key::nanoseconds, static_cast<qint64>(moment->nanoseconds)}};
}

/// JSON numbers are signed here; an inode number beyond that range is stored as the negative one of the same bits.
QJsonObject inodeObject(const InodeIdentity& inode) {
    return {{key::inode, static_cast<qint64>(inode.inode)}, {key::birth, momentValue(inode.birth)}};
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

std::vector<InodeIdentity> readAncestors(const QJsonArray& values) {
    std::vector<InodeIdentity> ancestors;
    for (const QJsonValue value : values) {
        if (ancestors.size() < BookmarkRecord::maxAncestors)
            ancestors.push_back(readInode(value.toObject()));
    }
    return ancestors;
}

}  // namespace

Bytes encodeBookmark(const BookmarkRecord& record) {
    const FileIdentity& identity = record.identity;
    QJsonObject object = inodeObject(identity.inode);
    object.insert(key::version, formatVersion);
    object.insert(key::path, QString::fromStdString(record.url.string()));
    object.insert(key::type, QLatin1String(typeNames[static_cast<std::size_t>(identity.type)]));
    object.insert(key::handle, QString::fromStdString(identity.handle));
    object.insert(key::size, static_cast<qint64>(identity.size));
    object.insert(key::modified, momentValue(identity.modified));
    if (const std::optional<FileURL> mountPoint = FileURL::fromPath(record.mountPoint))
        object.insert(key::mountPoint, QString::fromStdString(mountPoint->string()));
    object.insert(key::volume, QString::fromStdString(record.volume));
    QJsonArray ancestors;
    for (const InodeIdentity& ancestor : record.ancestors)
        ancestors.append(inodeObject(ancestor));
    object.insert(key::ancestors, ancestors);
    const QByteArray json = QJsonDocument(object).toJson(QJsonDocument::Compact);
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
                                       .handle = object.value(key::handle).toString().toStdString(),
                                       .size = object.value(key::size).toInteger(),
                                       .modified = readMoment(object.value(key::modified)).value_or(Moment{})},
                          .mountPoint = mountPoint ? mountPoint->path() : std::string(),
                          .volume = object.value(key::volume).toString().toStdString(),
                          .ancestors = readAncestors(object.value(key::ancestors).toArray())};
}

}  // namespace stowpocket
