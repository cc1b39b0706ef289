// SPDX-License-Identifier: MIT
#include "platform/qt/DroppedContents.h"

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <array>
#include <span>

namespace stowpocket {
namespace {

/// The kinds of contents that are taken, most telling first, since sources offer one thing in several kinds.
struct Kind {
    QLatin1String format;
    std::string_view type;
    QLatin1String name;
    QLatin1String extension;
};

constexpr std::array<Kind, 2> pictureKinds{{
    {QLatin1String("image/png"), "public.png", QLatin1String("Image"), QLatin1String("png")},
    {QLatin1String("image/jpeg"), "public.jpeg", QLatin1String("Image"), QLatin1String("jpg")},
}};
constexpr std::array<Kind, 2> textKinds{{
    {QLatin1String("text/plain;charset=utf-8"), "public.utf8-plain-text", QLatin1String("Text"),
     QLatin1String("txt")},
    {QLatin1String("text/plain"), "public.utf8-plain-text", QLatin1String("Text"), QLatin1String("txt")},
}};

class ContentsProvider : public ItemProvider {
public:
    ContentsProvider(const Kind& kind, QByteArray bytes) : kind_(kind), bytes_(std::move(bytes)) {}

    [[nodiscard]] bool hasItemConformingTo(std::string_view type) const override {
        return type == kind_.type || type == uniformType::item;
    }
    [[nodiscard]] std::vector<std::string> registeredTypeIdentifiers() const override {
        return {std::string(kind_.type)};
    }
    void loadItem(std::string_view type, std::function<void(std::optional<Bytes>)> completion) override {
        if (!hasItemConformingTo(type))
            return completion(std::nullopt);
        completion(Bytes(bytes_.begin(), bytes_.end()));
    }
    void loadFileRepresentation(std::string_view type,
                                std::function<void(std::optional<FileURL>)> completion) override {
        const QTemporaryDir folder;
        QFile file(folder.filePath(fileName()));
        const bool isWritten = hasItemConformingTo(type) && folder.isValid() && file.open(QIODevice::WriteOnly) &&
                               file.write(bytes_) == bytes_.size() && file.flush();
        completion(isWritten ? FileURL::fromPath(QFile::encodeName(file.fileName()).toStdString()) : std::nullopt);
    }

private:
    [[nodiscard]] QString fileName() const {
        // To the millisecond: contents of one name would replace each other where they are kept.
        const QString now = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh.mm.ss.zzz"));
        return QStringLiteral("%1 %2.%3").arg(kind_.name, now, kind_.extension);
    }

    const Kind& kind_;
    const QByteArray bytes_;
};

std::shared_ptr<ItemProvider> firstOf(std::span<const Kind> kinds, const QMimeData& data) {
    for (const Kind& kind : kinds) {
        if (!data.hasFormat(kind.format))
            continue;
        if (QByteArray bytes = data.data(kind.format); !bytes.isEmpty())
            return std::make_shared<ContentsProvider>(kind, std::move(bytes));
    }
    return nullptr;
}

}  // namespace

bool offersContents(const QMimeData& data) {
    const auto isOffered = [&](const Kind& kind) { return data.hasFormat(kind.format); };
    return std::ranges::any_of(pictureKinds, isOffered) || std::ranges::any_of(textKinds, isOffered);
}

std::shared_ptr<ItemProvider> droppedPicture(const QMimeData& data) {
    return firstOf(pictureKinds, data);
}

std::shared_ptr<ItemProvider> droppedText(const QMimeData& data) {
    return firstOf(textKinds, data);
}

}  // namespace stowpocket
