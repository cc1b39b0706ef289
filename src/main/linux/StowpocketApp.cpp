// SPDX-License-Identifier: MIT
#include "cli/CommandLine.h"
#include "cli/ShelfCommands.h"
#include "main/linux/CommandProcess.h"
#include "main/linux/LinuxServices.h"
#include "platform/linux/dbus/BusCalls.h"
#include "platform/linux/drags/X11Clipboard.h"
#include "platform/linux/session/BusInstance.h"
#include "platform/linux/session/OwnProcess.h"
#include "platform/linux/session/ProgramLock.h"
#include "platform/linux/updates/InstalledProgram.h"

#include <QApplication>

#include <cstdio>
#include <malloc.h>

namespace {

using namespace stowpocket;

constexpr auto version = STOWPOCKET_VERSION;

/// A verb is carried out in the program that runs already, and needs no display.
int runCommand(int argc, char** argv, const Command& command, const StartupTokens& tokens) {
    const QCoreApplication application(argc, argv);
    return runCommandOnBus(command, version, tokens);
}

void describe(QApplication& application) {
    application.setQuitOnLastWindowClosed(false);
    QApplication::setApplicationName(QStringLiteral("stowpocket"));
    QApplication::setApplicationVersion(QStringLiteral(STOWPOCKET_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("com.example.stowpocket"));
}

/// The C library would learn from one large drag or call to keep as much memory from then on.
void giveMemoryBack() {
    constexpr int largestKept = 128 << 10;
    mallopt(M_MMAP_THRESHOLD, largestKept);
    mallopt(M_TRIM_THRESHOLD, largestKept);
    // All threads but the main one share a heap: each does little, and a heap of its own would stay for ever.
    mallopt(M_ARENA_MAX, 2);
}

/// None where there are no settings to write.
std::optional<ProgramLock> programLock() {
    const std::optional<std::string> preferences = LinuxPreferenceStore::defaultPath();
    return preferences ? std::optional<ProgramLock>(ProgramLock::pathBeside(*preferences)) : std::nullopt;
}

int runProgram(int argc, char** argv, const Command& command, const StartupTokens& tokens, bool& isRestartAsked) {
    giveMemoryBack();
    // A plain Wayland client can neither place a popover nor watch drags. X11 is taken also where the environment has
    // all Qt programs be Wayland clients.
    const QByteArray asked = qgetenv("QT_QPA_PLATFORM");
    if (asked.isEmpty() || asked.contains("wayland"))
        qputenv("QT_QPA_PLATFORM", "xcb");
    if (qgetenv("QT_QPA_PLATFORM") == "xcb") {
        if (const std::optional<std::string> problem = X11Connection::displayProblem()) {
            std::fprintf(stderr, "stowpocket: %s\n", problem->c_str());
            return EXIT_FAILURE;
        }
    }
    ClipboardHandOver clipboardHandOver;
    QApplication application(argc, argv);
    // The applications that files are opened with choose for themselves.
    if (asked.isNull())
        qunsetenv("QT_QPA_PLATFORM");
    else
        qputenv("QT_QPA_PLATFORM", asked);
    describe(application);
    // Its answer comes while the next ones are waited for.
    AccessibilityBusProbe accessibilityBus(QDBusConnection::sessionBus());
    // Asked first, so that a second start never shows an icon.
    auto instance = std::make_unique<BusInstance>(QDBusConnection::sessionBus(), version);
    if (instance->claim() == BusInstance::Claim::takenByAnother)
        return runCommandOnBus(command, version, tokens);
    const std::optional<ProgramLock> lock = programLock();
    if (lock && lock->holder())
        return refuseSecondProgram(*lock->holder());
    const std::unique_ptr<LinuxServices> services = LinuxServices::make();
    if (!services)
        return EXIT_FAILURE;
    accessibilityBus.avoidSilentBus();

    const std::shared_ptr<AppDelegate> delegate = AppDelegate::make(services->forApp());
    delegate->applicationDidFinishLaunching();
    ShelfCommands commands(*delegate, [&](const StartupTokens& given) { services->useTokens(given); });
    instance->serve(commands);
    openFilesAtStart(command, version, commands, tokens);
    const auto finishSaving = [&services] {
        if (const std::optional<std::string> problem = services->finishSaving())
            std::fprintf(stderr, "stowpocket: the last changes are not saved: %s\n", problem->c_str());
    };
    QObject::connect(&application, &QApplication::aboutToQuit, [&] {
        delegate->applicationWillTerminate();
        finishSaving();
    });
    const ExitHandler displayIsGone([&] {
        std::fputs("stowpocket: ends, as the X11 display is gone\n", stderr);
        finishSaving();
    });
    const TerminationSignals signals([&] { services->application().terminate(); });
    const int exitCode = QApplication::exec();
    clipboardHandOver.begin();
    instance.reset();  // before what it serves
    isRestartAsked = services->isRestartAsked();
    return exitCode;
}

}  // namespace

int main(int argc, char** argv) {
    const auto parsed = parsedCommandLine(argumentsOf(argc, argv), fileIsThere);
    const Command* const command = std::get_if<Command>(&parsed);
    if (command == nullptr)
        return finish(usageErrorResult(std::get<UsageError>(parsed).message));
    const StartupTokens tokens = startupTokens();
    if (command->verb != Verb::start)
        return runCommand(argc, argv, *command, tokens);
    bool isRestartAsked = false;
    tellEndInOrder();
    const int exitCode = runProgram(argc, argv, *command, tokens, isRestartAsked);
    return isRestartAsked ? becomeReplaced(ownExecutable()) : exitCode;
}
