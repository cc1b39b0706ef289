// SPDX-License-Identifier: MIT
#include "platform/linux/tray/NotifierItem.h"

#include "platform/linux/tray/NotifierNames.h"
#include "platform/linux/tray/NotifierPixmap.h"

#include <QCoreApplication>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusVariant>

namespace stowpocket {
namespace {

/// Every item of a process has a name of its own, which the watcher follows to see it go.
QString nextServiceName() {
    static int count = 0;
    return QStringLiteral("%1-%2-%3").arg(notifierNames::item).arg(QCoreApplication::applicationPid()).arg(++count);
}

QDBusMessage busCall(const QString& method, const QString& name) {
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                                       QStringLiteral("/org/freedesktop/DBus"),
                                                       QStringLiteral("org.freedesktop.DBus"), method);
    call << name;
    return call;
}

}  // namespace

NotifierItem::NotifierItem(const QDBusConnection& bus, NotifierFace face,
                           std::function<void(const QPoint&)> onActivate, std::function<void(bool)> onSeen)
    : bus_(bus),
      service_(nextServiceName()),
      face_(std::move(face)),
      onActivate_(std::move(onActivate)),
      onSeen_(std::move(onSeen)) {
    hosts_.setConnection(bus_);
    hosts_.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&hosts_, &QDBusServiceWatcher::serviceUnregistered, this, [this](const QString& host) {
        hosts_.removeWatchedService(host);
        if (hosts_.watchedServices().isEmpty())
            onSeen_(false);
    });
    registerNotifierPixmaps();
    bus_.registerVirtualObject(notifierNames::itemPath, this);
    requestName();
    QDBusMessage registration =
        QDBusMessage::createMethodCall(notifierNames::watcher, notifierNames::watcherPath, notifierNames::watcher,
                                       QStringLiteral("RegisterStatusNotifierItem"));
    registration << service_;
    bus_.call(registration, QDBus::NoBlock);
}

NotifierItem::~NotifierItem() {
    bus_.unregisterObject(notifierNames::itemPath);
    bus_.call(busCall(QStringLiteral("ReleaseName"), service_), QDBus::NoBlock);
}

void NotifierItem::requestName() {
    constexpr uint doNotQueue = 4;
    QDBusMessage request = busCall(QStringLiteral("RequestName"), service_);
    request << doNotQueue;
    // Not waited for: the bus keeps the order, so the name stands before the watcher hears of it.
    bus_.call(request, QDBus::NoBlock);
}

void NotifierItem::setFace(NotifierFace face) {
    face_ = std::move(face);
    for (const char* const signal : {"NewIcon", "NewTitle", "NewToolTip"})
        announce(signal);
}

void NotifierItem::announce(const char* signal) const {
    bus_.send(QDBusMessage::createSignal(notifierNames::itemPath, notifierNames::item, QString::fromLatin1(signal)));
}

QVariantMap NotifierItem::properties() const {
    const NotifierPixmaps pixmaps = notifierPixmaps(face_.pictures);
    const NotifierToolTip toolTip{{}, {}, face_.title, {}};
    return {
        {QStringLiteral("Category"), QStringLiteral("ApplicationStatus")},
        {QStringLiteral("Id"), QStringLiteral("stowpocket")},
        {QStringLiteral("Title"), face_.title},
        {QStringLiteral("Status"), QStringLiteral("Active")},
        {QStringLiteral("WindowId"), 0},
        {QStringLiteral("IconName"), QString()},
        {QStringLiteral("IconPixmap"), QVariant::fromValue(pixmaps)},
        {QStringLiteral("ToolTip"), QVariant::fromValue(toolTip)},
        {QStringLiteral("ItemIsMenu"), false},
        {QStringLiteral("Menu"), QVariant::fromValue(QDBusObjectPath(QStringLiteral("/NO_DBUSMENU")))},
    };
}

QString NotifierItem::introspect(const QString& path) const {
    if (path != notifierNames::itemPath)
        return {};
    QString xml = QStringLiteral("<interface name=\"%1\">"
                                 "<method name=\"Activate\"><arg type=\"i\" direction=\"in\"/>"
                                 "<arg type=\"i\" direction=\"in\"/></method>"
                                 "<signal name=\"NewIcon\"/><signal name=\"NewTitle\"/><signal name=\"NewToolTip\"/>")
                      .arg(notifierNames::item);
    const QVariantMap values = properties();
    for (auto value = values.begin(); value != values.end(); ++value)
        xml += QStringLiteral("<property name=\"%1\" type=\"%2\" access=\"read\"/>")
                   .arg(value.key(), notifierSignature(value->metaType()));
    return xml + QStringLiteral("</interface>");
}

bool NotifierItem::handleMessage(const QDBusMessage& message, const QDBusConnection&) {
    if (message.interface() == notifierNames::properties) {
        bus_.send(answerAboutProperties(message));
        askedBy(message.service());
    } else if (message.interface() == notifierNames::item || message.interface().isEmpty()) {
        bus_.send(answer(message));
    } else {
        return false;
    }
    return true;
}

void NotifierItem::askedBy(const QString& host) {
    if (hosts_.watchedServices().contains(host))
        return;
    hosts_.addWatchedService(host);
    onSeen_(true);
}

QDBusMessage NotifierItem::answerAboutProperties(const QDBusMessage& question) const {
    const QVariantMap values = properties();
    if (question.member() == QStringLiteral("GetAll"))
        return question.createReply(values);
    const auto value = values.find(question.arguments().value(1).toString());
    if (question.member() != QStringLiteral("Get") || value == values.end())
        return question.createErrorReply(QDBusError::UnknownProperty, QStringLiteral("there is no such property"));
    return question.createReply(QVariant::fromValue(QDBusVariant(*value)));
}

/// Other clicks than the plain one have no meaning here, as on the docked icon.
QDBusMessage NotifierItem::answer(const QDBusMessage& call) const {
    if (call.member() == QStringLiteral("Activate") && call.signature() == QStringLiteral("ii"))
        onActivate_({call.arguments().at(0).toInt(), call.arguments().at(1).toInt()});
    return call.createReply();
}

}  // namespace stowpocket
