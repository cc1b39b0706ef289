// SPDX-License-Identifier: MIT
// Nothing is to be warned of, and nothing of the user's to be found: off the screen, without a bus, in a home of its
// own.
#include <QApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

void failOnMessage(QtMsgType type, const QMessageLogContext&, const QString& message) {
    // Windows off the screen can be told neither where nor how large to be.
    const bool isOfThePlatform = message.startsWith(QLatin1String("This plugin does not support "));
    if (type != QtDebugMsg && type != QtInfoMsg && !isOfThePlatform)
        ADD_FAILURE() << "Qt says: " << message.toStdString();
}

}  // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    const QTemporaryDir home;
    for (const char* const folder : {"HOME", "XDG_RUNTIME_DIR", "XDG_CACHE_HOME"})
        qputenv(folder, home.path().toUtf8());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    const QApplication application(argc, argv);
    qInstallMessageHandler(failOnMessage);
    return RUN_ALL_TESTS();
}
