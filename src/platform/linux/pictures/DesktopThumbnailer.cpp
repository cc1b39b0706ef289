// SPDX-License-Identifier: MIT
#include "platform/linux/pictures/DesktopThumbnailer.h"

#include "platform/linux/dbus/BusCalls.h"

#include <QDBusConnection>
#include <QDBusReply>
#include <QFile>
#include <QStringList>

#include <list>

namespace stowpocket {
namespace {

constexpr std::chrono::seconds answerLimit{5};

QString busName() {
    return QStringLiteral("org.freedesktop.thumbnails.Thumbnailer1");
}
QString objectPath() {
    return QStringLiteral("/org/freedesktop/thumbnails/Thumbnailer1");
}

}  // namespace

/// The pending requests on one bus. Signals are received only while there are requests, because the thumbnailer
/// announces its work for every program.
class DesktopThumbnailer::Session : public QObject {
    Q_OBJECT

public:
    Session(Dispatch& dispatch, const QDBusConnection& bus) : dispatch_(dispatch), bus_(bus) {}
    void make(const DesktopThumbnailRequest& request, Completion completion);

private:
    Q_SLOT void ready(uint handle, const QStringList& uris) { finishMatching(handle, uris, true); }
    Q_SLOT void failed(uint handle, const QStringList& uris, int, const QString&) {
        finishMatching(handle, uris, false);
    }
    Q_SLOT void finished(uint handle);

    struct Pending {
        QString uri;
        /// Identifies the request in signals; zero until the thumbnailer has answered the call.
        uint handle = 0;
        Completion completion;
        std::unique_ptr<ScheduledWork> timeLimit;
    };
    using Place = std::list<std::shared_ptr<Pending>>::iterator;

    void queue(const DesktopThumbnailRequest& request, const std::shared_ptr<Pending>& pending);
    void listen();
    void stopListening();
    void finishMatching(uint handle, const QStringList& uris, bool isMade);
    void finish(const std::shared_ptr<Pending>& pending, bool isMade);

    Dispatch& dispatch_;
    QDBusConnection bus_;
    std::list<std::shared_ptr<Pending>> pending_;
};

void DesktopThumbnailer::Session::make(const DesktopThumbnailRequest& request, Completion completion) {
    if (!bus_.isConnected())
        return completion(false);
    if (pending_.empty())
        listen();
    const auto pending = std::make_shared<Pending>();
    pending->uri = QString::fromStdString(request.uri);
    pending->completion = std::move(completion);
    pending->timeLimit = dispatch_.after(answerLimit, [this, weak = std::weak_ptr(pending)] {
        if (const auto late = weak.lock())
            finish(late, false);
    });
    pending_.push_back(pending);
    queue(request, pending);
}

void DesktopThumbnailer::Session::queue(const DesktopThumbnailRequest& request,
                                        const std::shared_ptr<Pending>& pending) {
    QDBusMessage call = QDBusMessage::createMethodCall(busName(), objectPath(), busName(), QStringLiteral("Queue"));
    const uint handleToReplace = 0;
    call << QStringList{pending->uri} << QStringList{QString::fromStdString(request.mimeType)}
         << QString::fromStdString(request.sizeName) << QStringLiteral("foreground") << handleToReplace;
    callOnBus(bus_, call, *this, [this, weak = std::weak_ptr(pending)](const QDBusMessage& answer) {
        const QDBusReply<uint> reply = answer;
        const auto asked = weak.lock();
        if (asked && !reply.isValid())
            finish(asked, false);
        else if (asked)
            asked->handle = reply.value();
    });
}

void DesktopThumbnailer::Session::listen() {
    // Without the name of a sender, because Qt would wait for the bus to look up its owner.
    bus_.connect({}, objectPath(), busName(), QStringLiteral("Ready"), this, SLOT(ready(uint, QStringList)));
    bus_.connect({}, objectPath(), busName(), QStringLiteral("Error"), this,
                 SLOT(failed(uint, QStringList, int, QString)));
    bus_.connect({}, objectPath(), busName(), QStringLiteral("Finished"), this, SLOT(finished(uint)));
}

void DesktopThumbnailer::Session::stopListening() {
    bus_.disconnect({}, objectPath(), busName(), QStringLiteral("Ready"), this, SLOT(ready(uint, QStringList)));
    bus_.disconnect({}, objectPath(), busName(), QStringLiteral("Error"), this,
                    SLOT(failed(uint, QStringList, int, QString)));
    bus_.disconnect({}, objectPath(), busName(), QStringLiteral("Finished"), this, SLOT(finished(uint)));
}

void DesktopThumbnailer::Session::finishMatching(uint handle, const QStringList& uris, bool isMade) {
    // Copied, because a completion may start another request.
    const std::list<std::shared_ptr<Pending>> candidates = pending_;
    for (const auto& pending : candidates) {
        // An existing thumbnail may be announced before the call is answered.
        if (uris.contains(pending->uri) && (pending->handle == handle || pending->handle == 0))
            finish(pending, isMade);
    }
}

void DesktopThumbnailer::Session::finished(uint handle) {
    const std::list<std::shared_ptr<Pending>> candidates = pending_;
    for (const auto& pending : candidates) {
        if (pending->handle == handle)
            finish(pending, false);
    }
}

void DesktopThumbnailer::Session::finish(const std::shared_ptr<Pending>& pending, bool isMade) {
    if (pending_.remove(pending) == 0)
        return;
    if (pending_.empty())
        stopListening();
    pending->timeLimit.reset();
    pending->completion(isMade);
}

DesktopThumbnailer::DesktopThumbnailer(Dispatch& dispatch, Connect connect)
    : dispatch_(dispatch), connect_(std::move(connect)) {}

DesktopThumbnailer::~DesktopThumbnailer() = default;

void DesktopThumbnailer::make(const DesktopThumbnailRequest& request, Completion completion) {
    if (!session_)
        session_ = std::make_unique<Session>(dispatch_, connect_());
    session_->make(request, std::move(completion));
}

QDBusConnection DesktopThumbnailer::sessionBus() {
    // The library starts a bus if there is none.
    const bool isRunning = qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
                           QFile::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
    return isRunning ? QDBusConnection::sessionBus() : QDBusConnection(QStringLiteral("none"));
}

}  // namespace stowpocket

#include "DesktopThumbnailer.moc"
