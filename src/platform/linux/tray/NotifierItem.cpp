// SPDX-License-Identifier: MIT
#include "platform/linux/tray/NotifierItem.h"

#include "platform/linux/dbus/BusCalls.h"

#include <QCoreApplication>
#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QDBusVariant>
#include <QtEndian>

namespace stowpocket {
namespace {

// The names that panels and programs use. None of them uses the freedesktop names.
const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");

/// A picture as StatusNotifierItems send it, (iiay): pixels of 32 bits, alpha first, not premultiplied.
struct NotifierPixmap {
    int width = 0;
    int height = 0;
    QByteArray pixels;
};
using NotifierPixmaps = QList<NotifierPixmap>;

/// (sa(iiay)ss), without a picture of its own or text below the title.
struct NotifierToolTip {
    QString iconName;
    NotifierPixmaps pixmaps;
    QString title;
    QString text;
};

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierPixmap& pixmap) {
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.pixels;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierPixmap& pixmap) {
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.pixels;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const NotifierToolTip& toolTip) {
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.pixmaps << toolTip.title << toolTip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, NotifierToolTip& toolTip) {
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.pixmaps >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return argument;
}

NotifierPixmaps notifierPixmaps(const QList<QImage>& pictures) {
    NotifierPixmaps pixmaps;
    for (const QImage& picture : pictures) {
        const QImage image = picture.convertToFormat(QImage::Format_ARGB32);
        NotifierPixmap pixmap{image.width(), image.height(), QByteArray(image.sizeInBytes(), Qt::Uninitialized)};
        qToBigEndian<quint32>(image.constBits(), image.sizeInBytes() / qsizetype{sizeof(quint32)},
                              pixmap.pixels.data());
        pixmaps.push_back(std::move(pixmap));
    }
    return pixmaps;
}

/// Registers these types with D-Bus. Called before the first one is sent.
void registerNotifierPixmaps() {
    qDBusRegisterMetaType<NotifierPixmap>();
    qDBusRegisterMetaType<NotifierPixmaps>();
    qDBusRegisterMetaType<NotifierToolTip>();
}

/// Every item of a process has a name of its own. The watcher follows it to notice when the item goes.
QString nextServiceName() {
    static int count = 0;
    return QStringLiteral("%1-%2-%3").arg(itemInterface).arg(QCoreApplication::applicationPid()).arg(++count);
}

}  // namespace

NotifierHost::NotifierHost(const QDBusConnection& bus, std::function<void(bool)> onAnswer)
    : bus_(bus),
      onAnswer_(std::move(onAnswer)),
      watcherService_(watcherName, bus, QDBusServiceWatcher::WatchForOwnerChange) {
    asking_.setSingleShot(true);
    asking_.setInterval(0);
    QObject::connect(&asking_, &QTimer::timeout, [this] { askForHost(); });
    QObject::connect(&watcherService_, &QDBusServiceWatcher::serviceOwnerChanged, &asking_,
                     qOverload<>(&QTimer::start));
    for (const char* const signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        bus_.connect(watcherName, watcherPath, watcherName, QString::fromLatin1(signal), &asking_, SLOT(start()));
    asking_.start();
}

void NotifierHost::askForHost() {
    if (!bus_.isConnected())
        return onAnswer_(false);
    QDBusMessage question =
        propertyCall(watcherName, watcherPath, watcherName, QStringLiteral("IsStatusNotifierHostRegistered"));
    // The question must not start a watcher that is not running.
    question.setAutoStartService(false);
    callOnBus(bus_, question, asking_, [this](const QDBusMessage& answer) {
        const QDBusReply<QDBusVariant> reply = answer;
        onAnswer_(reply.isValid() && reply.value().variant().toBool());
    });
}

NotifierItem::NotifierItem(const QDBusConnection& bus, NotifierContent content, NotifierActions actions)
    : bus_(bus),
      service_(nextServiceName()),
      content_(std::move(content)),
      actions_(std::move(actions)),
      menu_(bus, actions_.menu) {
    hosts_.setConnection(bus_);
    hosts_.setWatchMode(QDBusServiceWatcher::WatchForUnregistration);
    connect(&hosts_, &QDBusServiceWatcher::serviceUnregistered, this, [this](const QString& host) {
        hosts_.removeWatchedService(host);
        if (hosts_.watchedServices().isEmpty())
            actions_.onSeen(false);
    });
    registerNotifierPixmaps();
    bus_.registerVirtualObject(itemPath, this);
    requestName();
    QDBusMessage registration = QDBusMessage::createMethodCall(watcherName, watcherPath, watcherName,
                                                               QStringLiteral("RegisterStatusNotifierItem"));
    registration << service_;
    bus_.call(registration, QDBus::NoBlock);
}

NotifierItem::~NotifierItem() {
    bus_.unregisterObject(itemPath);
    bus_.call(busCall(QStringLiteral("ReleaseName"), {service_}), QDBus::NoBlock);
}

void NotifierItem::requestName() {
    // No need to wait: the bus keeps the order, so it knows the name before the watcher learns of it.
    bus_.call(nameRequest(service_), QDBus::NoBlock);
}

void NotifierItem::setContent(NotifierContent content) {
    content_ = std::move(content);
    for (const char* const signal : {"NewIcon", "NewTitle", "NewToolTip"})
        announce(signal);
    menu_.announceChange();
}

void NotifierItem::announce(const char* signal) const {
    bus_.send(QDBusMessage::createSignal(itemPath, itemInterface, QString::fromLatin1(signal)));
}

QVariantMap NotifierItem::properties() const {
    const NotifierPixmaps pixmaps = notifierPixmaps(content_.pictures);
    const NotifierToolTip toolTip{{}, {}, content_.title, {}};
    return {
        {QStringLiteral("Category"), QStringLiteral("ApplicationStatus")},
        {QStringLiteral("Id"), QStringLiteral("stowpocket")},
        {QStringLiteral("Title"), content_.title},
        {QStringLiteral("Status"), QStringLiteral("Active")},
        {QStringLiteral("WindowId"), 0},
        {QStringLiteral("IconName"), QString()},
        {QStringLiteral("IconPixmap"), QVariant::fromValue(pixmaps)},
        {QStringLiteral("ToolTip"), QVariant::fromValue(toolTip)},
        {QStringLiteral("ItemIsMenu"), false},
        {QStringLiteral("Menu"), QVariant::fromValue(QDBusObjectPath(NotifierMenu::path))},
    };
}

QString NotifierItem::introspect(const QString& path) const {
    if (path != itemPath)
        return {};
    QString xml = QStringLiteral("<interface name=\"%1\">"
                                 "<method name=\"Activate\"><arg type=\"i\" direction=\"in\"/>"
                                 "<arg type=\"i\" direction=\"in\"/></method>"
                                 "<method name=\"ContextMenu\"><arg type=\"i\" direction=\"in\"/>"
                                 "<arg type=\"i\" direction=\"in\"/></method>"
                                 "<signal name=\"NewIcon\"/><signal name=\"NewTitle\"/><signal name=\"NewToolTip\"/>")
                      .arg(itemInterface);
    const QVariantMap values = properties();
    for (auto value = values.begin(); value != values.end(); ++value)
        xml += QStringLiteral("<property name=\"%1\" type=\"%2\" access=\"read\"/>")
                   .arg(value.key(), QString::fromLatin1(QDBusMetaType::typeToSignature(value->metaType())));
    return xml + QStringLiteral("</interface>");
}

bool NotifierItem::handleMessage(const QDBusMessage& message, const QDBusConnection&) {
    if (message.interface() == propertiesInterface) {
        bus_.send(answerAboutProperties(message));
        askedBy(message.service());
    } else if (message.interface() == itemInterface || message.interface().isEmpty()) {
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
    actions_.onSeen(true);
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

QDBusMessage NotifierItem::answer(const QDBusMessage& call) const {
    if (call.signature() != QStringLiteral("ii"))
        return call.createReply();
    const QPoint place(call.arguments().at(0).toInt(), call.arguments().at(1).toInt());
    if (call.member() == QStringLiteral("Activate"))
        actions_.onActivate(place);
    else if (call.member() == QStringLiteral("ContextMenu"))
        actions_.onContextMenu(place);
    return call.createReply();
}

}  // namespace stowpocket
