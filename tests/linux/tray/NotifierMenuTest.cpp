// SPDX-License-Identifier: MIT
#include "platform/linux/tray/NotifierMenu.h"

#include "support/PrivateBus.h"

#include <QDBusArgument>
#include <QDBusVariant>

#include <gtest/gtest.h>

namespace stowpocket {
namespace {

/// A host and the icon's menu on a bus.
class NotifierMenuTest : public testing::Test {
protected:
    std::string call(const char* method, const QVariantList& arguments) {
        QDBusMessage message =
            QDBusMessage::createMethodCall(icon.baseService(), NotifierMenu::path,
                                           QStringLiteral("com.canonical.dbusmenu"), QString::fromLatin1(method));
        message.setArguments(arguments);
        answer = bus.call(host, message);
        return answer.type() == QDBusMessage::ReplyMessage ? answer.signature().toStdString() : "error";
    }
    void choose(int id, const char* event) {
        call("Event", {id, QString::fromLatin1(event), QVariant::fromValue(QDBusVariant(0)), 0U});
    }

    PrivateBus bus;
    QDBusConnection icon = bus.connection(QStringLiteral("icon"));
    QDBusConnection host = bus.connection(QStringLiteral("host"));
    std::vector<StatusItemMenuEntry> entries{{.id = 1, .title = "Open a_b"},
                                             {.id = 2, .title = "Quit", .isEnabled = false, .beginsGroup = true}};
    std::vector<int> chosen;
    NotifierMenu menu{icon, {[this] { return entries; }, [this](int id) { chosen.push_back(id); }}};
    QDBusMessage answer;
};

TEST_F(NotifierMenuTest, isFetchedAnewWhenItHasChangedAndPassesTheChoiceOn) {
    call("AboutToShow", {0});
    EXPECT_TRUE(answer.arguments().at(0).toBool());
    EXPECT_EQ(call("GetLayout", {0, -1, QStringList()}), "u(ia{sv}av)");
    const auto revision = answer.arguments().at(0).toUInt();
    call("AboutToShow", {0});
    EXPECT_FALSE(answer.arguments().at(0).toBool());
    entries.pop_back();
    call("AboutToShow", {0});
    EXPECT_TRUE(answer.arguments().at(0).toBool());
    call("GetLayout", {0, -1, QStringList()});
    EXPECT_GT(answer.arguments().at(0).toUInt(), revision);
    call("GetProperty", {1, QStringLiteral("label")});
    EXPECT_EQ(answer.arguments().at(0).value<QDBusVariant>().variant(), QStringLiteral("Open a__b"));
    choose(1, "hovered");
    choose(1, "clicked");
    bus.waitUntil([this] { return !chosen.empty(); });
    EXPECT_EQ(chosen, std::vector{1});
}

TEST_F(NotifierMenuTest, answersWhateverAHostSends) {
    const QVariant ids = QVariant::fromValue(QList<int>(20'000, -7));
    EXPECT_EQ(call("GetLayout", {-5, 1, QStringList()}), "error");
    EXPECT_EQ(call("GetProperty", {1, QStringLiteral("no such")}), "error");
    EXPECT_EQ(call("GetGroupProperties", {ids, QStringList()}), "a(ia{sv})");
    EXPECT_EQ(call("AboutToShowGroup", {ids}), "aiai");
    EXPECT_EQ(call("Event", {1}), "error");
    EXPECT_TRUE(chosen.empty());
}

}  // namespace
}  // namespace stowpocket
