// SPDX-License-Identifier: MIT
#include "fakes/FakeDispatch.h"
#include "intake/ExchangeFormats.h"
#include "linux/drags/FakeDrops.h"
#include "platform/linux/drags/DropReading.h"
#include "platform/linux/files/DurableFile.h"
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

/// A source that has written its data into pipes, by format; where there is none it stops in the middle.
struct PipeSource {
    using Contents = std::map<std::string, std::optional<std::string>>;

    PipeSource(std::initializer_list<Contents::value_type> offered) : contents(offered) {}
    [[nodiscard]] DropReading read() {
        std::vector<std::string> formats;
        for (const auto& [format, bytes] : contents)
            formats.push_back(format);
        return readDrop(data, formats);
    }
    [[nodiscard]] int open(const std::string& format) {
        asked += format + ";";
        const std::string bytes = contents.at(format).value_or("file:///half");
        if (contents.at(format)) {
            const int written = ::memfd_create("source", MFD_CLOEXEC);
            EXPECT_EQ(::pwrite(written, bytes.data(), bytes.size(), 0), static_cast<ssize_t>(bytes.size()));
            return written;
        }
        std::array<int, 2> ends{};
        EXPECT_EQ(::pipe(ends.data()), 0);
        silent = FileDescriptor(ends[1]);
        EXPECT_EQ(::write(ends[1], bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
        return ends[0];
    }

    const Contents contents;
    std::string asked;
    FileDescriptor silent;
    struct Data : PipeData {
        using PipeData::PipeData;
        [[nodiscard]] std::string promisedName() override { return "../cat.tar.webp"; }
    };
    Data data{[this](const std::string& format) { return open(format); }, {.silence = 20ms}};
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
    PipeSource files({{"text/uri-list", "file:///a"}, {"image/png", "p"}, {"text/plain", "t"}});
    EXPECT_EQ(files.read().uriList, "file:///a");
    PipeSource web({{"text/uri-list", "http://e"}, {"image/png", ""}, {"image/jpeg", "j"}, {"XdndDirectSave0", ""}});
    const DropReading picture = web.read();
    ASSERT_TRUE(picture.contents);
    EXPECT_EQ(web.asked, "text/uri-list;image/png;image/jpeg;");
    EXPECT_TRUE(nameOf(picture).startsWith(QStringLiteral("cat.tar 2")) &&
                nameOf(picture).endsWith(QStringLiteral(".jpg")))
        << nameOf(picture).toStdString();
    PipeSource page({{"XdndDirectSave0", ""}, {"application/octet-stream", "b"}, {"text/html", "<img>"}});
    const QString name = nameOf(page.read());
    EXPECT_TRUE(name.startsWith(QStringLiteral("cat.tar 2")) && name.endsWith(QStringLiteral(".webp")))
        << name.toStdString();
    EXPECT_FALSE(PipeSource({{"XdndDirectSave0", ""}, {"application/octet-stream", "b"}}).read().contents);
    EXPECT_FALSE(PipeSource({{"XdndDirectSave0", ""}, {"text/plain", "t"}}).read().contents)
        << "the promise is worth more than text";
    PipeSource silent({{"image/png", std::nullopt}, {"image/jpeg", "j"}, {"text/plain", "t"}});
    EXPECT_FALSE(silent.read().contents);
    EXPECT_EQ(silent.asked, "image/png;") << "each more question would cost the same wait";
}

TEST(DropData, namesTextsAndLinksAfterTheirWords) {
    const std::string page = "http://example.org/a";
    EXPECT_TRUE(nameOf(PipeSource({{"text/plain", "../first words\n" + page}}).read())
                    .startsWith(QStringLiteral("first words http example.org a 2")));
    const DropReading link = PipeSource({{"text/plain", page}, {"text/uri-list", page}}).read();
    EXPECT_TRUE(nameOf(link).startsWith(QStringLiteral("http example.org a 2")));
    std::ifstream entry(link.contents->path().toStdString());
    EXPECT_EQ(std::string(std::istreambuf_iterator(entry), {}), desktopEntryOf({page, page}));
}

TEST(DropData, givesContentsToTheIconAsAPromisedFileThoughNoneWasPromised) {
    const TemporaryFolder spool;
    FakeDispatch dispatch;
    FakeDrops drops;
    drops.drop.contents = providerOf(*PipeSource({{"image/png", "\x89PNG"}}).read().contents, dispatch);
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

DragData::List listOf(const std::optional<std::string>& bytes) {
    return PipeSource({{"text/uri-list", bytes}}).data.list("text/uri-list");
}

TEST(PipeDataTest, isReadToTheEndAndNoFurtherThanItsLimits) {
    EXPECT_EQ(listOf("file:///a\r\nfile:///b\r\n").text, "file:///a\r\nfile:///b\r\n");
    const DragData::List late = listOf(std::nullopt);
    EXPECT_EQ(late.text, "") << "what a source said before it fell silent counts for nothing";
    PipeData gone([](const std::string&) { return -1; }, DropPatience());
    EXPECT_EQ(gone.list("text/uri-list").failure, SelectionFailure::refused);
}

}  // namespace
}  // namespace stowpocket
