// SPDX-License-Identifier: MIT
#include "platform/linux/opening/DesktopFileOpener.h"

#include "platform/linux/dbus/BusCalls.h"

#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QProcess>
#include <QUrl>

#include <utility>

#include <unistd.h>

namespace stowpocket {
namespace {

QString urlText(const FileURL& url) {
    return QString::fromStdString(url.string());
}

QStringList urlTexts(std::span<const FileURL> files) {
    QStringList texts;
    for (const FileURL& file : files)
        texts.append(urlText(file));
    return texts;
}

/// The address in a link file to a web page, which applications would show as text. None for any other file, so that
/// a desktop entry never starts a program here.
std::optional<QString> linkedPage(const FileURL& file) {
    constexpr qint64 largestSize = 65'536;
    QFile entry(QFile::decodeName(file.path().c_str()));
    if (file.pathExtension() != "desktop" || !QFileInfo(entry).isFile() || !entry.open(QIODevice::ReadOnly))
        return std::nullopt;
    bool isInGroup = false;
    QMap<QByteArray, QByteArray> values;
    for (const QByteArray& line : entry.read(largestSize).split('\n')) {
        if (line.startsWith('['))
            isInGroup = line.trimmed() == "[Desktop Entry]";
        else if (const qsizetype sign = line.indexOf('='); isInGroup && sign > 0)
            values.insert(line.left(sign).trimmed(), line.mid(sign + 1).trimmed());
    }
    const QUrl page = QUrl::fromEncoded(values.value("URL"));
    const bool isWebPage = page.scheme() == QLatin1String("https") || page.scheme() == QLatin1String("http");
    return values.value("Type") == "Link" && isWebPage ? std::optional(page.toString(QUrl::FullyEncoded))
                                                       : std::nullopt;
}

}  // namespace

DesktopFileOpener::DesktopFileOpener(QDBusConnection bus, Launch launch, std::chrono::milliseconds patience)
    : bus_(std::move(bus)),
      launch_(launch ? std::move(launch)
                     : [this](const QStringList& urls,
                              const Completion& completion) { launchByCommand(urls, completion); }),
      patience_(patience) {}

void DesktopFileOpener::open(std::span<const FileURL> files, Completion completion) {
    QStringList urls;
    for (const FileURL& file : files)
        urls.append(linkedPage(file).value_or(urlText(file)));
    launch_(urls, std::move(completion));
}

/// The process deletes itself, since the command outlives this program if need be, and so does the application in a
/// session of its own.
void DesktopFileOpener::launchByCommand(const QStringList& urls, const Completion& completion) {
    auto* const process = new QProcess;
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    process->setChildProcessModifier([] { ::setsid(); });
    QObject::connect(process, &QProcess::finished, &context_, [completion](int code, QProcess::ExitStatus status) {
        completion(status == QProcess::NormalExit && code == 0);
    });
    QObject::connect(process, &QProcess::errorOccurred, &context_, [completion](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            completion(false);
    });
    QObject::connect(process, &QProcess::stateChanged, process, [process](QProcess::ProcessState state) {
        if (state == QProcess::NotRunning)
            process->deleteLater();
    });
    process->start(QStringLiteral("gio"), QStringList(QStringLiteral("open")) + urls, QIODevice::NotOpen);
}

void DesktopFileOpener::showInFolder(std::span<const FileURL> files) {
    QStringList folders;
    for (const FileURL& file : files) {
        if (const QString folder = urlText(file.parent()); !folders.contains(folder))
            folders.append(folder);
    }
    const QString name = QStringLiteral("org.freedesktop.FileManager1");
    QDBusMessage call = QDBusMessage::createMethodCall(name, QStringLiteral("/org/freedesktop/FileManager1"), name,
                                                       QStringLiteral("ShowItems"));
    call << urlTexts(files) << QString();
    callOnBus(
        bus_, call, context_,
        [this, folders](const QDBusMessage& answer) {
            if (answer.type() == QDBusMessage::ErrorMessage)
                launch_(folders, [](bool) {});
        },
        patience_);
}

void DesktopFileOpener::preview(const FileURL& file) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.gnome.NautilusPreviewer"), QStringLiteral("/org/gnome/NautilusPreviewer"),
        QStringLiteral("org.gnome.NautilusPreviewer2"), QStringLiteral("ShowFile"));
    constexpr bool closesIfShown = true;
    call << urlText(file) << QString() << closesIfShown;
    bus_.send(call);
}

}  // namespace stowpocket
