// SPDX-License-Identifier: MIT
#include "platform/qt/QtDrops.h"

#include "intake/ExchangeFormats.h"
#include "linux/drags/FakeDrops.h"
#include "platform/linux/drags/X11IncomingDrops.h"
#include "platform/qt/QtDispatch.h"

#include <QFileInfo>
#include <QMimeData>
#include <QSysInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <future>
#include <map>

namespace stowpocket {
namespace {

/// A drag of data in these formats, none of which is ever read.
class Formats : public QMimeData {
public:
    explicit Formats(QStringList names) : names_(std::move(names)) {}
    [[nodiscard]] bool hasFormat(const QString& format) const override { return names_.contains(format); }

protected:
    [[nodiscard]] QVariant retrieveData(const QString& format, QMetaType) const override {
        ADD_FAILURE() << format.toStdString();
        return {};
    }

private:
    const QStringList names_;
};

using Contents = std::map<std::string, std::string, std::less<>>;

/// The data of a drag by format.
class FakeData : public DragData {
public:
    explicit FakeData(Contents contents) : contents_(std::move(contents)) {}
    [[nodiscard]] List list(std::string_view format) override { return {failure, bytesOf(format)}; }
    [[nodiscard]] std::optional<SelectionFailure> write(std::string_view format, const QString& path) override {
        const std::string& bytes = bytesOf(format);
        std::ofstream(path.toStdString()) << bytes;
        return bytes.empty() ? std::optional(SelectionFailure::refused) : failure;
    }
    [[nodiscard]] DropReading read() {
        std::vector<std::string> formats;
        for (const auto& [format, bytes] : contents_)
            formats.push_back(format);
        return readDrop(*this, formats);
    }

    std::optional<SelectionFailure> failure;
    std::string asked;

private:
    [[nodiscard]] const std::string& bytesOf(std::string_view format) {
        asked += std::string(format) + ";";
        return contents_.find(format)->second;
    }

    const Contents contents_;
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

TEST(DropData, keepsOrderAndTheBytesOfEveryName) {
    FakeDrops drops;
    drops.drop.uriList = "file:///b\r\nhttps://example.org/a\r\nfile:///a%20%C3%BC\r\nfile:///bad%FF\r\nfile:///"
                         "new%0Aline\r\nfile://" +
                         QSysInfo::machineHostName().toStdString() + "/c";
    const Formats data({uriList});
    std::vector<std::string> files;
    for (const auto& provider : itemProvidersOf(data, drops)) {
        EXPECT_TRUE(provider->hasItemConformingTo(uniformType::fileURL));
        files.push_back(textOf(*provider));
    }
    EXPECT_EQ(files, (std::vector<std::string>{"file:///b", "file:///a%20%C3%BC", "file:///bad%FF",
                                               "file:///new%0Aline", "file:///c"}));
    std::vector<std::string> pasted;
    for (const PasteboardItem& item : QtDraggingPasteboard(data, drops).items())
        pasted.push_back(item.strings.find(pasteboardType::fileURL)->second);
    EXPECT_EQ(files, pasted);
}

TEST(DropData, offersFilesByNameAlone) {
    const FakeDrops drops;
    const std::vector<std::string> wanted{std::string(pasteboardType::fileURL)};
    EXPECT_TRUE(offersAnyOf(Formats({uriList}), wanted, drops));
    EXPECT_FALSE(offersAnyOf(Formats({plainText}), wanted, drops));
    for (const QString& taken : {uriList, plainText, QStringLiteral("image/png")})
        EXPECT_TRUE(offersItems(Formats({taken}), drops));
    EXPECT_FALSE(offersItems(Formats({QStringLiteral("image/x-something")}), drops));
}

QString nameOf(const DropReading& reading) {
    return reading.contents ? QFileInfo(reading.contents->path()).fileName() : QString();
}

TEST(DropData, readsOnlyWhatTheShelfTakesIn) {
    const std::string page = "http://example.org/a";
    FakeData files({{"text/uri-list", "file:///a"}, {"image/png", "p"}, {"text/plain", "t"}});
    EXPECT_EQ(files.read().uriList, "file:///a");
    EXPECT_EQ(files.asked, "text/uri-list;");

    FakeData web({{"text/uri-list", page}, {"image/png", ""}, {"image/jpeg", "j"}, {"XdndDirectSave0", ""}});
    const DropReading picture = web.read();
    ASSERT_TRUE(picture.contents);
    EXPECT_EQ(picture.contents->kind().type, "public.jpeg");
    EXPECT_EQ(web.asked, "text/uri-list;image/png;image/jpeg;");

    FakeData archive({{"XdndDirectSave0", ""}, {"text/plain", "t"}});
    EXPECT_FALSE(archive.read().contents) << "the promise is worth more than text";
    FakeData text({{"text/plain", "../first words\n" + page}});
    EXPECT_TRUE(nameOf(text.read()).startsWith(QStringLiteral("first words http example.org a 2"))) << page;
    FakeData link({{"text/plain", page}, {"text/uri-list", page}});
    const DropReading web2 = link.read();
    EXPECT_TRUE(nameOf(web2).startsWith(QStringLiteral("http example.org a 2")));
    EXPECT_EQ(nameOf(web2).last(8), QStringLiteral(".desktop"));
    std::ifstream entry(web2.contents->path().toStdString());
    EXPECT_EQ(std::string(std::istreambuf_iterator(entry), {}), desktopEntryOf({page, page}));
    for (const auto failure : {SelectionFailure::late, SelectionFailure::tooBig}) {
        text.failure = failure;
        EXPECT_FALSE(text.read().contents);
    }
    FakeData silent({{"image/png", "p"}, {"image/jpeg", "j"}, {"text/plain", "t"}});
    silent.failure = SelectionFailure::late;
    EXPECT_FALSE(silent.read().contents);
    EXPECT_EQ(silent.asked, "image/png;") << "each more question would cost the same wait";
}

TEST(DropData, givesContentsToTheIconAsAPromisedFile) {
    QtDispatch dispatch;
    FakeDrops drops;
    drops.isPromise = true;
    drops.drop.contents = providerOf(*FakeData(Contents{{"image/png", "\x89PNG"}}).read().contents, dispatch);
    const Formats formats({});
    ASSERT_EQ(itemProvidersOf(formats, drops), std::vector{drops.drop.contents});
    const QTemporaryDir spool;
    std::promise<std::optional<FileURL>> kept;
    QtDraggingPasteboard(formats, drops)
        .filePromiseReceivers()
        .at(0)
        ->receivePromisedFiles(*FileURL::fromPath(spool.path().toStdString()),
                               [&](const std::optional<FileURL>& file) { kept.set_value(file); });
    const std::optional<FileURL> file = kept.get_future().get();
    ASSERT_TRUE(file);
    EXPECT_EQ(file->pathExtension(), "png");
    EXPECT_EQ(std::filesystem::file_size(file->path()), 4U);
}

}  // namespace
}  // namespace stowpocket
