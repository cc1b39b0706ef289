// SPDX-License-Identifier: MIT
#include "platform/linux/tray/NotifierMenu.h"

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QTimer>

#include <algorithm>

namespace stowpocket {
namespace {

const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
constexpr uint protocolVersion = 3;
constexpr int root = 0;
/// Lines have ids too: that of the entry below, and this.
constexpr int lineAbove = 1'000'000;

/// (ia{sv}): an entry without those below it.
struct MenuProperties {
    int id = root;
    QVariantMap values;
};

/// (ia{sv}av)
struct MenuLayout {
    int id = root;
    QVariantMap values;
    QList<QDBusVariant> below;
};

QDBusArgument& operator<<(QDBusArgument& argument, const MenuProperties& entry) {
    argument.beginStructure();
    argument << entry.id << entry.values;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuProperties& entry) {
    argument.beginStructure();
    argument >> entry.id >> entry.values;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const MenuLayout& entry) {
    argument.beginStructure();
    argument << entry.id << entry.values << entry.below;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuLayout& entry) {
    argument.beginStructure();
    argument >> entry.id >> entry.values >> entry.below;
    argument.endStructure();
    return argument;
}

/// An underscore marks the letter of a shortcut, two are one.
QString label(const std::string& title) {
    return QString::fromStdString(title).replace(QLatin1Char('_'), QStringLiteral("__"));
}

/// Everything on the menu, lines included, in its order. Only what differs from the default is told.
std::vector<MenuProperties> rowsOf(const std::vector<StatusItemMenuEntry>& entries) {
    std::vector<MenuProperties> rows;
    for (const StatusItemMenuEntry& entry : entries) {
        if (entry.beginsGroup)
            rows.push_back({entry.id + lineAbove, {{QStringLiteral("type"), QStringLiteral("separator")}}});
        QVariantMap values{{QStringLiteral("label"), label(entry.title)}};
        if (!entry.isEnabled)
            values.insert(QStringLiteral("enabled"), false);
        rows.push_back({entry.id, std::move(values)});
    }
    return rows;
}

QVariantMap rootValues() {
    return {{QStringLiteral("children-display"), QStringLiteral("submenu")}};
}

/// An empty list of names stands for all.
QVariantMap named(QVariantMap values, const QStringList& names) {
    for (auto value = values.begin(); value != values.end();)
        value = names.isEmpty() || names.contains(value.key()) ? std::next(value) : values.erase(value);
    return values;
}

QDBusMessage unknownEntry(const QDBusMessage& call) {
    return call.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("there is no such entry"));
}

}  // namespace

// The object that other programs use too.
const QString NotifierMenu::path = QStringLiteral("/MenuBar");

NotifierMenu::NotifierMenu(const QDBusConnection& bus, StatusItemMenu menu) : bus_(bus), menu_(std::move(menu)) {
    qDBusRegisterMetaType<MenuProperties>();
    qDBusRegisterMetaType<QList<MenuProperties>>();
    qDBusRegisterMetaType<MenuLayout>();
    qDBusRegisterMetaType<QList<QDBusVariant>>();
    qDBusRegisterMetaType<QList<int>>();
    bus_.registerVirtualObject(path, this);
}

NotifierMenu::~NotifierMenu() {
    bus_.unregisterObject(path);
}

void NotifierMenu::announceChange() {
    if (delivered_.empty() || !isToBeFetched())
        return;
    QDBusMessage signal = QDBusMessage::createSignal(path, menuInterface, QStringLiteral("LayoutUpdated"));
    signal << revision_ + 1 << root;
    bus_.send(signal);
}

NotifierMenu::Entries NotifierMenu::entriesNow() const {
    return menu_.entries ? menu_.entries() : Entries();
}

QString NotifierMenu::introspect(const QString& object) const {
    if (object != path)
        return {};
    const auto method = [](const char* name, std::initializer_list<const char*> in,
                           std::initializer_list<const char*> out) {
        QString xml = QStringLiteral("<method name=\"%1\">").arg(QLatin1String(name));
        for (const char* const type : in)
            xml += QStringLiteral("<arg type=\"%1\" direction=\"in\"/>").arg(QLatin1String(type));
        for (const char* const type : out)
            xml += QStringLiteral("<arg type=\"%1\" direction=\"out\"/>").arg(QLatin1String(type));
        return xml + QStringLiteral("</method>");
    };
    return QStringLiteral("<interface name=\"%1\">").arg(menuInterface) +
           method("GetLayout", {"i", "i", "as"}, {"u", "(ia{sv}av)"}) +
           method("GetGroupProperties", {"ai", "as"}, {"a(ia{sv})"}) + method("GetProperty", {"i", "s"}, {"v"}) +
           method("Event", {"i", "s", "v", "u"}, {}) + method("EventGroup", {"a(isvu)"}, {"ai"}) +
           method("AboutToShow", {"i"}, {"b"}) + method("AboutToShowGroup", {"ai"}, {"ai", "ai"}) +
           QStringLiteral("<property name=\"Version\" type=\"u\" access=\"read\"/>"
                          "<property name=\"Status\" type=\"s\" access=\"read\"/>"
                          "<property name=\"TextDirection\" type=\"s\" access=\"read\"/>"
                          "<signal name=\"LayoutUpdated\"><arg type=\"u\"/><arg type=\"i\"/></signal></interface>");
}

bool NotifierMenu::handleMessage(const QDBusMessage& message, const QDBusConnection&) {
    if (message.interface() == propertiesInterface)
        bus_.send(answerAboutProperties(message));
    else if (message.interface() == menuInterface || message.interface().isEmpty())
        bus_.send(answer(message));
    else
        return false;
    return true;
}

QDBusMessage NotifierMenu::answerAboutProperties(const QDBusMessage& question) const {
    const QVariantMap values{{QStringLiteral("Version"), protocolVersion},
                             {QStringLiteral("Status"), QStringLiteral("normal")},
                             {QStringLiteral("TextDirection"), QStringLiteral("ltr")}};
    if (question.member() == QStringLiteral("GetAll"))
        return question.createReply(values);
    const auto value = values.find(question.arguments().value(1).toString());
    if (question.member() != QStringLiteral("Get") || value == values.end())
        return question.createErrorReply(QDBusError::UnknownProperty, QStringLiteral("there is no such property"));
    return question.createReply(QVariant::fromValue(QDBusVariant(*value)));
}

/// Each method takes exactly the types of its description.
QDBusMessage NotifierMenu::answer(const QDBusMessage& call) {
    const QString method = call.member() + QLatin1Char(':') + call.signature();
    if (method == QStringLiteral("GetLayout:iias"))
        return layout(call);
    if (method == QStringLiteral("GetGroupProperties:aias"))
        return propertiesOfEntries(call);
    if (method == QStringLiteral("GetProperty:is"))
        return propertyOfEntry(call);
    if (method == QStringLiteral("Event:isvu"))
        return handleEvent(call);
    if (method == QStringLiteral("EventGroup:a(isvu)"))
        return handleEventGroup(call);
    if (method == QStringLiteral("AboutToShow:i"))
        return call.createReply(isToBeFetched());
    if (method == QStringLiteral("AboutToShowGroup:ai")) {
        const QList<int> updated = isToBeFetched() ? QList<int>{root} : QList<int>();
        return call.createReply({QVariant::fromValue(updated), QVariant::fromValue(QList<int>())});
    }
    return call.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("there is no such method"));
}

QDBusMessage NotifierMenu::layout(const QDBusMessage& call) {
    const int parent = call.arguments().at(0).toInt();
    const bool isDeep = call.arguments().at(1).toInt() != 0;
    const QStringList names = call.arguments().at(2).toStringList();
    Entries entries = entriesNow();
    if (entries != delivered_)
        ++revision_;
    delivered_ = std::move(entries);
    const std::vector<MenuProperties> rows = rowsOf(delivered_);
    MenuLayout top{parent, named(rootValues(), names), {}};
    if (parent != root) {
        const auto row = std::ranges::find(rows, parent, &MenuProperties::id);
        if (row == rows.end())
            return unknownEntry(call);
        top.values = named(row->values, names);
    } else if (isDeep) {
        for (const MenuProperties& row : rows)
            top.below.push_back(QDBusVariant(QVariant::fromValue(MenuLayout{row.id, named(row.values, names), {}})));
    }
    return call.createReply({revision_, QVariant::fromValue(top)});
}

/// An empty list of ids stands for all. Each entry is told once, however often it is asked for.
QDBusMessage NotifierMenu::propertiesOfEntries(const QDBusMessage& call) const {
    const auto ids = qdbus_cast<QList<int>>(call.arguments().at(0));
    const QStringList names = call.arguments().at(1).toStringList();
    QList<MenuProperties> found;
    if (ids.isEmpty() || ids.contains(root))
        found.push_back({root, named(rootValues(), names)});
    for (const MenuProperties& row : rowsOf(delivered_)) {
        if (ids.isEmpty() || ids.contains(row.id))
            found.push_back({row.id, named(row.values, names)});
    }
    return call.createReply(QVariant::fromValue(found));
}

QDBusMessage NotifierMenu::propertyOfEntry(const QDBusMessage& call) const {
    const std::vector<MenuProperties> rows = rowsOf(delivered_);
    const auto row = std::ranges::find(rows, call.arguments().at(0).toInt(), &MenuProperties::id);
    if (row == rows.end() || !row->values.contains(call.arguments().at(1).toString()))
        return unknownEntry(call);
    return call.createReply(QVariant::fromValue(QDBusVariant(row->values.value(call.arguments().at(1).toString()))));
}

QDBusMessage NotifierMenu::handleEvent(const QDBusMessage& call) {
    happen(call.arguments().at(0).toInt(), call.arguments().at(1).toString());
    return call.createReply();
}

/// Of many events that come together the first is taken: a user chooses one entry.
QDBusMessage NotifierMenu::handleEventGroup(const QDBusMessage& call) {
    const auto events = call.arguments().at(0).value<QDBusArgument>();
    int id = root;
    QString kind;
    QDBusVariant data;
    uint time = 0;
    events.beginArray();
    if (!events.atEnd()) {
        events.beginStructure();
        events >> id >> kind >> data >> time;
        events.endStructure();
    }
    happen(id, kind);
    return call.createReply(QVariant::fromValue(QList<int>()));
}

void NotifierMenu::happen(int id, const QString& event) {
    if (event == QStringLiteral("clicked") && menu_.choose)
        QTimer::singleShot(0, this, [choose = menu_.choose, id] { choose(id); });
}

}  // namespace stowpocket
