// SPDX-License-Identifier: MIT
#include "main/macos/MacServices.h"

#include <QApplication>

int main(int argc, char** argv) {
    using namespace stowpocket;

    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationName(QStringLiteral("stowpocket"));
    QApplication::setApplicationVersion(QStringLiteral(STOWPOCKET_VERSION));

    MacServices services;
    const std::shared_ptr<AppDelegate> delegate = AppDelegate::make(services.forApp());
    const OpenedFiles openedFiles([&](const std::vector<FileURL>& files) {
        delegate->shelfViewModel().addFileURLs(files);
        delegate->showPopover(Animation::animated);
    });
    std::unique_ptr<Observation> reopening;
    // The menu bar takes items once the main loop runs, and only then the system's own way of reopening is replaced.
    QMetaObject::invokeMethod(
        &application,
        [&] {
            delegate->applicationDidFinishLaunching();
            reopening = observeReopening([&] { delegate->showPopover(Animation::animated); });
        },
        Qt::QueuedConnection);
    QObject::connect(&application, &QApplication::aboutToQuit, [&] { delegate->applicationWillTerminate(); });
    return QApplication::exec();
}
