// SPDX-License-Identifier: MIT
// The program without its desktop: the start, the hand-over and the verbs are the real ones, the shelf behind them
// stands on fakes. It ends when the bus does, so that none is left behind.
#include "cli/CommandLine.h"
#include "fakes/AppFixture.h"
#include "platform/linux/session/BusInstance.h"
#include "platform/linux/session/CommandProcess.h"

#include <QAbstractEventDispatcher>
#include <QCoreApplication>

#include <cstdio>

using namespace stowpocket;

namespace {

constexpr auto version = "7.8.9";

int runProgram(const Command& command, BusInstance& instance) {
    AppFixture fixture;
    fixture.launch();
    ShelfCommands commands(*fixture.app, {});
    instance.serve(commands);
    openFilesAtStart(command, version, commands, {});
    QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock,
                     [&fixture] { fixture.dispatch.runAll(); });
    QDBusConnection::sessionBus().connect({}, QStringLiteral("/org/freedesktop/DBus/Local"),
                                          QStringLiteral("org.freedesktop.DBus.Local"),
                                          QStringLiteral("Disconnected"), QCoreApplication::instance(), SLOT(quit()));
    std::puts("ready");
    std::fflush(stdout);
    return QCoreApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
    const auto parsed = parsedCommandLine(argumentsOf(argc, argv));
    const Command* const command = std::get_if<Command>(&parsed);
    if (command == nullptr)
        return finish(usageErrorResult(std::get<UsageError>(parsed).message));
    const StartupTokens tokens = startupTokens();
    const QCoreApplication application(argc, argv);
    if (command->verb != Verb::open)
        return runCommandOnBus(*command, version, tokens);
    if (qEnvironmentVariableIsSet("SESSION_PEER_CANNOT_START"))
        return 1;
    BusInstance instance(QDBusConnection::sessionBus(), version);
    if (instance.claim() == BusInstance::Claim::takenByAnother)
        return runCommandOnBus(*command, version, tokens);
    return runProgram(*command, instance);
}
