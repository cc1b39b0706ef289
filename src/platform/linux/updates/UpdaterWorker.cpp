// SPDX-License-Identifier: MIT
#include "platform/linux/updates/UpdaterWorker.h"

#include "platform/linux/updates/UpdaterProtocol.h"
#include "updates/AppcastRecords.h"

#include <QFile>
#include <QProcess>

namespace stowpocket {
namespace {

QString text(const std::string& utf8) {
    return QString::fromStdString(utf8);
}

/// The numbers that a download prints, a line each, in pieces of any size.
class ProgressLines {
public:
    explicit ProgressLines(UpdateWorker::Progress progress) : progress_(std::move(progress)) {}
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
    UpdateWorker::Progress progress_;
    QByteArray unfinished_;
};

}  // namespace

UpdaterWorker::UpdaterWorker(std::string program, const std::string& replaceable)
    : program_(std::move(program)), replaceable_(QFile::decodeName(replaceable.c_str())) {}

void UpdaterWorker::start(const QStringList& arguments, std::function<void(const UpdaterProcess::Result&)> done,
                          UpdaterProcess::Output output) {
    job_ = std::make_unique<UpdaterProcess>(
        program_, arguments,
        [this, done = std::move(done)](const UpdaterProcess::Result& result) {
            const auto ended = std::move(job_);  // `done` may start the next job
            done(result);
        },
        std::move(output));
}

void UpdaterWorker::readList(const std::string& url, const std::string& publicKey, ListDone done) {
    start({QLatin1String(updaterCommand::list), text(url), text(publicKey)},
          [done = std::move(done)](const auto& result) {
              if (result.failure)
                  return done(*result.failure);
              auto items = decodedItems({result.output.constData(), static_cast<std::size_t>(result.output.size())});
              items ? done(std::move(*items)) : done(UpdateFailure::unreadableList);
          });
}

void UpdaterWorker::readNotes(const std::string& url, TextDone done) {
    start({QLatin1String(updaterCommand::notes), text(url)},
          [done = std::move(done)](const auto& result) { done(result.output.toStdString()); });
}

void UpdaterWorker::download(const AppcastItem& item, const std::string& publicKey, Progress progress, Done done) {
    start(
        {QLatin1String(updaterCommand::download), text(item.downloadURL), QString::number(item.length),
         text(item.signature), text(publicKey), replaceable_},
        [done = std::move(done)](const auto& result) { done(result.failure); }, ProgressLines(std::move(progress)));
}

void UpdaterWorker::install(const AppcastItem& item, const std::string& publicKey, Done done) {
    start({QLatin1String(updaterCommand::install), QString::number(item.length), text(item.signature),
           text(publicKey), replaceable_},
          [done = std::move(done)](const auto& result) { done(result.failure); });
}

void UpdaterWorker::discardDownload() {
    if (!replaceable_.isEmpty())
        QProcess::startDetached(QFile::decodeName(program_.c_str()),
                                {QLatin1String(updaterCommand::discardDownload), replaceable_});
}

void UpdaterWorker::removeReplaced() {
    if (!replaceable_.isEmpty())
        QProcess::startDetached(QFile::decodeName(program_.c_str()),
                                {QLatin1String(updaterCommand::removeReplaced), replaceable_});
}

}  // namespace stowpocket
