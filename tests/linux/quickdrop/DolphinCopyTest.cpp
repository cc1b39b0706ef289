// SPDX-License-Identifier: MIT
#include "platform/linux/quickdrop/QuickDropRun.h"
#include "support/ComesTrue.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>

#include <gtest/gtest.h>

#include <future>

namespace stowpocket {
namespace {

constexpr std::uint32_t process = 4711;

/// One Dolphin process with the windows 1 and 2 on the bus.
class FakeDolphin : public QDBusVirtualObject {
public:
    FakeDolphin() {
        bus_.registerService(QStringLiteral("org.kde.dolphin-%1").arg(process));
        bus_.registerVirtualObject(QStringLiteral("/dolphin"), this, QDBusConnection::SubPath);
    }
    ~FakeDolphin() override { QDBusConnection::disconnectFromBus(bus_.name()); }
    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& bus) override {
        calls += message.path().toStdString() + " " + message.member().toStdString() + "\n";
        QVariantList answer;
        if (message.member() == QStringLiteral("Introspect"))
            answer = {QStringLiteral("<node><node name='Dolphin_1'/><node name='Dolphin_2'/></node>")};
        else if (message.member() == QStringLiteral("winId"))
            answer = {message.path().right(1).toLongLong()};
        return bus.send(message.createReply(answer));
    }
    std::string calls;

private:
    QDBusConnection bus_ = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("dolphin"));
};

TEST(DolphinCopyTest, asksTheWindowInFrontAndNoOther) {
    FakeDolphin dolphin;
    const auto copied = [](std::uint32_t window) {
        auto answer = std::async(std::launch::async, copyInDolphin, process, window);
        EXPECT_TRUE(comesTrue([&] { return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
        return answer.get();
    };
    EXPECT_TRUE(copied(2));
    EXPECT_EQ(std::exchange(dolphin.calls, {}),
              "/dolphin Introspect\n/dolphin/Dolphin_1 winId\n/dolphin/Dolphin_2 winId\n"
              "/dolphin/Dolphin_2/actions/edit_copy trigger\n");
    EXPECT_FALSE(copied(3));
}

}  // namespace
}  // namespace stowpocket
