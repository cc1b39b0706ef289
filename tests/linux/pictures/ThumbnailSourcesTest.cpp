// SPDX-License-Identifier: MIT
#include "fakes/FakeDispatch.h"
#include "linux/pictures/PictureFiles.h"
#include "platform/linux/pictures/DesktopThumbnailer.h"
#include "platform/linux/pictures/ImageDecoder.h"
#include "platform/linux/pictures/LinuxThumbnails.h"
#include "platform/qt/QtDispatch.h"
#include "platform/qt/QtImages.h"
#include "support/PrivateBus.h"

#include <QDBusVirtualObject>
#include <QImageWriter>
#include <QLocalServer>
#include <QProcess>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

const QString thumbnailerName = QStringLiteral("org.freedesktop.thumbnails.Thumbnailer1");
const QString thumbnailerPath = QStringLiteral("/org/freedesktop/thumbnails/Thumbnailer1");

/// What a desktop offers, answering as the test wants.
class FakeThumbnailer : public QDBusVirtualObject {
public:
    explicit FakeThumbnailer(const QDBusConnection& bus) : bus_(bus) {
        EXPECT_TRUE(bus_.registerVirtualObject(thumbnailerPath, this) && bus_.registerService(thumbnailerName));
    }
    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override {
        const QVariantList arguments = message.arguments();
        asked << arguments.at(0).toStringList().join(u' ') + u' ' + arguments.at(1).toStringList().join(u' ') + u' ' +
                     arguments.at(2).toString() + u' ' + arguments.at(3).toString();
        onQueue();
        for (const auto& [name, signalArguments] : says) {
            QDBusMessage sent = QDBusMessage::createSignal(thumbnailerPath, thumbnailerName, QString::fromUtf8(name));
            sent.setArguments(signalArguments);
            EXPECT_TRUE(bus_.send(name == answer ? message.createReply(41u) : sent));
        }
        return true;
    }

    static constexpr auto answer = "the answer to the call";
    using Words = std::vector<std::pair<const char*, QVariantList>>;
    /// What it says of each request: signals, and its answer among them.
    Words says{{answer, {}}};
    std::function<void()> onQueue = [] {};
    QStringList asked;

private:
    QDBusConnection bus_;
};

class DesktopThumbnailerTest : public testing::Test {
protected:
    DesktopThumbnailer::Connect client() {
        return [this] { return bus_.connection(QStringLiteral("client")); };
    }
    void ask() {
        thumbnailer_.make({"file:///tmp/a.pdf", "application/pdf", "normal"},
                          [this](bool isMade) { answers_.push_back(isMade); });
    }
    void expectAnswer(bool isMade) {
        ask();
        EXPECT_TRUE(comesTrue([this] { return !answers_.empty(); }));
        EXPECT_EQ(std::exchange(answers_, {}), std::vector<bool>{isMade});
    }

    PrivateBus bus_;
    FakeDispatch dispatch_;
    std::vector<bool> answers_;
    DesktopThumbnailer thumbnailer_{dispatch_, client()};
};

TEST_F(DesktopThumbnailerTest, hearsHowItsOwnRequestEnds) {
    FakeThumbnailer desktop(bus_.connection(QStringLiteral("desktop")));
    const QStringList other{QStringLiteral("file:///tmp/other.pdf")};
    const QStringList own = other + QStringList{QStringLiteral("file:///tmp/a.pdf")};
    const QString reason = QStringLiteral("no");
    const std::pair answer(FakeThumbnailer::answer, QVariantList());
    const std::pair ready("Ready", QVariantList{41u, own});
    const std::pair error("Error", QVariantList{41u, own, 2, reason});
    for (const auto& [words, isMade] : std::vector<std::pair<FakeThumbnailer::Words, bool>>{
             {{ready, answer}, true},
             {{answer, error}, false},
             {{answer, {"Finished", {41u}}}, false},
             {{{"Ready", {41u, other}}, error, answer}, false},
             {{answer, {"Finished", {42u}}, {"Error", {42u, own, 2, reason}}, ready}, true}}) {
        desktop.says = words;
        expectAnswer(isMade);
    }
    EXPECT_EQ(desktop.asked.front(), QStringLiteral("file:///tmp/a.pdf application/pdf normal foreground"));
}

TEST_F(DesktopThumbnailerTest, waitsNoLongerThanItsLimit) {
    FakeThumbnailer desktop(bus_.connection(QStringLiteral("desktop")));
    ask();
    EXPECT_TRUE(comesTrue([&desktop] { return !desktop.asked.isEmpty(); }));
    dispatch_.advance(4999ms);
    EXPECT_TRUE(answers_.empty());
    dispatch_.advance(1ms);
    EXPECT_EQ(answers_, std::vector<bool>{false});

    desktop.says.insert(desktop.says.begin(), {"Ready", {41u, QStringList{QStringLiteral("file:///tmp/a.pdf")}}});
    ask();
    EXPECT_TRUE(comesTrue([this] { return answers_.size() >= 2; }));
    EXPECT_EQ(answers_, (std::vector<bool>{false, true})) << "what comes too late answers nobody twice";
}

TEST_F(DesktopThumbnailerTest, providesWhatIsNotDecodedHere) {
    FakeThumbnailer desktop(bus_.connection(QStringLiteral("desktop")));
    const PictureFiles files;
    const FileURL film = files.write("film.mp4", "frames");
    desktop.onQueue = [&film] {
        PictureFiles::cache(film.string(), std::to_string(PictureFiles::modifiedSeconds(film)));
    };
    desktop.says.insert(desktop.says.begin(), {"Ready", {41u, QStringList{QString::fromStdString(film.string())}}});
    QtDispatch dispatch;
    LinuxThumbnails thumbnails(dispatch, IMAGE_DECODER, 30s, client());
    std::vector<std::optional<Image>> answers;
    for (const FileURL& url : {film, files.write("notes.txt", "text"), files.write("cut.png", "\x89PNG\r\n\x1A\n")}) {
        thumbnails.generate({url, {48, 48}, 1}, [&answers](const auto& image) { answers.push_back(image); });
        EXPECT_TRUE(comesTrue([&answers, count = answers.size()] { return answers.size() > count; }));
    }
    EXPECT_EQ(qtImage(answers.at(0).value()).size(), QSize(48, 24));
    EXPECT_FALSE(answers[1] || answers[2]);
    EXPECT_EQ(desktop.asked.size(), 1) << desktop.asked.join(u'\n').toStdString();
}

using Outcome = DecoderReply::Outcome;

DecoderReply decode(const std::string& executable, const FileURL& url) {
    const std::optional<RegularFile> file = RegularFile::open(url.path());
    return file ? ImageDecoder(executable, 30s).decode(*file, 48) : DecoderReply{};
}

TEST(ImageDecoder, decodesEveryFormatThatIsInstalled) {
    const PictureFiles files;
    files.write("a.gif", QByteArray::fromHex("47494638396101000100800000ff0000ffffff2c000000000100010000020244"
                                             "01003b"));
    EXPECT_EQ(decode(IMAGE_DECODER, files.url("a.gif")).image.pixelColor(0, 0), QColor(Qt::red));
    for (const char* const format : {"png", "jpg", "bmp", "ico", "cur", "pbm", "pgm", "ppm", "webp", "tiff"}) {
        if (!QImageWriter::supportedImageFormats().contains(format))
            continue;  // a plugin that not every machine has
        const FileURL url = files.draw(std::string("a.") + format, {200, 100});
        EXPECT_EQ(decode(IMAGE_DECODER, url).image.size(), QSize(48, 24)) << format;
    }
    // Large enough for threads of the toolkit.
    EXPECT_EQ(decode(IMAGE_DECODER, files.draw("large.png", {2000, 2000})).image.size(), QSize(48, 48));
}

TEST(ImageDecoder, aPictureThatTakesItOverReachesNothing) {
    const PictureFiles files;
    QLocalServer server;
    EXPECT_TRUE(server.listen(QString::fromStdString(files.path("socket"))));
    for (const std::string mode : {"free", "confined"}) {
        files.write("data", "data");
        QProcess probe;
        probe.setStandardInputFile(QString::fromStdString(files.path("data")));
        probe.start(QStringLiteral(CONFINEMENT_PROBE),
                    {QString::fromStdString(mode), QString::fromStdString(files.path())});
        EXPECT_TRUE(probe.waitForFinished());
        const QByteArray done = probe.readAll();
        EXPECT_EQ(done.count("\n"), 13) << done.toStdString();
        EXPECT_TRUE(done.startsWith("read-input yes\nthread yes\n")) << "which the libraries need";
        EXPECT_EQ(done.count(" yes"), mode == "free" ? 13 : 2) << done.toStdString();
    }
}

int warningCount = 0;

TEST(ImageDecoder, decodesNothingAndSaysSoOnceWhereTheKernelDoesNotConfineIt) {
    const PictureFiles files;
    const FileURL picture = files.draw("a.png", {60, 60});
    const std::string decoder = files.script("exec " CONFINEMENT_PROBE " unfiltered " IMAGE_DECODER " \"$@\"");
    const QtMessageHandler handler =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) { ++warningCount; });
    for (int time = 0; time < 2; ++time)
        EXPECT_EQ(decode(decoder, picture).outcome, Outcome::unconfined);
    qInstallMessageHandler(handler);
    EXPECT_EQ(warningCount, 1);
}

}  // namespace
}  // namespace stowpocket
