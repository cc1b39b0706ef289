// SPDX-License-Identifier: MIT
// What other programs on the bus may send.
#include "cli/ShelfCommands.h"
#include "fakes/AppFixture.h"
#include "platform/linux/session/BusInstance.h"
#include "support/PrivateBus.h"

#include <QDBusConnectionInterface>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <unistd.h>

namespace stowpocket {
namespace {

struct LaunchedApp : AppFixture {
    LaunchedApp() { launch(); }
};

/// The application on fakes as the program that runs on a private bus.
class BusForeignCallsTest : public testing::Test, protected LaunchedApp {
protected:
    BusForeignCallsTest() {
        bus.beforeWaiting = [this] { dispatch.runAll(); };
        EXPECT_EQ(instance.claim(), BusInstance::Claim::owned);
    }
    static QDBusMessage shelfCall(const char* method, const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createMethodCall(shelfBus::service, shelfBus::path, shelfBus::interface,
                                                              QString::fromUtf8(method));
        message.setArguments(arguments);
        return message;
    }
    QDBusMessage call(const char* method, const QVariantList& arguments = {}) {
        return bus.call(stranger, shelfCall(method, arguments));
    }
    std::string errorOf(const char* method, const QVariantList& arguments) {
        return call(method, arguments).errorName().section(QLatin1Char('.'), -1).toStdString();
    }

    PrivateBus bus;
    std::vector<StartupTokens> tokens;
    ShelfCommands commands{*app, [this](const StartupTokens& used) { tokens.push_back(used); }};
    BusInstance instance{bus.connection(QStringLiteral("instance")), "7.8.9",
                         [this](const QString& name) { return bus.connection(name); }};
    QDBusConnection stranger = bus.connection(QStringLiteral("stranger"));
};

TEST_F(BusForeignCallsTest, malformedRequestsAreAnsweredAndChangeNothing) {
    instance.serve(commands);
    for (const auto& [method, arguments] : {std::pair("Add", QVariantList()),
                                            {"Add", {QStringLiteral("file:///a")}},
                                            {"Add", {QStringList(), 1}},
                                            {"Remove", {QVariantList{1, 2}}},
                                            {"Clear", {true}},
                                            {"Show", {}}})
        EXPECT_EQ(errorOf(method, arguments), "InvalidArgs") << method;
    EXPECT_EQ(errorOf("Quit", {}), "UnknownMethod");
    EXPECT_FALSE(views.popover->isOpen);
    const QString key = QStringLiteral("activation-token");
    EXPECT_EQ(call("Toggle", {QVariantMap{{key, QVariantMap()}}}).type(), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(tokens.empty()) << "a token of another type is none";
    EXPECT_EQ(call("Show", {QVariantMap{{key, QStringLiteral("token")}}}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(tokens, (std::vector<StartupTokens>{{.activationToken = "token", .startupID = {}}}));
    EXPECT_EQ(call("Version").arguments(), QVariantList{QStringLiteral("7.8.9")});
}

/// The types of the arguments of each method that the object describes, first those that it takes.
std::map<QString, std::pair<QString, QString>> describedMethods(const QString& introspection) {
    std::map<QString, std::pair<QString, QString>> methods;
    QString method;
    bool isOurs = false;
    for (QXmlStreamReader xml(introspection); !xml.atEnd(); xml.readNext()) {
        const auto attribute = [&xml](const char* name) {
            return xml.attributes().value(QLatin1String(name)).toString();
        };
        if (!xml.isStartElement())
            continue;
        if (xml.name() == u"interface")
            isOurs = attribute("name") == shelfBus::interface;
        else if (isOurs && xml.name() == u"method")
            methods[method = attribute("name")];
        else if (isOurs && attribute("direction") == u"in")
            methods[method].first += attribute("type");
        else if (isOurs)
            methods[method].second += attribute("type");
    }
    return methods;
}

TEST_F(BusForeignCallsTest, describesWhatItServes) {
    instance.serve(commands);
    const QDBusMessage question = QDBusMessage::createMethodCall(
        shelfBus::service, shelfBus::path, QStringLiteral("org.freedesktop.DBus.Introspectable"),
        QStringLiteral("Introspect"));
    const auto methods = describedMethods(bus.call(stranger, question).arguments().value(0).toString());
    EXPECT_EQ(methods.size(), 8u);
    for (const auto& [method, types] : methods) {
        const QVariantList arguments = types.first == u"as"      ? QVariantList{QStringList()}
                                       : types.first == u"a{sv}" ? QVariantList{QVariantMap()}
                                                                 : QVariantList{};
        const QDBusMessage answer = call(method.toUtf8().constData(), arguments);
        EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << method.toStdString();
        EXPECT_EQ(answer.signature(), types.second) << method.toStdString();
    }
}

TEST_F(BusForeignCallsTest, namesAreMeasuredAndRead) {
    instance.serve(commands);
    const QStringList urls{QStringLiteral("https://host/a"),
                           QStringLiteral("file://elsewhere/a"),
                           QStringLiteral("relative"),
                           QStringLiteral("file:///%00"),
                           QStringLiteral("file:///") + QString(1'000'000, QLatin1Char('x')),
                           QString()};
    QStringList many(qsizetype{maxFilesPerRequest}, QStringLiteral("x"));
    for (const char* method : {"Add", "Remove"}) {
        EXPECT_EQ(call(method, {urls}).arguments().value(0).toStringList(),
                  QStringList(urls.size(), QStringLiteral("malformed")));
        EXPECT_EQ(call(method, {many}).arguments().value(0).toStringList().size(), many.size());
        EXPECT_EQ(errorOf(method, {many + QStringList(QStringLiteral("file:///a"))}), "LimitsExceeded");
    }
    EXPECT_TRUE(commands.list().empty());
}

TEST_F(BusForeignCallsTest, anotherUserIsRefused) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root can become another user";
    instance.serve(commands);
    QProcess process;
    process.start(QStringLiteral("setpriv"),
                  {QStringLiteral("--reuid=65534"), QStringLiteral("--regid=65534"), QStringLiteral("--clear-groups"),
                   QStringLiteral("dbus-send"), QStringLiteral("--bus=") + bus.address(),
                   QStringLiteral("--print-reply"), QStringLiteral("--dest=") + shelfBus::service, shelfBus::path,
                   shelfBus::interface + QStringLiteral(".List")});
    bus.waitUntil([&process] { return process.state() == QProcess::NotRunning; });
    EXPECT_NE(process.exitCode(), 0);
    const std::string said = process.readAllStandardError().toStdString();
    EXPECT_NE(said.find("this shelf belongs to another user"), std::string::npos) << said;
}

TEST_F(BusForeignCallsTest, requestsThatComeDuringTheStartAreKept) {
    const QDBusPendingCall early = stranger.asyncCall(shelfCall("Add", {QStringList{QStringLiteral("file:///a")}}));
    for (int round = 0; round < 5; ++round)
        EXPECT_TRUE(stranger.interface()->isServiceRegistered(shelfBus::service));
    instance.serve(commands);
    EXPECT_EQ(bus.answer(early).arguments(), (QVariantList{QStringList{QStringLiteral("added")}, QString()}));
}

TEST_F(BusForeignCallsTest, aBusThatComesBackIsJoinedAgain) {
    instance.serve(commands);
    for (const char* const time : {"first", "second"}) {
        bus.restart();
        stranger = bus.connection(QString::fromUtf8(time));
        bus.waitUntil([this] { return stranger.interface()->isServiceRegistered(shelfBus::service); });
        const QVariantMap token{{QStringLiteral("activation-token"), QString::fromUtf8(time)}};
        EXPECT_EQ(call("Show", {token}).type(), QDBusMessage::ReplyMessage);
        EXPECT_EQ(tokens.back().activationToken, time);
    }
}

}  // namespace
}  // namespace stowpocket
