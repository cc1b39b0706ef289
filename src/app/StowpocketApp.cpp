// SPDX-License-Identifier: MIT
#include "app/CommandLine.h"
#include "app/linux/LinuxServices.h"
#include "platform/linux/pictures/ImageDecoderProcess.h"
#include "platform/linux/TerminationSignals.h"

#include <QApplication>

#include <cstdio>
#include <filesystem>

namespace {

using namespace stowpocket;

constexpr int exitUsage = 2;

CommandLine commandLineOf(int argc, char** argv) {
    const std::vector<std::string_view> arguments(argv + 1, argv + argc);
    std::error_code failure;
    return readCommandLine(arguments, std::filesystem::current_path(failure).native());
}

/// The exit code of a start that only prints something; none for one that runs the program.
std::optional<int> printAnswer(const CommandLine& commandLine) {
    switch (commandLine.verb) {
    case CommandLineVerb::run:
        return std::nullopt;
    case CommandLineVerb::showHelp:
        std::puts("Usage: stowpocket [FILES...]\n"
                  "A shelf behind an icon in the tray: drop files on it, drag them out again elsewhere.\n"
                  "FILES are put on the shelf.\n\n"
                  "  -h, --help   show this text\n"
                  "  --version    show the version");
        return EXIT_SUCCESS;
    case CommandLineVerb::showVersion:
        std::puts("stowpocket " STOWPOCKET_VERSION);
        return EXIT_SUCCESS;
    case CommandLineVerb::refuse:
        break;
    }
    std::fprintf(stderr, "stowpocket: unknown option %s; see stowpocket --help\n", commandLine.refused.c_str());
    return exitUsage;
}

void describe(QApplication& application) {
    application.setQuitOnLastWindowClosed(false);
    QApplication::setApplicationName(QStringLiteral("stowpocket"));
    QApplication::setApplicationVersion(QStringLiteral(STOWPOCKET_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("stowpocket"));
}

}  // namespace

int main(int argc, char** argv) {
    if (isImageDecoderProcess(argc, argv))
        return runImageDecoder(argc, argv);
    const CommandLine commandLine = commandLineOf(argc, argv);
    if (const std::optional<int> answered = printAnswer(commandLine))
        return *answered;

    // A plain Wayland client can neither place a popover nor watch drags, so X11 is taken where both are there.
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb");
    QApplication application(argc, argv);
    describe(application);
    const std::unique_ptr<LinuxServices> services = LinuxServices::make();
    if (!services)
        return EXIT_FAILURE;

    const std::shared_ptr<AppDelegate> delegate = AppDelegate::make(services->forApp());
    delegate->applicationDidFinishLaunching();
    delegate->shelfViewModel().addFileURLs(commandLine.files);
    QObject::connect(&application, &QApplication::aboutToQuit, [&] {
        delegate->applicationWillTerminate();
        services->flush();
    });
    const TerminationSignals signals([&] { services->application().terminate(); });
    return QApplication::exec();
}
