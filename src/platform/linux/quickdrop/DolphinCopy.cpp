// SPDX-License-Identifier: MIT
#include "platform/linux/quickdrop/DolphinCopy.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QXmlStreamReader>

#include <chrono>
#include <optional>

namespace stowpocket {
namespace {

/// A program with a folder of files in front answers in a millisecond or two.
constexpr std::chrono::milliseconds timeLimit(300);

/// The objects of one Dolphin process, asked one question after the other until the time is up.
class DolphinProcess {
public:
    explicit DolphinProcess(std::uint32_t process) : service_(QStringLiteral("org.kde.dolphin-%1").arg(process)) {}

    /// What the method answers, first value only; none when there is no answer.
    [[nodiscard]] std::optional<QVariant> call(const QString& path, const QString& interface,
                                               const QString& method) const {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end_ - std::chrono::steady_clock::now());
        if (left.count() <= 0)
            return std::nullopt;
        const QDBusMessage answer =
            QDBusConnection::sessionBus().call(QDBusMessage::createMethodCall(service_, path, interface, method),
                                               QDBus::Block, static_cast<int>(left.count()));
        if (answer.type() != QDBusMessage::ReplyMessage)
            return std::nullopt;
        return answer.arguments().value(0);
    }

private:
    const QString service_;
    const std::chrono::steady_clock::time_point end_ = std::chrono::steady_clock::now() + timeLimit;
};

QStringList childrenIn(const QString& introspection) {
    QStringList names;
    QXmlStreamReader xml(introspection);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement || xml.name() != u"node")
            continue;
        const QString name = xml.attributes().value(QLatin1String("name")).toString();
        if (!name.isEmpty())
            names.push_back(name);
    }
    return names;
}

}  // namespace

bool copyInDolphin(std::uint32_t process, std::uint32_t window) {
    const DolphinProcess dolphin(process);
    const QString windows = QStringLiteral("/dolphin");
    const auto introspection =
        dolphin.call(windows, QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"));
    for (const QString& name : childrenIn(introspection.value_or(QVariant()).toString())) {
        const QString path = windows + QLatin1Char('/') + name;
        const auto id = dolphin.call(path, QStringLiteral("org.kde.KMainWindow"), QStringLiteral("winId"));
        if (id && id->toULongLong() == window)
            return dolphin
                .call(path + QStringLiteral("/actions/edit_copy"), QStringLiteral("org.qtproject.Qt.QAction"),
                      QStringLiteral("trigger"))
                .has_value();
    }
    return false;
}

}  // namespace stowpocket
