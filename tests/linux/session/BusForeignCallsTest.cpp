// SPDX-License-Identifier: MIT
// What other programs on the bus may send.
#include "cli/ShelfCommands.h"
#include "fakes/AppFixture.h"
#include "platform/linux/session/BusInstance.h"
#include "support/PrivateBus.h"

#include <QDBusConnectionInterface>
#include <QProcess>
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
    for (const auto& [method, arguments] :
         {std::pair("Add", QVariantList()), {"Add", {QStringLiteral("file:///a")}}, {"Clear", {true}}, {"Show", {}}})
        EXPECT_EQ(errorOf(method, arguments), "InvalidArgs") << method;
    const QStringList many(qsizetype{maxFilesPerRequest} + 1, QStringLiteral("file:///a"));
    EXPECT_EQ(errorOf("Add", {many}), "LimitsExceeded");
    EXPECT_EQ(errorOf("Quit", {}), "UnknownMethod");
    const QString key = QStringLiteral("activation-token");
    EXPECT_EQ(call("Toggle", {QVariantMap{{key, QVariantMap()}}}).type(), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(tokens.empty()) << "a token of another type is none";
    EXPECT_EQ(call("Show", {QVariantMap{{key, QStringLiteral("token")}}}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(tokens, (std::vector<StartupTokens>{{.activationToken = "token", .startupID = {}}}));
}

TEST_F(BusForeignCallsTest, takesAndAnswersTheTypesOfItsDescription) {
    instance.serve(commands);
    const QMap<QString, QVariantList> examples{{QStringLiteral("as"), {QStringList()}},
                                               {QStringLiteral("a{sv}"), {QVariantMap()}}};
    std::map<std::string, std::map<QString, QString>> methods;  // their types, by direction
    std::string name;
    for (QXmlStreamReader xml(instance.introspect(shelfBus::path)); !xml.atEnd(); xml.readNext()) {
        const auto value = [&xml](const char* key) { return xml.attributes().value(QLatin1String(key)).toString(); };
        if (xml.isStartElement() && xml.name() == QStringLiteral("method"))
            methods[name = value("name").toStdString()];
        else if (xml.isStartElement() && xml.name() == QStringLiteral("arg"))
            methods[name][value("direction")] += value("type");
    }
    EXPECT_EQ(methods.size(), 12U);
    for (auto& [method, types] : methods)
        EXPECT_EQ(call(method.c_str(), examples.value(types[QStringLiteral("in")])).signature(),
                  types[QStringLiteral("out")])
            << method;
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
