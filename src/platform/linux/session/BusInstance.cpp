// SPDX-License-Identifier: MIT
#include "platform/linux/session/BusInstance.h"

#include "platform/linux/dbus/BusCalls.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusReply>
#include <QFile>
#include <QLoggingCategory>
#include <QPointer>

#include <algorithm>
#include <functional>
#include <malloc.h>

namespace stowpocket {
namespace {

Q_LOGGING_CATEGORY(sessionLog, "stowpocket.session")

using namespace std::chrono_literals;

constexpr int claimTimeoutMs = 3000;
/// Short, because a second start in between would take the name.
constexpr auto joiningInterval = 500ms;
/// Time without requests before their memory is returned to the system.
constexpr auto quietTime = 2s;
/// More requests than anybody sends while a program starts.
constexpr std::size_t maxWaitingRequests = 256;

/// Answers of RequestName, as the message bus numbers them.
constexpr uint primaryOwner = 1;
constexpr uint alreadyOwner = 4;

QString text(std::string_view word) {
    return QString::fromUtf8(word.data(), static_cast<qsizetype>(word.size()));
}

template <class Outcome>
QStringList words(const std::vector<Outcome>& outcomes) {
    QStringList list;
    for (const Outcome outcome : outcomes)
        list.push_back(text(word(outcome)));
    return list;
}

std::vector<std::string> namesOf(const QDBusMessage& request) {
    std::vector<std::string> names;
    for (const QString& name : request.arguments().constFirst().toStringList())
        names.push_back(name.toStdString());
    return names;
}

StartupTokens tokensOf(const QDBusMessage& request) {
    if (request.arguments().isEmpty())
        return {};
    const auto values = qdbus_cast<QVariantMap>(request.arguments().constFirst());
    return {.activationToken = values.value(shelfBus::activationTokenKey).toString().toStdString(),
            .startupID = values.value(shelfBus::startupIDKey).toString().toStdString()};
}

}  // namespace

struct BusInstance::Method {
    QString name;
    QString signature;
    std::function<void(BusInstance&, const QDBusMessage&)> run;
};

const std::vector<BusInstance::Method>& BusInstance::methods() {
    const auto action = [](ShelfAction which) {
        return [which](BusInstance& self, const QDBusMessage& request) { self.perform(which, request); };
    };
    const auto use = [](ItemUse what) {
        return [what](BusInstance& self, const QDBusMessage& request) {
            self.answer(request, {words(self.commands_->use(what, namesOf(request)))});
        };
    };
    static const QString names = QStringLiteral("as");
    static const QString tokens = QStringLiteral("a{sv}");
    static const std::vector<Method> all{
        {QStringLiteral("Add"), names, &BusInstance::add},
        {QStringLiteral("List"), {}, &BusInstance::list},
        {QStringLiteral("Remove"), names, &BusInstance::remove},
        {QStringLiteral("Clear"), {}, action(ShelfAction::clear)},
        {QStringLiteral("Undo"), {}, action(ShelfAction::undo)},
        {QStringLiteral("Copy"), names, use(ItemUse::copy)},
        {QStringLiteral("Open"), names, use(ItemUse::open)},
        {QStringLiteral("Paste"), tokens, action(ShelfAction::paste)},
        {QStringLiteral("Show"), tokens, action(ShelfAction::show)},
        {QStringLiteral("Toggle"), tokens, action(ShelfAction::toggle)},
        {QStringLiteral("QuickDrop"), tokens, action(ShelfAction::quickDrop)},
        {QStringLiteral("Version"),
         {},
         [](BusInstance& self, const QDBusMessage& request) { self.answer(request, {text(self.version_)}); }},
    };
    return all;
}

BusInstance::BusInstance(QDBusConnection bus, std::string version, Connect connectAgain)
    : bus_(std::move(bus)),
      version_(std::move(version)),
      connect_(std::move(connectAgain)),
      requests_(bus_, [this](const QDBusMessage& request) {
          refuse(request, QDBusError::AccessDenied, QStringLiteral("this shelf belongs to another user"));
      }) {
    qDBusRegisterMetaType<shelfBus::ItemList>();
    quiet_.setSingleShot(true);
    quiet_.setInterval(quietTime);
    connect(&quiet_, &QTimer::timeout, this, [this] {
        weight_ = 0;
        ::malloc_trim(0);
    });
    joining_.setInterval(joiningInterval);
    connect(&joining_, &QTimer::timeout, this, [this] { joinAgain(); });
}

BusInstance::~BusInstance() {
    bus_.unregisterObject(shelfBus::path);
}

/// Without the address of a bus the library would start a bus of its own.
QDBusConnection BusInstance::connectToSessionBus(const QString& name) {
    const bool hasAddress = qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
                            QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
    return hasAddress ? QDBusConnection::connectToBus(QDBusConnection::SessionBus, name) : QDBusConnection(name);
}

void BusInstance::joinAgain() {
    static int joined = 0;
    const QString name = QStringLiteral("stowpocket-%1").arg(++joined);
    QDBusConnection bus = connect_(name);
    if (!bus.isConnected())
        return QDBusConnection::disconnectFromBus(name);
    joining_.stop();
    bus_ = bus;
    requests_.moveTo(bus);
    if (claim() == Claim::takenByAnother)
        qCWarning(sessionLog, "another program has the name on the session bus, this one cannot be reached any more");
}

BusInstance::Claim BusInstance::claim() {
    // The object comes first, since other programs may call it as soon as they see the name.
    if (!bus_.isConnected() || !bus_.registerVirtualObject(shelfBus::path, this)) {
        qCWarning(sessionLog, "no session bus: command verbs and a second start will not reach this program");
        return Claim::noBus;
    }
    bus_.connect({}, QStringLiteral("/org/freedesktop/DBus/Local"), QStringLiteral("org.freedesktop.DBus.Local"),
                 QStringLiteral("Disconnected"), &joining_, SLOT(start()));
    const QDBusReply<uint> reply = bus_.call(nameRequest(shelfBus::service), QDBus::Block, claimTimeoutMs);
    if (!reply.isValid()) {
        qCWarning(sessionLog) << "no name on the session bus, this program cannot be reached:"
                              << reply.error().message();
        return Claim::noBus;
    }
    return reply.value() == primaryOwner || reply.value() == alreadyOwner ? Claim::owned : Claim::takenByAnother;
}

void BusInstance::serve(ShelfRequests& commands) {
    commands_ = &commands;
    requests_.serve([this](const QDBusMessage& request) { carryOut(request); });
}

/// The interface from the installed description. The library writes the document around it.
QString BusInstance::introspect(const QString& path) const {
    QFile file(QStringLiteral(":/%1.xml").arg(shelfBus::interface));
    if (path != shelfBus::path || !file.open(QIODevice::ReadOnly))
        return {};
    const QString description = QString::fromUtf8(file.readAll());
    const QString end = QStringLiteral("</interface>");
    const qsizetype begin = description.indexOf(QStringLiteral("<interface"));
    return description.mid(begin, description.indexOf(end) + end.size() - begin);
}

bool BusInstance::handleMessage(const QDBusMessage& message, const QDBusConnection&) {
    if (!message.interface().isEmpty() && message.interface() != shelfBus::interface)
        return false;
    const auto method = std::ranges::find(methods(), message.member(), &Method::name);
    message.setDelayedReply(true);
    if (method == methods().end())
        refuse(message, QDBusError::UnknownMethod, QStringLiteral("there is no method ") + message.member());
    else if (message.signature() != method->signature)
        refuse(message, QDBusError::InvalidArgs,
               QStringLiteral("%1 takes \"%2\"").arg(method->name, method->signature));
    else if (commands_ == nullptr && requests_.count() >= maxWaitingRequests)
        refuse(message, QDBusError::LimitsExceeded, QStringLiteral("too many requests"));
    else
        requests_.add(message);
    return true;
}

/// The memory of a flood of requests would otherwise stay with the allocator.
void BusInstance::noteWeight(std::size_t names) {
    constexpr std::size_t flood = 200;
    constexpr std::size_t namesPerRequest = 50;
    weight_ += 1 + names / namesPerRequest;
    if (weight_ >= flood)
        quiet_.start();
}

void BusInstance::carryOut(const QDBusMessage& request) {
    const auto method = std::ranges::find(methods(), request.member(), &Method::name);
    const bool takesNames = method->signature == QStringLiteral("as");
    const auto count =
        takesNames ? static_cast<std::size_t>(request.arguments().constFirst().toStringList().size()) : 0;
    noteWeight(count);
    if (count > maxFilesPerRequest)
        return refuse(request, QDBusError::LimitsExceeded,
                      QStringLiteral("at most %1 files in one request").arg(maxFilesPerRequest));
    method->run(*this, request);
}

void BusInstance::answer(const QDBusMessage& request, const QVariantList& values) {
    bus_.send(request.createReply(values));
}

void BusInstance::refuse(const QDBusMessage& request, QDBusError::ErrorType error, const QString& reason) {
    bus_.send(request.createErrorReply(error, reason));
}

template <class Outcome>
ShelfRequests::Completion<Outcome> BusInstance::answerTo(const QDBusMessage& request) {
    return [self = QPointer(this), request](const std::vector<Outcome>& outcomes,
                                            const std::optional<std::string>& problem) {
        if (self)
            self->answer(request, {words(outcomes), text(problem.value_or(""))});
    };
}

void BusInstance::perform(ShelfAction action, const QDBusMessage& request) {
    const auto complete = [self = QPointer(this), action, request](const std::optional<std::string>& problem) {
        if (!self)
            return;
        const bool isChange = action == ShelfAction::clear || action == ShelfAction::undo;
        self->answer(request, isChange ? QVariantList{text(problem.value_or(""))} : QVariantList());
    };
    commands_->perform(action, tokensOf(request), complete);
}

void BusInstance::add(const QDBusMessage& request) {
    commands_->add(namesOf(request), answerTo<AddOutcome>(request));
}

void BusInstance::list(const QDBusMessage& request) {
    shelfBus::ItemList items;
    for (const StagedFile& file : commands_->list())
        items.push_back({{shelfBus::idKey, text(file.id)},
                         {shelfBus::urlKey, text(file.fileURL.string())},
                         {shelfBus::availableKey, file.isAvailable},
                         {shelfBus::sizeKey, qlonglong{file.fileSize}}});
    answer(request, {QVariant::fromValue(items)});
}

void BusInstance::remove(const QDBusMessage& request) {
    commands_->remove(namesOf(request), answerTo<RemoveOutcome>(request));
}

}  // namespace stowpocket
