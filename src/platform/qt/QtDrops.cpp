// SPDX-License-Identifier: MIT
#include "platform/qt/QtDrops.h"

#include "intake/ExchangeFormats.h"

#include <QDateTime>
#include <QFile>
#include <QSysInfo>

#include <algorithm>
#include <array>
#include <filesystem>

namespace stowpocket {
namespace {

constexpr std::array<ContentsFormat, 2> pictures{{
    {QLatin1String("image/png"), contentsKind::png},
    {QLatin1String("image/jpeg"), contentsKind::jpeg},
}};
constexpr std::array<ContentsFormat, 3> texts{{
    {QLatin1String("text/plain;charset=utf-8"), contentsKind::text},
    {QLatin1String("UTF8_STRING"), contentsKind::text},
    {QLatin1String("text/plain"), contentsKind::text},
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

const QString uriListFormat = QStringLiteral("text/uri-list");

/// Reads the original bytes: QUrl would lose file names that are not UTF-8.
std::vector<FileURL> filesOf(const ReceivedDrop& drop) {
    return filesOfUriList(drop.uriList, QSysInfo::machineHostName().toStdString());
}

class FileProvider : public ItemProvider {
public:
    explicit FileProvider(FileURL file) : file_(std::move(file)) {}

    [[nodiscard]] bool hasItemConformingTo(std::string_view type) const override {
        return type == uniformType::fileURL || type == uniformType::item;
    }
    [[nodiscard]] std::vector<std::string> registeredTypeIdentifiers() const override {
        return {std::string(uniformType::fileURL)};
    }
    void loadItem(std::string_view type, std::function<void(std::optional<Bytes>)> completion) override {
        if (type != uniformType::fileURL)
            return completion(std::nullopt);
        const std::string text = file_.string();
        completion(Bytes(text.begin(), text.end()));
    }
    void loadFileRepresentation(std::string_view, std::function<void(std::optional<FileURL>)> completion) override {
        completion(std::nullopt);  // the file already exists: it is referenced, never copied
    }

private:
    const FileURL file_;
};

/// Contents without a file, presented as a promised file.
class ContentsReceiver : public FilePromiseReceiver {
public:
    explicit ContentsReceiver(std::shared_ptr<ItemProvider> contents) : contents_(std::move(contents)) {}

    void receivePromisedFiles(const FileURL& destination, Reader reader) override {
        contents_->loadFileRepresentation(
            contents_->registeredTypeIdentifiers().front(),
            [destination, reader = std::move(reader)](const std::optional<FileURL>& written) {
                if (!written)
                    return reader(std::nullopt);
                FileURL kept = destination.appending(written->lastPathComponent());
                std::error_code failure;
                std::filesystem::copy_file(written->path(), kept.path(), failure);
                reader(failure ? std::nullopt : std::optional(std::move(kept)));
            });
    }

private:
    const std::shared_ptr<ItemProvider> contents_;
};

}  // namespace

std::span<const ContentsFormat> pictureFormats() {
    return pictures;
}

std::span<const ContentsFormat> textFormats() {
    return texts;
}

/// The time has milliseconds, because contents with equal names would replace each other where they are stored.
DroppedContents::DroppedContents(const ContentsKind& kind)
    : kind_(kind),
      folder_(std::make_shared<const QTemporaryDir>()),
      time_(QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd hh.mm.ss.zzz"))),
      path_(pathFor({}, {})) {}

QString DroppedContents::pathFor(std::string_view words, std::string_view extension) const {
    const ContentsKind kind{kind_.type, kind_.name, extension.empty() ? kind_.extension : extension};
    return folder_->filePath(QString::fromStdString(contentsFileName(kind, words, time_.toStdString())));
}

void DroppedContents::nameAfter(const std::string& words, const std::string& extension) {
    const QString named = pathFor(words, extension);
    if (!words.empty() && QFile::rename(path_, named))
        path_ = named;
}

std::shared_ptr<ItemProvider> providerOf(DroppedContents contents, Dispatch& dispatch) {
    return std::make_shared<ContentsProvider>(std::move(contents), dispatch);
}

std::vector<PasteboardItem> QtDraggingPasteboard::items() {
    std::vector<PasteboardItem> items;
    for (const FileURL& file : filesOf(drops_.received()))
        items.push_back({{{std::string(pasteboardType::fileURL), file.string()}}});
    return items;
}

std::vector<std::shared_ptr<FilePromiseReceiver>> QtDraggingPasteboard::filePromiseReceivers() {
    if (const auto& contents = drops_.received().contents)
        return {std::make_shared<ContentsReceiver>(contents)};
    if (!drops_.promisesFiles(data_))
        return {};
    return {drops_.promiseReceiver()};
}

bool offersAnyOf(const QMimeData& data, const std::vector<std::string>& types, const IncomingDrops& drops) {
    const auto isWanted = [&](std::string_view type) { return std::ranges::find(types, type) != types.end(); };
    return (isWanted(pasteboardType::fileURL) && data.hasFormat(uriListFormat)) ||
           (isWanted(pasteboardType::promisedFileURL) && drops.promisesFiles(data));
}

bool offersItems(const QMimeData& data, const IncomingDrops& drops) {
    const auto isOffered = [&](const ContentsFormat& each) { return data.hasFormat(each.format); };
    return data.hasFormat(uriListFormat) || drops.promisesFiles(data) ||
           std::ranges::any_of(pictureFormats(), isOffered) || std::ranges::any_of(textFormats(), isOffered);
}

std::vector<std::shared_ptr<ItemProvider>> itemProvidersOf(const ReceivedDrop& received) {
    std::vector<std::shared_ptr<ItemProvider>> providers;
    for (FileURL& file : filesOf(received))
        providers.push_back(std::make_shared<FileProvider>(std::move(file)));
    if (providers.empty() && received.contents)
        providers.push_back(received.contents);
    return providers;
}

std::vector<std::shared_ptr<ItemProvider>> itemProvidersOf(const QMimeData& data, IncomingDrops& drops) {
    std::vector<std::shared_ptr<ItemProvider>> providers = itemProvidersOf(drops.received());
    if (providers.empty() && drops.promisesFiles(data))
        return {drops.promiseProvider()};
    return providers;
}

}  // namespace stowpocket
