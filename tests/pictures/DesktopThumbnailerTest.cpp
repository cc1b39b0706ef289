// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/DesktopThumbnailer.h"
#include "fakes/FakeDispatch.h"
#include "pictures/PictureFiles.h"
#include "platform/linux/pictures/LinuxThumbnails.h"
#include "platform/qt/QtDispatch.h"
#include "platform/qt/QtImageContent.h"
#include "session/PrivateBus.h"

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

QString thumbnailerName() {
    return QStringLiteral("org.freedesktop.thumbnails.Thumbnailer1");
}
QString thumbnailerPath() {
    return QStringLiteral("/org/freedesktop/thumbnails/Thumbnailer1");
}

}  // namespace

/// What a desktop offers, answering as the test wants.
class FakeThumbnailer : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.thumbnails.Thumbnailer1")

public:
    explicit FakeThumbnailer(const QDBusConnection& bus) : bus_(bus) {
        EXPECT_TRUE(bus_.registerObject(thumbnailerPath(), this, QDBusConnection::ExportAllSlots));
        EXPECT_TRUE(bus_.registerService(thumbnailerName()));
    }
    void send(const char* signal, const QVariantList& arguments) {
        QDBusMessage message =
            QDBusMessage::createSignal(thumbnailerPath(), thumbnailerName(), QString::fromUtf8(signal));
        message.setArguments(arguments);
        EXPECT_TRUE(bus_.send(message));
    }
    QStringList asked;
    std::function<void(uint handle, const QStringList& uris)> onQueue;

public Q_SLOTS:
    uint Queue(const QStringList& uris, const QStringList& types, const QString& size, const QString& scheduler,
               uint) {
        asked << uris.join(u' ') + u' ' + types.join(u' ') + u' ' + size + u' ' + scheduler;
        const uint handle = 41;
        if (onQueue)
            onQueue(handle, uris);
        return handle;
    }

private:
    QDBusConnection bus_;
};

namespace {

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

TEST_F(DesktopThumbnailerTest, saysAtOnceThatThereIsNone) {
    expectAnswer(false);
    EXPECT_EQ(dispatch_.scheduledCount(), 0u);
    EXPECT_FALSE(DesktopThumbnailer::sessionBus().isConnected()) << "no bus is started where none runs";
}

TEST_F(DesktopThumbnailerTest, hearsHowARequestEnds) {
    FakeThumbnailer desktop(bus_.connection(QStringLiteral("desktop")));
    desktop.onQueue = [&desktop](uint handle, const QStringList& uris) { desktop.send("Ready", {handle, uris}); };
    expectAnswer(true);
    EXPECT_EQ(desktop.asked, QStringList{QStringLiteral("file:///tmp/a.pdf application/pdf normal foreground")});

    const auto afterTheAnswer = [&desktop](const char* signal, const QVariantList& arguments) {
        desktop.onQueue = [&desktop, signal, arguments](uint, const QStringList&) {
            QTimer::singleShot(0, &desktop, [&desktop, signal, arguments] { desktop.send(signal, arguments); });
        };
    };
    const QStringList uris{QStringLiteral("file:///tmp/b.pdf"), QStringLiteral("file:///tmp/a.pdf")};
    afterTheAnswer("Ready", {41u, uris});
    expectAnswer(true);
    afterTheAnswer("Error", {41u, uris, 2, QStringLiteral("no")});
    expectAnswer(false);
    afterTheAnswer("Finished", {41u});
    expectAnswer(false);
}

TEST_F(DesktopThumbnailerTest, mindsOnlyItsOwnRequest) {
    FakeThumbnailer desktop(bus_.connection(QStringLiteral("desktop")));
    desktop.onQueue = [&desktop](uint handle, const QStringList& uris) {
        desktop.send("Ready", {handle, QStringList{QStringLiteral("file:///tmp/other.pdf")}});
        desktop.send("Error", {handle, uris, 2, QStringLiteral("no")});
    };
    expectAnswer(false);
    desktop.onQueue = [&desktop](uint handle, const QStringList& uris) {
        QTimer::singleShot(0, &desktop, [&desktop, handle, uris] {
            desktop.send("Finished", {handle + 1});
            desktop.send("Error", {handle + 1, uris, 2, QStringLiteral("no")});
            desktop.send("Ready", {handle, uris});
        });
    };
    expectAnswer(true);
}

TEST_F(DesktopThumbnailerTest, waitsNoLongerThanItsLimit) {
    FakeThumbnailer desktop(bus_.connection(QStringLiteral("desktop")));
    ask();
    EXPECT_TRUE(comesTrue([&desktop] { return !desktop.asked.isEmpty(); }));
    dispatch_.advance(4999ms);
    EXPECT_TRUE(answers_.empty());
    dispatch_.advance(1ms);
    EXPECT_EQ(answers_, std::vector<bool>{false});

    desktop.onQueue = [&desktop](uint handle, const QStringList& uris) { desktop.send("Ready", {handle, uris}); };
    ask();
    EXPECT_TRUE(comesTrue([this] { return answers_.size() >= 2; }));
    EXPECT_EQ(answers_, (std::vector<bool>{false, true})) << "what comes too late answers nobody twice";
}

TEST_F(DesktopThumbnailerTest, providesWhatIsNotDecodedHere) {
    FakeThumbnailer desktop(bus_.connection(QStringLiteral("desktop")));
    const PictureFiles files;
    const FileURL film = files.write("film.mp4", "frames");
    desktop.onQueue = [&desktop, &film](uint handle, const QStringList& uris) {
        PictureFiles::cache(film.string(), std::to_string(PictureFiles::modifiedSeconds(film)));
        desktop.send("Ready", {handle, uris});
    };
    QtDispatch dispatch;
    LinuxThumbnails thumbnails(dispatch, IMAGE_DECODER, 30s, client());
    std::vector<std::optional<Image>> answers;
    const auto generate = [&thumbnails, &answers](const FileURL& url) {
        thumbnails.generate({url, {48, 48}, 1}, [&answers](const auto& image) { answers.push_back(image); });
        EXPECT_TRUE(comesTrue([&answers, count = answers.size()] { return answers.size() > count; }));
    };
    generate(film);
    generate(files.write("notes.txt", "text"));
    generate(files.write("cut.png", "\x89PNG\r\n\x1A\n"));
    ASSERT_TRUE(answers.at(0));
    EXPECT_EQ(qtImage(*answers[0]).size(), QSize(48, 24));
    EXPECT_FALSE(answers.at(1));
    EXPECT_FALSE(answers.at(2));
    EXPECT_EQ(desktop.asked.size(), 1) << desktop.asked.join(u'\n').toStdString();
}

}  // namespace
}  // namespace stowpocket

#include "DesktopThumbnailerTest.moc"
