// SPDX-License-Identifier: MIT
#include "platform/qt/QtDropData.h"

#include "intake/UriList.h"
#include "platform/qt/DroppedContents.h"

#include <QSysInfo>

#include <algorithm>
#include <filesystem>

namespace stowpocket {
namespace {

const QString uriListFormat = QStringLiteral("text/uri-list");

/// From the bytes as they came: a QUrl would lose file names that are not UTF-8.
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
        completion(std::nullopt);  // the file is there already: it is referenced, never copied
    }

private:
    const FileURL file_;
};

/// A thing without a file, as a promise of one.
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

std::vector<PasteboardItem> QtDraggingPasteboard::items() {
    std::vector<PasteboardItem> items;
    for (const FileURL& file : filesOf(drops_.received()))
        items.push_back({{{std::string(pasteboardType::fileURL), file.string()}}});
    return items;
}

std::vector<std::shared_ptr<FilePromiseReceiver>> QtDraggingPasteboard::filePromiseReceivers() {
    if (!drops_.promisesFiles(data_))
        return {};
    if (const auto& contents = drops_.received().contents)
        return {std::make_shared<ContentsReceiver>(contents)};
    return {drops_.promiseReceiver()};
}

bool offersAnyOf(const QMimeData& data, const std::vector<std::string>& types, const IncomingDrops& drops) {
    const auto isWanted = [&](std::string_view type) { return std::ranges::find(types, type) != types.end(); };
    return (isWanted(pasteboardType::fileURL) && data.hasFormat(uriListFormat)) ||
           (isWanted(pasteboardType::promisedFileURL) && drops.promisesFiles(data));
}

bool offersItems(const QMimeData& data, const IncomingDrops& drops) {
    const auto isOffered = [&](const ContentsKind& kind) { return data.hasFormat(kind.format); };
    return data.hasFormat(uriListFormat) || drops.promisesFiles(data) ||
           std::ranges::any_of(pictureKinds(), isOffered) || std::ranges::any_of(textKinds(), isOffered);
}

std::vector<std::shared_ptr<ItemProvider>> itemProvidersOf(const QMimeData& data, IncomingDrops& drops) {
    std::vector<std::shared_ptr<ItemProvider>> providers;
    for (FileURL& file : filesOf(drops.received()))
        providers.push_back(std::make_shared<FileProvider>(std::move(file)));
    if (!providers.empty())
        return providers;
    if (const auto& contents = drops.received().contents)
        return {contents};
    if (drops.promisesFiles(data))
        return {drops.promiseProvider()};
    return {};
}

}  // namespace stowpocket
