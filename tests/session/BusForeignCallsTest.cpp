// SPDX-License-Identifier: MIT
// What other programs on the bus may send.
#include "platform/linux/session/ShelfBus.h"
#include "session/BusFixture.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace stowpocket {
namespace {

class BusForeignCallsTest : public testing::Test, protected BusFixture {
protected:
    QDBusMessage call(const char* method, const QVariantList& arguments = {}) {
        return bus.call(stranger, shelfCall(method, arguments));
    }
    std::string errorOf(const char* method, const QVariantList& arguments) {
        return call(method, arguments).errorName().section(QLatin1Char('.'), -1).toStdString();
    }
    QDBusConnection stranger = bus.connection(QStringLiteral("stranger"));
};

TEST_F(BusForeignCallsTest, malformedRequestsAreAnsweredAndChangeNothing) {
    ASSERT_TRUE(start());
    const QVariantMap options{{QStringLiteral("activation-token"), QVariantMap()}};
    EXPECT_EQ(errorOf("Add", {}), "InvalidArgs");
    EXPECT_EQ(errorOf("Add", {QStringLiteral("file:///a")}), "InvalidArgs");
    EXPECT_EQ(errorOf("Add", {QStringList(), 1}), "InvalidArgs");
    EXPECT_EQ(errorOf("Remove", {QVariantList{1, 2}}), "InvalidArgs");
    EXPECT_EQ(errorOf("Clear", {true}), "InvalidArgs");
    EXPECT_EQ(errorOf("Show", {}), "InvalidArgs");
    EXPECT_EQ(errorOf("Quit", {}), "UnknownMethod");
    EXPECT_EQ(log, CallLog());
    EXPECT_EQ(call("Show", {options}).type(), QDBusMessage::ReplyMessage) << "a token of another type is none";
    EXPECT_TRUE(tokens.empty());
    EXPECT_EQ(call("Version").arguments(), QVariantList{QStringLiteral("7.8.9")});
}

TEST_F(BusForeignCallsTest, namesAreMeasuredAndRead) {
    ASSERT_TRUE(start());
    const QStringList urls{QStringLiteral("https://host/a"),
                           QStringLiteral("file://elsewhere/a"),
                           QStringLiteral("relative"),
                           QStringLiteral("file:///%00"),
                           QStringLiteral("file:///") + QString(1'000'000, QLatin1Char('x')),
                           QString()};
    const QString malformed = QStringLiteral("malformed");
    EXPECT_EQ(call("Add", {urls}).arguments().value(0).toStringList(), QStringList(urls.size(), malformed));
    EXPECT_EQ(call("Remove", {urls}).arguments().value(0).toStringList(), QStringList(urls.size(), malformed));

    QStringList many(qsizetype{maxFilesPerRequest}, QStringLiteral("x"));
    EXPECT_EQ(call("Add", {many}).arguments().value(0).toStringList().size(), many.size());
    many.push_back(QStringLiteral("file:///a"));
    EXPECT_EQ(errorOf("Add", {many}), "LimitsExceeded");
    EXPECT_EQ(errorOf("Remove", {many}), "LimitsExceeded");
    EXPECT_EQ(staged(), std::vector<std::string>());
}

TEST_F(BusForeignCallsTest, anotherUserIsRefused) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can become another user";
    ASSERT_TRUE(start());
    QProcess process;
    process.setProcessEnvironment(bus.environment);
    process.start(QStringLiteral("setpriv"),
                  {QStringLiteral("--reuid=65534"), QStringLiteral("--regid=65534"), QStringLiteral("--clear-groups"),
                   QStringLiteral("dbus-send"), QStringLiteral("--session"), QStringLiteral("--print-reply"),
                   QStringLiteral("--dest=") + shelfBus::service, shelfBus::path,
                   shelfBus::interface + QStringLiteral(".List")});
    const Ended ended = bus.run(process);
    EXPECT_NE(ended.code, 0);
    EXPECT_NE(ended.err.find("this shelf belongs to another user"), std::string::npos) << ended.err;
}

TEST_F(BusForeignCallsTest, requestsThatComeDuringTheStartAreKept) {
    ASSERT_EQ(instance.claim(), BusInstance::Claim::owned);
    const QDBusPendingCall early = stranger.asyncCall(shelfCall("Add", {QStringList{QStringLiteral("file:///a")}}));
    const QDBusMessage ping =
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId"));
    for (int round = 0; round < 5; ++round)
        static_cast<void>(bus.call(stranger, ping));
    instance.serve(commands);
    EXPECT_EQ(bus.answer(early).arguments(), QVariantList{QStringList{QStringLiteral("added")}});
}

TEST_F(BusForeignCallsTest, theInterfaceIsDescribed) {
    ASSERT_TRUE(start());
    QDBusMessage introspect = QDBusMessage::createMethodCall(shelfBus::service, shelfBus::path,
                                                             QStringLiteral("org.freedesktop.DBus.Introspectable"),
                                                             QStringLiteral("Introspect"));
    const QString xml = bus.call(stranger, introspect).arguments().value(0).toString();
    for (const char* part : {"com.example.stowpocket.Shelf1", "QuickDrop", "aa{sv}"})
        EXPECT_TRUE(xml.contains(QString::fromLatin1(part))) << part << " in " << xml.toStdString();
}

}  // namespace
}  // namespace stowpocket
