// SPDX-License-Identifier: MIT
#include "platform/linux/session/PortalColorScheme.h"
#include "session/PrivateBus.h"

#include <gtest/gtest.h>

#include <QDBusVariant>
#include <QDBusVirtualObject>

#include <optional>

namespace stowpocket {
namespace {

const QString path = QStringLiteral("/org/freedesktop/portal/desktop");

/// A portal that answers each question with `answer`, or with an error when there is none.
class FakePortal : public QDBusVirtualObject {
public:
    explicit FakePortal(QDBusConnection bus) : bus_(std::move(bus)) {
        bus_.registerVirtualObject(path, this);
        bus_.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    }
    [[nodiscard]] QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection&) override {
        const bool isKnown = message.member() == QStringLiteral("Read") &&
                             message.arguments() == QVariantList{QStringLiteral("org.freedesktop.appearance"),
                                                                 QStringLiteral("color-scheme")};
        return bus_.send(isKnown && answer.isValid()
                             ? message.createReply(QVariant::fromValue(QDBusVariant(answer)))
                             : message.createErrorReply(QDBusError::UnknownMethod, QStringLiteral("none")));
    }
    void change(const QVariant& newAnswer) {
        answer = newAnswer;
        QDBusMessage signal = QDBusMessage::createSignal(path, QStringLiteral("org.freedesktop.portal.Settings"),
                                                         QStringLiteral("SettingChanged"));
        signal << QStringLiteral("org.freedesktop.appearance") << QStringLiteral("color-scheme")
               << QVariant::fromValue(QDBusVariant(answer));
        bus_.send(signal);
    }
    QVariant answer;

private:
    QDBusConnection bus_;
};

TEST(PortalColorSchemeTest, followsThePortalAndTakesNothingElseForAPreference) {
    PrivateBus bus;
    std::vector<ColorScheme> answers;
    const auto heard = [&](ColorScheme scheme) { answers.push_back(scheme); };
    const auto next = [&] {
        const std::size_t before = answers.size();
        bus.waitUntil([&] { return answers.size() > before; });
        return answers.back();
    };
    {
        const PortalColorScheme withoutPortal(bus.connection(QStringLiteral("alone")), heard);
        EXPECT_TRUE(answers.empty()) << "never during the call";
        EXPECT_EQ(next(), ColorScheme::noPreference);
    }
    FakePortal portal(bus.connection(QStringLiteral("portal")));
    portal.answer = QVariant::fromValue(QDBusVariant(1U));
    const PortalColorScheme scheme(bus.connection(QStringLiteral("program")), heard);
    EXPECT_EQ(next(), ColorScheme::dark) << "wrapped twice, as portals do";
    for (const auto& [value, expected] : std::vector<std::pair<QVariant, ColorScheme>>{
             {2U, ColorScheme::light},
             {1U, ColorScheme::dark},
             {0U, ColorScheme::noPreference},
             {77U, ColorScheme::noPreference},
             {QStringLiteral("dark"), ColorScheme::noPreference},
             {QVariantMap{{QStringLiteral("a"), 1U}}, ColorScheme::noPreference}}) {
        portal.change(value);
        EXPECT_EQ(next(), expected) << value.toString().toStdString();
    }
}

}  // namespace
}  // namespace stowpocket
