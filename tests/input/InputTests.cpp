// SPDX-License-Identifier: MIT
// The tests of input on a private display, which all of them share.
#include "input/PrivateDisplay.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    stowpocket::PrivateDisplay display;
    const QApplication application(count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    display.startWindowManager();
    return RUN_ALL_TESTS();
}
