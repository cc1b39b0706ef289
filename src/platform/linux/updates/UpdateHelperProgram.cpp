// SPDX-License-Identifier: MIT
// stowpocket-updater: the part of an update that uses the network and reads the bytes from there.
#include "platform/linux/files/DurableFile.h"
#include "platform/linux/updates/AppcastReader.h"
#include "platform/linux/updates/DownloadFile.h"
#include "platform/linux/updates/HttpGet.h"
#include "platform/linux/updates/InstalledProgram.h"
#include "platform/linux/updates/UpdateHelperProtocol.h"
#include "updates/Appcast.h"

#include <QCoreApplication>
#include <QFile>
#include <QUrl>

#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdlib>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;
using Arguments = QList<QByteArray>;
using Outcome = std::optional<UpdateFailure>;

constexpr int httpOk = 200;
constexpr HttpLimits answerLimits{maxAnswerSize, 30s, 1min};
constexpr auto silenceLimit = 1min;
constexpr auto downloadTimeLimit = 6h;
constexpr std::int64_t maxDownloadSize = std::int64_t{1} << 30u;
constexpr rlim_t processorSecondsLimit = 60;
/// The maximum number of progress reports of a download.
constexpr std::int64_t progressSteps = 200;

Outcome print(const QByteArray& bytes) {
    const std::string_view text(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return writeAll(STDOUT_FILENO, text) ? Outcome(UpdateFailure::other) : std::nullopt;
}

struct Page {
    HttpAnswer answer;
    QByteArray body;
};

Page pageAt(const QByteArray& url) {
    Page page;
    page.answer =
        httpGet(QUrl::fromEncoded(url, QUrl::StrictMode), answerLimits, [&page](int, const QByteArray& piece) {
            page.body += piece;
            return Outcome();
        });
    if (!page.answer.failure && page.answer.status != httpOk)
        page.body.clear();
    return page;
}

Outcome fetch(const Arguments& arguments) {
    const Page page = pageAt(arguments[0]);
    return page.answer.failure ? page.answer.failure
                               : print(QByteArray::number(page.answer.status) + '\n' + page.body);
}

Outcome list(const Arguments& arguments) {
    const Page page = pageAt(arguments[0]);
    if (page.answer.failure)
        return page.answer.failure;
    if (page.answer.status != httpOk)
        return UpdateFailure::unreachable;
    const std::string_view whole(page.body.constData(), static_cast<std::size_t>(page.body.size()));
    const auto list = arguments[1].isEmpty() ? std::optional(whole) : signedPart(whole, arguments[1].toStdString());
    if (!list)
        return UpdateFailure::unsignedList;
    const auto items = readAppcast(QByteArray(list->data(), static_cast<qsizetype>(list->size())));
    return items ? print(QByteArray::fromStdString(encodedItems(*items))) : UpdateFailure::unreadableList;
}

Outcome notes(const Arguments& arguments) {
    const Page page = pageAt(arguments[0]);
    // Through QString, which replaces all bytes that are not UTF-8.
    return page.answer.failure
               ? page.answer.failure
               : print(QByteArray::fromStdString(plainNotes(QString::fromUtf8(page.body).toStdString())));
}

/// A transfer from the server into `file`.
Outcome transfer(const QByteArray& url, std::int64_t length, DownloadFile& file) {
    std::int64_t told = 0;
    const HttpLimits limits{length, silenceLimit, downloadTimeLimit};
    const HttpAnswer answer =
        httpGet(QUrl::fromEncoded(url, QUrl::StrictMode), limits, [&](int status, const QByteArray& piece) {
            if (status != httpOk)
                return Outcome(UpdateFailure::unreachable);
            if (const Outcome failure = file.write({piece.constData(), static_cast<std::size_t>(piece.size())}))
                return failure;
            if (file.size() - told < length / progressSteps && file.size() != length)
                return Outcome();
            told = file.size();
            return print(QByteArray::number(qint64{told}) + '\n');
        });
    if (answer.failure)
        return answer.failure == UpdateFailure::tooLarge ? UpdateFailure::wrongLength : answer.failure;
    return answer.status == httpOk ? Outcome() : UpdateFailure::unreachable;
}

Outcome discardDownload(const std::string& program) {
    ::unlink(downloadPath(program).c_str());
    return std::nullopt;
}

SignedFile signedFile(const Arguments& arguments) {
    return {arguments[0].toLongLong(), arguments[1].toStdString(), arguments[2].toStdString()};
}

Outcome checkDownload(const std::string& program, const SignedFile& expected) {
    const auto checked = CheckedDownload::open(program, expected);
    const auto* const failure = std::get_if<UpdateFailure>(&checked);
    return failure == nullptr ? std::nullopt : Outcome(*failure);
}

Outcome download(const Arguments& arguments) {
    const SignedFile expected = signedFile(arguments.mid(1));
    const std::string program = arguments[4].toStdString();
    if (expected.length <= 0)
        return UpdateFailure::wrongLength;
    if (expected.length > maxDownloadSize)
        return UpdateFailure::tooLarge;
    if (!checkDownload(program, expected))
        return std::nullopt;  // fetched before
    DownloadFile file;
    Outcome failure = file.create(program, expected.length);
    if (!failure)
        failure = transfer(arguments[0], expected.length, file);
    if (!failure)
        failure = checkDownload(program, expected);
    if (failure)
        discardDownload(program);
    return failure;
}

Outcome install(const Arguments& arguments) {
    const std::string program = arguments[3].toStdString();
    const auto checked = CheckedDownload::open(program, signedFile(arguments));
    const auto* const refusal = std::get_if<UpdateFailure>(&checked);
    const Outcome failure = refusal == nullptr ? std::get<CheckedDownload>(checked).install() : *refusal;
    if (failure)
        discardDownload(program);
    return failure;
}

Outcome removeReplaced(const std::string& program) {
    ::unlink(replacedPath(program).c_str());
    ::unlink(startedPath(program).c_str());
    return std::nullopt;
}

bool setLimit(decltype(RLIMIT_CPU) resource, rlim_t value) {
    const rlimit limit{value, value};
    return ::setrlimit(resource, &limit) == 0;
}

/// A job that writes no file.
bool giveUpFiles() {
    return setLimit(RLIMIT_FSIZE, 0);
}
bool giveUpNothing() {
    return true;
}

struct Job {
    const char* name;
    int argumentCount;
    Outcome (*run)(const Arguments&);
    bool (*confine)();
};
constexpr std::array jobs{
    Job{updaterCommand::fetch, 1, fetch, giveUpFiles},
    Job{updaterCommand::list, 2, list, giveUpFiles},
    Job{updaterCommand::notes, 1, notes, giveUpFiles},
    Job{updaterCommand::download, 5, download, giveUpNothing},
    Job{updaterCommand::install, 4, install, giveUpNothing},
    Job{updaterCommand::discardDownload, 1,
        [](const Arguments& arguments) { return discardDownload(arguments[0].toStdString()); }, giveUpNothing},
    Job{updaterCommand::removeReplaced, 1,
        [](const Arguments& arguments) { return removeReplaced(arguments[0].toStdString()); }, giveUpNothing},
};

/// Carries out the one job that the arguments name and returns the exit code. It has few other rights, because data
/// from the network is read here, away from the shelf.
int runUpdater(int argc, char** argv) {
    const QByteArray name(argc > 1 ? argv[1] : "");
    const auto* const job = std::ranges::find_if(jobs, [&](const Job& known) { return name == known.name; });
    if (job == jobs.end() || argc - 2 != job->argumentCount)
        return EXIT_FAILURE;
    const bool isConfined = ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && setLimit(RLIMIT_CORE, 0) &&
                            setLimit(RLIMIT_CPU, processorSecondsLimit) && job->confine();
    if (!isConfined)
        return EXIT_FAILURE;
    std::signal(SIGXFSZ, SIG_IGN);  // a write beyond the limit is an error to be reported
    std::signal(SIGPIPE, SIG_IGN);
    const Arguments arguments(argv + 2, argv + argc);
    const QCoreApplication application(argc, argv);
    return updaterExitCode(job->run(arguments));
}

}  // namespace
}  // namespace stowpocket

int main(int argc, char** argv) {
    return stowpocket::runUpdater(argc, argv);
}
