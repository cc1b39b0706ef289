// SPDX-License-Identifier: MIT
#include "platform/linux/updates/UpdateHelper.h"

#include "platform/linux/updates/UpdateHelperProtocol.h"
#include "updates/Appcast.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>
#include <QUrl>

#include <sys/prctl.h>

#include <csignal>

namespace stowpocket {
namespace {

/// The maximum output: the body of an answer and the line before it, or the items of a list.
constexpr qsizetype maxOutputSize = 2 * maxAnswerSize;

std::optional<FeedResponse> responseOf(const UpdateHelperRun::Result& result) {
    const qsizetype lineEnd = result.output.indexOf('\n');
    bool isNumber = false;
    const int status = result.output.left(lineEnd).toInt(&isNumber);
    if (result.failure || lineEnd < 0 || !isNumber)
        return std::nullopt;
    const QByteArray body = result.output.mid(lineEnd + 1);
    return FeedResponse{status, Bytes(body.begin(), body.end())};
}

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

/// The numbers that a download prints, one per line, which arrive in pieces of any size.
class ProgressLines {
public:
    explicit ProgressLines(UpdateTransport::Progress progress) : progress_(std::move(progress)) {}
    void operator()(const QByteArray& piece) {
        unfinished_ += piece;
        const qsizetype end = unfinished_.lastIndexOf('\n');
        if (end < 0)
            return;
        const QByteArray last = unfinished_.left(end).split('\n').last();
        unfinished_.remove(0, end + 1);
        progress_(last.toLongLong());
    }

private:
    UpdateTransport::Progress progress_;
    QByteArray unfinished_;
};

}  // namespace

UpdateHelperRun::UpdateHelperRun(const std::string& program, const QStringList& arguments, Done done, Output output)
    : process_(new QProcess),
      context_(std::make_unique<QObject>()),
      done_(std::move(done)),
      output_(std::move(output)) {
    process_->setStandardErrorFile(QProcess::nullDevice());
    process_->setStandardInputFile(QProcess::nullDevice());
    // A process that installs a new file always runs to its end.
    if (arguments.value(0) != QLatin1String(updaterCommand::install))
        process_->setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    // Queued, because the process may fail inside start(), and `done` may destroy this object.
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

UpdateHelperRun::~UpdateHelperRun() {
    // This may run at the end of one of its own slots.
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

void UpdateHelperRun::read() {
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

void UpdateHelperRun::finish(std::optional<UpdateFailure> failure) {
    const Done done = std::move(done_);
    done({failure, failure ? QByteArray() : printed_});
}

bool HelperFeedSession::isValid(const std::string& url) const {
    return mayBeAsked(QUrl(QString::fromStdString(url), QUrl::StrictMode));
}

void HelperFeedSession::dataTask(const std::string& url, Completion completion) {
    const auto task = tasks_.emplace(tasks_.end());
    *task = std::make_unique<UpdateHelperRun>(
        program_, QStringList{QLatin1String(updaterCommand::fetch), QString::fromStdString(url)},
        [this, task, completion = std::move(completion)](const UpdateHelperRun::Result& result) {
            const Completion finished = completion;
            tasks_.erase(task);
            finished(responseOf(result));
        });
}

HelperUpdateTransport::HelperUpdateTransport(std::string program, const std::string& replaceable)
    : program_(std::move(program)), replaceable_(QFile::decodeName(replaceable.c_str())) {}

void HelperUpdateTransport::start(const QStringList& arguments,
                                  std::function<void(const UpdateHelperRun::Result&)> done,
                                  UpdateHelperRun::Output output) {
    job_ = std::make_unique<UpdateHelperRun>(
        program_, arguments,
        [this, done = std::move(done)](const UpdateHelperRun::Result& result) {
            const auto ended = std::move(job_);  // `done` may start the next job
            done(result);
        },
        std::move(output));
}

void HelperUpdateTransport::readList(const std::string& url, const std::string& publicKey, ListDone done) {
    start({QLatin1String(updaterCommand::list), text(url), text(publicKey)},
          [done = std::move(done)](const auto& result) {
              if (result.failure)
                  return done(*result.failure);
              auto items = decodedItems({result.output.constData(), static_cast<std::size_t>(result.output.size())});
              items ? done(std::move(*items)) : done(UpdateFailure::unreadableList);
          });
}

void HelperUpdateTransport::readNotes(const std::string& url, TextDone done) {
    start({QLatin1String(updaterCommand::notes), text(url)},
          [done = std::move(done)](const auto& result) { done(result.output.toStdString()); });
}

void HelperUpdateTransport::download(const AppcastItem& item, const std::string& publicKey, Progress progress,
                                     Done done) {
    start(
        {QLatin1String(updaterCommand::download), text(item.downloadURL), QString::number(item.length),
         text(item.signature), text(publicKey), replaceable_},
        [done = std::move(done)](const auto& result) { done(result.failure); }, ProgressLines(std::move(progress)));
}

void HelperUpdateTransport::install(const AppcastItem& item, const std::string& publicKey, Done done) {
    start({QLatin1String(updaterCommand::install), QString::number(item.length), text(item.signature),
           text(publicKey), replaceable_},
          [done = std::move(done)](const auto& result) { done(result.failure); });
}

void HelperUpdateTransport::discardDownload() {
    if (!replaceable_.isEmpty())
        QProcess::startDetached(QFile::decodeName(program_.c_str()),
                                {QLatin1String(updaterCommand::discardDownload), replaceable_});
}

void HelperUpdateTransport::removeReplaced() {
    if (!replaceable_.isEmpty())
        QProcess::startDetached(QFile::decodeName(program_.c_str()),
                                {QLatin1String(updaterCommand::removeReplaced), replaceable_});
}

}  // namespace stowpocket
