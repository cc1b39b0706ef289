// SPDX-License-Identifier: MIT
#include "platform/qt/DroppedContents.h"

#include <QDateTime>
#include <QFile>

#include <array>

namespace stowpocket {
namespace {

constexpr std::array<ContentsKind, 2> pictures{{
    {QLatin1String("image/png"), "public.png", QLatin1String("Image"), QLatin1String("png")},
    {QLatin1String("image/jpeg"), "public.jpeg", QLatin1String("Image"), QLatin1String("jpg")},
}};
constexpr std::array<ContentsKind, 2> texts{{
    {QLatin1String("text/plain;charset=utf-8"), "public.utf8-plain-text", QLatin1String("Text"),
     QLatin1String("txt")},
    {QLatin1String("text/plain"), "public.utf8-plain-text", QLatin1String("Text"), QLatin1String("txt")},
}};

class ContentsProvider : public ItemProvider {
public:
    ContentsProvider(DroppedContents contents, Dispatch& dispatch)
        : contents_(std::move(contents)), dispatch_(dispatch) {}

    [[nodiscard]] bool hasItemConformingTo(std::string_view type) const override {
        return type == contents_.kind().type || type == uniformType::item;
    }
    [[nodiscard]] std::vector<std::string> registeredTypeIdentifiers() const override {
        return {std::string(contents_.kind().type)};
    }
    void loadItem(std::string_view, std::function<void(std::optional<Bytes>)> completion) override {
        completion(std::nullopt);
    }
    void loadFileRepresentation(std::string_view type,
                                std::function<void(std::optional<FileURL>)> completion) override {
        if (!hasItemConformingTo(type))
            return completion(std::nullopt);
        dispatch_.background([contents = contents_, completion = std::move(completion)] {
            completion(FileURL::fromPath(QFile::encodeName(contents.path()).toStdString()));
        });
    }

private:
    const DroppedContents contents_;
    Dispatch& dispatch_;
};

}  // namespace

std::span<const ContentsKind> pictureKinds() {
    return pictures;
}

std::span<const ContentsKind> textKinds() {
    return texts;
}

DroppedContents::DroppedContents(const ContentsKind& kind)
    : kind_(&kind), folder_(std::make_shared<const QTemporaryDir>()) {
    // To the millisecond: contents of one name would replace each other where they are kept.
    const QString now = QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh.mm.ss.zzz"));
    path_ = folder_->filePath(QStringLiteral("%1 %2.%3").arg(kind.name, now, kind.extension));
}

std::shared_ptr<ItemProvider> providerOf(DroppedContents contents, Dispatch& dispatch) {
    return std::make_shared<ContentsProvider>(std::move(contents), dispatch);
}

}  // namespace stowpocket
