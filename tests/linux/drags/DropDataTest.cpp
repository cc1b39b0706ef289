// SPDX-License-Identifier: MIT
#include "fakes/FakeDispatch.h"
#include "intake/ExchangeFormats.h"
#include "linux/drags/FakeDrops.h"
#include "platform/linux/drags/DropReading.h"
#include "support/TemporaryFolder.h"

#include <QFileInfo>
#include <QSysInfo>

#include <gtest/gtest.h>

#include <sys/mman.h>
#include <unistd.h>

#include <map>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

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
    FakeData(std::initializer_list<Contents::value_type> contents, std::optional<SelectionFailure> failure = {})
        : contents_(contents), failure_(failure) {}
    [[nodiscard]] List list(std::string_view format) override { return {failure_, bytesOf(format)}; }
    [[nodiscard]] std::optional<SelectionFailure> write(std::string_view format, const QString& path) override {
        const std::string& bytes = bytesOf(format);
        std::ofstream(path.toStdString()) << bytes;
        return bytes.empty() ? std::optional(SelectionFailure::refused) : failure_;
    }
    [[nodiscard]] DropReading read() {
        std::vector<std::string> formats;
        for (const auto& [format, bytes] : contents_)
            formats.push_back(format);
        return readDrop(*this, formats);
    }

    std::string asked;

private:
    [[nodiscard]] const std::string& bytesOf(std::string_view format) {
        asked += std::string(format) + ";";
        return contents_.find(format)->second;
    }

    const Contents contents_;
    const std::optional<SelectionFailure> failure_;
};

const QString uriList = QStringLiteral("text/uri-list");

TEST(DropData, keepsOrderAndTheBytesOfEveryName) {
    FakeDrops drops;
    drops.drop.uriList = "file:///b\r\nhttps://example.org/a\r\nfile:///a%20%C3%BC\r\nfile:///bad%FF\r\nfile:///"
                         "new%0Aline\r\nfile://" +
                         QSysInfo::machineHostName().toStdString() + "/c";
    const Formats data({uriList});
    const std::vector<std::string> wanted{"file:///b", "file:///a%20%C3%BC", "file:///bad%FF", "file:///new%0Aline",
                                          "file:///c"};
    std::vector<std::string> provided;
    for (const auto& provider : itemProvidersOf(data, drops)) {
        EXPECT_TRUE(provider->hasItemConformingTo(uniformType::fileURL));
        provider->loadItem(uniformType::fileURL,
                           [&](const auto& url) { provided.emplace_back(url->begin(), url->end()); });
    }
    EXPECT_EQ(provided, wanted);
    std::vector<std::string> pasted;
    for (const PasteboardItem& item : QtDraggingPasteboard(data, drops).items())
        pasted.push_back(item.strings.find(pasteboardType::fileURL)->second);
    EXPECT_EQ(pasted, wanted);
}

TEST(DropData, isOfferedByTheNamesOfItsFormatsAlone) {
    const FakeDrops drops;
    for (const auto& [format, isFile, isItem] : {std::tuple("text/uri-list", true, true),
                                                 {"text/plain", false, true},
                                                 {"image/png", false, true},
                                                 {"image/x-something", false, false}}) {
        const Formats data({QLatin1String(format)});
        EXPECT_EQ(offersAnyOf(data, {std::string(pasteboardType::fileURL)}, drops), isFile) << format;
        EXPECT_EQ(offersItems(data, drops), isItem) << format;
    }
}

QString nameOf(const DropReading& reading) {
    return reading.contents ? QFileInfo(reading.contents->path()).fileName() : QString();
}

TEST(DropData, readsOnlyWhatTheShelfTakesIn) {
    FakeData files({{"text/uri-list", "file:///a"}, {"image/png", "p"}, {"text/plain", "t"}});
    EXPECT_EQ(files.read().uriList, "file:///a");
    EXPECT_EQ(files.asked, "text/uri-list;");
    FakeData web({{"text/uri-list", "http://e"}, {"image/png", ""}, {"image/jpeg", "j"}, {"XdndDirectSave0", ""}});
    const DropReading picture = web.read();
    ASSERT_TRUE(picture.contents);
    EXPECT_EQ(picture.contents->kind().type, "public.jpeg");
    EXPECT_EQ(web.asked, "text/uri-list;image/png;image/jpeg;");
    EXPECT_FALSE(FakeData({{"XdndDirectSave0", ""}, {"text/plain", "t"}}).read().contents)
        << "the promise is worth more than text";
    FakeData silent({{"image/png", "p"}, {"image/jpeg", "j"}, {"text/plain", "t"}}, SelectionFailure::late);
    EXPECT_FALSE(silent.read().contents);
    EXPECT_EQ(silent.asked, "image/png;") << "each more question would cost the same wait";
    EXPECT_FALSE(FakeData({{"text/plain", "t"}}, SelectionFailure::tooBig).read().contents);
}

TEST(DropData, namesTextsAndLinksAfterTheirWords) {
    const std::string page = "http://example.org/a";
    EXPECT_TRUE(nameOf(FakeData({{"text/plain", "../first words\n" + page}}).read())
                    .startsWith(QStringLiteral("first words http example.org a 2")));
    const DropReading link = FakeData({{"text/plain", page}, {"text/uri-list", page}}).read();
    EXPECT_TRUE(nameOf(link).startsWith(QStringLiteral("http example.org a 2")));
    EXPECT_TRUE(nameOf(link).endsWith(QStringLiteral(".desktop")));
    std::ifstream entry(link.contents->path().toStdString());
    EXPECT_EQ(std::string(std::istreambuf_iterator(entry), {}), desktopEntryOf({page, page}));
}

TEST(DropData, givesContentsToTheIconAsAPromisedFile) {
    const TemporaryFolder spool;
    FakeDispatch dispatch;
    FakeDrops drops;
    drops.isPromise = true;
    drops.drop.contents = providerOf(*FakeData({{"image/png", "\x89PNG"}}).read().contents, dispatch);
    const Formats formats({});
    ASSERT_EQ(itemProvidersOf(formats, drops), std::vector{drops.drop.contents});
    std::optional<FileURL> kept;
    QtDraggingPasteboard(formats, drops)
        .filePromiseReceivers()
        .at(0)
        ->receivePromisedFiles(*FileURL::fromPath(spool.path()), [&](const auto& file) { kept = file; });
    dispatch.runAll();
    ASSERT_TRUE(kept);
    EXPECT_EQ(kept->pathExtension(), "png");
    EXPECT_EQ(spool.read(kept->lastPathComponent()), "\x89PNG");
}

/// What a source wrote before it closed its end.
PipeData piped(const std::string& text) {
    const int written = ::memfd_create("source", MFD_CLOEXEC);
    EXPECT_EQ(::pwrite(written, text.data(), text.size(), 0), static_cast<ssize_t>(text.size()));
    return PipeData([written](const std::string&) { return written; }, DropPatience());
}

TEST(PipeDataTest, isReadToTheEndAndNoFurtherThanItsLimits) {
    const TemporaryFolder folder;
    const QString path = QString::fromStdString(folder.path("contents"));
    EXPECT_EQ(piped("file:///a\r\nfile:///b\r\n").list("text/uri-list").text, "file:///a\r\nfile:///b\r\n");
    EXPECT_FALSE(piped(std::string(longestList, 'x')).list("text/uri-list").failure);
    EXPECT_EQ(piped(std::string(longestList + 1, 'x')).list("text/uri-list").failure, SelectionFailure::tooBig);
    EXPECT_FALSE(piped("picture").write("image/png", path));
    EXPECT_EQ(folder.read("contents"), "picture");
    EXPECT_FALSE(piped({}).list("text/uri-list").failure);
    EXPECT_EQ(piped({}).write("image/png", path + u'2'), SelectionFailure::refused) << "no contents";
    PipeData gone([](const std::string&) { return -1; }, DropPatience());
    EXPECT_EQ(gone.list("text/uri-list").failure, SelectionFailure::refused);
}

TEST(PipeDataTest, isLateWhereTheSourceFallsSilentAndWhatThatSaidCountsForNothing) {
    std::array<int, 2> ends{};
    ASSERT_EQ(::pipe(ends.data()), 0);
    ASSERT_EQ(::write(ends[1], "file:///half", 12), 12);
    PipeData data([&](const std::string&) { return ends[0]; }, {.silence = 20ms, .list = 10s});
    const DragData::List list = data.list("text/uri-list");
    EXPECT_EQ(list.failure, SelectionFailure::late);
    EXPECT_EQ(list.text, "");
    ::close(ends[1]);
}

}  // namespace
}  // namespace stowpocket
