// SPDX-License-Identifier: MIT
#include "app/macos/MacServices.h"

#include <QApplication>

int main(int argc, char** argv) {
    using namespace stowpocket;

    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setApplicationName(QStringLiteral("stowpocket"));
    QApplication::setApplicationVersion(QStringLiteral(STOWPOCKET_VERSION));

    MacServices services;
    const std::shared_ptr<AppDelegate> delegate = AppDelegate::make(services.forApp());
    // The menu bar takes items once the main loop runs.
    QMetaObject::invokeMethod(
        &application, [&] { delegate->applicationDidFinishLaunching(); }, Qt::QueuedConnection);
    QObject::connect(&application, &QApplication::aboutToQuit, [&] { delegate->applicationWillTerminate(); });
    return QApplication::exec();
}
