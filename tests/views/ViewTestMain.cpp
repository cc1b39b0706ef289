// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QApplication>

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
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication app(argc, argv);
    qInstallMessageHandler(failOnMessage);
    return RUN_ALL_TESTS();
}
