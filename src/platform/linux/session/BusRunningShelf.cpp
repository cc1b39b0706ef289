// SPDX-License-Identifier: MIT
#include "platform/linux/session/BusRunningShelf.h"

#include "platform/linux/session/BusInstance.h"
#include "platform/linux/session/ProgramLock.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusServiceWatcher>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QSocketNotifier>
#include <QTimer>

#include <chrono>
#include <memory>
#include <sys/syscall.h>
#include <unistd.h>

namespace stowpocket {
namespace {

using namespace std::chrono_literals;

/// A cold start from a slow disk takes a few seconds.
constexpr auto startTimeout = 15s;

/// Returns 0 when the program cannot be started.
qint64 startDetached(const std::string& executable) {
    QProcess process;
    process.setProgram(QFile::decodeName(QByteArray::fromStdString(executable)));
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardOutputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setWorkingDirectory(QStringLiteral("/"));
    qint64 id = 0;
    return process.startDetached(&id) ? id : 0;
}

/// Notices the end of a process that is not a child. Kernels before 5.3 cannot report it, so that only the time
/// limit ends the wait.
class ProcessEnd {
public:
    explicit ProcessEnd(qint64 id) : descriptor_(static_cast<int>(::syscall(SYS_pidfd_open, id, 0))) {}
    ProcessEnd(const ProcessEnd&) = delete;
    ProcessEnd& operator=(const ProcessEnd&) = delete;
    ~ProcessEnd() {
        notifier_.reset();
        if (descriptor_ >= 0)
            ::close(descriptor_);
    }
    template <class Function>
    void then(const Function& function) {
        if (descriptor_ < 0)
            return;
        notifier_ = std::make_unique<QSocketNotifier>(descriptor_, QSocketNotifier::Read);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), function);
    }

private:
    const int descriptor_;
    std::unique_ptr<QSocketNotifier> notifier_;
};

/// Starts `executable`, independent of this process, and waits for an owner of `name` on the bus. Returns false when
/// the program ends before that, or takes too long.
bool startProgramAndAwaitName(const std::string& executable, const QDBusConnection& bus, const QString& name) {
    // Watched before the start, so that the name cannot be missed.
    const QDBusServiceWatcher watcher(name, bus, QDBusServiceWatcher::WatchForRegistration);
    QEventLoop loop;
    QObject::connect(&watcher, &QDBusServiceWatcher::serviceRegistered, &loop, &QEventLoop::quit);
    QTimer::singleShot(startTimeout, &loop, &QEventLoop::quit);
    const qint64 id = executable.empty() ? 0 : startDetached(executable);
    if (id == 0)
        return false;
    ProcessEnd end(id);
    end.then([&loop] { loop.quit(); });
    if (!bus.interface()->isServiceRegistered(name))
        loop.exec();
    return bus.interface()->isServiceRegistered(name);
}

/// Long enough for a large batch on a slow disk.
constexpr int answerTimeoutMs = 30'000;

QString text(std::string_view bytes) {
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

QStringList texts(std::span<const std::string> names) {
    QStringList list;
    for (const std::string& name : names)
        list.push_back(text(name));
    return list;
}

std::string problemOf(const QDBusMessage& reply) {
    switch (QDBusError(reply).type()) {
    case QDBusError::ServiceUnknown:
        return "stowpocket is not running";
    case QDBusError::NoReply:
    case QDBusError::Timeout:
        return "stowpocket does not answer";
    default:
        return "stowpocket refuses: " + reply.errorMessage().toStdString();
    }
}

std::optional<StagedFile> stagedFile(const QVariantMap& item) {
    std::optional<FileURL> file = FileURL::parse(item.value(shelfBus::urlKey).toString().toStdString());
    if (!file)
        return std::nullopt;
    return StagedFile{.id = item.value(shelfBus::idKey).toString().toStdString(),
                      .fileURL = std::move(*file),
                      .isAvailable = item.value(shelfBus::availableKey).toBool(),
                      .fileSize = item.value(shelfBus::sizeKey).toLongLong()};
}

QString methodFor(ShelfAction action) {
    switch (action) {
    case ShelfAction::clear:
        return QStringLiteral("Clear");
    case ShelfAction::undo:
        return QStringLiteral("Undo");
    case ShelfAction::paste:
        return QStringLiteral("Paste");
    case ShelfAction::show:
        return QStringLiteral("Show");
    case ShelfAction::toggle:
        return QStringLiteral("Toggle");
    case ShelfAction::quickDrop:
        return QStringLiteral("QuickDrop");
    }
    return {};
}

}  // namespace

BusRunningShelf::BusRunningShelf(QDBusConnection bus, std::string executable, StartupTokens tokens, std::string lock)
    : bus_(std::move(bus)), executable_(std::move(executable)), tokens_(std::move(tokens)), lock_(std::move(lock)) {}

bool BusRunningShelf::reach(StartProgram start) {
    if (!bus_.isConnected())
        return noteAbsence("there is no session bus to reach the program on");
    if (bus_.interface()->isServiceRegistered(shelfBus::service))
        return true;
    if (start == StartProgram::never)
        return noteAbsence("stowpocket is not running");
    if (startProgramAndAwaitName(executable_, bus_, shelfBus::service))
        return true;
    return noteAbsence("stowpocket is not running and could not be started");
}

bool BusRunningShelf::noteAbsence(const std::string& otherwise) {
    const std::optional<std::string> holder = ProgramLock::holderOf(lock_);
    runsElsewhere_ = holder.has_value();
    problem_ = holder ? runsElsewhereText(*holder) : otherwise;
    return false;
}

std::optional<QVariantList> BusRunningShelf::call(const QString& method, const QVariantList& arguments) {
    QDBusMessage request =
        QDBusMessage::createMethodCall(shelfBus::service, shelfBus::path, shelfBus::interface, method);
    request.setArguments(arguments);
    request.setAutoStartService(false);
    const QDBusMessage reply = bus_.call(request, QDBus::Block, answerTimeoutMs);
    if (reply.type() == QDBusMessage::ReplyMessage)
        return reply.arguments();
    problem_ = problemOf(reply);
    // A program started for the request ends without an answer when it finds the shelf in another session.
    if (!bus_.interface()->isServiceRegistered(shelfBus::service))
        noteAbsence(problem_);
    return std::nullopt;
}

/// The answer has one word for each name.
template <class Outcome>
std::optional<std::vector<Outcome>> BusRunningShelf::callWithNames(const QString& method, const QStringList& names,
                                                                   OutcomeOf<Outcome> outcomeOf) {
    const std::optional<QVariantList> answer = call(method, {names});
    if (!answer)
        return std::nullopt;
    saveProblem_ = answer->value(1).toString().toStdString();
    std::vector<Outcome> outcomes;
    for (const QString& word : answer->value(0).toStringList()) {
        if (const std::optional<Outcome> outcome = outcomeOf(word.toStdString()))
            outcomes.push_back(*outcome);
    }
    if (outcomes.size() == static_cast<std::size_t>(names.size()))
        return outcomes;
    problem_ = "the answer of stowpocket was not understood";
    return std::nullopt;
}

std::optional<std::vector<AddOutcome>> BusRunningShelf::add(std::span<const FileURL> files) {
    QStringList urls;
    for (const FileURL& file : files)
        urls.push_back(text(file.string()));
    return callWithNames<AddOutcome>(QStringLiteral("Add"), urls, addOutcome);
}

std::optional<std::vector<RemoveOutcome>> BusRunningShelf::remove(std::span<const std::string> names) {
    return callWithNames<RemoveOutcome>(QStringLiteral("Remove"), texts(names), removeOutcome);
}

std::optional<std::vector<UseOutcome>> BusRunningShelf::use(ItemUse what, std::span<const std::string> names) {
    const QString method = what == ItemUse::copy ? QStringLiteral("Copy") : QStringLiteral("Open");
    return callWithNames<UseOutcome>(method, texts(names), useOutcome);
}

std::optional<std::vector<StagedFile>> BusRunningShelf::list() {
    const std::optional<QVariantList> answer = call(QStringLiteral("List"), {});
    if (!answer)
        return std::nullopt;
    std::vector<StagedFile> files;
    for (const QVariantMap& item : qdbus_cast<shelfBus::ItemList>(answer->value(0))) {
        if (std::optional<StagedFile> file = stagedFile(item))
            files.push_back(std::move(*file));
    }
    return files;
}

bool BusRunningShelf::perform(ShelfAction action) {
    if (action == ShelfAction::clear || action == ShelfAction::undo) {
        const std::optional<QVariantList> answer = call(methodFor(action), {});
        saveProblem_ = answer ? answer->value(0).toString().toStdString() : std::string();
        return answer.has_value();
    }
    const QVariantMap tokens{{shelfBus::activationTokenKey, text(tokens_.activationToken)},
                             {shelfBus::startupIDKey, text(tokens_.startupID)}};
    return call(methodFor(action), {tokens}).has_value();
}

}  // namespace stowpocket
