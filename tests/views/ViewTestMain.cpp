// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <QApplication>

namespace {

/// A tooltip asks to lie above the others, which there are none of off the screen.
const QString expected = QStringLiteral("This plugin does not support raise()");

void failOnMessage(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type != QtDebugMsg && type != QtInfoMsg && message != expected)
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
