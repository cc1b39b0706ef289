// SPDX-License-Identifier: MIT
#include "platform/qt/QtDropData.h"

#include <QFile>
#include <QFileInfo>
#include <QMimeData>
#include <QSysInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <map>

namespace stowpocket {
namespace {

/// Hands out bytes as the window system does; QMimeData itself would make QUrls of a list that it is given.
class RawData : public QMimeData {
public:
    explicit RawData(std::map<QString, QByteArray> contents) : contents_(std::move(contents)) {}
    [[nodiscard]] bool hasFormat(const QString& format) const override { return contents_.contains(format); }

    mutable int reads = 0;

protected:
    [[nodiscard]] QVariant retrieveData(const QString& format, QMetaType) const override {
        ++reads;
        const auto found = contents_.find(format);
        return found == contents_.end() ? QVariant() : found->second;
    }

private:
    const std::map<QString, QByteArray> contents_;
};

class Promise : public DropPromises {
public:
    [[nodiscard]] bool isOfferedBy(const QMimeData&) const override { return true; }
    [[nodiscard]] std::shared_ptr<FilePromiseReceiver> receiver() override { return nullptr; }
    [[nodiscard]] std::shared_ptr<ItemProvider> itemProvider() override { return nullptr; }
};

const QString uriList = QStringLiteral("text/uri-list");
const QString plainText = QStringLiteral("text/plain");

std::string textOf(ItemProvider& provider) {
    std::string text = "none";
    provider.loadItem(uniformType::fileURL, [&](const std::optional<Bytes>& bytes) {
        if (bytes)
            text.assign(bytes->begin(), bytes->end());
    });
    return text;
}

/// What the drop offers as files, both ways of asking, which must agree.
std::vector<std::string> filesOf(const QByteArray& list) {
    const RawData data({{uriList, list}});
    std::vector<std::string> files;
    for (const auto& provider : itemProvidersOf(data)) {
        EXPECT_TRUE(provider->hasItemConformingTo(uniformType::fileURL));
        files.push_back(textOf(*provider));
    }
    std::vector<std::string> pasted;
    for (const PasteboardItem& item : QtDraggingPasteboard(data).items())
        pasted.push_back(item.strings.find(pasteboardType::fileURL)->second);
    EXPECT_EQ(files, pasted);
    return files;
}

TEST(DropData, keepsOrderAndTheBytesOfEveryName) {
    const QByteArray host = QSysInfo::machineHostName().toUtf8();
    EXPECT_EQ(filesOf("file:///b\r\nhttps://example.org/a\r\nfile:///a%20%C3%BC\r\nfile:///bad%FF\r\nfile:///"
                      "new%0Aline\r\nfile://" +
                      host + "/c"),
              (std::vector<std::string>{"file:///b", "file:///a%20%C3%BC", "file:///bad%FF", "file:///new%0Aline",
                                        "file:///c"}));
}

TEST(DropData, offersFilesByNameAlone) {
    const RawData files({{uriList, "file:///a"}});
    const RawData text({{plainText, "text"}});
    const std::vector<std::string> wanted{std::string(pasteboardType::fileURL)};
    EXPECT_TRUE(offersAnyOf(files, wanted));
    EXPECT_FALSE(offersAnyOf(files, {"public.plain-text"}));
    EXPECT_FALSE(offersAnyOf(text, wanted));
    EXPECT_TRUE(offersItems(files) && offersItems(text));
    const RawData picture({{QStringLiteral("image/png"), "\x89PNG"}});
    EXPECT_TRUE(offersItems(picture));
    EXPECT_FALSE(offersItems(RawData({{QStringLiteral("image/x-something"), "x"}})));
    EXPECT_EQ(files.reads + text.reads + picture.reads, 0);
    EXPECT_TRUE(itemProvidersOf(RawData({{plainText, ""}})).empty());
}

TEST(DropData, writesContentsThatAreNoFileToATemporaryOne) {
    const RawData data({{uriList, "https://example.org/picture"},
                        {plainText, "https://example.org/picture"},
                        {QStringLiteral("image/png"), "\x89PNG"}});
    Promise promise;
    const auto providers = itemProvidersOf(data, &promise);
    ASSERT_EQ(providers.size(), 1U);
    ItemProvider& provider = *providers.front();
    EXPECT_FALSE(provider.hasItemConformingTo(uniformType::fileURL));
    EXPECT_EQ(provider.registeredTypeIdentifiers(), std::vector<std::string>{"public.png"});

    std::optional<FileURL> written;
    provider.loadFileRepresentation("public.png", [&](const std::optional<FileURL>& file) {
        written = file;
        QFile contents(QString::fromStdString(file->path()));
        ASSERT_TRUE(contents.open(QIODevice::ReadOnly));
        EXPECT_EQ(contents.readAll(), QByteArray("\x89PNG"));
    });
    ASSERT_TRUE(written);
    EXPECT_EQ(written->pathExtension(), "png");
    EXPECT_FALSE(QFile::exists(QString::fromStdString(written->path())));

    const QTemporaryDir spool;
    const auto receivers = QtDraggingPasteboard(data, &promise).filePromiseReceivers();
    ASSERT_TRUE(receivers.size() == 1 && receivers.front());
    std::optional<FileURL> kept;
    receivers.front()->receivePromisedFiles(*FileURL::fromPath(spool.path().toStdString()),
                                            [&](const std::optional<FileURL>& file) { kept = file; });
    ASSERT_TRUE(kept);
    EXPECT_EQ(QFileInfo(QString::fromStdString(kept->path())).size(), 4);

    bool failed = false;
    provider.loadFileRepresentation("public.tiff", [&](const auto& file) { failed = !file; });
    EXPECT_TRUE(failed);
}

}  // namespace
}  // namespace stowpocket
