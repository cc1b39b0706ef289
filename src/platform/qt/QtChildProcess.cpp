// SPDX-License-Identifier: MIT
#include "platform/qt/QtChildProcess.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>

namespace stowpocket {
namespace {

QStringList decoded(const std::vector<std::string>& arguments) {
    QStringList list;
    for (const std::string& argument : arguments)
        list.push_back(QFile::decodeName(argument.c_str()));
    return list;
}

int remainingOf(const QDeadlineTimer& deadline) {
    return static_cast<int>(deadline.remainingTime());
}

}  // namespace

std::optional<Bytes> QtChildProcess::run(const std::string& executable, const std::vector<std::string>& arguments) {
    const QDeadlineTimer deadline(limits_.time);
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(QFile::decodeName(executable.c_str()), decoded(arguments), QIODevice::ReadOnly);
    QByteArray output;
    bool isWithinLimits = process.waitForStarted(remainingOf(deadline));
    while (isWithinLimits && process.state() != QProcess::NotRunning) {
        // False also when the program ends, which leaves the loop, or when the time is over.
        process.waitForReadyRead(remainingOf(deadline));
        output += process.readAllStandardOutput();
        isWithinLimits = !deadline.hasExpired() && static_cast<std::size_t>(output.size()) <= limits_.outputSize;
    }
    if (!isWithinLimits) {
        process.kill();
        process.waitForFinished(-1);
        return std::nullopt;
    }
    output += process.readAllStandardOutput();
    return Bytes(output.begin(), output.end());
}

}  // namespace stowpocket
