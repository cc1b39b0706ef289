// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/ImageDecoder.h"
#include "linux/pictures/PictureFiles.h"

#include <QImageReader>
#include <QImageWriter>
#include <QLocalServer>
#include <QProcess>

#include <sys/stat.h>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;
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

/// What the probe could do.
QMap<QByteArray, QByteArray> tried(const QString& mode) {
    const PictureFiles files;
    files.write("data", "data");
    QLocalServer server;
    EXPECT_TRUE(server.listen(QString::fromStdString(files.path("socket"))));
    QProcess probe;
    probe.setStandardInputFile(QString::fromStdString(files.path("data")));
    probe.start(QStringLiteral(CONFINEMENT_PROBE), {mode, QString::fromStdString(files.path(""))});
    EXPECT_TRUE(probe.waitForFinished());
    QMap<QByteArray, QByteArray> outcomes;
    for (const QByteArray& line : probe.readAll().trimmed().split('\n'))
        outcomes.insert(line.split(' ').first(), line.split(' ').value(1));
    return outcomes;
}

TEST(ImageDecoder, aPictureThatTakesItOverReachesNothing) {
    const auto unconfined = tried(QStringLiteral("free"));
    const auto confined = tried(QStringLiteral("confined"));
    EXPECT_EQ(unconfined.size(), 13);
    for (auto attempt = unconfined.begin(); attempt != unconfined.end(); ++attempt) {
        const std::string name = attempt.key().toStdString();
        const bool isNeeded = name == "read-input" || name == "thread";
        EXPECT_EQ(attempt.value(), "yes") << name;
        EXPECT_EQ(confined.value(attempt.key()), isNeeded ? "yes" : "no") << name;
    }
}

int warningCount = 0;

TEST(ImageDecoder, decodesNothingAndSaysSoOnceWhereTheKernelDoesNotConfineIt) {
    const PictureFiles files;
    const FileURL picture = files.draw("a.png", {60, 60});
    files.write("decoder", "#!/bin/sh\nexec " CONFINEMENT_PROBE " unfiltered " IMAGE_DECODER " \"$@\"\n");
    ASSERT_EQ(::chmod(files.path("decoder").c_str(), 0700), 0);
    const QtMessageHandler handler =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) { ++warningCount; });
    for (int time = 0; time < 2; ++time)
        EXPECT_EQ(decode(files.path("decoder"), picture).outcome, Outcome::unconfined);
    qInstallMessageHandler(handler);
    EXPECT_EQ(warningCount, 1);
}

}  // namespace
}  // namespace stowpocket
