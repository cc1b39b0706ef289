// SPDX-License-Identifier: MIT
#include "input/PrivateDisplay.h"

#include <QApplication>

#include <gtest/gtest.h>

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    const stowpocket::PrivateDisplay display;
    const QApplication application(count, arguments);
    return RUN_ALL_TESTS();
}
