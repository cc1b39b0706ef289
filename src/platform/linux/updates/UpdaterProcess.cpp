// SPDX-License-Identifier: MIT
#include "platform/linux/updates/UpdaterProcess.h"

#include "platform/linux/updates/UpdaterProtocol.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>

#include <sys/prctl.h>

#include <csignal>

namespace stowpocket {
namespace {

/// The body of an answer and the line before it, or the items of a list.
constexpr qsizetype maxOutputSize = 2 * maxAnswerSize;

}  // namespace

UpdaterProcess::UpdaterProcess(const std::string& program, const QStringList& arguments, Done done, Output output)
    : process_(new QProcess),
      context_(std::make_unique<QObject>()),
      done_(std::move(done)),
      output_(std::move(output)) {
    process_->setStandardErrorFile(QProcess::nullDevice());
    process_->setStandardInputFile(QProcess::nullDevice());
    // What puts a new file in place runs to its end, come what may.
    if (arguments.value(0) != QLatin1String(updaterCommand::install))
        process_->setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    // Queued: the process may fail inside start(), and `done` may destroy this.
    QObject::connect(process_, &QProcess::readyReadStandardOutput, context_.get(), [this] { read(); });
    QObject::connect(
        process_, &QProcess::errorOccurred, context_.get(),
        [this](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart)
                finish(UpdateFailure::other);
        },
        Qt::QueuedConnection);
    QObject::connect(
        process_, &QProcess::finished, context_.get(),
        [this](int code, QProcess::ExitStatus status) {
            read();
            finish(status == QProcess::NormalExit ? failureOfExitCode(code) : UpdateFailure::other);
        },
        Qt::QueuedConnection);
    process_->start(QFile::decodeName(program.c_str()), arguments, QIODevice::ReadOnly);
}

UpdaterProcess::~UpdaterProcess() {
    // This may be the end of one of its own slots.
    QObject* const context = context_.release();
    process_->disconnect(context);
    QCoreApplication::removePostedEvents(context);
    context->deleteLater();
    QObject::connect(process_, &QProcess::finished, process_, &QObject::deleteLater);
    if (process_->state() == QProcess::NotRunning)
        process_->deleteLater();
    else
        process_->kill();
}

void UpdaterProcess::read() {
    const QByteArray piece = process_->readAllStandardOutput();
    if (output_) {
        if (!piece.isEmpty())
            output_(piece);
        return;
    }
    printed_ += piece;
    if (printed_.size() > maxOutputSize)
        process_->kill();
}

void UpdaterProcess::finish(std::optional<UpdateFailure> failure) {
    const Done done = std::move(done_);
    done({failure, failure ? QByteArray() : printed_});
}

}  // namespace stowpocket
