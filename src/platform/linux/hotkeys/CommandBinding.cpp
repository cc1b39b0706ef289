// SPDX-License-Identifier: MIT
#include "platform/linux/hotkeys/CommandBinding.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>

#include <chrono>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

constexpr auto longestRun = 5s;
constexpr qsizetype longestOutput = qsizetype{256} * 1024;

class SettingsPrograms : public ChildProcess {
public:
    [[nodiscard]] std::optional<Bytes> run(const std::string& executable,
                                           const std::vector<std::string>& arguments) override {
        QStringList list;
        for (const std::string& argument : arguments)
            list.append(QString::fromStdString(argument));
        QProcess process;
        process.setStandardInputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        process.start(QString::fromStdString(executable), list, QIODevice::ReadOnly);
        const QDeadlineTimer deadline(longestRun);
        QByteArray output;
        while (output.size() <= longestOutput && process.waitForReadyRead(static_cast<int>(deadline.remainingTime())))
            output += process.readAllStandardOutput();
        const bool hasEnded =
            process.state() == QProcess::NotRunning ||
            (output.size() <= longestOutput && process.waitForFinished(static_cast<int>(deadline.remainingTime())));
        if (!hasEnded) {
            process.kill();
            process.waitForFinished();
            return std::nullopt;
        }
        if (process.error() == QProcess::FailedToStart)
            return std::nullopt;
        output += process.readAllStandardOutput();
        return Bytes(output.begin(), output.end());
    }
};

/// Whether a shell takes the character as it is.
bool isPlain(QChar character) {
    return character.isLetterOrNumber() || QStringLiteral("/._-+").contains(character);
}

}  // namespace

std::shared_ptr<ChildProcess> makeSettingsPrograms() {
    return std::make_shared<SettingsPrograms>();
}

/// sway leaves the name to those who start it.
std::string sessionNames() {
    return qgetenv("XDG_CURRENT_DESKTOP").toStdString() + (qEnvironmentVariableIsEmpty("SWAYSOCK") ? "" : ":sway");
}

std::string shellCommand(const std::string& executable) {
    const QString path = QString::fromStdString(executable);
    const QString name = QFileInfo(path).fileName();
    if (QFileInfo(QStandardPaths::findExecutable(name)).canonicalFilePath() == path)
        return name.toStdString();
    if (std::all_of(path.begin(), path.end(), isPlain))
        return executable;
    return '\'' + QString(path).replace(u'\'', QStringLiteral("'\\''")).toStdString() + '\'';
}

}  // namespace stowpocket
